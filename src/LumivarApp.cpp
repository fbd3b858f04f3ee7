#include "LumivarApp.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QApplication>
#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileSystemWatcher>

namespace {

const QString kStyleFile = QStringLiteral("styles/default.qss");

bool applyStyleSheet(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qWarning() << "[LumivarApp]: Cannot read the style sheet" << path << file.errorString();
        return false;
    }
    qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
    return true;
}

} // namespace

LumivarApp::LumivarApp(QObject* parent)
    : QObject(parent)
    , m_deviceManager(this, nullptr)
{
    setProperty("runtime.openTime", QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss")));

    auto* config = ConfigurationManager::instance();
    const QJsonValue mode = config->appConfig(ConfigKeys::kSingleControlMode.key);
    if (mode.isNull() || mode.isUndefined())
        config->setAppConfig(ConfigKeys::kSingleControlMode.key, ConfigKeys::kSingleControlMode.fallback);

    applyStyleSheet(QStringLiteral(":/styles/default.qss"));
    uiStyleListener();

    connect(&m_deviceManager, &DeviceManager::newController, this, &LumivarApp::onNewController,
            Qt::DirectConnection);
    connect(&m_deviceManager, &DeviceManager::controllerFailed, this, &LumivarApp::onControllerFailed,
            Qt::DirectConnection);
    for (const QString& id : m_deviceManager.controllerIds())
        onNewController(id);
}

LumivarApp::~LumivarApp() = default;

void LumivarApp::uiStyleListener()
{
    auto* watcher = new QFileSystemWatcher(this);
    // A style file beside the program is optional: without it nothing ever fires.
    if (QFile::exists(kStyleFile))
        watcher->addPath(kStyleFile);
    connect(watcher, &QFileSystemWatcher::fileChanged, this, [](const QString& path) {
        if (applyStyleSheet(path))
            qDebug() << "The new styles file has been loaded";
    });
}

void LumivarApp::onWakeUpRequested()
{
    qInfo() << "[LumivarApp]: A second start asks for the window";
}
