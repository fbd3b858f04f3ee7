#include "app/Doctor.h"
#include "app/LumivarApp.h"
#include "support/AppId.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/ProductSettings.h"
#include "system/BuildInfo.h"
#include "system/CrashHandler.h"
#include "system/DisplayCheck.h"
#include "system/Exhaustion.h"
#include "system/HomeFolder.h"
#include "system/LogSystem.h"
#include "system/RunningProgram.h"
#include "system/RuntimeFile.h"
#include "system/SmallHeap.h"
#include "system/TerminationSignals.h"
#include "system/WakeUp.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDebug>
#include <QDir>
#include <QFont>
#include <QLockFile>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace {

constexpr int kLockPatienceMs = 100;

/// A switch of the command line and the property of the application object that tells others of it.
struct Switch
{
    const char* option;
    const char* description;
    const char* property;
};

constexpr Switch kSwitches[] = {
    {"advanced", "Enable advanced function", "isAdvanced"},
    {"enable_crash_test", "Enable crash test", "enableCrashTest"},
    {"screenshot", "Enable capturer screenshot", "isScreenshot"},
    {"auto_startup", "Enable bootstrap", "isAutoStartup"},
    {"enable_VTController", "Enable VTController", "enable VTController"},
};

/// What has to be settled before there is an application object.
void setHighDpiAttributes()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

/// `isPlatformChosen`: the platform comes from the list for machines without a display.
void describeApplication(QApplication& app, bool isPlatformChosen)
{
    QCoreApplication::setApplicationName(QStringLiteral("Lumivar")); // names the user's folders
    QCoreApplication::setApplicationVersion(QLatin1String(BuildInfo::kAppVersion));
    app.setProperty("buildCommit", QLatin1String(BuildInfo::kGitCommit));
    QGuiApplication::setDesktopFileName(QLatin1String(kAppId)); // by which a Wayland desktop finds the icon
    QApplication::setFont(QFont(QStringLiteral("Arial")));
    QApplication::setQuitOnLastWindowClosed(false); // the tray keeps the program running
    app.setProperty("isHeadless",
                    isPlatformChosen && QGuiApplication::platformName() == QLatin1String("offscreen"));
    if (isPlatformChosen)
        forgetChosenPlatform();
}

/// Ends the process for --help, --version and unknown options.
void readCommandLine(QApplication& app)
{
    QCommandLineParser parser;
    for (const Switch& entry : kSwitches)
        parser.addOption({QLatin1String(entry.option), QLatin1String(entry.description)});
    parser.addOption(
        {QStringLiteral("doctor"), QStringLiteral("Tell what stands in the way of light, and end")});
    parser.addOption({QStringLiteral("quit"), QStringLiteral("End the running program, and wait for that")});
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(app);
    for (const Switch& entry : kSwitches)
        app.setProperty(entry.property, parser.isSet(QLatin1String(entry.option)));
}

bool isQuitAsked(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc,
                       [](const char* argument) { return std::strcmp(argument, "--quit") == 0; });
}

/// In place of the program: ends the one that runs.
int quitRunning(int& argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    if (quitRunningProgram())
        return 0;
    qWarning("[main]: the running program does not end");
    return 1;
}

/// False when another process of the program runs. A lock that cannot be had for other reasons, such as a
/// folder that cannot be written, keeps nobody from starting.
bool isOnlyInstance(QLockFile& lock)
{
    return lock.tryLock(kLockPatienceMs) || lock.error() != QLockFile::LockFailedError;
}

void cleanUpConfigurationIfAsked()
{
    ConfigurationManager* config = ConfigurationManager::instance();
    const QLatin1String key(ConfigKeys::kCleanStartup.key);
    if (!config->globalValue(key).toBool(ConfigKeys::kCleanStartup.fallback))
        return;
    qInfo() << "The program will clean up all configuration files";
    config->reset();
    config->setGlobalValue(key, false);
}

