#include "hotkey/KeySymbols_x11.h"

#include "hotkey/KeyName.h"

#include <QChar>
#include <QHash>
#include <QKeySequence>
#include <QMetaEnum>
#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {

struct NamedKey
{
    int key;
    xkb_keysym_t symbol;
};

// The keys that X11 has another name for. Where several rows share a key or a symbol, here and below, the
// first one counts, in either direction.
constexpr NamedKey kRenamedKeys[] = {
    {Qt::Key_Backtab, XKB_KEY_ISO_Left_Tab},
    {Qt::Key_Enter, XKB_KEY_KP_Enter},
    {Qt::Key_SysReq, XKB_KEY_Sys_Req},
    {Qt::Key_PageUp, XKB_KEY_Prior},
    {Qt::Key_PageDown, XKB_KEY_Next},
    {Qt::Key_CapsLock, XKB_KEY_Caps_Lock},
    {Qt::Key_NumLock, XKB_KEY_Num_Lock},
    {Qt::Key_ScrollLock, XKB_KEY_Scroll_Lock},
    {Qt::Key_VolumeDown, XKB_KEY_XF86AudioLowerVolume},
    {Qt::Key_VolumeMute, XKB_KEY_XF86AudioMute},
    {Qt::Key_VolumeUp, XKB_KEY_XF86AudioRaiseVolume},
    {Qt::Key_MicMute, XKB_KEY_XF86AudioMicMute},
    {Qt::Key_MediaPlay, XKB_KEY_XF86AudioPlay},
    {Qt::Key_MediaTogglePlayPause, XKB_KEY_XF86AudioPlay},
    {Qt::Key_MediaPause, XKB_KEY_XF86AudioPause},
    {Qt::Key_MediaStop, XKB_KEY_XF86AudioStop},
    {Qt::Key_MediaPrevious, XKB_KEY_XF86AudioPrev},
    {Qt::Key_MediaNext, XKB_KEY_XF86AudioNext},
    {Qt::Key_MediaRecord, XKB_KEY_XF86AudioRecord},
    {Qt::Key_LaunchMail, XKB_KEY_XF86Mail},
    {Qt::Key_LaunchMedia, XKB_KEY_XF86AudioMedia},
    {Qt::Key_Launch0, XKB_KEY_XF86MyComputer},
    {Qt::Key_Launch1, XKB_KEY_XF86Calculator},
    {Qt::Key_LaunchG, XKB_KEY_XF86LaunchE},
    {Qt::Key_LaunchH, XKB_KEY_XF86LaunchF},
    {Qt::Key_KeyboardLightOnOff, XKB_KEY_XF86KbdLightOnOff},
    {Qt::Key_KeyboardBrightnessUp, XKB_KEY_XF86KbdBrightnessUp},
    {Qt::Key_KeyboardBrightnessDown, XKB_KEY_XF86KbdBrightnessDown},
};

constexpr NamedKey kKeypadKeys[] = {
    {Qt::Key_Plus, XKB_KEY_KP_Add},
    {Qt::Key_Minus, XKB_KEY_KP_Subtract},
    {Qt::Key_Asterisk, XKB_KEY_KP_Multiply},
    {Qt::Key_Slash, XKB_KEY_KP_Divide},
    {Qt::Key_Equal, XKB_KEY_KP_Equal},
    {Qt::Key_Period, XKB_KEY_KP_Decimal},
    {Qt::Key_Comma, XKB_KEY_KP_Decimal},
    {Qt::Key_Delete, XKB_KEY_KP_Decimal},
    {Qt::Key_0, XKB_KEY_KP_0},
    {Qt::Key_Insert, XKB_KEY_KP_0},
    {Qt::Key_1, XKB_KEY_KP_1},
    {Qt::Key_End, XKB_KEY_KP_1},
    {Qt::Key_2, XKB_KEY_KP_2},
    {Qt::Key_Down, XKB_KEY_KP_2},
    {Qt::Key_3, XKB_KEY_KP_3},
    {Qt::Key_PageDown, XKB_KEY_KP_3},
    {Qt::Key_4, XKB_KEY_KP_4},
    {Qt::Key_Left, XKB_KEY_KP_4},
    {Qt::Key_5, XKB_KEY_KP_5},
    {Qt::Key_Clear, XKB_KEY_KP_5},
    {Qt::Key_6, XKB_KEY_KP_6},
    {Qt::Key_Right, XKB_KEY_KP_6},
    {Qt::Key_7, XKB_KEY_KP_7},
    {Qt::Key_Home, XKB_KEY_KP_7},
    {Qt::Key_8, XKB_KEY_KP_8},
    {Qt::Key_Up, XKB_KEY_KP_8},
    {Qt::Key_9, XKB_KEY_KP_9},
    {Qt::Key_PageUp, XKB_KEY_KP_9},
    {Qt::Key_Enter, XKB_KEY_KP_Enter},
    {Qt::Key_Return, XKB_KEY_KP_Enter},
};

struct Twin
{
    xkb_keysym_t symbol;
    xkb_keysym_t plain;
};

