#include "SimulatorApp.h"

#include "Scenery.h"
#include "SerialPortsFile.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <algorithm>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kDrawMs = 40;
constexpr int kPrintMs = 1000;
constexpr int kDrainMs = 300;   // for what the line still carries when the program has ended
constexpr int kSampledLeds = 8; // colours in a line of text
constexpr int kFewestChanges = 5;
constexpr quint16 kViewerPort = 65330;
const QString kScenery = QStringLiteral("desktop"); // as lines name it

void print(FILE* stream, const QString& line)
{
    std::fputs(qPrintable(line + QLatin1Char('\n')), stream);
    std::fflush(stream);
}

QString sample(const QVector<LV_RGB>& colors)
{
    QStringList texts;
    const int count = std::min(colors.size(), kSampledLeds);
    for (int i = 0; i < count; ++i) {
        const LV_RGB& color = colors[i * colors.size() / count];
        texts += QStringLiteral("#%1").arg(color.red << 16 | color.green << 8 | color.blue, 6, 16,
                                           QLatin1Char('0'));
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

SimulatorApp::SimulatorApp(const SimulatorOptions& options, Scenery* scenery)
    : m_options(options)
    , m_scenery(scenery)
{
    if (m_scenery)
        connect(m_scenery, &Scenery::happened, this, [this](const QString& what) { say(kScenery, what); });
    for (const StripSimulator::Options& strip : m_options.strips)
        addStrip(strip);
    connect(&m_guest, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &SimulatorApp::onGuestFinished);
}

SimulatorApp::~SimulatorApp()
{
    m_strips.clear(); // plugs out
    m_screen.reset();
    for (const QString& line : m_summary)
        print(m_options.jsonFile == QLatin1String("-") ? stderr : stdout, line);
}

bool SimulatorApp::start()
{
    m_clock.start();
    if (!m_log.open(m_options.jsonFile)) {
        print(stderr, QStringLiteral("Can't write %1").arg(m_options.jsonFile));
        return false;
    }
    for (const auto& strip : m_strips) {
        if (!strip->device->plugIn()) {
            print(stderr, QStringLiteral("No list of ports: name one with --ports or LUMIVAR_SERIAL_PORTS"));
            return false;
        }
    }
    if (!m_options.guest.isEmpty() && !launchGuest()) {
        print(stderr, QStringLiteral("Can't start %1").arg(m_options.guest.first()));
        return false;
    }

    const bool jsonOnOutput = m_options.jsonFile == QLatin1String("-");
    if (Terminal::isOutput() && !m_options.plain && !jsonOnOutput) {
        QString map = m_options.mapFile;
        if (map.isEmpty())
            map = QStringLiteral("%1/controler_config/%2.json")
                      .arg(QCoreApplication::applicationDirPath(),
                           QString::fromLatin1(m_options.strips.first().model));
        m_screen = std::make_unique<StripScreen>(LedMap::load(map));
        connect(&m_tick, &QTimer::timeout, this, &SimulatorApp::draw);
        m_tick.start(kDrawMs);
    } else if (!jsonOnOutput) {
        connect(&m_tick, &QTimer::timeout, this, &SimulatorApp::printLines);
        m_tick.start(kPrintMs);
    }
    watchInput();
    for (const TimedCommand& step : m_options.script)
        QTimer::singleShot(step.atMs, this, [this, step] { execute(step.command); });
    if (m_options.patienceMs >= 0)
        QTimer::singleShot(m_options.patienceMs, this, &SimulatorApp::onNoFrame);
    return true;
}

bool SimulatorApp::launchGuest()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LUMIVAR_SERIAL_PORTS"),
                       SerialPortsFile(m_options.strips.first().portsFile).path());
    if (m_scenery)
        m_scenery->addTo(environment);
    m_guest.setProcessEnvironment(environment);
    return m_guest.launch(m_options.guest, m_options.guestLog);
}

void SimulatorApp::restartGuest()
{
    if (m_quitting || m_guest.state() == QProcess::NotRunning)
        return;
    m_restarting = true;
    m_guest.end();
}

