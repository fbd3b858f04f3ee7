#include "DeviceLife.h"

#include "Seams.h"
#include "VirtualTime.h"
#include "app/LumivarApp.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/ProbeDialogue.h"
#include "effects/IEffectWorker.h"
#include "support/capture/IDeskCapture.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/ControllerConfigDialog.h"
#include "ui/HomePage.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QTimer>
#include <QToolButton>
#include <unordered_set>

extern quintptr Q_CORE_EXPORT qtHookData[]; // the toolkit's own way to follow its objects

namespace {

constexpr int kStrips = 3;
constexpr int kModelLeds = 8;
constexpr int kRestMs =
    80000; ///< within which all comes to rest: the longest pause between two attempts to save
constexpr int kLookMs = 250;
constexpr int kSettledMs = 300; ///< a device that has been there for so long hears its button
const QString kSingleColor = "id.effect.singleColor.singleColor1";
const QString kFlowing = "id.effect.colorful.flowingEffect";
const QString kGone = "id.gone.effect"; ///< of a plug-in that is missing
const QVector<QString> kEffects{kSingleColor,
                                "id.effect.marquee.marquee",
                                kFlowing,
                                "id.effect.colorful.moodShadow",
                                "id.effect.screenSync.fullScreen",
                                "id.effect.dynamicMusic.peakValues_1"};

struct KindOfStep
{
    const char* name;
    int weight; ///< how often it comes
};
constexpr KindOfStep kKinds[] = {
    {"plug", 16},        {"unplug", 10}, {"answer", 4}, {"press", 8},      {"noise", 2},
    {"effect", 8},       {"group", 3},   {"colour", 3}, {"brightness", 5}, {"light", 5},
    {"direction", 2},    {"name", 2},    {"count", 3},  {"allLights", 3},  {"allTogether", 3},
    {"buttonAction", 1}, {"gamma", 1},   {"sleep", 2},  {"lock", 2},       {"diskFull", 2},
    {"display", 2},      {"jam", 1},     {"home", 2},   {"wait", 12},      {"restart", 1}};
static_assert(sizeof kKinds / sizeof *kKinds == Step::Kinds);

std::unordered_set<QObject*> s_objects; ///< all that live

template <typename Class>
QList<Class*> alive()
{
    QList<Class*> found;
    for (QObject* each : s_objects) {
        if (auto* object = each->isWidgetType() ? nullptr : qobject_cast<Class*>(each))
            found += object;
    }
    return found;
}

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

template <typename Setting>
QJsonValue appConfig(const Setting& setting)
{
    const QJsonValue stored = config()->appConfig(setting.key);
    return stored.isUndefined() || stored.isNull() ? QJsonValue(setting.fallback) : stored;
}

std::uint64_t next(std::uint64_t& state)
{
    state += 0x9E3779B97F4A7C15;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

bool isSame(const QJsonValue& a, const QJsonValue& b)
{
    return a == b || (a.isDouble() && b.isDouble() && qAbs(a.toDouble() - b.toDouble()) < 1e-6);
}

/// Which of the choices the store does not have.
QString difference(const QString& id, const QJsonObject& choices, const QJsonObject& stored)
{
    for (auto choice = choices.begin(); choice != choices.end(); ++choice) {
        const QJsonValue found = stored.value(choice.key());
        if (!isSame(found, choice.value()))
            return QString("%1: the user's %2 is %3, stored is %4")
                .arg(id, choice.key(), choice.value().toVariant().toString(), found.toVariant().toString());
    }
    return {};
}

} // namespace

QString Step::toString() const
{
    return QStringLiteral("%1(%2,%3)").arg(kKinds[kind].name).arg(strip).arg(value);
}

QString toString(const Steps& steps)
{
    QStringList all;
    for (const Step& step : steps)
        all += step.toString();
    return all.join(' ');
}

Steps stepsFrom(const QString& text)
{
    Steps steps;
    for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
        const QStringList parts = word.chopped(1).replace('(', ',').split(',');
        const auto isCalledSo = [&](const KindOfStep& kind) { return parts.value(0) == kind.name; };
        const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds), isCalledSo);
        if (kind == std::end(kKinds) || parts.size() != 3)
            return {};
        steps += Step{Step::Kind(kind - kKinds), parts[1].toInt(), parts[2].toInt()};
    }
    return steps;
}

