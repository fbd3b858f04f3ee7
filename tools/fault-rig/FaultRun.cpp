#include "FaultRun.h"

#include "StoredStrip.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QThread>
#include <sys/mman.h>

namespace {

constexpr int kStartMs = 6000;
constexpr int kLightMs = 8000; ///< a strip that was lost is asked again within five seconds
constexpr int kEndMs = 8000;
constexpr int kStepMs = 120;
constexpr int kStoreMs = 1300; ///< what was chosen is on the disk by then
constexpr int kLeds = 60;
constexpr double kBrightness = 1.0, kBrightnessStep = 0.1;
const QString kStrip = "LV0127:01020304";
const QString kAway = "LV0127:0A0B0C0D"; ///< a strip that is not plugged in
const QString kEffect = "id.effect.singleColor.singleColor1";

bool isObject(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).isObject();
}

/// What the next start would take for the content.
QJsonObject stored(const ProgramUnderTest& program, const QString& name)
{
    const QByteArray text = ProgramUnderTest::readFile(program.configFile(name));
    return isObject(text) ? QJsonDocument::fromJson(text).object() : program.readConfig(name + ".bak");
}

} // namespace

FaultRun::FaultRun(const VirtualDisplay* display)
    : m_display(display)
    , m_memory(nullptr, [](void* memory) { munmap(memory, sizeof(FaultCounts)); })
{
    if (display)
        m_program.setDisplay(display->name());
    m_program.environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // nobody else's desktop
    m_program.environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    m_program.environment.insert("PULSE_SERVER", m_program.path("no-sound"));
    prepareStores();
    StripSimulator::Options options;
    options.portsFile = m_program.portsFile();
    options.bytesPerSecond = 11520;
    m_strip = std::make_unique<StripSimulator>(options);
    if (!m_strip->plugIn())
        qFatal("no strip can be plugged in");

    const QString counts = m_program.path("counts");
    ProgramUnderTest::writeFile(counts, QByteArray(sizeof(FaultCounts), '\0'));
    QFile file(counts);
    if (file.open(QIODevice::ReadWrite))
        m_memory.reset(
            mmap(nullptr, sizeof(FaultCounts), PROT_READ | PROT_WRITE, MAP_SHARED, file.handle(), 0));
    if (m_memory.get() == nullptr || m_memory.get() == MAP_FAILED)
        qFatal("no memory can be shared");
    m_counts = static_cast<FaultCounts*>(m_memory.get());
}

void FaultRun::prepareStores() const
{
    m_program.writeConfig("controllers.json", {{kStrip, storedStrip(kEffect, kLeds, kBrightness)},
                                               {kAway, storedStrip(kEffect, kLeds)}});
    m_program.writeConfig("app.json", {{"mine", 1}, {"runtime.closeButtonAction", "Exit"}});
    m_program.writeConfig("global.json", {{"mine", 1}});
    m_program.writeConfig("effects/" + kEffect + ".json", {{kAway, QJsonObject{{"mine", 1}}}});
}

void FaultRun::fail(FaultKind kind, long first, long last)
{
    m_counts->first[kind] = first;
    m_counts->last[kind] = last;
}

void FaultRun::start(int leastBytes)
{
    const QVector<std::pair<QString, QString>> variables = {
        {"LD_PRELOAD", FAULT_LIBRARY},
        {"LUMIVAR_FAULT_COUNTS", m_program.path("counts")},
        {"LUMIVAR_FAULT_STORES", m_program.configFile({}).chopped(1)},
        {"LUMIVAR_FAULT_BYTES", QString::number(leastBytes)},
        {"ASAN_OPTIONS", "detect_leaks=0:verify_asan_link_order=0:allocator_may_return_null=1"}};
    for (const auto& [name, value] : variables)
        m_program.environment.insert(name, value);
    m_program.start();
    for (const auto& [name, value] : variables)
        m_program.environment.remove(name);
}

void FaultRun::use()
{
    const auto isLit = [this] { return m_strip->isLit(); };
    waitFor(isLit, kStartMs);
    if (m_display) {
        pressKeys({"ctrl+alt+shift+Down", "ctrl+alt+shift+Down", "ctrl+alt+shift+Up"});
        for (const char* direction : {"Right", "Right", "Right", "Left", "Left", "Left"}) // groups of effects
            pressKeys({QStringLiteral("ctrl+alt+shift+") + direction});
        pressKeys({"alt+s"}); // the settings
        waitFor([] { return false; }, 3 * kStepMs);
        pressKeys({"Tab", "d"});     // another language
        pressKeys({"Tab", "space"}); // and the next switch
        pressKeys({"Escape"});
        for (int i = 0; i < 2; ++i)
            pressKeys({"ctrl+alt+shift+F10"}); // all lights off, and on
    }
    pressButton();
    waitFor([] { return false; }, kStoreMs);
    pressButton();
    startAgain();
    m_staysDark = !waitFor(isLit, kLightMs);
    end();
}

QStringList FaultRun::judge()
{
    QStringList finds;
    const QProcess& process = m_program.process();
    if (m_isHanging)
        finds += "does not end";
    else if (process.exitStatus() == QProcess::CrashExit)
        judgeCrash(finds);
    else if (process.exitCode() != 0 || m_endsUnasked) {
        m_ending = QString("code %1: ").arg(process.exitCode()) + lastMessage();
        if (lastMessage().isEmpty())
            finds += "ends without a message";
    }
    judgeStores(finds);
    const bool takesNothing = m_counts->last[FaultLineWrite] > calls(FaultLineWrite);
    if (!waitFor([this] { return !m_strip->isLit(); }, 1000) && m_strip->isLit() && !takesNothing)
        finds += "the strip is lit after the end";
    else if (m_staysDark && m_ending.isEmpty() && !m_isHanging)
        m_ending = "dark: " + lastMessage();
    return finds;
}

