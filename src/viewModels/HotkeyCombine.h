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
};

Q_DECLARE_METATYPE(HotkeyCombine)