void SimulatorApp::addStrip(const StripSimulator::Options& options)
{
    m_strips.push_back(std::make_unique<Strip>());
    Strip* strip = m_strips.back().get();
    strip->device = std::make_unique<StripSimulator>(options);
    strip->label = QString::fromLatin1(options.model);
    if (!options.serial.isEmpty())
        strip->label += QLatin1Char(':') + QString::fromLatin1(options.serial.toHex().toUpper());
    const StripSimulator* device = strip->device.get();
    connect(device, &StripSimulator::plugged, this, [this, strip](const QString& location) {
        say(strip->label, QStringLiteral("plugged in at ") + location);
    });
    connect(device, &StripSimulator::unplugged, this,
            [this, strip] { say(strip->label, QStringLiteral("unplugged")); });
    connect(device, &StripSimulator::probed, this,
            [this, strip] { say(strip->label, QStringLiteral("probed")); });
    connect(device, &StripSimulator::frameReceived, this,
            [this, strip](const StripFrame& frame) { onFrame(*strip, frame); });
}

void SimulatorApp::watchInput()
{
    if (::fcntl(STDIN_FILENO, F_GETFD) < 0)
        return;
    m_input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(m_input, &QSocketNotifier::activated, this, &SimulatorApp::readInput);
}

void SimulatorApp::readInput()
{
    char buffer[256];
    const auto got = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (got <= 0) {
        m_input->setEnabled(false); // the input has ended, the strips go on
        return;
    }
    m_line += QByteArray(buffer, static_cast<int>(got));
    if (m_screen && Terminal::isInput()) {
        for (const char key : qAsConst(m_line))
            onKey(key);
        m_line.clear();
        return;
    }
    for (int end = m_line.indexOf('\n'); end >= 0; end = m_line.indexOf('\n')) {
        execute(QString::fromUtf8(m_line.left(end)).trimmed());
        m_line.remove(0, end + 1);
    }
}

void SimulatorApp::onKey(char key)
{
    const bool plugged = m_strips.front()->device->isPlugged();
    if (key == 'b')
        execute(QStringLiteral("button"));
    else if (key == 'u')
        execute(plugged ? QStringLiteral("unplug") : QStringLiteral("plug"));
    else if (key == 'r')
        execute(QStringLiteral("restart"));
    else if (key == 'q' || key == '\x04')
        execute(QStringLiteral("quit"));
    else if (m_scenery && !m_scenery->commandOf(key).isEmpty())
        execute(m_scenery->commandOf(key));
}

void SimulatorApp::execute(const QString& command)
{
    const QString verb = command.section(QLatin1Char(' '), 0, 0);
    const QString number = command.section(QLatin1Char(' '), 1);
    if (verb == QLatin1String("quit"))
        return quit();
    if (verb == QLatin1String("restart"))
        return restartGuest();
    if (m_scenery && m_scenery->execute(command))
        return;
    for (size_t i = 0; i < m_strips.size(); ++i) {
        if (number.isEmpty() || number.toUInt() == i)
            apply(verb, *m_strips[i]);
    }
}

void SimulatorApp::apply(const QString& verb, Strip& strip)
{
    if (verb == QLatin1String("button") && strip.device->pressButton())
        say(strip.label, QStringLiteral("button pressed"));
    else if (verb == QLatin1String("unplug"))
        strip.device->unplug();
    else if (verb == QLatin1String("plug"))
        strip.device->plugIn();
    else
        say(strip.label, QStringLiteral("can't do \"%1\"").arg(verb));
}

void SimulatorApp::onFrame(Strip& strip, const StripFrame& frame)
{
    if (!m_sawFrame && m_options.quitAfterMs >= 0)
        QTimer::singleShot(m_options.quitAfterMs, this, &SimulatorApp::quit);
    m_sawFrame = true;
    const bool first = strip.meter.frames() == 0;
    const bool wasBlack = strip.meter.isBlack();
    strip.meter.add(frame);
    m_log.frame(strip.label, frame);
    if (m_options.viewer && &strip == m_strips.front().get())
        sendToViewer(strip.device->shownColors());
    if (first || wasBlack != strip.meter.isBlack())
        say(strip.label, strip.meter.isBlack() ? QStringLiteral("black") : QStringLiteral("lit"));
}

/// Three bytes a LED; nobody may listen.
void SimulatorApp::sendToViewer(const QVector<LV_RGB>& colors)
{
    m_viewer.writeDatagram(reinterpret_cast<const char*>(colors.constData()), 3 * colors.size(),
                           QHostAddress::LocalHost, kViewerPort);
}

