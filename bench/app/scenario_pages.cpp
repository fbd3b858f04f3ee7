// What a click costs: the time the page is blocked and the time to the new effect's first frame, with one
// strip; what a repaint of the home page with twelve devices costs; and what it costs to show the strip's
// light on the control page while it moves, against a minimised window. Usage: scenario_pages
#include "SoundServer.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "app/LumivarApp.h"
#include "controllers/LVController.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {

constexpr qint64 kMaxBlockMs = 50;
constexpr qint64 kMaxBeyondPeriodMs = 20;
constexpr double kMaxRepaintMs = 16;
constexpr int kPatienceMs = 3000;
constexpr int kRepaints = 50;
constexpr double kMaxPreviewPercent = 0.5;
constexpr int kTurns = 4;
constexpr int kTurnMs = 5000;
constexpr int kSettleMs = 500;
const QString kDevice = QStringLiteral("LV0127:01020304");

struct Period
{
    const char* effect;
    int ms;
};
// The music effects go by the sound, which is analysed 30 to 60 times a second; one only dims a mood by it.
constexpr Period kPeriods[] = {{"id.effect.singleColor", 500},
                               {"id.effect.colorful.ColorMap", 33},
                               {"id.effect.dynamicMusic.musicMode_2", 80},
                               {"id.effect.dynamicMusic", 33},
                               {"", 80}};

int periodOf(const QString& effect)
{
    for (const Period& period : kPeriods) {
        if (effect.startsWith(QLatin1String(period.effect)))
            return period.ms;
    }
    return 0;
}

template <typename Condition>
bool waitFor(Condition condition)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < kPatienceMs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 5);
    return condition();
}

/// The milliseconds that the click takes on the main thread and those to the first frame for the port.
bool click(LumivarApp& app, QAbstractButton& button)
{
    auto* controller = qobject_cast<LVController*>(app.deviceManager().controller(kDevice).data());
    QElapsedTimer clock;
    qint64 firstFrame = -1;
    QCoreApplication::sendPostedEvents(); // what the old effect has on its way does not count
    clock.start();
    button.click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    app.mainWindow().repaint();
    const qint64 blocked = clock.elapsed();
    const QString effect = app.deviceManager().effects().boundEffectId(kDevice);
    const auto watch = QObject::connect(controller, &LVController::writeToPort, &app, [&] {
        if (firstFrame < 0)
            firstFrame = clock.elapsed();
    });
    waitFor([&] { return firstFrame >= 0; });
    QObject::disconnect(watch);
    const qint64 limit = periodOf(effect) + kMaxBeyondPeriodMs;
    const bool good = blocked <= kMaxBlockMs && firstFrame >= 0 && firstFrame <= limit;
    std::printf("%-44s page blocked %3lld ms (limit %lld), first frame after %4lld ms (limit %lld)%s\n",
                qPrintable(effect), blocked, kMaxBlockMs, firstFrame, limit, good ? "" : "  TOO SLOW");
    return good;
}

/// Clicks every button of the class below the page that is not checked.
template <typename Button>
bool clickAll(LumivarApp& app, const QString& container)
{
    bool good = true;
    const auto* parent = app.mainWindow().controlPage()->findChild<QWidget*>(container);
    QVector<QPointer<QAbstractButton>> buttons;
    for (auto* button : parent->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly))
        buttons << button;
    for (const QPointer<QAbstractButton>& button : buttons) {
        if (button && !button->isChecked())
            good &= click(app, *button);
    }
    return good;
}

double repaintMs(QWidget& page)
{
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < kRepaints; ++i)
        page.repaint();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6 / kRepaints;
}

bool judgeRepaint(const char* what, double ms)
{
    const bool good = ms <= kMaxRepaintMs;
    std::printf("%-44s %.2f ms a repaint (limit %.0f)%s\n", what, ms, kMaxRepaintMs,
                good ? "" : "  TOO SLOW");
    return good;
}

/// Of the main thread, which does all the painting.
double cpuSeconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

double cpuPercent(int ms)
{
    QElapsedTimer clock;
    clock.start();
    const double before = cpuSeconds();
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
    return 100 * (cpuSeconds() - before) / (static_cast<double>(clock.elapsed()) / 1000);
}

