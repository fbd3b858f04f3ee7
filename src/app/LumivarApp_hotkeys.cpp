// The hotkey actions: what they do, which combination each has, and its editing.
#include "app/LumivarApp.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HotKeyEditWidget.h"

#include <QDebug>
#include <QKeySequence>
#include <QSignalBlocker>
#include <cmath>

namespace {

constexpr double kBrightnessStep = 0.1;
const QString kScreenSync = QStringLiteral("id.effect.screenSync");

void store(const QString& id, const HotkeyBinding& binding)
{
    auto* config = ConfigurationManager::instance();
    const QString key = ConfigKeys::hotkeyBindingKey(id);
    config->setAppConfig(key, binding.toStored(config->appConfig(key).toObject()));
}

/// In steps that floats can take up and down without drifting, finer than anybody sets one.
float steppedBrightness(float brightness, double step)
{
    constexpr double kGrain = 10000;
    return static_cast<float>(std::round(qBound(0.0, brightness + step, 1.0) * kGrain) / kGrain);
}

void warnOfInvalidHotkey(const HotkeyBinding& binding)
{
    qWarning() << "Invalid hotkey:" << binding.modifiers << QKeySequence(binding.key);
}

} // namespace

void LumivarApp::makeHotkeys()
{
    const auto make = [this](const char* id, const char* name, Qt::Key key,
                             const std::function<void()>& run) {
        makeHotkey(QLatin1String(id), name, {key, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier},
                   run);
    };
    make("id.hotkey.turnOffOn", QT_TRANSLATE_NOOP("HotkeyDescription", "全开全关切换"), Qt::Key_F10,
         [this] { switchAllByHotkey(); });
    make("id.hotkey.nextEffect", QT_TRANSLATE_NOOP("HotkeyDescription", "切换到下一个模式"), Qt::Key_Right,
         [this] { changeGroupByHotkey(&EffectsManager::nextGroupByOrder); });
    make("id.hotkey.preEffect", QT_TRANSLATE_NOOP("HotkeyDescription", "切换到上一个模式"), Qt::Key_Left,
         [this] { changeGroupByHotkey(&EffectsManager::previousGroupByOrder); });
    make("id.hotkey.decreaseBrightness", QT_TRANSLATE_NOOP("HotkeyDescription", "降低亮度"), Qt::Key_Down,
         [this] { stepBrightness(-kBrightnessStep); });
    make("id.hotkey.increaseBrightness", QT_TRANSLATE_NOOP("HotkeyDescription", "提升亮度"), Qt::Key_Up,
         [this] { stepBrightness(kBrightnessStep); });
    connect(&m_hotKeyManager, &HotKeyManager::hotkeyActived, this, &LumivarApp::onHotkeyActived,
            Qt::UniqueConnection);
    connect(&m_hotKeyManager, &HotKeyManager::userDecided, this, [](bool isGranted) {
        ConfigurationManager::instance()->setAppConfig(QLatin1String(ConfigKeys::kHotkeysGranted), isGranted);
    });
    connect(&m_mainWindow, &MainWindow::opened, this, &LumivarApp::letDesktopAsk);
    letDesktopAsk();
}

/// A desktop that has to ask for the shortcuts asks the user who sees whose they are, and not again one who
/// has refused them.
void LumivarApp::letDesktopAsk()
{
    const QLatin1String key(ConfigKeys::kHotkeysGranted);
    if (ConfigurationManager::instance()->appConfig(key).toBool(!m_mainWindow.isPutAway()))
        m_hotKeyManager.allowQuestions();
}

void LumivarApp::makeHotkey(const QString& id, const char* name, const HotkeyBinding& fallback,
                            const std::function<void()>& run)
{
    const QString key = ConfigKeys::hotkeyBindingKey(id);
    const QJsonValue stored = ConfigurationManager::instance()->appConfig(key);
    const auto found = HotkeyBinding::fromStored(stored);
    if (!found) {
        if (!stored.isUndefined() && !stored.isNull())
            qWarning().noquote() << "The stored" << key << "is no key combination, it becomes"
                                 << fallback.toText();
        store(id, fallback);
    }
    const HotkeyBinding binding = found.value_or(fallback);
    m_hotKeyManager.setDescription(id, QString::fromUtf8(name));
    if (!m_hotKeyManager.setHotkey(id, binding.key, binding.modifiers))
        qWarning().noquote() << "Failed to registered hotkey" << id << ", the action will be never activated";
    m_hotkeyActions.insert(id, {name, binding, run, m_hotkeyActions.size()});
    qInfo().noquote() << "The hotkey action has been added: " << id;
}

void LumivarApp::onHotkeyActived(QString id)
{
    const auto action = m_hotkeyActions.constFind(id);
    if (action == m_hotkeyActions.constEnd()) {
        qWarning().noquote() << "Unknown hotkey action id: " << id;
        return;
    }
    if (!action->run) {
        qWarning().noquote() << "The hotkey action is empty: " << id;
        return;
    }
    action->run();
    qInfo().noquote() << "The hotkey action has executed: " << id;
}