Steps randomSteps(std::uint64_t seed)
{
    int sum = 0;
    for (const KindOfStep& kind : kKinds)
        sum += kind.weight;
    const int count = 4 + int(next(seed) % 13);
    Steps steps;
    for (int i = 0; i < count; ++i) {
        int kind = 0;
        for (int at = int(next(seed) % std::uint64_t(sum)); at >= kKinds[kind].weight; ++kind)
            at -= kKinds[kind].weight;
        if (i == 0)
            kind = Step::Plug;
        if (kind == Step::Restart && next(seed) % 16 != 0) // takes as long as a dozen sequences
            kind = Step::Wait;
        const int strip = int(next(seed) % kStrips);
        steps += Step{Step::Kind(kind), strip, int(next(seed) % 60)};
    }
    return steps;
}

DeviceLife::DeviceLife()
{
    qtHookData[3] = quintptr(+[](QObject* object) { s_objects.insert(object); });
    qtHookData[4] = quintptr(+[](QObject* object) { s_objects.erase(object); });
    for (int i = 0; i < kStrips; ++i)
        m_strips.push_back(std::make_unique<SimulatedStrip>(i));
    begin();
    start();
    run(2000);
    m_baseThreads = VirtualTime::threadCount();
}

DeviceLife::~DeviceLife()
{
    m_app.reset();
}

QString DeviceLife::live(const Steps& steps)
{
    begin();
    m_wrong.clear();
    for (const Step& step : steps) {
        act(step);
        run(step.value % 2 == 0 ? 0 : 40);
        if (m_wrong.isEmpty())
            m_wrong = wrong();
        if (!m_wrong.isEmpty())
            return QStringLiteral("%1, after %2").arg(m_wrong, step.toString());
    }
    return end();
}

void DeviceLife::begin()
{
    config()->reset();
    config()->setAppConfig(ConfigKeys::kDevUpdateIntervalMs.key, 400); // fewer pictures, more sequences
    m_choices.clear();
    m_excused.clear();
    for (const auto& strip : m_strips)
        strip->answer(SimulatedStrip::Prompt);
    // One whose effect went with its plug-in; before that another was the last of the group that stands in.
    const QString id = m_strips.back()->id();
    choose(id, "workMode", "id.gone");
    choose(id, "subMode", kGone);
    choose(id, "enable", true);
    choose(id, "brightness", 0.8);
    choose(id, "nbLeds", kModelLeds);
    config()->controllerJsonObj(id) = m_choices[id].device;
    config()->saveControllerJsonObj(id);
    m_choices[id].effect["id.effect.colorful"] = kFlowing;
    config()->setGlobalValue(ConfigKeys::lastBindingKey(id, "id.effect.colorful"), kFlowing);
}

void DeviceLife::start()
{
    m_app = std::make_unique<LumivarApp>(nullptr);
    qApp->setStyleSheet({}); // nobody looks, and it costs most of the time; the window follows
    app().mainWindow().hide();
}

HomePage& DeviceLife::home()
{
    return *app().mainWindow().homePage();
}

ControlPage& DeviceLife::page()
{
    return *app().mainWindow().controlPage();
}

QList<QString> DeviceLife::present()
{
    return app().deviceManager().controllerIds();
}

bool DeviceLife::isThere(const QString& id)
{
    return app().deviceManager().controller(id) != nullptr;
}

void DeviceLife::run(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    for (auto each = m_choices.begin(); each != m_choices.end(); ++each)
        each->seenForMs = isThere(each.key()) ? each->seenForMs + ms : 0;
}

