#include "hotkey/QHotkeyPrivate.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

namespace {

/// Ends with the process, after everything that may still hold a hotkey.
struct Platform
{
    ~Platform()
    {
        s_isGone = true;
        keeper.reset();
    }
    std::unique_ptr<QHotkeyPrivate> keeper = makeHotkeyPlatform();
    static bool s_isGone;
};

bool Platform::s_isGone = false;

QHotkeyPrivate* makeOrFind()
{
    static Platform platform;
    return platform.keeper.get();
}

} // namespace

QHotkeyPrivate* QHotkeyPrivate::instance()
{
    QCoreApplication* app = QCoreApplication::instance();
    if (!app || Platform::s_isGone)
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

bool QHotkeyPrivate::isAvailable(QHotkey::NativeShortcut shortcut)
{
    bool result = false;
    return QMetaObject::invokeMethod(this, "isAvailableInvoked", connectionType(), Q_RETURN_ARG(bool, result),
                                     Q_ARG(QHotkey::NativeShortcut, shortcut)) &&
           result;
}

QHotkey::NativeShortcut QHotkeyPrivate::nativeShortcutInvoked(Qt::Key keycode,
                                                              Qt::KeyboardModifiers modifiers)
{
    const auto mapped = m_mapping.constFind({keycode, uint(modifiers)});
    if (mapped != m_mapping.constEnd())
        return *mapped;
    bool hasKey = false, hasModifiers = false;
    const quint32 nativeKey = nativeKeycode(keycode, hasKey);
    const quint32 nativeModifier = nativeModifiers(modifiers, hasModifiers);
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
    hotkey->m_registered = false;
    const QString name = hotkey->shortcut().toString();
    emit hotkey->registeredChanged(false);
    if (m_shortcuts.contains(shortcut) || unregisterShortcut(shortcut))
        return true;
    qCWarning(logHotkey).noquote() << QHotkey::tr("Failed to unregister %1. Error: %2").arg(name, error);
    return false;
}

bool QHotkeyPrivate::addMappingInvoked(Qt::Key keycode, Qt::KeyboardModifiers modifiers,
                                       QHotkey::NativeShortcut nativeShortcut)
{
    m_mapping.insert({keycode, uint(modifiers)}, nativeShortcut);
    return true;
}

bool QHotkeyPrivate::isAvailableInvoked(QHotkey::NativeShortcut shortcut)
{
    return m_shortcuts.contains(shortcut) || (registerShortcut(shortcut) && unregisterShortcut(shortcut));
}

void QHotkeyPrivate::activateShortcut(QHotkey::NativeShortcut shortcut)
{
    for (QHotkey* hotkey : m_shortcuts.values(shortcut))
        QMetaObject::invokeMethod(hotkey, &QHotkey::activated, Qt::QueuedConnection);
}

void QHotkeyPrivate::releaseShortcut(QHotkey::NativeShortcut shortcut)
{
    for (QHotkey* hotkey : m_shortcuts.values(shortcut))
        QMetaObject::invokeMethod(hotkey, &QHotkey::released, Qt::QueuedConnection);
}

void QHotkeyPrivate::loseShortcut(QHotkey::NativeShortcut shortcut)
{
    const QList<QHotkey*> hotkeys = m_shortcuts.values(shortcut);
    m_shortcuts.remove(shortcut);
    for (QHotkey* hotkey : hotkeys) {
        hotkey->m_registered = false;
        hotkey->m_trouble = trouble;
        // Queued: its thread may be in the middle of anything.
        QMetaObject::invokeMethod(
            hotkey, [hotkey] { emit hotkey->registeredChanged(false); }, Qt::QueuedConnection);
    }
}
