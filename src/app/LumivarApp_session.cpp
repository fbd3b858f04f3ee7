// Sleep, lock and the end of the session.
#include "app/LumivarApp.h"
#include "support/audio/AudioCapManager.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QApplication>
#include <QDebug>

namespace {

bool areLightsOffWhileLocked()
{
    const auto& setting = ConfigKeys::kLightsOffWhileLocked;
    return ConfigurationManager::instance()->appConfig(setting.key).toBool(setting.fallback);
}

} // namespace

void LumivarApp::watchSession()
{
    connect(&m_session, &SessionWatch::aboutToSleep, this, &LumivarApp::onAboutToSleep);
    connect(&m_session, &SessionWatch::resumed, this, &LumivarApp::onResumed);
    connect(&m_session, &SessionWatch::screenOffChanged, this, &LumivarApp::onScreenOffChanged);
    connect(&m_session, &SessionWatch::aboutToShutDown, this, &LumivarApp::onAboutToShutDown);
    connect(ConfigurationManager::instance(), &ConfigurationManager::appConfigChanged, this,
            [this](const QString& key) {
                // Switched on it counts from the next lock, switched off at once.
                if (key == QLatin1String(ConfigKeys::kLightsOffWhileLocked.key) && !areLightsOffWhileLocked())
                    onScreenOffChanged(false);
            });
    onScreenOffChanged(m_session.isScreenOff()); // it may be so from the start
    connect(qApp, &QGuiApplication::commitDataRequest, this,
            [] { ConfigurationManager::instance()->save(); });
}

void LumivarApp::onAboutToSleep()
{
    qInfo() << "[LumivarApp]: The machine goes to sleep";
    m_isAsleep = true;
    setDark();
    m_deviceManager.setAsleep(true);
    ConfigurationManager::instance()->save();
    m_session.readyForSleep();
}

void LumivarApp::onResumed()
{
    qInfo() << "[LumivarApp]: The machine is awake again";
    m_isAsleep = false;
    setDark();
    m_deviceManager.setAsleep(false);
    AudioCapManager::reconnect();
}

void LumivarApp::onScreenOffChanged(bool off)
{
    m_isDarkForScreen = off && areLightsOffWhileLocked();
    setDark();
}

void LumivarApp::setDark()
{
    m_deviceManager.setDark(m_isAsleep || m_isDarkForScreen);
}

/// What follows may be cut short: what matters happens here.
void LumivarApp::onAboutToShutDown()
{
    qInfo() << "[LumivarApp]: The session ends";
    m_deviceManager.releaseAll();
    ConfigurationManager::instance()->save();
    QCoreApplication::quit();
}
