#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QObject>
#include <QVariant>
#include <memory>

/// All persistent state of the program: four JSON stores kept in memory and written behind, atomically, as
/// files in the user's folder. Main thread, except for the effect store, which any thread may use.
/// No call fails: an absent value is undefined, a failed write stays in memory and is tried again.
class ConfigurationManager : public QObject
{
    Q_OBJECT

public:
    /// The process-wide instance; usable as soon as QApplication exists.
    static ConfigurationManager* instance();

    /// A store of its own in the given folders, for tests; created where missing.
    ConfigurationManager(const QString& configPath, const QString& resourcesPath, QObject* parent = nullptr);
    ~ConfigurationManager() override;

    QJsonValue appConfig(const QString& key) const;
    void setAppConfig(const QString& key, const QJsonValue& value);
    QJsonObject& AppConfigJsonObj();
    void saveAppConfigJsonObj();

    QJsonValue globalValue(const QString& key) const;
    void setGlobalValue(const QString& key, const QJsonValue& value);

    /// The device's object, empty for an unknown key; the reference stays valid until reset().
    QJsonObject& controllerJsonObj(const QString& key);
    void saveControllerJsonObj(const QString& key);

    QJsonValue effectJsonValue(const QString& effectId, const QString& controllerId,
                               const QString& key) const;
    /// The stored value merged over the object in `defaultFile`; an empty key stands for the whole object.
    QJsonValue effectJsonValue(const QString& effectId, const QString& controllerId, const QString& key,
                               const QString& defaultFile) const;
    void setEffectJsonValue(const QString& effectId, const QString& controllerId, const QString& key,
                            const QJsonValue& value);
    QVariant effectVariant(const QString& effectId, const QString& controllerId, const QString& key) const;
    void setEffectVariant(const QString& effectId, const QString& controllerId, const QString& key,
                          const QVariant& value);
    void saveEffectJsonObj(const QString& effectId);

    QString configPath() const;
    QString logsPath() const;
    QString resourcesPath() const;

    /// Writes everything at once.
    void save();
    /// Forgets the application, controller and effect stores; the global store stays.
    void reset();
    void EnableCleanStartup();

signals:
    void appConfigChanged(QString key);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
