#include "SimulatorApp.h"
#include "StageScenery.h"
#include "UnixSignals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QMetaEnum>

#include <csignal>
#include <cstdio>

namespace {

const QString kAbout = QStringLiteral(
    "A Wayland desktop's way to its screens, without the desktop: a bus of its own, a media server with\n"
    "a moving picture for each screen, the portal that asks the user, a log-in manager, and the program\n"
    "on it with fake strips.\n\n"
    "In a terminal: y and n answer, e ends the sharing, f has the desktop forget the consent, m kills\n"
    "the media server or brings it back, p does so with the portal, s has the machine sleep or wake,\n"
    "l locks the session or unlocks it; and the keys of strip-simulator. Without one the lines yes, no,\n"
    "end, forget, server, portal, sleep and lock on standard input do the same, and its own.\n\n"
    "The options are those of strip-simulator and:");

constexpr int kMostScreens = 8;
const QStringList kAnswers{"ask", "yes", "no"};

void addOptions(QCommandLineParser& parser)
{
    const auto faults = QMetaEnum::fromType<ScreenPortal::Fault>();
    QStringList names;
    for (int i = 1; i < faults.keyCount(); ++i)
        names += faults.key(i);
    parser.addOptions({
        {"screens", "How many, side by side.", "n", "1"},
        {"answer", "The user's, when he is asked: ask (him, here), yes or no.", "how", "ask"},
        {"token", "Who brings this token of an earlier consent is not asked.", "text"},
        {"fault", "A method of the portal goes wrong, such as Start: " + names.join(", "), "method=name"},
    });
}

int fail(const QString& why)
{
    std::fprintf(stderr, "wayland-stage: %s\n", qPrintable(why));
    return 2;
}

/// False when there is no such fault.
bool useFault(StageScenery& scenery, const QString& text)
{
    bool isFault = false;
    const int fault = QMetaEnum::fromType<ScreenPortal::Fault>().keyToValue(
        text.section('=', 1).toLatin1().constData(), &isFault);
    scenery.setFault(text.section('=', 0, 0), ScreenPortal::Fault(fault));
    return isFault;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(kAbout);
    addOptions(parser);
    SimulatorOptions::addTo(parser);
    parser.process(app);

    QString error;
    const auto options = SimulatorOptions::of(parser, error);
    if (!options)
        return fail(error);
    const int screens = parser.value("screens").toInt();
    const int answer = kAnswers.indexOf(parser.value("answer"));
    if (screens < 1 || screens > kMostScreens || answer < 0)
        return fail("--screens takes 1 to 8, --answer ask, yes or no");
    StageScenery scenery(screens, StageScenery::Answer(answer), parser.value("token"));
    for (const QString& fault : parser.values("fault")) {
        if (!useFault(scenery, fault))
            return fail(QString("--fault does not understand \"%1\"").arg(fault));
    }
    if (!scenery.start())
        return fail("The stage does not stand: see above");

    SimulatorApp simulator(*options, &scenery);
    const UnixSignals unixSignals({SIGINT, SIGTERM, SIGHUP});
    QObject::connect(&unixSignals, &UnixSignals::received, &simulator, &SimulatorApp::quit);
    if (!simulator.start())
        return 2;
    return QCoreApplication::exec();
}
