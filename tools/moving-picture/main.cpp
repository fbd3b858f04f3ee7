#include "PictureWindow.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QScreen>

#include <cstdio>
#include <ctime>

namespace {

const QVector<QColor> kQuarters{QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255), QColor(255, 255, 0)};
const QColor kClickColors[] = {QColor(255, 0, 0), QColor(0, 0, 255)};

double monotonicMs()
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// "WxH+X+Y"; an empty rectangle when it is none.
QRect parseGeometry(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral(R"(^(\d+)x(\d+)\+(\d+)\+(\d+)$)"));
    const auto match = pattern.match(text);
    return {match.captured(3).toInt(), match.captured(4).toInt(), match.captured(1).toInt(),
            match.captured(2).toInt()};
}

void tell(const char* event, const QColor& color)
{
    std::printf("{\"event\":\"%s\",\"ms\":%.3f,\"color\":\"%s\"}\n", event, monotonicMs(),
                qPrintable(color.name()));
    std::fflush(stdout);
}

struct Wishes
{
    std::shared_ptr<Picture> picture;
    std::shared_ptr<SolidFields> clicking; ///< the same picture when it clicks
    QRect geometry;
    int framesPerSecond = 25;
    int clickMs = 500;
};

/// Ends the process with a message when the command line makes no sense.
Wishes parse(const QCoreApplication& app)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Fills the screen with slowly drifting colours, or with a known picture for tests. Escape ends it."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("pattern"), QStringLiteral("drift (the default), quarters, or click."),
         QStringLiteral("name"), QStringLiteral("drift")},
        {QStringLiteral("solid"), QStringLiteral("One colour."), QStringLiteral("#rrggbb")},
        {QStringLiteral("interval"),
         QStringLiteral(
             "Milliseconds between two clicks; each prints a line of JSON when the display has it."),
         QStringLiteral("ms"), QStringLiteral("500")},
        {QStringLiteral("geometry"), QStringLiteral("A window there instead of the whole screen."),
         QStringLiteral("WxH+X+Y")},
        {QStringLiteral("fps"), QStringLiteral("Pictures a second."), QStringLiteral("n"),
         QStringLiteral("25")},
    });
    parser.process(app);

    Wishes wishes;
    const QString pattern = parser.value(QStringLiteral("pattern"));
    const QColor solid(parser.value(QStringLiteral("solid")));
    if (pattern == QLatin1String("click"))
        wishes.picture = wishes.clicking = std::make_shared<SolidFields>(QVector<QColor>{kClickColors[0]});
    else if (pattern == QLatin1String("quarters"))
        wishes.picture = std::make_shared<SolidFields>(kQuarters);
    else if (parser.isSet(QStringLiteral("solid")) && solid.isValid())
        wishes.picture = std::make_shared<SolidFields>(QVector<QColor>{solid});
    else if (pattern == QLatin1String("drift") && !parser.isSet(QStringLiteral("solid")))
        wishes.picture = std::make_shared<DriftingLights>();
    wishes.geometry = parseGeometry(parser.value(QStringLiteral("geometry")));
    wishes.framesPerSecond = parser.value(QStringLiteral("fps")).toInt();
    wishes.clickMs = parser.value(QStringLiteral("interval")).toInt();
    if (!wishes.picture || wishes.framesPerSecond < 1 || wishes.clickMs < 1 ||
        (parser.isSet(QStringLiteral("geometry")) && wishes.geometry.isEmpty()))
        parser.showHelp(2);
    return wishes;
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication app(argc, argv);
    const Wishes wishes = parse(app);

    PictureWindow window(wishes.picture);
    if (wishes.geometry.isEmpty()) {
        window.setGeometry(QGuiApplication::primaryScreen()->geometry());
        window.setCursor(Qt::BlankCursor);
        window.showFullScreen();
    } else {
        window.setFlag(Qt::BypassWindowManagerHint); // exactly there, whatever a window manager thinks
        window.setGeometry(wishes.geometry);
        window.show();
    }

    QTimer click;
    bool second = false;
    QObject::connect(&click, &QTimer::timeout, &window, [&] {
        const QColor& color = kClickColors[second ? 0 : 1];
        wishes.clicking->setColor(color);
        if (!window.paintNow())
            return;
        second = !second;
        tell("change", color);
    });
    QObject::connect(&window, &PictureWindow::shown, &window, [&] {
        QGuiApplication::sync();
        tell("shown", wishes.clicking ? kClickColors[0] : QColor(Qt::black));
        if (wishes.clicking)
            click.start(wishes.clickMs);
        else if (wishes.picture->moves())
            window.play(wishes.framesPerSecond);
    });
    return QGuiApplication::exec();
}