/// In turns, of which those count that were disturbed least.
bool judgePreview(LumivarApp& app, int leds)
{
    app.deviceManager().controller(kDevice)->setNbLeds(static_cast<uint32_t>(leds));
    app.deviceManager().setControllerEffect(kDevice, QStringLiteral("id.effect.singleColor.singleColor1"),
                                            true); // the next is bound with the new count
    app.deviceManager().setControllerEffect(kDevice, QStringLiteral("id.effect.colorful.ColorMap_3"), true);
    app.updateControlPageView();
    MainWindow& window = app.mainWindow();
    double shown = 100;
    double hidden = 100;
    for (int turn = 0; turn < kTurns; ++turn) {
        window.showNormal();
        cpuPercent(kSettleMs);
        shown = std::min(shown, cpuPercent(kTurnMs));
        window.showMinimized();
        cpuPercent(kSettleMs);
        hidden = std::min(hidden, cpuPercent(kTurnMs));
    }
    const double cost = shown - hidden;
    window.showNormal();
    const bool good = cost <= kMaxPreviewPercent;
    std::printf("light of %3d LEDs on the control page          %.2f %% of a core (limit %.1f)%s\n", leds,
                cost, kMaxPreviewPercent, good ? "" : "  TOO MUCH");
    return good;
}

bool measure(LumivarApp& app)
{
    if (!waitFor([&] { return !app.deviceManager().controllerIds().isEmpty(); }))
        return false;
    emit app.mainWindow().homePage()->controllerEntryOrdered(kDevice);
    bool good = true;
    ControlPage& page = *app.mainWindow().controlPage();
    const auto groups =
        page.findChild<QWidget*>(QStringLiteral("workGroupContainer"))->findChildren<QRadioButton*>();
    for (QRadioButton* group : groups) {
        if (!group->isChecked())
            good &= click(app, *group);
        good &= clickAll<QRadioButton>(app, QStringLiteral("workerContainer"));
    }
    good &= judgeRepaint("control page with all groups", repaintMs(page));
    for (const int leds : {120, 300})
        good &= judgePreview(app, leds);

    app.mainWindow().switchToHomePage();
    QMap<QString, DeviceModel> devices;
    for (int i = 0; i < 12; ++i) {
        const QString id = QStringLiteral("LV0127:%1").arg(i);
        devices.insert(id, {id, id, QIcon(QStringLiteral("images/productIcons/LV0127.jpg")), true, {}});
    }
    app.mainWindow().homePage()->setControllerList(devices);
    QCoreApplication::processEvents();
    return judgeRepaint("home page with 12 devices", repaintMs(*app.mainWindow().homePage())) && good;
}

/// The application needs its display before it begins, so a second process of this program does the work.
int runUnderVirtualDisplay(char** argv)
{
    int argc = 1;
    const QCoreApplication app(argc, argv);
    VirtualDisplay display(QSize(1920, 1080));
    SoundServer sound; // silent, but the music effects paint with it
    sound.useHere();
    if (!display.start() || !sound.start())
        return 2;
    QProcess inner;
    inner.setProcessChannelMode(QProcess::ForwardedOutputChannel);
    inner.setStandardErrorFile(QProcess::nullDevice());
    display.startProgram(inner, QCoreApplication::applicationFilePath(), {QStringLiteral("--inside")});
    inner.waitForFinished(-1);
    return inner.exitStatus() == QProcess::NormalExit ? inner.exitCode() : 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || qstrcmp(argv[1], "--inside") != 0)
        return runUnderVirtualDisplay(argv);

    const QTemporaryDir home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, home.path().toLocal8Bit());
    QDir().mkpath(home.filePath(QStringLiteral("Lumivar")));
    QFile store(home.filePath(QStringLiteral("Lumivar/controllers.json")));
    if (store.open(QIODevice::WriteOnly))
        store.write(R"({"LV0127:01020304": {"nbLeds": 120}})");
    store.close();
    StripSimulator::Options options;
    options.portsFile = home.filePath(QStringLiteral("ports.json"));
    qputenv("LUMIVAR_SERIAL_PORTS", options.portsFile.toLocal8Bit());
    StripSimulator strip(options);
    strip.plugIn();

    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Lumivar"));
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    LumivarApp program(nullptr);
    return measure(program) ? 0 : 1;
}
