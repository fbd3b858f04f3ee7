#include "hotkey/KeyName.h"

#include <QKeySequence>
#include <algorithm>

namespace {

bool canBeHotkey(int key)
{
    constexpr int kNone[] = {
        0,
        Qt::Key_unknown,
        Qt::Key_Shift,
        Qt::Key_Control,
        Qt::Key_Meta,
        Qt::Key_Alt,
        Qt::Key_AltGr,
        Qt::Key_CapsLock,
        Qt::Key_NumLock,
        Qt::Key_ScrollLock,
        Qt::Key_Super_L,
        Qt::Key_Super_R,
        Qt::Key_Hyper_L,
        Qt::Key_Hyper_R,
        Qt::Key_Multi_key,
        Qt::Key_Mode_switch,
    };
    return std::find(std::begin(kNone), std::end(kNone), key & ~Qt::KeypadModifier) == std::end(kNone);
}

/// Key_unknown where the text is no single key.
int parsed(const QString& text)
{
    const QKeySequence sequence(text);
    return sequence.count() == 1 ? sequence[0] : int(Qt::Key_unknown);
}

/// Where those still mean the same key: there are letters without a capital.
QString inCapitals(const QString& name)
{
    QString capitals = name.toUpper();
    return parsed(capitals) == parsed(name) ? capitals : name;
}

} // namespace

QString parseableKeyName(const QString& systemName, int key)
{
    if (!canBeHotkey(key))
        return {};
    QString name = inCapitals(systemName.trimmed());
    const int meant = parsed(name);
    const bool isOwnSymbol = name.size() == 1 && meant != Qt::Key_unknown && !(key & Qt::KeypadModifier);
    if (meant == key || isOwnSymbol)
        return name;
    const QString text = QKeySequence(key).toString(QKeySequence::PortableText);
    return parsed(text) == key ? inCapitals(text) : QString();
}
