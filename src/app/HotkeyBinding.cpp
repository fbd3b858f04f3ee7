#include "app/HotkeyBinding.h"

#include <QKeySequence>

namespace {

const QLatin1String kKeyCode("keyCode");
const QLatin1String kModifiers("modifiers");
constexpr int kNoNumber = -1;

QString keyName(Qt::Key key)
{
    return QKeySequence(key).toString(QKeySequence::PortableText);
}

} // namespace

bool HotkeyBinding::isValid() const
{
    constexpr int kLeastKey = Qt::Key_Space;
    const int unmarked = key & ~Qt::KeypadModifier; // a key of the keypad is one of its own
    if (unmarked < kLeastKey || unmarked >= Qt::Key_unknown ||
        (modifiers & ~(Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier)))
        return false;
    // Modifier keys and numbers that stand for no key have no name that reads as them.
    return QKeySequence::fromString(keyName(key), QKeySequence::PortableText)[0] == key;
}

QString HotkeyBinding::toText() const
{
    QString text;
    if (modifiers & Qt::ControlModifier)
        text += QLatin1String("Ctrl+");
    if (modifiers & Qt::AltModifier)
        text += QLatin1String("Alt+");
    if (modifiers & Qt::ShiftModifier)
        text += QLatin1String("Shift+");
    return text + keyName(key);
}

HotkeyCombine HotkeyBinding::toCombine() const
{
    return {keyName(key), modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier),
            modifiers.testFlag(Qt::ShiftModifier)};
}

HotkeyBinding HotkeyBinding::fromCombine(const HotkeyCombine& combine)
{
    HotkeyBinding binding{Qt::Key(QKeySequence(combine.key)[0]), {}};
    binding.modifiers.setFlag(Qt::ControlModifier, combine.ctrl);
    binding.modifiers.setFlag(Qt::AltModifier, combine.alt);
    binding.modifiers.setFlag(Qt::ShiftModifier, combine.shift);
    return binding;
}

std::optional<HotkeyBinding> HotkeyBinding::fromStored(const QJsonValue& stored)
{
    // A value that is no whole number within an int becomes the stand-in.
    const int modifiers = stored[kModifiers].toInt(kNoNumber);
    const HotkeyBinding binding{Qt::Key(stored[kKeyCode].toInt(kNoNumber)), Qt::KeyboardModifiers(modifiers)};
    return binding.isValid() ? std::optional(binding) : std::nullopt;
}

QJsonObject HotkeyBinding::toStored(QJsonObject object) const
{
    object.insert(kKeyCode, key);
    object.insert(kModifiers, static_cast<int>(modifiers));
    return object;
}
