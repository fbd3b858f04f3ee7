#include "app/HotKeyManager.h"

#include "hotkey/QHotkeyPrivate.h"

#include <QDebug>
#include <algorithm>

namespace {

constexpr int kRetryMs = 30000;

} // namespace

HotKeyManager::HotKeyManager(QObject* parent)
    : QObject(parent)
{
    m_retryTimer.setInterval(kRetryMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &HotKeyManager::retry);
}

void HotKeyManager::followPlatform()
{
    QHotkeyPrivate* platform = QHotkeyPrivate::instance();
    if (!platform)
        return;
    connect(platform, &QHotkeyPrivate::servesAgain, this, &HotKeyManager::retry, Qt::UniqueConnection);
    connect(platform, &QHotkeyPrivate::userDecided, this, &HotKeyManager::userDecided, Qt::UniqueConnection);
}

void HotKeyManager::allowQuestions()
{
    if (QHotkeyPrivate* platform = QHotkeyPrivate::instance())
        platform->allowQuestions();
}

bool HotKeyManager::setHotkey(const QString& id, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    followPlatform();
    const HotkeyBinding wanted{key, modifiers};
    const bool isKnown = m_entries.contains(id);
    const Entry before = m_entries.value(id);
    if (isKnown) {
        if (before.hotkey->isRegistered() && before.binding == wanted)
            return true;
        qInfo().noquote()
            << "[HotkeyManager]: The hotkey action has been added, this will cause the action to "
               "be changed"
            << id;
    }
    const auto hotkey = QSharedPointer<QHotkey>::create();
    hotkey->setAction(id, m_descriptions.value(id));
    const bool isRegistered = hotkey->setShortcut(key, modifiers, true) && hotkey->isRegistered();
    if (!isRegistered)
        qWarning().noquote() << "[HotkeyManager]: The hotkey combine has been registered" << id;
    if (isRegistered || !isKnown) {
        connect(hotkey.data(), &QHotkey::activated, this, [this, id] { hotkeyTrigger(id); });
        // Queued: a hotkey also tells of its end, when neither it nor its entry is to be looked at.
        connect(
            hotkey.data(), &QHotkey::registeredChanged, this, [this, id] { onRegisteredChanged(id); },
            Qt::QueuedConnection);
        connect(hotkey.data(), &QHotkey::desktopKeysChanged, this, [this, id] { followHotkey(id); });
        m_entries.insert(id, {wanted, hotkey, before.trouble, before.desktopKeys});
        followHotkey(id);
    }
    return isRegistered;
}

bool HotKeyManager::isHotkeyFree(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const HotkeyBinding wanted{key, modifiers};
    QHotkey probe;
    probe.setShortcut(key, modifiers);
    const QHotkey::NativeShortcut native = probe.currentNativeShortcut();
    // Two names of one key, such as Tab and Backtab, would fire two actions.
    const bool isOurs =
        std::any_of(m_entries.cbegin(), m_entries.cend(), [&wanted, &native](const Entry& entry) {
            return entry.binding == wanted ||
                   (native.valid && entry.hotkey->currentNativeShortcut() == native);
        });
    return !isOurs && probe.setRegistered(true);
}

void HotKeyManager::hotkeyTrigger(QString id)
{
    const auto entry = m_entries.constFind(id);
    if (entry == m_entries.constEnd()) {
        qWarning().noquote() << "[HotkeyManager]: Not such hotKey combination" << id;
        return;
    }
    const QString text = entry->binding.toText();
    emit hotkeyActived(id);
    qInfo().noquote() << "[HotkeyManager]: The hotkey combine has been actived" << text;
}

void HotKeyManager::retry()
{
    for (const QString& id : m_entries.keys()) {
        if (!m_entries.value(id).hotkey->isRegistered())
            tryAgain(id);
    }
}

void HotKeyManager::tryAgain(const QString& id)
{
    const Entry entry = m_entries.value(id);
    // The layer has a warning for every refusal, so that one that would come again is foreseen.
    QHotkeyPrivate* platform = QHotkeyPrivate::instance();
    const HotkeyTrouble obstacle = platform ? platform->obstacleTo(entry.binding.key, entry.binding.modifiers)
                                            : HotkeyTrouble::NotAllowed;
    const bool hasKey = obstacle != HotkeyTrouble::NoSuchKey;
    const bool hadKey = entry.hotkey->trouble() != HotkeyTrouble::NoSuchKey;
    if (obstacle != HotkeyTrouble::None && hasKey == hadKey)
        return;
    if (entry.hotkey->setShortcut(entry.binding.key, entry.binding.modifiers, true))
        qInfo().noquote() << "[HotkeyManager]: The hotkey combine has been taken after all" << id;
    followHotkey(id);
}

void HotKeyManager::onRegisteredChanged(const QString& id)
{
    const Entry entry = m_entries.value(id);
    if (!entry.hotkey->isRegistered() && entry.trouble == HotkeyTrouble::None)
        qWarning().noquote() << "[HotkeyManager]: The hotkey combine has been lost" << id;
    followHotkey(id);
}

/// Tells of what has changed with the action's shortcut, and sees to it that it is tried again.
void HotKeyManager::followHotkey(const QString& id)
{
    Entry& entry = m_entries[id];
    const HotkeyTrouble trouble = entry.hotkey->trouble();
    const QString keys = entry.hotkey->desktopKeys();

    const bool mayBecomeFree = std::any_of(m_entries.cbegin(), m_entries.cend(), [](const Entry& each) {
        const HotkeyTrouble why = each.hotkey->trouble();
        return why == HotkeyTrouble::Taken || why == HotkeyTrouble::NoSuchKey;
    });
    if (!mayBecomeFree)
        m_retryTimer.stop();
    else if (!m_retryTimer.isActive())
        m_retryTimer.start();

    if (keys != entry.desktopKeys) {
        entry.desktopKeys = keys;
        emit desktopKeysChanged(id, keys);
    }
    if (trouble == entry.trouble)
        return;
    entry.trouble = trouble;
    emit troubleChanged(id, trouble);
}