constexpr Twin kTwins[] = {
    {XKB_KEY_KP_Home, XKB_KEY_KP_7},
    {XKB_KEY_KP_Up, XKB_KEY_KP_8},
    {XKB_KEY_KP_Prior, XKB_KEY_KP_9},
    {XKB_KEY_KP_Left, XKB_KEY_KP_4},
    {XKB_KEY_KP_Begin, XKB_KEY_KP_5},
    {XKB_KEY_KP_Right, XKB_KEY_KP_6},
    {XKB_KEY_KP_End, XKB_KEY_KP_1},
    {XKB_KEY_KP_Down, XKB_KEY_KP_2},
    {XKB_KEY_KP_Next, XKB_KEY_KP_3},
    {XKB_KEY_KP_Insert, XKB_KEY_KP_0},
    {XKB_KEY_KP_Delete, XKB_KEY_KP_Decimal},
    {XKB_KEY_KP_Separator, XKB_KEY_KP_Decimal}, // the decimal comma
    {XKB_KEY_dead_grave, XKB_KEY_grave},
    {XKB_KEY_dead_acute, XKB_KEY_acute},
    {XKB_KEY_dead_circumflex, XKB_KEY_asciicircum},
    {XKB_KEY_dead_tilde, XKB_KEY_asciitilde},
    {XKB_KEY_dead_macron, XKB_KEY_macron},
    {XKB_KEY_dead_breve, XKB_KEY_breve},
    {XKB_KEY_dead_abovedot, XKB_KEY_abovedot},
    {XKB_KEY_dead_diaeresis, XKB_KEY_diaeresis},
    {XKB_KEY_dead_abovering, XKB_KEY_degree},
    {XKB_KEY_dead_doubleacute, XKB_KEY_doubleacute},
    {XKB_KEY_dead_caron, XKB_KEY_caron},
    {XKB_KEY_dead_cedilla, XKB_KEY_cedilla},
    {XKB_KEY_dead_ogonek, XKB_KEY_ogonek},
};

constexpr bool isOnKeypad(xkb_keysym_t symbol)
{
    return symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
}

constexpr bool isCharacter(quint32 codePoint)
{
    return codePoint >= ' ' && (codePoint < 0x7f || codePoint > 0x9f);
}

template <typename Table, typename Matches>
auto find(const Table& table, Matches matches)
{
    const auto found = std::find_if(std::begin(table), std::end(table), matches);
    return found == std::end(table) ? nullptr : found;
}

/// One for all that the toolkit knows by one capital: the micro sign and the Greek letter, both i of Turkish.
xkb_keysym_t ofCharacter(quint32 codePoint)
{
    return xkb_utf32_to_keysym(QChar::toLower(QChar::toUpper(codePoint)));
}

/// Most keys bear one name in the toolkit and in X11.
xkb_keysym_t symbolOfSameName(int key)
{
    const QByteArray name =
        QByteArray(QMetaEnum::fromType<Qt::Key>().valueToKey(key)).mid(int(strlen("Key_")));
    const auto symbolOfName = [](const QByteArray& text) {
        return xkb_keysym_from_name(text.constData(), XKB_KEYSYM_CASE_INSENSITIVE);
    };
    const xkb_keysym_t symbol = symbolOfName(name);
    return symbol == XKB_KEY_NoSymbol ? symbolOfName("XF86" + name) : symbol;
}

/// The toolkit's keys that are no characters, by their symbols.
QHash<xkb_keysym_t, int> namedKeys()
{
    QHash<xkb_keysym_t, int> keys;
    const auto add = [&keys](int key) {
        const xkb_keysym_t symbol = symbolOfKey(key);
        if (symbol != XKB_KEY_NoSymbol && !keys.contains(symbol))
            keys.insert(symbol, key);
    };
    for (const NamedKey& each : kRenamedKeys)
        add(each.key);
    const QMetaEnum all = QMetaEnum::fromType<Qt::Key>();
    for (int i = 0; i < all.keyCount(); ++i) {
        if (all.value(i) > QChar::LastValidCodePoint)
            add(all.value(i));
    }
    return keys;
}

} // namespace

xkb_keysym_t plainSymbol(xkb_keysym_t symbol)
{
    if (const Twin* twin = find(kTwins, [symbol](const Twin& each) { return each.symbol == symbol; }))
        return twin->plain;
    const quint32 codePoint = xkb_keysym_to_utf32(symbol);
    return isOnKeypad(symbol) || !isCharacter(codePoint) ? symbol : ofCharacter(codePoint);
}

xkb_keysym_t symbolOfKey(int key)
{
    const bool isKeypad = key & Qt::KeypadModifier;
    key &= ~Qt::KeypadModifier;
    const auto isTheKey = [key](const NamedKey& each) { return each.key == key; };
    if (isKeypad) {
        const NamedKey* found = find(kKeypadKeys, isTheKey);
        return found ? found->symbol : XKB_KEY_NoSymbol;
    }
    if (key > 0 && key <= QChar::LastValidCodePoint)
        return isCharacter(quint32(key)) ? ofCharacter(quint32(key)) : XKB_KEY_NoSymbol;
    if (key >= Qt::Key_Launch2 && key <= Qt::Key_LaunchF) // one name for another key of the row
        return XKB_KEY_XF86Launch0 + quint32(key - Qt::Key_Launch2);
    const NamedKey* found = find(kRenamedKeys, isTheKey);
    return found ? found->symbol : plainSymbol(symbolOfSameName(key));
}

int keyOfSymbol(xkb_keysym_t plain)
{
    const quint32 codePoint = xkb_keysym_to_utf32(plain);
    if (isCharacter(codePoint) && !isOnKeypad(plain))
        return int(QChar::toUpper(codePoint));
    static const QHash<xkb_keysym_t, int> keys = namedKeys();
    if (keys.contains(plain))
        return keys[plain];
    const NamedKey* found = find(kKeypadKeys, [plain](const NamedKey& each) { return each.symbol == plain; });
    return found ? found->key | Qt::KeypadModifier : int(Qt::Key_unknown);
}

QString keyNameOfSymbol(xkb_keysym_t plain)
{
    const QString name = parseableKeyName({}, keyOfSymbol(plain));
    return !name.isEmpty() && symbolOfKey(QKeySequence(name)[0]) == plain ? name : QString();
}