void DeviceLife::choose(const QString& id, const char* key, const QJsonValue& value)
{
    m_choices[id].device[key] = value;
}

void DeviceLife::chooseEffect(const QString& id, const QString& effect)
{
    const QString group = effect.section('.', 0, -2);
    choose(id, "subMode", effect);
    choose(id, "workMode", group);
    m_choices[id].effect[group] = effect;
}

void DeviceLife::act(const Step& step)
{
    static constexpr int kToldMs[] = {0, 80, 800};
    SimulatedStrip& strip = *m_strips[std::size_t(step.strip)];
    m_choices[strip.id()]; // it is watched from now on
    const int value = step.value;
    const bool isEven = value % 2 == 0;
    switch (step.kind) {
    case Step::Plug: { // or it is told once more
        const QString port = strip.isPlugged()    ? strip.portName()
                             : value / 3 % 2 == 0 ? QString("ttyUSB%1").arg(step.strip)
                                                  : QString("ttyUSB1%1").arg(m_ports++ % 40);
        if (!strip.isPlugged())
            strip.plugIn(port);
        QTimer::singleShot(kToldMs[value % 3], [port] { SimulatedPorts::tellArrival(port); });
        return;
    }
    case Step::Unplug:
        m_excused.remove(&strip);
        return strip.unplug(kToldMs[value % 3]);
    case Step::Answer:
        return strip.answer(SimulatedStrip::Answer(value % 6),
                            22 + value / 2); // an end is seen after 30 to 40
    case Step::Noise:
        return strip.say(isEven ? QByteArray("\xff\x01\x02") : QByteArray("pressed"));
    case Step::Press:
        return press(strip);
    case Step::AllLights:
        for (const QString& each : present())
            choose(each, "enable", isEven);
        emit app().mainWindow().allStrapOnOff(isEven);
        return;
    case Step::ButtonAction:
        config()->setAppConfig(ConfigKeys::kPhyBtnSingleCtrlMode.key, value / 2 % 2 == 1);
        return config()->setAppConfig(ConfigKeys::kPhyBtnAction.key, value % 2);
    case Step::Gamma:
        return config()->setAppConfig(ConfigKeys::kGama.key, 1.0 + value % 3 * 0.4);
    case Step::Sleep:
        if (std::exchange(m_isAsleep, isEven) != isEven)
            isEven ? fallAsleep() : Seams::resume();
        return;
    case Step::Lock:
        return Seams::setScreenOff(m_isLocked = isEven);
    case Step::DiskFull:
        return VirtualTime::setDiskFull(m_isDiskFull = isEven);
    case Step::Display:
        return Seams::setDisplay(!isEven);
    case Step::Jam:
        if (strip.isPlugged() && isEven)
            m_excused.insert(&strip);
        return strip.jam(strip.isPlugged() && isEven);
    case Step::Home:
        return app().mainWindow().switchToHomePage();
    case Step::Wait: {
        static constexpr int kSpans[] = {20, 120, 700, 2500, 9000};
        return run(kSpans[value % 5]);
    }
    case Step::Restart:
        if (std::exchange(m_isAsleep, false))
            Seams::resume();
        m_app.reset();
        config()->save();
        m_wrong = wrongAfterRelease();
        return start();
    default:
        if (isThere(strip.id()))
            actOnPage(step, strip.id());
    }
}

