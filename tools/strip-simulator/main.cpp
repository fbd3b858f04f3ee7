#include "SimulatorApp.h"
#include "UnixSignals.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>

namespace {
const QString kAbout = QStringLiteral(
    "A fake LED strip on a pseudo terminal. It adds itself to the list of serial ports that the program\n"
    "watches, answers the probe, shows what it is told to show and has a button.\n\n"
    "In a terminal: b presses the button, u unplugs and plugs in, r ends the program and starts it again,\n"
    "q quits. Without one the lines button, unplug, plug, restart and quit on standard input do the same,\n"
    "with the number of a strip behind the first three if wanted.");
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QString error;
    QCommandLineParser parser;
    parser.setApplicationDescription(kAbout);
    SimulatorOptions::addTo(parser);
    parser.process(app);
    const auto options = SimulatorOptions::of(parser, error);
    if (!options) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 2;
    }
    SimulatorApp simulator(*options);
    const UnixSignals unixSignals({SIGINT, SIGTERM, SIGHUP});
    QObject::connect(&unixSignals, &UnixSignals::received, &simulator, &SimulatorApp::quit);
    if (!simulator.start())
        return 2;
    return QCoreApplication::exec();
}