bool LumivarApp::hasDevices() const
{
    if (!m_deviceManager.controllerIds().isEmpty())
        return true;
    qCritical("The controller list is empty");
    return false;
}

void LumivarApp::switchAllByHotkey()
{
    if (!hasDevices())
        return;
    onAllStrapOnOff(!m_allStrapOn);
    qInfo() << "Close all/Open all switched by hotkey actived:" << m_allStrapOn;
}

void LumivarApp::changeGroupByHotkey(NeighbourGroup neighbour)
{
    if (!hasDevices())
        return;
    EffectsManager& effects = m_deviceManager.effects();
    const QList<QString> ids = m_deviceManager.controllerIds();
    QString current = m_deviceManager.controlOptions(ids.first()).workMode;
    forEachController([&current](const AbsRGBController& each) {
        if (each.options().workMode != current)
            current.clear();
    });
    const QString group = current.isEmpty() ? kScreenSync : (effects.*neighbour)(current);
    const QString effect = effectOfGroup(group, neighbour, ids);
    if (effect.isEmpty())
        return;
    for (const QString& id : ids)
        m_deviceManager.setControllerEffect(id, effect, true);
    if (m_deviceManager.controller(controlPage().controllerId()))
        updateControlPageView();
}

void LumivarApp::stepBrightness(double step)
{
    if (!hasDevices())
        return;
    forEachController([step](AbsRGBController& each) {
        each.setBrightness(steppedBrightness(each.options().brightness, step));
    });
    const ControlOptions& shown = m_deviceManager.controlOptions(controlPage().controllerId());
    if (m_mainWindow.isHomePage() || !shown.isValid())
        return;
    const QSignalBlocker blocker(controlPage());
    controlPage().setBrightness(shown.brightness);
}

void LumivarApp::fillHotkeys(HotKeyEditWidget& table)
{
    QVector<HotkeyModel> rows(m_hotkeyActions.size());
    QMap<QString, QString> names;
    for (auto action = m_hotkeyActions.cbegin(); action != m_hotkeyActions.cend(); ++action) {
        const QString& id = action.key();
        rows[action->row] = {id, action->binding.toCombine(), m_hotKeyManager.trouble(id),
                             m_hotKeyManager.desktopKeys(id)};
        names.insert(id, QString::fromUtf8(action->name));
    }
    table.setDescriptions(names);
    table.setHotkeys(rows);
    table.setCheckHotkey(
        [this](const QString& id, const HotkeyCombine& combine) { return checkHotkey(id, combine); });
    table.setApplyHotkey(
        [this](const QString& id, const HotkeyCombine& combine) { return applyHotkey(id, combine); });
    connect(&table, &HotKeyEditWidget::shown, &m_hotKeyManager, &HotKeyManager::allowQuestions,
            Qt::UniqueConnection);
    connect(&table, &HotKeyEditWidget::shown, &m_hotKeyManager, &HotKeyManager::retry, Qt::UniqueConnection);
    connect(&m_hotKeyManager, &HotKeyManager::troubleChanged, &table, &HotKeyEditWidget::setTrouble,
            Qt::UniqueConnection);
    connect(&m_hotKeyManager, &HotKeyManager::desktopKeysChanged, &table, &HotKeyEditWidget::setDesktopKeys,
            Qt::UniqueConnection);
}

/// Whether the action may have the combination: its own, or one that is free.
bool LumivarApp::checkHotkey(const QString& id, const HotkeyCombine& combine)
{
    const auto action = m_hotkeyActions.constFind(id);
    if (action == m_hotkeyActions.constEnd()) {
        qWarning().noquote() << "Not found the hotkey action" << id;
        return false;
    }
    const HotkeyBinding wanted = HotkeyBinding::fromCombine(combine);
    if (wanted == action->binding)
        return true;
    if (wanted.isValid() && m_hotKeyManager.isHotkeyFree(wanted.key, wanted.modifiers))
        return true;
    warnOfInvalidHotkey(wanted);
    return false;
}

/// Makes it the user's choice for the action. One that the system refuses replaces nothing.
bool LumivarApp::applyHotkey(const QString& id, const HotkeyCombine& combine)
{
    const auto action = m_hotkeyActions.find(id);
    if (action == m_hotkeyActions.end()) {
        qWarning().noquote() << "Not found the hotkey action" << id;
        return false;
    }
    const HotkeyBinding wanted = HotkeyBinding::fromCombine(combine);
    // Its own one counts as taken, by itself; where it does not work it may be tried once more.
    const bool isOnceMore = wanted == action->binding && m_hotKeyManager.trouble(id) != HotkeyTrouble::None;
    if (!isOnceMore && !(wanted.isValid() && m_hotKeyManager.isHotkeyFree(wanted.key, wanted.modifiers))) {
        warnOfInvalidHotkey(wanted);
        return false;
    }
    if (!m_hotKeyManager.setHotkey(id, wanted.key, wanted.modifiers)) {
        qWarning().noquote() << "Failed to set hotkey:" << wanted.toText();
        return false;
    }
    action->binding = wanted;
    store(id, wanted);
    qInfo().noquote() << "The hotkey binding has been changed:" << wanted.toText() << action->name;
    return true;
}
