#include "DeviceLife.h"

#include "Seams.h"
#include "VirtualTime.h"
#include "app/LumivarApp.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "controllers/ProbeDialogue.h"
#include "effects/IEffectWorker.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/ControllerConfigDialog.h"
#include "ui/HomePage.h"

#include <QEventLoop>
#include <QJsonArray>
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
const QString kGone = "id.gone.effect"; ///< of a plug-in that is missing
const QVector<QString> kEffects{kSingleColor,
                                "id.effect.marquee.marquee",
                                "id.effect.colorful.flowingEffect",
                                "id.effect.colorful.moodShadow",
                                "id.effect.screenSync.fullScreen",
                                "id.effect.dynamicMusic.peakValues_1"};
constexpr const char* kNames[] = {"plug",         "unplug", "answer", "press",      "noise",
                                  "effect",       "group",  "colour", "brightness", "light",
                                  "direction",    "name",   "count",  "allLights",  "allTogether",
                                  "buttonAction", "gamma",  "sleep",  "lock",       "diskFull",
                                  "display",      "jam",    "home",   "wait",       "restart"};
static_assert(sizeof kNames / sizeof *kNames == Step::Kinds);

std::unordered_set<QObject*> s_objects; ///< all that live

template <typename Class>
int alive()
{
    int count = 0;
    for (QObject* each : s_objects)
        count += !each->isWidgetType() && qobject_cast<Class*>(each) ? 1 : 0;
    return count;
}

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
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

QString text(const QJsonValue& value)
{
    return value.toVariant().toString();
}

} // namespace

QString Step::toString() const
{
    return QStringLiteral("%1(%2,%3)").arg(kNames[kind]).arg(strip).arg(value);
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
        const auto kind = std::find(std::begin(kNames), std::end(kNames), parts.value(0));
        if (kind == std::end(kNames) || parts.size() != 3)
            return {};
        steps += Step{Step::Kind(kind - kNames), parts[1].toInt(), parts[2].toInt()};
    }
    return steps;
}

