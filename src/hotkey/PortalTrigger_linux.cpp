#include "hotkey/PortalTrigger_linux.h"

#include "hotkey/KeySymbols_x11.h"

#include <QRegularExpression>
#include <QSet>

namespace {

struct Modifier
{
    Qt::KeyboardModifier modifier;
    const char* portalName;
    QSet<QString> words; ///< in descriptions, in small letters
};

const Modifier kModifiers[] = {
    {Qt::ControlModifier, "CTRL", {"ctrl", "control", "primary"}},
    {Qt::AltModifier, "ALT", {"alt"}},
    {Qt::ShiftModifier, "SHIFT", {"shift"}},
    {Qt::MetaModifier, "LOGO", {"logo", "super", "meta", "win"}},
};

QString nameOfSymbol(xkb_keysym_t symbol)
{
    char name[64] = {};
    xkb_keysym_get_name(symbol, name, sizeof(name));
    return QString::fromLatin1(name);
}

} // namespace

QString portalTrigger(const QHotkey::NativeShortcut& shortcut)
{
    QString text;
    for (const Modifier& each : kModifiers) {
        if (shortcut.modifier & each.modifier)
            text += QLatin1String(each.portalName) + '+';
    }
    return text + nameOfSymbol(shortcut.key);
}

bool meansSameKeys(const QString& description, const QHotkey::NativeShortcut& shortcut)
{
    static const QRegularExpression between(QStringLiteral("[<>+\\s]+"));
    QStringList words = description.toLower().split(between, Qt::SkipEmptyParts);
    if (words.isEmpty())
        return false;
    const QString key = words.takeLast();
    const QKeySequence sequence(keyOfSymbol(shortcut.key));
    const bool isSameKey = key == nameOfSymbol(shortcut.key).toLower() ||
                           key == sequence.toString(QKeySequence::PortableText).toLower() ||
                           key == sequence.toString(QKeySequence::NativeText).toLower();
    const auto isNamed = [&words](const Modifier& modifier) {
        return modifier.words.intersects(QSet<QString>(words.cbegin(), words.cend()));
    };
    return isSameKey && std::all_of(std::begin(kModifiers), std::end(kModifiers), [&](const Modifier& each) {
               return isNamed(each) == bool(shortcut.modifier & each.modifier);
           });
}
