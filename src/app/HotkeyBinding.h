#pragma once

#include "viewModels/HotkeyCombine.h"

#include <QJsonObject>
#include <optional>

/// The key combination of a hotkey action, in its three forms: Qt's numbers, the store's object and the
/// texts of the user interface.
struct HotkeyBinding
{
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers; ///< with KeypadModifier for a key of the keypad

    bool operator==(const HotkeyBinding& other) const
    {
        return key == other.key && modifiers == other.modifiers;
    }
    /// Whether it is one that can be shown and edited: a key with a name, no modifier key alone, and no
    /// modifiers but Ctrl, Alt, Shift and the mark of the keypad.
    bool isValid() const;

    HotkeyCombine toCombine() const;
    QString toText() const { return toCombine().toText(); }
    /// Perhaps not a valid one.
    static HotkeyBinding fromCombine(const HotkeyCombine& combine);
    /// Nothing unless the stored value is a valid binding.
    static std::optional<HotkeyBinding> fromStored(const QJsonValue& stored);
    /// Members of `object` that are none of the binding's stay.
    QJsonObject toStored(QJsonObject object = {}) const;
};
