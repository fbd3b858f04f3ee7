#include "app/HotkeyBinding.h"

#include <QKeySequence>

namespace {

const QLatin1String kKeyCode("keyCode");
const QLatin1String kModifiers("modifiers");
constexpr int kNoNumber = -1;

/// With the mark of the keypad: its keys are keys of their own.
int markedKey(const HotkeyBinding& binding)
{
    return binding.key | static_cast<int>(binding.modifiers & Qt::KeypadModifier);
}

QString keyName(const HotkeyBinding& binding)
{
    return QKeySequence(markedKey(binding)).toString(QKeySequence::PortableText);
}

} // namespace

bool HotkeyBinding::isValid() const
{
    if (key < Qt::Key_Space || key >= Qt::Key_unknown ||
        (modifiers & ~(Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier | Qt::KeypadModifier)))
        return false;
    // Modifier keys and numbers that stand for no key have no name that reads as them.
    return QKeySequence::fromString(keyName(*this), QKeySequence::PortableText)[0] == markedKey(*this);
}

HotkeyCombine HotkeyBinding::toCombine() const
{
    return {keyName(*this), modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier),
            modifiers.testFlag(Qt::ShiftModifier)};
}

HotkeyBinding HotkeyBinding::fromCombine(const HotkeyCombine& combine)
{
    const int marked = QKeySequence(combine.key)[0];
    const auto marks = Qt::KeyboardModifiers(marked & Qt::KeyboardModifierMask);
    HotkeyBinding binding;
    if (!(marks & ~Qt::KeypadModifier)) // else a combination, no key
        binding = {Qt::Key(marked & ~Qt::KeyboardModifierMask), marks};
    binding.modifiers.setFlag(Qt::ControlModifier, combine.ctrl);
    binding.modifiers.setFlag(Qt::AltModifier, combine.alt);
    binding.modifiers.setFlag(Qt::ShiftModifier, combine.shift);
    return binding;
}

std::optional<HotkeyBinding> HotkeyBinding::fromStored(const QJsonValue& stored)
{
    // A value that is no whole number within an int becomes the stand-in.
    const int key = stored[kKeyCode].toInt(kNoNumber);
    if (key < 0 || key > Qt::Key_unknown)
        return std::nullopt;
    const HotkeyBinding binding{Qt::Key(key), Qt::KeyboardModifiers(stored[kModifiers].toInt(kNoNumber))};
    return binding.isValid() ? std::optional(binding) : std::nullopt;
}

QJsonObject HotkeyBinding::toStored(QJsonObject object) const
{
    object.insert(kKeyCode, key);
    object.insert(kModifiers, static_cast<int>(modifiers));
    return object;
}
