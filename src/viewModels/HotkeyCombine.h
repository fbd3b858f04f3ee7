#pragma once

#include <QMetaType>
#include <QString>

/// A key combination as it is shown and edited.
struct HotkeyCombine
{
    QString key; ///< a text that QKeySequence parses back into the key
    bool ctrl = false;
    bool alt = false;
    bool shift = false;

    /// Such as "Ctrl+Alt+F10", in every language.
    QString toText() const
    {
        QString text;
        if (ctrl)
            text += QLatin1String("Ctrl+");
        if (alt)
            text += QLatin1String("Alt+");
        if (shift)
            text += QLatin1String("Shift+");
        return text + key;
    }
};

Q_DECLARE_METATYPE(HotkeyCombine)
