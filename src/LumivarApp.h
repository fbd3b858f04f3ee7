#pragma once

#include "DeviceManager.h"

#include <QObject>

/// The one object that knows every other subsystem and joins them. Main thread.
/// Sources: LumivarApp.cpp (construction and wiring), LumivarApp_flows.cpp (what devices and users set off).
class LumivarApp : public QObject
{
    Q_OBJECT

public:
    explicit LumivarApp(QObject* parent);
    ~LumivarApp() override;

    /// Blacks every strip out when the process ends without the destructor; half a second at most.
    void releaseDevices() { m_deviceManager.releaseAll(); }

public slots:
    /// A second start asks to see this one.
    void onWakeUpRequested();

private slots:
    void onNewController(QString ctlName);
    void onControllerFailed(QString ctlName);
    void onDevPhyBtnClicked(QString ctlName, int btn);

private:
    void uiStyleListener();
    void removeController(const QString& id);
    void pressButton(const QString& id, int action, const QString& currentEffect, bool enabledBefore);
    void toggleLight(const QString& id, bool enable);

    DeviceManager m_deviceManager;
};
