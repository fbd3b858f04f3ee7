#include "hotkey/QHotkey.h"

#include "hotkey/QHotkeyPrivate.h"

Q_LOGGING_CATEGORY(logHotkey, "QHotkey")

QHotkey::QHotkey(QObject* parent)
    : QObject(parent)
{
}

QHotkey::~QHotkey()
{
    setRegistered(false);
    blockSignals(true); // whoever answered by registering anew gets the object no more
    setRegistered(false);
}

QKeySequence QHotkey::shortcut() const
{
    return m_keyCode == Qt::Key_unknown ? QKeySequence() : QKeySequence(m_keyCode | m_modifiers);
}

void QHotkey::setAction(const QString& id, const QString& description)
{
    m_actionId = id;
    m_description = description;
}

bool QHotkey::setRegistered(bool registered)
{
    if (m_registered == registered)
        return true;
    QHotkeyPrivate* platform = QHotkeyPrivate::instance();
    if (!platform || !m_nativeShortcut.valid)
        return false;
    return registered ? platform->addShortcut(this) : platform->removeShortcut(this);
}

/// Whether the shortcut may be replaced; a registered one is released for that, and may have been registered
/// anew by whoever heard of it.
bool QHotkey::makeChangeable(bool autoRegister)
{
    return !m_registered || (autoRegister && setRegistered(false) && !m_registered);
}

void QHotkey::unset()
{
    m_keyCode = Qt::Key_unknown;
    m_modifiers = Qt::NoModifier;
    m_nativeShortcut = {};
}

bool QHotkey::setShortcut(QKeySequence shortcut, bool autoRegister)
{
    if (shortcut.isEmpty())
        return resetShortcut();
    if (shortcut.count() > 1)
        qCWarning(logHotkey, "Keysequences with multiple shortcuts are not allowed! "
                             "Only the first shortcut will be used!");
    const auto combination = static_cast<uint>(shortcut[0]);
    return setShortcut(Qt::Key(combination & ~Qt::KeyboardModifierMask),
                       Qt::KeyboardModifiers(static_cast<int>(combination & Qt::KeyboardModifierMask)),
                       autoRegister);
}

bool QHotkey::setShortcut(Qt::Key keyCode, Qt::KeyboardModifiers modifiers, bool autoRegister)
{
    if (!makeChangeable(autoRegister))
        return false;
    unset();
    if (keyCode == Qt::Key_unknown)
        return true;

    QHotkeyPrivate* platform = QHotkeyPrivate::instance();
    const NativeShortcut native = platform ? platform->nativeShortcut(keyCode, modifiers) : NativeShortcut();
    if (!native.valid) {
        m_trouble = HotkeyTrouble::NoSuchKey;
        qCWarning(logHotkey) << "Unable to map shortcut to native keys. Key:" << keyCode
                             << "Modifiers:" << modifiers;
        return false;
    }
    m_keyCode = keyCode;
    m_modifiers = modifiers;
    m_nativeShortcut = native;
    return !autoRegister || platform->addShortcut(this);
}

bool QHotkey::setNativeShortcut(NativeShortcut nativeShortcut, bool autoRegister)
{
    if (!makeChangeable(autoRegister))
        return false;
    unset();
    if (!nativeShortcut.valid)
        return true;
    m_nativeShortcut = nativeShortcut;
    return !autoRegister || setRegistered(true);
}

bool QHotkey::resetShortcut()
{
    if (!makeChangeable(true))
        return false;
    unset();
    return true;
}

uint qHash(const QHotkey::NativeShortcut& shortcut, uint seed)
{
    return qHash((quint64(shortcut.key) << 32) | shortcut.modifier, seed);
}
