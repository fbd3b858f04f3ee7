#include "hotkey/QHotkeyPrivate.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <utility>

// A plain pointer: hotkeys of static storage may live longer than any static object of ours.
QHotkeyPrivate* QHotkeyPrivate::s_instance = nullptr;

QHotkeyPrivate* QHotkeyPrivate::makeOrFind()
{
    if (!s_instance) {
        s_instance = makeHotkeyPlatform().release();
        // The platform stands on the application's connection to the windowing system.
        qAddPostRoutine(&QHotkeyPrivate::end);
    }
    return s_instance;
}

void QHotkeyPrivate::end()
{
    // The system may keep shortcuts for the thread beyond the end of the application.
    const QList<QHotkey::NativeShortcut> shortcuts = s_instance->m_shortcuts.uniqueKeys();
    for (const QHotkey::NativeShortcut shortcut : shortcuts)
        s_instance->unregisterShortcut(shortcut);
    delete std::exchange(s_instance, nullptr);
}

QHotkeyPrivate* QHotkeyPrivate::instance()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || QCoreApplication::closingDown())
        return nullptr;
    if (app->thread() == QThread::currentThread())
        return makeOrFind();
    QHotkeyPrivate* found = nullptr;
    QMetaObject::invokeMethod(
        app, [&found] { found = makeOrFind(); }, Qt::BlockingQueuedConnection);
    return found;
}

QHotkeyPrivate::QHotkeyPrivate()
{
    qRegisterMetaType<Qt::Key>("Qt::Key");
    qRegisterMetaType<Qt::KeyboardModifiers>("Qt::KeyboardModifiers");
    qRegisterMetaType<QHotkey::NativeShortcut>("QHotkey::NativeShortcut");
    qRegisterMetaType<QHotkey*>("QHotkey*");
    QCoreApplication::eventDispatcher()->installNativeEventFilter(this);
}

QHotkeyPrivate::~QHotkeyPrivate()
{
    if (!m_shortcuts.isEmpty())
        qCWarning(logHotkey, "QHotkeyPrivate destroyed with registered shortcuts!");
    for (QHotkey* hotkey : qAsConst(m_shortcuts))
        QMetaObject::invokeMethod(hotkey, [hotkey] { hotkey->m_registered = false; });
    if (QCoreApplication::instance() && QCoreApplication::eventDispatcher())
        QCoreApplication::eventDispatcher()->removeNativeEventFilter(this);
}

Qt::ConnectionType QHotkeyPrivate::connectionType() const
{
    return thread() == QThread::currentThread() ? Qt::DirectConnection : Qt::BlockingQueuedConnection;
}

QHotkey::NativeShortcut QHotkeyPrivate::nativeShortcut(Qt::Key keycode, Qt::KeyboardModifiers modifiers)
{
    QHotkey::NativeShortcut result;
    const bool isCalled = QMetaObject::invokeMethod(
        this, "nativeShortcutInvoked", connectionType(), Q_RETURN_ARG(QHotkey::NativeShortcut, result),
        Q_ARG(Qt::Key, keycode), Q_ARG(Qt::KeyboardModifiers, modifiers));
    return isCalled ? result : QHotkey::NativeShortcut();
}

bool QHotkeyPrivate::addShortcut(QHotkey* hotkey)
{
    bool result = false;
    return QMetaObject::invokeMethod(this, "addShortcutInvoked", connectionType(), Q_RETURN_ARG(bool, result),
                                     Q_ARG(QHotkey*, hotkey)) &&
           result;
}

bool QHotkeyPrivate::removeShortcut(QHotkey* hotkey)
{
    bool result = false;
    return QMetaObject::invokeMethod(this, "removeShortcutInvoked", connectionType(),
                                     Q_RETURN_ARG(bool, result), Q_ARG(QHotkey*, hotkey)) &&
           result;
}

bool QHotkeyPrivate::addMapping(Qt::Key keycode, Qt::KeyboardModifiers modifiers,
                                QHotkey::NativeShortcut nativeShortcut)
{
    bool result = false;
    return QMetaObject::invokeMethod(this, "addMappingInvoked", connectionType(), Q_RETURN_ARG(bool, result),
                                     Q_ARG(Qt::Key, keycode), Q_ARG(Qt::KeyboardModifiers, modifiers),
                                     Q_ARG(QHotkey::NativeShortcut, nativeShortcut)) &&
           result;
}

QHotkey::NativeShortcut QHotkeyPrivate::nativeShortcutInvoked(Qt::Key keycode,
                                                              Qt::KeyboardModifiers modifiers)
{
    const auto mapped = m_mapping.constFind({keycode, uint(modifiers)});
    if (mapped != m_mapping.constEnd())
        return *mapped;
    bool hasKey = false, hasModifiers = false;
    const quint32 nativeKey = modifiers & Qt::KeypadModifier ? nativeKeypadKeycode(keycode, hasKey)
                                                             : nativeKeycode(keycode, hasKey);
    const quint32 nativeModifier = nativeModifiers(modifiers & ~Qt::KeypadModifier, hasModifiers);
    return hasKey && hasModifiers ? QHotkey::NativeShortcut(nativeKey, nativeModifier)
                                  : QHotkey::NativeShortcut();
}