void SimulatorApp::onGuestFinished(int exitCode, QProcess::ExitStatus status)
{
    const bool crashed = status == QProcess::CrashExit;
    if (m_restarting && !m_quitting && !crashed && exitCode == 0) {
        m_restarting = false;
        say(QStringLiteral("program"), QStringLiteral("is started again"));
        if (m_guest.launchAgain())
            return;
    }
    const QString how = crashed ? QStringLiteral("by a crash") : QStringLiteral("with %1").arg(exitCode);
    if (!m_quitting || crashed || exitCode != 0)
        m_summary += QStringLiteral("The program ended ") + how;
    if (crashed || exitCode != 0 || (m_options.check && !m_quitting))
        m_exitCode = 1;
    m_quitting = true;
    QTimer::singleShot(kDrainMs, this, &SimulatorApp::leave);
}

void SimulatorApp::onNoFrame()
{
    if (m_sawFrame)
        return;
    failIf(true, QStringLiteral("No frame came within %1 s").arg(m_options.patienceMs / 1000.0));
    quit();
}

void SimulatorApp::draw()
{
    QVector<StripScreen::View> views;
    for (const auto& strip : m_strips) {
        StripScreen::View view;
        view.label = strip->label;
        view.colors = strip->device->shownColors();
        if (strip->device->isPlugged()) {
            view.facts += QStringLiteral("%1 frames/s")
                              .arg(strip->meter.framesPerSecond(StripSimulator::nowMs()), 0, 'f', 1);
            view.facts += strip->meter.frames() == 0 ? QStringLiteral("waiting for the program")
                                                     : QStringLiteral("%1 LEDs").arg(view.colors.size());
        } else {
            view.colors.fill(LV_RGB{}); // no power
            view.facts += QStringLiteral("unplugged");
        }
        views.append(view);
    }
    StripScreen::Surroundings around;
    if (m_scenery)
        around = {m_scenery->picture(), m_scenery->facts(), m_scenery->keys()};
    m_screen->draw(views, around);
}

void SimulatorApp::printLines()
{
    for (const auto& strip : m_strips) {
        if (!strip->device->isPlugged())
            continue;
        const QVector<LV_RGB> colors = strip->device->shownColors();
        const QString line = QStringLiteral("%1 frames/s  %2 LEDs  ")
                                 .arg(strip->meter.framesPerSecond(StripSimulator::nowMs()), 0, 'f', 1)
                                 .arg(colors.size());
        print(stdout, QStringLiteral("%1 s  %2  %3%4")
                          .arg(static_cast<double>(m_clock.elapsed()) / 1000, 6, 'f', 1)
                          .arg(strip->label, line, sample(colors)));
    }
}

/// Tells an event in the log and, where lines are printed, in a line.
void SimulatorApp::say(const QString& who, const QString& what)
{
    m_log.event(who, what);
    if (!m_screen && m_options.jsonFile != QLatin1String("-"))
        print(stdout, QStringLiteral("%1 s  %2  %3")
                          .arg(static_cast<double>(m_clock.elapsed()) / 1000, 6, 'f', 1)
                          .arg(who, what));
}

/// The program ends first, so that the strips can show how it leaves them.
void SimulatorApp::quit()
{
    if (m_quitting)
        return;
    m_quitting = true;
    if (m_guest.state() == QProcess::NotRunning)
        leave();
    else
        m_guest.end();
}

void SimulatorApp::leave()
{
    m_tick.stop();
    for (const auto& strip : m_strips) {
        const StripCounters counters = strip->device->counters();
        const bool black = strip->meter.isBlack();
        m_summary += QStringLiteral("%1: %2 frames, %3 of them new, %4 bytes, %5 of them garbage, "
                                    "longest gap %6 ms, %7 at the end")
                         .arg(strip->label)
                         .arg(counters.frames)
                         .arg(strip->meter.changes())
                         .arg(counters.bytes)
                         .arg(counters.garbageBytes)
                         .arg(counters.longestGapMs, 0, 'f', 0)
                         .arg(black ? QStringLiteral("black") : QStringLiteral("lit"));
        if (!m_options.check)
            continue;
        failIf(strip->meter.changes() < kFewestChanges,
               strip->label + QStringLiteral(": the picture stood still"));
        failIf(!m_options.guest.isEmpty() && !black,
               strip->label + QStringLiteral(": the strip was left lit"));
    }
    QCoreApplication::exit(m_exitCode);
}

void SimulatorApp::failIf(bool failed, const QString& why)
{
    if (!failed)
        return;
    m_exitCode = 1;
    m_summary += why;
}