void DeviceLife::press(SimulatedStrip& strip)
{
    const QString id = strip.id();
    const QList<QString> before = present();
    const bool isHeard =
        strip.isOpen() && !strip.isTalking() && before.contains(id) && m_choices[id].seenForMs >= kSettledMs;
    const bool isCertain = isHeard || !strip.isOpen();
    const bool wasOn = app().deviceManager().controlOptions(id).enable;
    const int action = appConfig(ConfigKeys::kPhyBtnAction).toInt();
    const bool isForAll = !appConfig(ConfigKeys::kPhyBtnSingleCtrlMode).toBool();
    QMap<QString, QString> effects;
    for (const QString& each : before) {
        if (isForAll || each == id)
            effects[each] = app().deviceManager().controlOptions(each).subMode;
    }
    strip.pressButton();
    run(30);
    for (const QString& each : effects.keys()) {
        const ControlOptions& options = app().deviceManager().controlOptions(each);
        if (!options.isValid()) // it went at the same moment, before or after
            m_choices[each].device.remove("enable");
        else if (isHeard && action == 0)
            choose(each, "enable", !wasOn);
        else if (isHeard || !isCertain) {
            choose(each, "enable", options.enable);
            if (options.subMode != effects[each])
                chooseEffect(each, options.subMode);
        }
    }
}

void DeviceLife::fallAsleep()
{
    Seams::sleep();
    for (const auto& each : m_strips) {
        if (each->isPlugged() && !isExcused(*each))
            m_wrong = each->id() + " shines on while the machine sleeps";
        const QList<LVController*> adopted = alive<LVController>(); // the manager may not know it yet
        const auto hasIt = [&](LVController* controller) { return controller->options().id == each->id(); };
        if (each->isOpen() && std::none_of(adopted.begin(), adopted.end(), hasIt))
            m_wrong = each->id() + " is asked while the machine sleeps";
    }
}

void DeviceLife::answerCountDialog(const QString& id, int value)
{
    emit home().controllerOptOrdered(id);
    QPointer<ControllerConfigDialog> dialog;
    for (auto* each : app().mainWindow().findChildren<ControllerConfigDialog*>())
        dialog = each->isVisible() ? each : dialog.data();
    if (!dialog)
        return;
    dialog->setNbLed(1 + value);
    run(30);
    if (!dialog) // it goes with its device
        return;
    if (value % 3 == 0)
        return dialog->reject();
    choose(id, "nbLeds", 1 + value);
    dialog->accept();
}

void DeviceLife::actOnPage(const Step& step, const QString& id)
{
    const int value = step.value;
    if (step.kind == Step::Name) {
        emit home().controllerNameChanged(id, QString("strip %1").arg(value));
        return choose(id, "kindName", QString("strip %1").arg(value));
    }
    if (step.kind == Step::Count)
        return answerCountDialog(id, value);
    if (app().mainWindow().isHomePage() || page().controllerId() != id)
        emit home().controllerEntryOrdered(id);
    const ControlOptions& options = app().deviceManager().controlOptions(id);
    const bool isSingle = appConfig(ConfigKeys::kSingleControlMode).toBool();
    const QList<QString> all = isSingle ? QList<QString>{id} : present();
    const auto pick = [&](const QString& effect) {
        for (const QString& each : all) {
            chooseEffect(each, effect);
            choose(each, "enable", true);
        }
    };
    switch (step.kind) {
    case Step::Effect:
        pick(kEffects[value % kEffects.size()]);
        emit page().workerChanged(kEffects[value % kEffects.size()]);
        return;
    case Step::Group: {
        const QString group = kEffects[value % kEffects.size()].section('.', 0, -2);
        const QString last = m_choices[id].effect.value(group);
        emit page().workGoupChanged(group);
        return pick(last.isEmpty() ? options.subMode : last);
    }
    case Step::Colour: { // or the speed, which other effects have as well
        EffectsManager& effects = app().deviceManager().effects();
        const QString effect = effects.boundEffectId(id);
        const bool isColour = effect == kSingleColor;
        QMap<QString, QJsonValue> others;
        for (const QString& each : present()) {
            if (!all.contains(each) || effects.boundEffectId(each) != effect)
                others[each] = effects.effectProperty(each, isColour ? "color" : "speed");
            else if (isColour)
                m_choices[each].red = 50 + value;
        }
        isColour ? emit page().sOptWidPropertyChanged("color", QJsonArray{50 + value, 10, 20})
                 : emit page().sOptWidPropertyChanged("speed", 50 + value);
        for (auto each = others.begin(); each != others.end(); ++each) {
            if (effects.effectProperty(each.key(), isColour ? "color" : "speed") != each.value())
                m_wrong = each.key() + " was not meant and has another colour or speed";
        }
        return;
    }
    case Step::Brightness:
        for (const QString& each : all)
            choose(each, "brightness", double(float(value) / 60));
        emit page().brightnessChanged(float(value) / 60);
        return;
    case Step::Light:
        for (const QString& each : all)
            choose(each, "enable", value % 2 == 0);
        emit page().enableChanged(value % 2 == 0);
        return;
    case Step::Direction:
        choose(id, "installDirection", value % 2);
        emit page().dirChanged(value % 2);
        return;
    case Step::AllTogether: {
        const QString effect = page().currentWorker(); // none where one stands in that is not offered
        const ControlOptions before = options;
        emit page().controlModeChanged(value % 2 == 1);
        if (value % 2 == 1)
            return;
        for (const QString& each : present()) {
            choose(each, "brightness", double(before.brightness));
            choose(each, "enable", before.enable);
            if (!effect.isEmpty())
                chooseEffect(each, effect);
            m_choices[each].red = effect == kSingleColor ? m_choices[id].red : m_choices[each].red;
        }
        return;
    }
    default:
        return;
    }
}