bool QHotkeyPrivate::addShortcutInvoked(QHotkey* hotkey)
{
    const QHotkey::NativeShortcut shortcut = hotkey->m_nativeShortcut;
    if (!m_shortcuts.contains(shortcut) && !registerShortcut(shortcut)) {
        hotkey->m_trouble = trouble;
        qCWarning(logHotkey).noquote()
            << QHotkey::tr("Failed to register %1. Error: %2").arg(hotkey->shortcut().toString(), error);
        return false;
    }
    m_shortcuts.insert(shortcut, hotkey);
    hotkey->m_registered = true;
    hotkey->m_trouble = HotkeyTrouble::None;
    hotkey->m_desktopKeys.clear();
    emit hotkey->registeredChanged(true);
    return true;
}

bool QHotkeyPrivate::removeShortcutInvoked(QHotkey* hotkey)
{
    const QHotkey::NativeShortcut shortcut = hotkey->m_nativeShortcut;
    if (m_shortcuts.remove(shortcut, hotkey) == 0)
        return false;
    // Before anybody hears of it, who might take the same shortcut again at once.
    const bool isGivenBack = m_shortcuts.contains(shortcut) || unregisterShortcut(shortcut);
    if (!isGivenBack) {
        qCWarning(logHotkey).noquote()
            << QHotkey::tr("Failed to unregister %1. Error: %2").arg(hotkey->shortcut().toString(), error);
    }
    hotkey->m_registered = false;
    emit hotkey->registeredChanged(false);
    return isGivenBack;
}

bool QHotkeyPrivate::addMappingInvoked(Qt::Key keycode, Qt::KeyboardModifiers modifiers,
                                       QHotkey::NativeShortcut nativeShortcut)
{
    m_mapping.insert({keycode, uint(modifiers)}, nativeShortcut);
    return true;
}

HotkeyTrouble QHotkeyPrivate::obstacleTo(Qt::Key keycode, Qt::KeyboardModifiers modifiers)
{
    const QHotkey::NativeShortcut shortcut = nativeShortcutInvoked(keycode, modifiers);
    if (!shortcut.valid)
        return HotkeyTrouble::NoSuchKey;
    return m_shortcuts.contains(shortcut) || canRegister(shortcut) ? HotkeyTrouble::None : trouble;
}

QVector<QHotkeyPrivate::Action> QHotkeyPrivate::actions() const
{
    QVector<Action> result;
    for (const QHotkey::NativeShortcut& shortcut : m_shortcuts.uniqueKeys()) {
        const QList<QHotkey*> hotkeys = m_shortcuts.values(shortcut);
        const QHotkey* first = *std::min_element(
            hotkeys.begin(), hotkeys.end(), [](auto* a, auto* b) { return a->m_actionId < b->m_actionId; });
        if (!first->m_actionId.isEmpty())
            result.append({first->m_actionId, first->m_description, shortcut});
    }
    std::sort(result.begin(), result.end(), [](const Action& a, const Action& b) { return a.id < b.id; });
    return result;
}

void QHotkeyPrivate::activateShortcut(QHotkey::NativeShortcut shortcut)
{
    tell(shortcut, &QHotkey::activated);
}

void QHotkeyPrivate::releaseShortcut(QHotkey::NativeShortcut shortcut)
{
    tell(shortcut, &QHotkey::released);
}

template <typename Function>
void QHotkeyPrivate::forEachQueued(QHotkey::NativeShortcut shortcut, Function news)
{
    const QList<QHotkey*> hotkeys = m_shortcuts.values(shortcut);
    for (QHotkey* hotkey : hotkeys) {
        // It may have been given up while the news was on its way.
        const auto ifStillThere = [hotkey, shortcut, news] {
            if (hotkey->m_registered && hotkey->m_nativeShortcut == shortcut)
                news(*hotkey);
        };
        QMetaObject::invokeMethod(hotkey, ifStillThere, Qt::QueuedConnection);
    }
}

void QHotkeyPrivate::tell(QHotkey::NativeShortcut shortcut, void (QHotkey::*signal)())
{
    forEachQueued(shortcut, [signal](QHotkey& hotkey) { emit(hotkey.*signal)(); });
}

void QHotkeyPrivate::setDesktopKeys(QHotkey::NativeShortcut shortcut, const QString& keys, HotkeyTrouble why)
{
    forEachQueued(shortcut, [keys, why](QHotkey& hotkey) {
        hotkey.m_desktopKeys = keys;
        hotkey.m_trouble = why;
        emit hotkey.desktopKeysChanged();
    });
}

void QHotkeyPrivate::loseShortcut(QHotkey::NativeShortcut shortcut)
{
    const QList<QHotkey*> hotkeys = m_shortcuts.values(shortcut);
    m_shortcuts.remove(shortcut);
    for (QHotkey* hotkey : hotkeys) {
        // Until it has heard, it counts itself as registered, cannot register anew and asks here before it
        // ends.
        const auto news = [hotkey, why = trouble] {
            hotkey->m_registered = false;
            hotkey->m_trouble = why;
            hotkey->m_desktopKeys.clear();
            emit hotkey->registeredChanged(false);
        };
        QMetaObject::invokeMethod(hotkey, news, Qt::QueuedConnection);
    }
}
