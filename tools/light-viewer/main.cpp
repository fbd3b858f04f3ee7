#include "LightReceiver.h"
#include "LightTerminal.h"
#include "LightWindow.h"
#include "UnixSignals.h"

#include <QApplication>
#include <QCommandLineParser>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace {

/// Decided before there is an application object, because a window needs another one than a terminal.
bool wantsWindow(int argc, char** argv)
{
    const bool asked = std::any_of(argv, argv + argc, [](const char* argument) {
        return std::strcmp(argument, "--terminal") == 0 || std::strcmp(argument, "--json") == 0;
    });
    const bool display = qEnvironmentVariableIsSet("DISPLAY") ||
                         qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    return display && !asked;
}

void printJson(const QVector<LV_RGB>& colors)
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    const double ms = static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(colors.constData()), 3 * colors.size());
    std::printf("{\"ms\":%.3f,\"count\":%d,\"colors\":\"%s\"}\n", ms, colors.size(),
                bytes.toHex().constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    const bool inWindow = wantsWindow(argc, argv);
    const std::unique_ptr<QCoreApplication> app(inWindow ? new QApplication(argc, argv)
                                                         : new QCoreApplication(argc, argv));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the colours that the virtual device sends to the local host."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("terminal"), QStringLiteral("Draw in the terminal, as without a display.")},
        {QStringLiteral("json"), QStringLiteral("Print every frame as a line of JSON instead.")},
        {QStringLiteral("frames"), QStringLiteral("End after so many frames."), QStringLiteral("n")},
    });
    parser.process(*app);

    LightReceiver receiver;
    if (!receiver.listen()) {
        std::fprintf(stderr, "Can't listen on port %d: %s\n", LightReceiver::kPort,
                     qPrintable(receiver.errorString()));
        return 1;
    }
    std::unique_ptr<LightWindow> window;
    std::unique_ptr<LightTerminal> terminal;
    if (inWindow) {
        window = std::make_unique<LightWindow>();
        window->show();
    } else if (!parser.isSet(QStringLiteral("json"))) {
        terminal = std::make_unique<LightTerminal>();
    }

    int framesLeft = parser.value(QStringLiteral("frames")).toInt();
    QObject::connect(&receiver, &LightReceiver::received, app.get(), [&](const QVector<LV_RGB>& colors) {
        if (window)
            window->show(colors);
        else if (terminal)
            terminal->show(colors);
        else
            printJson(colors);
        if (framesLeft > 0 && --framesLeft == 0)
            QCoreApplication::quit();
    });
    const UnixSignals unixSignals({SIGINT, SIGTERM, SIGHUP});
    QObject::connect(&unixSignals, &UnixSignals::received, app.get(), &QCoreApplication::quit);
    return QCoreApplication::exec();
}
