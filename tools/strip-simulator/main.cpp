#include "SimulatorApp.h"
#include "UnixSignals.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QString error;
    const auto options = SimulatorOptions::parse(QCoreApplication::arguments(), error);
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
