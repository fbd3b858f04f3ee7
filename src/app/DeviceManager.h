#pragma once

#include "controllers/AbsRGBController.h"
#include "controllers/IDeviceEnumerator.h"
#include "effects/EffectsManager.h"

#include <QHash>
#include <QJsonValue>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <functional>

class LedCountSession;
class LumivarApp;
class QMessageBox;

/// The registry of live devices and the owner of the effect engine. Main thread.
class DeviceManager : public QObject
{
    Q_OBJECT

public:
    /// The enumerators start at once. Nothing is asked of the application.
    DeviceManager(LumivarApp*, QObject* parent);
    /// Lets the effects go, then blacks every strip out and releases its port.
    ~DeviceManager() override;

    /// Blacks every strip out and releases its port, all at the same time; half a second at most. For an end
    /// without the destructor.
    void releaseAll();

    /// Keeps all devices dark, those to come included, or lets them shine again; nothing of it is stored.
    void setDark(bool dark);
    /// The machine goes to sleep: lets go of ports that are being probed, and returns when the devices have
    /// what was sent to them, after half a second at most. Or it is back: looks for devices at once.
    void setAsleep(bool asleep);

    /// Null for an unknown id.
    AbsRGBControllerPtr controller(const QString& id) const;
    /// An invalid record for an unknown id.
    const ControlOptions& controlOptions(const QString& id) const;
    QList<QString> controllerIds() const;
    EffectsManager& effects() { return m_effects; }
    /// What keeps devices from being found, or is missing about those that are.
    PortFindings findings() const;
    /// Tries the ports that failed once more, because something has changed.
    void lookAgain();

    /// Forgets the device and emits controllerFailed; nothing happens for an unknown id.
    void removeController(const QString& id);
    /// Binds an effect and makes it the device's choice; `enable` also turns the light on. What the worker
    /// changes by itself is announced from then on.
    void setControllerEffect(const QString& id, const QString& effectId, bool enable);
    /// Has the effect do what its notice offers, if that offers anything: on the user's click, or unasked
    /// because he sees the effect's page or has just picked it.
    void answerNotice(const QString& id, bool isClicked);
    /// Asks the user for the LED count and returns at once; the device's effect rests until the answer. False
    /// for an unknown id.
    bool setControllerLayout(const QString& id);

signals:
    void newController(QString ctlName);
    void controllerFailed(QString ctlName);
    void findingsChanged();
    /// A property that the bound effect changed by itself.
    void effectPropertyChanged(QString ctl, QString effect, QString key, QJsonValue val);

private slots:
    void addController(AbsRGBControllerPtr controller);
    void onEffectPropertyChanged(QString ctl, QString effect, QString key, QJsonValue val);

private:
    void loadExternalDeviceEnumerators();
    void createBuiltInEnumerators();
    void addEnumerator(const QString& key, const QSharedPointer<IDeviceEnumerator>& enumerator);
    /// Binds the effect and runs `then` after the answer, or at once without a display; never when the device
    /// goes before.
    void askLedCount(const AbsRGBControllerPtr& controller, const std::function<void(bool)>& then);
    void bindStoredEffect(const QString& id);
    void onControllerStatusChanged(const QString& id, uint32_t status, const QString& description);
    void warnOfDisconnections(const QString& id);
    QWidget* dialogParent() const;

    struct DeferredDeletes
    {
        ~DeferredDeletes();
    };

    DeferredDeletes m_deferredDeletes; ///< first, so that it goes last
    QHash<QString, AbsRGBControllerPtr> m_controllers;
    QHash<QString, QSharedPointer<IDeviceEnumerator>> m_enumerators;
    QHash<QString, LedCountSession*> m_countSessions; ///< by device, while its user is asked
    QMap<QString, PortFindings> m_findings;           ///< by enumerator
    EffectsManager m_effects;
    QPointer<QMessageBox> m_disconnectionWarning;
    bool m_isDark = false;
};