QString DeviceLife::wrong()
{
    for (auto each = m_choices.begin(); each != m_choices.end(); ++each) {
        QString found = difference(each.key(), each->device, config()->controllerJsonObj(each.key()));
        if (!found.isEmpty())
            return found;
    }
    for (const PortFinding& finding : app().deviceManager().findings()) {
        if (finding.kind == PortFinding::Kind::Held)
            return finding.port + " is held by nobody else";
    }
    for (const auto& strip : m_strips) {
        if (strip->isPlugged() && !strip->isOpen() && !isExcused(*strip))
            return strip->id() + " was released and shines";
    }
    return {};
}

QString DeviceLife::wrongOf(SimulatedStrip& strip)
{
    const QString id = strip.id();
    const AbsRGBControllerPtr controller = app().deviceManager().controller(id);
    if (!strip.isPlugged())
        return controller ? id + " is kept without its strip" : QString();
    if (!controller)
        return id + (strip.isOpen() ? " is asked for ever" : " answers and is not there");
    const ControlOptions& options = controller->options();
    const bool isDark = m_isAsleep || m_isLocked || !options.enable || options.brightness == 0;
    const QVector<LV_RGB>& shown = strip.colors();
    const int count = int(options.nbLeds);
    if (isDark && !strip.isBlack())
        return id + " shines while it should be dark";
    if (shown.mid(0, count) != controller->sentColors())
        return id + " does not show what was sent last";
    if (shown.mid(count).count({}) != qMax(0, shown.size() - count))
        return id + " shines behind its end";
    if (!isDark && options.subMode == kSingleColor && options.brightness > 0.2F && strip.isBlack())
        return id + " is black without a reason";
    const int red = m_choices[id].red;
    const QJsonValue stored = config()->effectJsonValue(kSingleColor, id, ConfigKeys::kSingleColor.key);
    const int storedRed = qRed(uint(stored.toDouble()));
    if (red >= 0 && storedRed != red)
        return QString("%1: the user's red is %2, stored is %3").arg(id).arg(red).arg(storedRed);
    return {};
}