void logStart(const QApplication& app)
{
    qInfo() << "Startup parameters: \r\n \t" << QCoreApplication::arguments();
    qInfo().noquote().nospace() << "Runtime directory: " << QCoreApplication::applicationDirPath();
    qInfo().noquote().nospace() << "Env base path:" << QDir(QString()).absolutePath();
    qInfo().noquote().nospace() << "Build info : \r\n "
                                << "\t Git branch : " << BuildInfo::kGitBranch << "\r\n"
                                << "\t Git commit : " << BuildInfo::kGitCommit << "\r\n"
                                << "\t Build date : " << BuildInfo::kBuildDate << "\r\n"
                                << "\t App version : " << BuildInfo::kAppVersion << "\r\n";
    if (app.property("isHeadless").toBool())
        qInfo() << "[main]: no display can be reached, running without a visible window";
}

LumivarApp* runningController = nullptr;

/// The toolkit ends the process when its display server goes: no strip may keep burning then, and nothing
/// stored may be lost.
void leaveInOrder()
{
    LumivarApp* const controller = std::exchange(runningController, nullptr);
    if (controller == nullptr)
        return;
    controller->releaseDevices();
    ConfigurationManager::instance()->save();
}

} // namespace

int main(int argc, char** argv)
{
    keepHeapSmall();
    provideHomeFolder();
    if (Doctor::isAsked(argc, argv))
        return Doctor::run(argc, argv);
    if (isQuitAsked(argc, argv))
        return quitRunning(argc, argv);
    endWhenExhausted(leaveInOrder);
    setHighDpiAttributes();
    const bool isPlatformChosen = choosePlatformWithoutDisplay();
    const bool isOpenGlLeftOut = chooseNoOpenGl();
    int exitCode = 0;
    QApplication app(argc, argv);
    if (isOpenGlLeftOut)
        forgetNoOpenGl();
    describeApplication(app, isPlatformChosen);
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    readCommandLine(app);

    QLockFile lock(runtimeFile(QStringLiteral("LumivarSingleApp.lock")));
    if (!isOnlyInstance(lock)) {
        if (!sendWakeUp(WakeUp::Show))
            qWarning("[main]: the program runs already, but nobody takes the wake-up");
        return 0;
    }
    bool isEndAsked = false;
    const auto end = [&isEndAsked] {
        isEndAsked = true;
        QCoreApplication::quit();
    };
    TerminationSignals termination;
    QObject::connect(&termination, &TerminationSignals::terminationRequested, &app, end);
    // The end of a Windows session: the toolkit says so without a loop that could end.
    QObject::connect(&app, &QCoreApplication::aboutToQuit, [&isEndAsked] { isEndAsked = true; });

    LogSystem log(ConfigurationManager::instance()->logsPath());
    endWhenExhausted(leaveInOrder);
    WakeUpServer wakeUps;
    QObject::connect(&wakeUps, &WakeUpServer::quitRequested, &app, end);
    wakeUps.listen();
    cleanUpConfigurationIfAsked();
    logStart(app);
    installCrashHandler(log.filePath());

    if (!productSettings().service.isEmpty()) {
        // Everything is in order by then, but for names that a silent name server is still asked for: the
        // application object would wait for them, ten seconds and more.
        QObject::connect(&app, &QObject::destroyed, [&exitCode] { std::_Exit(exitCode); });
    }
    auto controller = std::make_unique<LumivarApp>(nullptr);
    runningController = controller.get();
    std::atexit(leaveInOrder);
    callWhenDisplayBreaks(leaveInOrder);
    QObject::connect(&wakeUps, &WakeUpServer::wakeUpRequested, controller.get(),
                     &LumivarApp::onWakeUpRequested);
    if (isEndAsked) {
        // It came while the controller came up: there was no loop yet, or only a dialog's own.
        QMetaObject::invokeMethod(&app, &QCoreApplication::quit, Qt::QueuedConnection);
    }
    exitCode = QApplication::exec();
    runningController = nullptr;
    controller.reset();
    ConfigurationManager::instance()->save();
    log.shutdown();
    return exitCode;
}
