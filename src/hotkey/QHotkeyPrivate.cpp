#include "hotkey/QHotkeyPrivate.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
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
    const bool isFree =
        m_shortcuts.contains(shortcut) || (registerShortcut(shortcut) && unregisterShortcut(shortcut));
    return isFree ? HotkeyTrouble::None : trouble;
}

void QHotkeyPrivate::activateShortcut(QHotkey::NativeShortcut shortcut)
{
    tell(shortcut, &QHotkey::activated);
}

void QHotkeyPrivate::releaseShortcut(QHotkey::NativeShortcut shortcut)
{
    tell(shortcut, &QHotkey::released);
}

void QHotkeyPrivate::tell(QHotkey::NativeShortcut shortcut, void (QHotkey::*signal)())
{
    const QList<QHotkey*> hotkeys = m_shortcuts.values(shortcut);
    for (QHotkey* hotkey : hotkeys) {
        // It may have been given up while the news was on its way.
        const auto news = [hotkey, shortcut, signal] {
            if (hotkey->m_registered && hotkey->m_nativeShortcut == shortcut)
                emit(hotkey->*signal)();
        };
        QMetaObject::invokeMethod(hotkey, news, Qt::QueuedConnection);
    }
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
            emit hotkey->registeredChanged(false);
        };
        QMetaObject::invokeMethod(hotkey, news, Qt::QueuedConnection);
    }
}
