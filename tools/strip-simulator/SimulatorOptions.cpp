#include "SimulatorOptions.h"

#include <QCommandLineParser>

namespace {

const QStringList kReplyModes{QStringLiteral("normal"),  QStringLiteral("silent"),
                              QStringLiteral("garbage"), QStringLiteral("two-chunks"),
                              QStringLiteral("hang-up"), QStringLiteral("bytes"),
                              QStringLiteral("endless")};

/// "250ms", "3s" or "3"; negative when it is no time.
int parseMs(QString text)
{
    double factor = 1000;
    if (text.endsWith(QLatin1String("ms"))) {
        factor = 1;
        text.chop(2);
    } else if (text.endsWith(QLatin1Char('s'))) {
        text.chop(1);
    }
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && value >= 0 ? static_cast<int>(value * factor) : -1;
}

bool parseScript(const QString& text, QVector<TimedCommand>& script)
{
    for (const QString& step : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const int atMs = parseMs(step.section(QLatin1Char(':'), 0, 0).trimmed());
        const QString command = step.section(QLatin1Char(':'), 1).trimmed();
        if (atMs < 0 || command.isEmpty())
            return false;
        script.append({atMs, command});
    }
    return true;
}

/// The serial with the strip's number added to its last byte.
QByteArray serialOf(const QByteArray& base, int strip)
{
    QByteArray serial = base;
    if (!serial.isEmpty())
        serial[serial.size() - 1] = static_cast<char>(serial.back() + strip);
    return serial;
}

} // namespace

void SimulatorOptions::addTo(QCommandLineParser& parser)
{
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.addHelpOption();
    const auto add = [&parser](const char* name, const char* description, const char* value = "",
                               const char* fallback = "") {
        parser.addOption(QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(description),
                                            QString::fromLatin1(value), QString::fromLatin1(fallback)));
    };
    add("strips", "How many strips; names and serials count up.", "n", "1");
    add("model", "Model code of the reply.", "code", "LV0127");
    add("serial", "Serial bytes of the reply, hexadecimal; empty for a reply without one.", "hex",
        "01020304");
    add("name", "Name of the serial port, without its number.", "name", "ttySIM");
    add("description", "Description of the serial port.", "text", "USB-SERIAL CH340");
    add("ports", "The list of ports, by default the file named by LUMIVAR_SERIAL_PORTS.", "file");
    add("leds", "LEDs of the strip; by default as many as a frame has.", "n", "0");
    add("rate", "Bytes a second that the line carries; 11520 is a real line, 0 has no limit.", "n", "11520");
    add("reply", "normal, silent, garbage, two-chunks, hang-up, bytes or endless.", "mode", "normal");
    add("reply-delay", "Milliseconds from probe to reply.", "ms", "0");
    add("chunk-gap", "Milliseconds between the pieces of a reply that comes in pieces.", "ms", "5");
    add("hang-up-after", "Bytes after which the line goes dead.", "n", "0");
    add("map", "LED positions, by default controler_config/<model>.json beside this program.", "file");
    add("plain", "A line of text every second, also in a terminal.");
    add("viewer", "Send the first strip's colours on to light-viewer, as the virtual device does.");
    add("json", "Write every frame and event as a line of JSON.", "file|-");
    add("script", "Timed commands, such as \"3s:button,5s:unplug,7s:plug 0,9s:quit\".", "steps");
    add("quit-after", "Quit this long after the first frame.", "time");
    add("patience", "Quit when no frame comes within this time.", "time");
    add("check", "Fail unless every strip's picture changed and all ended black.");
    add("log", "Where the output of the started program goes.", "file");
    parser.addPositionalArgument(QStringLiteral("program"),
                                 QStringLiteral("Started with the list of ports and ended before quitting."),
                                 QStringLiteral("[-- program [arguments]]"));
}

std::optional<SimulatorOptions> SimulatorOptions::of(const QCommandLineParser& parser, QString& error)
{
    const auto text = [&parser](const char* name) { return parser.value(QLatin1String(name)); };
    const auto refuse = [&error, &text](const char* name) {
        error = QStringLiteral("--%1 does not understand \"%2\"").arg(QLatin1String(name), text(name));
        return std::nullopt;
    };
    for (const char* name : {"strips", "leds", "rate", "reply-delay", "chunk-gap", "hang-up-after"}) {
        bool ok = false;
        if (text(name).toInt(&ok) < 0 || !ok)
            return refuse(name);
    }

    StripSimulator::Options strip;
    strip.model = text("model").toLatin1();
    strip.serial = QByteArray::fromHex(text("serial").toLatin1());
    strip.description = text("description");
    strip.portsFile = text("ports");
    strip.ledCount = text("leds").toInt();
    strip.bytesPerSecond = text("rate").toInt();
    strip.replyDelayMs = text("reply-delay").toInt();
    strip.chunkGapMs = text("chunk-gap").toInt();
    strip.hangUpAfterBytes = text("hang-up-after").toInt();
    strip.keptFrames = 1;
    if (!kReplyModes.contains(text("reply")))
        return refuse("reply");
    strip.replyMode = static_cast<StripSimulator::ReplyMode>(kReplyModes.indexOf(text("reply")));

    SimulatorOptions options;
    for (int i = 0; i < text("strips").toInt(); ++i) {
        options.strips.append(strip);
        options.strips.last().portName = text("name") + QString::number(i);
        options.strips.last().serial = serialOf(strip.serial, i);
    }
    if (options.strips.isEmpty())
        return refuse("strips");
    options.mapFile = text("map");
    options.jsonFile = text("json");
    options.plain = parser.isSet(QStringLiteral("plain"));
    options.check = parser.isSet(QStringLiteral("check"));
    options.viewer = parser.isSet(QStringLiteral("viewer"));
    options.guest = parser.positionalArguments();
    options.guestLog = text("log");
    if (!parseScript(text("script"), options.script))
        return refuse("script");
    options.quitAfterMs = parseMs(text("quit-after"));
    if (options.quitAfterMs < 0 && parser.isSet(QStringLiteral("quit-after")))
        return refuse("quit-after");
    options.patienceMs = parseMs(text("patience"));
    if (options.patienceMs < 0 && parser.isSet(QStringLiteral("patience")))
        return refuse("patience");
    return options;
}