QString DeviceLife::wrongCounts()
{
    const QList<QString> ids = present();
    QSet<QString> shown, controllers;
    for (const auto* button : home().findChildren<QToolButton*>())
        shown += button->property("controllerId").toString();
    shown -= QString();
    if (shown != QSet<QString>(ids.begin(), ids.end()))
        return QString("the home page shows %1 for %2")
            .arg(QStringList(shown.values()).join(' '), QStringList(ids).join(' '));
    for (const LVController* each : alive<LVController>()) {
        if (controllers.contains(each->options().id))
            return each->options().id + " is there twice";
        controllers += each->options().id;
    }
    const auto captures = [](IEffectWorker* each) { return each->options().id.contains("screenSync"); };
    const QList<IEffectWorker*> workers = alive<IEffectWorker>();
    const int ports = alive<LVSerialPort>().size() - alive<ProbeDialogue>().size();
    const int capturers = alive<IDeskCapture>().size();
    // Capture and analysis of sound stay, once they were needed.
    const int threads = VirtualTime::threadCount() - m_baseThreads;
    const int count = ids.size();
    if (workers.size() == count && controllers.size() == count && ports <= count && threads <= count + 2 &&
        capturers <= std::count_if(workers.begin(), workers.end(), captures))
        return {};
    return QString("%1 devices have %2 workers, %3 controllers, %4 ports, %5 threads, %6 capturers")
        .arg(count)
        .arg(workers.size())
        .arg(controllers.size())
        .arg(ports)
        .arg(threads)
        .arg(capturers);
}

QString DeviceLife::wrongStore()
{
    if (config()->isSavingTroubled() && !m_isDiskFull)
        return "nothing is saved";
    QFile file(config()->configPath() + "/controllers.json");
    const bool isThere = file.open(QIODevice::ReadOnly);
    const QJsonObject onDisk = QJsonDocument::fromJson(file.readAll()).object();
    for (const QString& key : onDisk.keys()) {
        if (!m_choices.contains(key))
            return key + " is stored and no device";
    }
    for (auto each = m_choices.begin(); each != m_choices.end(); ++each) {
        const QString found = difference(each.key(), each->device, onDisk.value(each.key()).toObject());
        if (!found.isEmpty())
            return found + (isThere ? " on disk" : ", there is no file");
    }
    return {};
}

QString DeviceLife::wrongAtRest()
{
    for (const auto& strip : m_strips) {
        QString found = wrongOf(*strip);
        if (!found.isEmpty())
            return found;
    }
    for (const auto check : {&DeviceLife::wrongCounts, &DeviceLife::wrongStore}) {
        QString found = (this->*check)();
        if (!found.isEmpty())
            return found;
    }
    return wrong();
}

QString DeviceLife::wrongAfterRelease()
{
    for (const auto& strip : m_strips) {
        if (strip->isOpen())
            return strip->id() + " is held by a program that has ended";
        if (!isExcused(*strip))
            return strip->id() + " shines after the program has ended";
    }
    return {};
}

QString DeviceLife::rest()
{
    QString found;
    for (int ms = 0; ms < kRestMs; ms += kLookMs) {
        run(kLookMs);
        found = wrongAtRest();
        if (found.isEmpty())
            return {};
    }
    return found + ", at rest";
}

QString DeviceLife::end()
{
    VirtualTime::setDiskFull(m_isDiskFull = false);
    Seams::setDisplay(true);
    if (std::exchange(m_isAsleep, false))
        Seams::resume();
    if (std::exchange(m_isLocked, false))
        Seams::setScreenOff(false);
    for (const auto& strip : m_strips) {
        if (!strip->isAnswering())
            strip->answer(SimulatedStrip::Prompt);
        strip->jam(false);
    }
    QString found = rest();
    m_excused.clear();
    if (!found.isEmpty())
        return found;
    for (const QString& id : present())
        app().deviceManager().removeController(id);
    run(300);
    for (const auto& strip : m_strips) {
        if (!strip->isBlack() && !isThere(strip->id())) // it may be back already
            return strip->id() + " was let go and shines";
        strip->unplug(0);
    }
    found = rest();
    const int grabs = Seams::grabs();
    run(kLookMs);
    return found.isEmpty() && Seams::grabs() != grabs ? "pictures are taken for nobody" : found;
}