Steps randomSteps(std::uint64_t seed)
{
    // How often each kind comes, in their order.
    static constexpr int kWeights[] = {16, 10, 4, 8, 2, 8, 3, 3, 5, 5, 2,  2, 3,
                                       3,  3,  1, 1, 2, 2, 2, 2, 1, 2, 12, 1};
    static_assert(sizeof kWeights / sizeof *kWeights == Step::Kinds);
    int sum = 0;
    for (const int weight : kWeights)
        sum += weight;
    const int count = 4 + int(next(seed) % 13);
    Steps steps;
    for (int i = 0; i < count; ++i) {
        int kind = 0;
        int at = int(next(seed) % std::uint64_t(sum));
        while (at >= kWeights[kind])
            at -= kWeights[kind++];
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
    const QString withGoneEffect = m_strips.back()->id();
    choose(withGoneEffect, "workMode", "id.gone");
    choose(withGoneEffect, "subMode", kGone);
    choose(withGoneEffect, "enable", true);
    choose(withGoneEffect, "brightness", 0.8);
    choose(withGoneEffect, "nbLeds", kModelLeds);
    config()->controllerJsonObj(withGoneEffect) = m_choices[withGoneEffect].device;
    config()->saveControllerJsonObj(withGoneEffect);
}

void DeviceLife::start()
{
    m_app = std::make_unique<LumivarApp>(nullptr);
    app().mainWindow().setStyleSheet({}); // nobody looks, and both cost most of the time
    app().mainWindow().hide();
}

void DeviceLife::stop()
{
    m_app.reset();
    config()->save();
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

QList<QString> DeviceLife::targets(const QString& id)
{
    const bool isSingle = config()
                              ->appConfig(ConfigKeys::kSingleControlMode.key)
                              .toBool(ConfigKeys::kSingleControlMode.fallback);
    return isSingle ? QList<QString>{id} : present();
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

void DeviceLife::openPage(const QString& id)
{
    if (app().mainWindow().isHomePage() || page().controllerId() != id)
        emit home().controllerEntryOrdered(id);
}

void DeviceLife::act(const Step& step)
{
    SimulatedStrip& strip = *m_strips[std::size_t(step.strip)];
    const QString id = strip.id();
    m_choices[id]; // it is watched from now on
    const int value = step.value;
    switch (step.kind) {
    case Step::Plug: {
        if (strip.isPlugged())
            return;
        static constexpr int kTold[] = {0, 50, 700};
        const QString port = value / 3 % 2 == 0 ? QString("ttyUSB%1").arg(step.strip)
                                                : QString("ttyUSB1%1").arg(m_ports++ % 40);
        strip.plugIn(port);
        QTimer::singleShot(kTold[value % 3], [port] { SimulatedPorts::tellArrival(port); });
        return;
    }
    case Step::Unplug: {
        static constexpr int kTold[] = {0, 100, 900};
        m_excused.remove(&strip);
        return strip.unplug(kTold[value % 3]);
    }
    case Step::Answer:
        return strip.answer(SimulatedStrip::Answer(value % 5));
    case Step::Noise:
        return strip.say(value % 2 == 0 ? QByteArray("\xff\x01\x02") : QByteArray("pressed"));
    case Step::Press: {
        const QList<QString> before = present();
        const bool isHeard = strip.isOpen() && before.contains(id) && m_choices[id].seenForMs >= kSettledMs;
        const bool isCertain = isHeard || !strip.isOpen();
        const bool wasOn = app().deviceManager().controlOptions(id).enable;
        const int action = config()->appConfig(ConfigKeys::kPhyBtnAction.key).toInt();
        strip.pressButton();
        run(30);
        for (const QString& each : before) {
            const ControlOptions& options = app().deviceManager().controlOptions(each);
            if (!options.isValid()) // it went at the same moment, before or after
                m_choices[each].device.remove("enable");
            else if (isHeard && action == 0)
                choose(each, "enable", !wasOn);
            else if (isHeard || !isCertain) {
                choose(each, "enable", options.enable);
                if (options.subMode != m_choices[each].device.value("subMode").toString() && action == 1)
                    chooseEffect(each, options.subMode);
            }
        }
        return;
    }
    case Step::AllLights:
        for (const QString& each : present())
            choose(each, "enable", value % 2 == 0);
        emit app().mainWindow().allStrapOnOff(value % 2 == 0);
        return;
    case Step::ButtonAction:
        return config()->setAppConfig(ConfigKeys::kPhyBtnAction.key, value % 2);
    case Step::Gamma:
        return config()->setAppConfig(ConfigKeys::kGama.key, 1.0 + value % 3 * 0.4);
    case Step::Sleep:
        if (m_isAsleep == (value % 2 == 0))
            return;
        m_isAsleep = value % 2 == 0;
        if (!m_isAsleep)
            return Seams::resume();
        Seams::sleep();
        for (const auto& each : m_strips) {
            if (each->isPlugged() && !each->isBlack() && !m_excused.contains(each.get()))
                m_wrong = each->id() + " shines on while the machine sleeps";
        }
        return;
    case Step::Lock:
        m_isLocked = value % 2 == 0;
        return Seams::setScreenOff(m_isLocked);
    case Step::DiskFull:
        m_isDiskFull = value % 2 == 0;
        return VirtualTime::setDiskFull(m_isDiskFull);
    case Step::Display:
        return Seams::setDisplay(value % 2 == 1);
    case Step::Jam:
        if (strip.isPlugged() && value % 2 == 0)
            m_excused.insert(&strip);
        return strip.jam(strip.isPlugged() && value % 2 == 0);
    case Step::Home:
        return app().mainWindow().switchToHomePage();
    case Step::Wait: {
        static constexpr int kSpans[] = {20, 120, 700, 2500, 9000};
        return run(kSpans[value % 5]);
    }
    case Step::Restart:
        if (std::exchange(m_isAsleep, false))
            Seams::resume();
        stop();
        m_wrong = wrongAfterRelease();
        return start();
    default:
        if (isThere(id))
            actOnPage(step, id);
    }
}

void DeviceLife::actOnPage(const Step& step, const QString& id)
{
    const int value = step.value;
    const auto options = [&]() -> const ControlOptions& { return app().deviceManager().controlOptions(id); };
    if (step.kind == Step::Name) {
        emit home().controllerNameChanged(id, QString("strip %1").arg(value));
        return choose(id, "kindName", QString("strip %1").arg(value));
    }
    if (step.kind == Step::Count) {
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
        if (value % 3 != 0)
            choose(id, "nbLeds", 1 + value);
        return value % 3 != 0 ? dialog->accept() : dialog->reject();
    }
    openPage(id);
    const QList<QString> all = targets(id);
    switch (step.kind) {
    case Step::Effect: {
        const QString& effect = kEffects[value % kEffects.size()];
        for (const QString& each : all) {
            chooseEffect(each, effect);
            choose(each, "enable", true);
        }
        emit page().workerChanged(effect);
        return;
    }
    case Step::Group: {
        const QString group = kEffects[value % kEffects.size()].section('.', 0, -2);
        const QString last = m_choices[id].effect.value(group);
        emit page().workGoupChanged(group);
        for (const QString& each : all) {
            chooseEffect(each, last.isEmpty() ? options().subMode : last);
            choose(each, "enable", true);
        }
        return;
    }
    case Step::Colour: {
        const int red = 50 + value;
        const auto bound = [&](const QString& each) {
            return app().deviceManager().effects().boundEffectId(each);
        };
        if (bound(id) != kSingleColor)
            return;
        for (const QString& each : all) {
            if (bound(each) == kSingleColor)
                m_choices[each].red = red;
        }
        emit page().sOptWidPropertyChanged("color", QJsonArray{red, 10, 20});
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
        emit page().controlModeChanged(value % 2 == 1);
        if (value % 2 == 1)
            return;
        for (const QString& each : present()) {
            choose(each, "brightness", double(options().brightness));
            choose(each, "enable", options().enable);
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
        const QJsonObject stored = config()->controllerJsonObj(each.key());
        for (auto choice = each->device.begin(); choice != each->device.end(); ++choice) {
            if (!isSame(stored.value(choice.key()), choice.value()))
                return QString("%1: the user's %2 is %3, stored is %4")
                    .arg(each.key(), choice.key(), text(choice.value()), text(stored.value(choice.key())));
        }
    }
    for (const auto& strip : m_strips) {
        if (strip->isPlugged() && !strip->isOpen() && !strip->isBlack() && !m_excused.contains(strip.get()))
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
    if (isDark && !strip.isBlack())
        return id + " shines while it should be dark";
    const int count = int(options.nbLeds);
    if (shown.mid(0, count) != controller->sentColors())
        return id + " does not show what was sent last";
    if (std::any_of(shown.begin() + std::min(count, shown.size()), shown.end(),
                    [](LV_RGB led) { return led != LV_RGB{}; }))
        return id + " shines behind its end";
    if (!isDark && options.subMode == kSingleColor && options.brightness > 0.2F && strip.isBlack())
        return id + " is black without a reason";
    const int red = m_choices[id].red;
    const QJsonValue stored = config()->effectJsonValue(kSingleColor, id, ConfigKeys::kSingleColor.key);
    if (red >= 0 && qRed(uint(stored.toDouble())) != red)
        return QString("%1: the user's red is %2, stored is %3")
            .arg(id)
            .arg(red)
            .arg(qRed(uint(stored.toDouble())));
    return {};
}

QString DeviceLife::wrongAtRest()
{
    for (const auto& strip : m_strips) {
        QString found = wrongOf(*strip);
        if (!found.isEmpty())
            return found;
    }
    const QList<QString> ids = present();
    QList<QString> shown;
    for (const auto* button : home().findChildren<QToolButton*>()) {
        const QString id = button->property("controllerId").toString();
        if (!id.isEmpty() && !shown.contains(id))
            shown += id;
    }
    if (shown.size() != ids.size())
        return QString("the home page shows %1 for %2")
            .arg(QStringList(shown).join(' '), QStringList(ids).join(' '));
    const int count = ids.size();
    const int workers = alive<IEffectWorker>();
    const int controllers = alive<LVController>();
    const int ports = alive<LVSerialPort>() - alive<ProbeDialogue>();
    if (workers != count || controllers != count || ports > count)
        return QString("%1 devices have %2 workers, %3 controllers, %4 ports")
            .arg(count)
            .arg(workers)
            .arg(controllers)
            .arg(ports);
    // Capture and analysis of sound stay, once they were needed.
    if (VirtualTime::threadCount() > m_baseThreads + count + 2)
        return QString("%1 threads for %2 devices, and %3 without")
            .arg(VirtualTime::threadCount())
            .arg(count)
            .arg(m_baseThreads);
    if (config()->isSavingTroubled() && !m_isDiskFull)
        return "nothing is saved";
    ConfigurationManager onDisk(config()->configPath(), config()->resourcesPath(), {});
    for (auto each = m_choices.begin(); each != m_choices.end(); ++each) {
        if (each->device.isEmpty())
            continue;
        const QJsonObject& stored = onDisk.controllerJsonObj(each.key());
        for (auto choice = each->device.begin(); choice != each->device.end(); ++choice) {
            if (!isSame(stored.value(choice.key()), choice.value()))
                return QString("%1: the user's %2 did not reach the disk").arg(each.key(), choice.key());
        }
    }
    return wrong();
}

QString DeviceLife::wrongAfterRelease()
{
    for (const auto& strip : m_strips) {
        if (strip->isOpen())
            return strip->id() + " is held by a program that has ended";
        if (!strip->isBlack() && !m_excused.contains(strip.get()))
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
        strip->answer(SimulatedStrip::Prompt);
        strip->jam(false);
    }
    QString found = rest();
    m_excused.clear();
    if (found.isEmpty()) {
        for (const QString& id : present())
            app().deviceManager().removeController(id);
        run(300);
        for (const auto& strip : m_strips) {
            if (!strip->isBlack() && !isThere(strip->id())) // it may be back already
                return strip->id() + " was let go and shines";
            strip->unplug(0);
        }
        found = rest();
    }
    return found;
}
