#pragma once

#include "support/SharedLibrary.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QVariant>
#include <memory>

/// All persistent state of the program: four JSON stores kept in memory and written behind, atomically, as
/// files in the user's folder. Main thread, except for the effect store, which any thread may use.
/// No call fails: an absent value is undefined, a failed write stays in memory and is tried again.
class LUMIVAR_SUPPORT_EXPORT ConfigurationManager : public QObject
{
    Q_OBJECT

public:
    /// The process-wide instance; usable as soon as QApplication exists.
    static ConfigurationManager* instance();

    /// A store of its own in the given folders, for tests; created where missing. `defaultsFile` holds the
    /// product's values, see appConfig().
    ConfigurationManager(const QString& configPath, const QString& resourcesPath,
                         const QString& defaultsFile = {});
    ~ConfigurationManager() override;

    /// The user's value. Where there is none, or null, the one that the product ships, which never becomes
    /// the user's by itself; what ships is read at first use.
    QJsonValue appConfig(const QString& key) const;
    /// What ships, whatever the user has.
    QJsonValue shippedConfig(const QString& key) const;
    /// Emits appConfigChanged, also for the value that is there already. Null clears the key for its readers:
    /// they are back at what ships.
    void setAppConfig(const QString& key, const QJsonValue& value);
    /// The whole application store, the user's values alone; what is written through it counts after
    /// saveAppConfigJsonObj().
    QJsonObject& AppConfigJsonObj();
    void saveAppConfigJsonObj();

    QJsonValue globalValue(const QString& key) const;
    void setGlobalValue(const QString& key, const QJsonValue& value);

    /// The device's object, empty for an unknown key; the reference stays valid.
    QJsonObject& controllerJsonObj(const QString& key);
    void saveControllerJsonObj(const QString& key);

    /// Any thread. An empty key stands for the whole object of the controller.
    QJsonValue effectJsonValue(const QString& effectId, const QString& controllerId,
                               const QString& key) const;
    /// The stored value over the one in the object of `defaultFile`, relative to the working directory; two
    /// objects are merged member by member. Without a good file the stored value alone.
    QJsonValue effectJsonValue(const QString& effectId, const QString& controllerId, const QString& key,
                               const QString& defaultFile) const;
    /// In memory; saveEffectJsonObj() brings it to the disk.
    void setEffectJsonValue(const QString& effectId, const QString& controllerId, const QString& key,
                            const QJsonValue& value);
    QVariant effectVariant(const QString& effectId, const QString& controllerId, const QString& key) const;
    void setEffectVariant(const QString& effectId, const QString& controllerId, const QString& key,
                          const QVariant& value);
    void saveEffectJsonObj(const QString& effectId);

    /// Folder of the stores, dumps, logs and the user's pictures; without a slash at the end, as the others.
    QString configPath() const;
    QString logsPath() const;
    /// Folder of what was downloaded.
    QString resourcesPath() const;

    /// Whether something could not be written and is not on the disk yet: a folder that cannot be written, a
    /// full disk. Known from the first attempt on.
    bool isSavingTroubled() const;

    /// Writes everything at once, unsaved effect values included, and brings the backups up to date.
    void save();
    /// Forgets the application, controller and effect stores with files and backups; the global store stays,
    /// and what ships.
    void reset();
    /// The next start resets.
    void EnableCleanStartup();

signals:
    void appConfigChanged(QString key);
    /// Something was written through AppConfigJsonObj(); nobody knows what.
    void appConfigObjSaved();
    void savingTroubleChanged(bool isTroubled);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