/// Without memory the toolkit's painting and others crash instead of saying so; the handler's words have to
/// do.
void FaultRun::judgeCrash(QStringList& finds)
{
    const QString said = m_program.standardError();
    m_ending = QString("signal %1").arg(m_program.process().exitCode());
    const bool isHandled = said.contains("Appeared An unknown exception occurred");
    if (said.contains("Out of memory"))
        m_ending += ": Out of memory";
    else if (isHandled && failed(FaultMemory) > 0)
        m_ending += ": handled";
    else if (!isHandled && !lastMessage().isEmpty()) // the toolkit's, before there is a handler
        m_ending += ": " + lastMessage();
    else
        finds += isHandled ? "crashes" : "crashes without a message";
}

QString FaultRun::report() const
{
    QString text = m_program.standardError();
    const QDir dumps(m_program.configFile("dumps"));
    for (const QString& name : dumps.entryList(QDir::Files))
        text += QString::fromUtf8(ProgramUnderTest::readFile(dumps.filePath(name)));
    return text;
}

bool FaultRun::waitFor(const std::function<bool()>& condition, int ms)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (!condition()) {
        if (elapsed.hasExpired(ms))
            return false;
        if (m_program.isRunning())
            m_program.process().waitForFinished(10); // or nobody notices that it ends
        else
            QThread::msleep(10);
        if (!m_program.isRunning() && elapsed.hasExpired(1000))
            return condition();
    }
    return true;
}

void FaultRun::pressKeys(const QStringList& keys)
{
    if (!m_program.isRunning())
        return;
    m_display->run("xdotool", QStringList{"key"} + keys);
    waitFor([] { return false; }, kStepMs);
}

void FaultRun::pressButton()
{
    if (m_program.isRunning())
        m_strip->pressButton();
    waitFor([] { return false; }, kStepMs);
}

/// A second start wakes the first one up, unless that has ended.
void FaultRun::startAgain()
{
    if (!m_program.isRunning())
        return;
    const auto second = m_program.startAnother();
    if (!second->waitForFinished(kEndMs / 3)) { // took over from one that has ended, or that has no lock
        second->terminate();
        second->waitForFinished(kEndMs);
    }
}

void FaultRun::end()
{
    QProcess& process = m_program.process();
    m_endsUnasked = process.state() == QProcess::NotRunning;
    process.terminate();
    m_isHanging = !m_endsUnasked && !process.waitForFinished(kEndMs);
    if (!m_isHanging)
        return;
    QProcess debugger; // tells where it stands, if there is one
    debugger.setStandardOutputFile(m_program.path("stderr"), QIODevice::Append);
    debugger.start("gdb",
                   {"-batch", "-p", QString::number(process.processId()), "-ex", "thread apply all bt"});
    debugger.waitForFinished(kEndMs);
    process.kill();
    process.waitForFinished();
}

void FaultRun::judgeStores(QStringList& finds) const
{
    const QDir folder(m_program.configFile({}));
    for (const QString& name : folder.entryList({"*.corrupt-*"}, QDir::Files))
        finds += name + " was set aside";
    const QString effect = "effects/" + kEffect + ".json";
    for (const QString& name :
         {QString("app.json"), QString("global.json"), QString("controllers.json"), effect}) {
        for (const QString& file : {name, name + ".bak"}) {
            const QString path = m_program.configFile(file);
            if (QFile::exists(path) && !isObject(ProgramUnderTest::readFile(path)))
                finds += file + " is broken";
        }
    }
    for (const char* name : {"app.json", "global.json"}) {
        if (stored(m_program, name)["mine"] != 1)
            finds += QString("%1 has lost what the user stored").arg(name);
    }
    if (stored(m_program, effect)[kAway].toObject()["mine"] != 1)
        finds += effect + " has lost what the user stored";
    const QJsonObject controllers = stored(m_program, "controllers.json");
    const QJsonObject away = storedStrip(kEffect, kLeds);
    if (controllers[kAway] != away)
        finds += "controllers.json has lost a strip that was away";
    judgeStrip(controllers[kStrip].toObject(), finds);
}

/// The old choice or the new one of what the user has chosen, everything else as it was.
void FaultRun::judgeStrip(const QJsonObject& strip, QStringList& finds) const
{
    const double steps = (kBrightness - strip["brightness"].toDouble(-1)) / kBrightnessStep;
    constexpr double kClose = 0.01, kMostSteps = 2.5;
    const bool isChosen = qAbs(steps - qRound(steps)) < kClose && steps > -kClose && steps < kMostSteps;
    if (!isChosen)
        finds += QString("brightness %1 is nobody's choice").arg(strip["brightness"].toDouble(-1));
    if (strip["nbLeds"] != kLeds || !strip["enable"].isBool() ||
        !strip["subMode"].toString().startsWith(strip["workMode"].toString() + '.'))
        finds += "controllers.json has lost what was chosen for the strip";
}

QString FaultRun::lastMessage() const
{
    const QStringList lines =
        (m_program.standardError() + m_program.logText()).split('\n', Qt::SkipEmptyParts);
    static const QRegularExpression said(
        "( WARN | ERROR | FATAL |^[^\\d\\s])(?!.*(unknown exception|to write dump))(.*)");
    for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
        if (const auto match = said.match(*line); match.hasMatch())
            return match.captured().simplified();
    }
    return {};
}
