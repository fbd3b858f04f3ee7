#include "hotkey/KeySymbols_x11.h"

#include "hotkey/KeyName.h"

#include <QChar>
#include <QKeySequence>
#include <Qt>
#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {

struct NamedKey
{
    int key;
    xkb_keysym_t symbol;
};

// Where several rows share a key or a symbol the first one counts, in either direction.
constexpr NamedKey kNamedKeys[] = {
    {Qt::Key_Escape, XKB_KEY_Escape},
    {Qt::Key_Tab, XKB_KEY_Tab},
    {Qt::Key_Backtab, XKB_KEY_ISO_Left_Tab},
    {Qt::Key_Backspace, XKB_KEY_BackSpace},
    {Qt::Key_Return, XKB_KEY_Return},
    {Qt::Key_Enter, XKB_KEY_KP_Enter},
    {Qt::Key_Insert, XKB_KEY_Insert},
    {Qt::Key_Delete, XKB_KEY_Delete},
    {Qt::Key_Pause, XKB_KEY_Pause},
    {Qt::Key_Print, XKB_KEY_Print},
    {Qt::Key_SysReq, XKB_KEY_Sys_Req},
    {Qt::Key_Clear, XKB_KEY_Clear},
    {Qt::Key_Home, XKB_KEY_Home},
    {Qt::Key_End, XKB_KEY_End},
    {Qt::Key_Left, XKB_KEY_Left},
    {Qt::Key_Up, XKB_KEY_Up},
    {Qt::Key_Right, XKB_KEY_Right},
    {Qt::Key_Down, XKB_KEY_Down},
    {Qt::Key_PageUp, XKB_KEY_Prior},
    {Qt::Key_PageDown, XKB_KEY_Next},
    {Qt::Key_CapsLock, XKB_KEY_Caps_Lock},
    {Qt::Key_NumLock, XKB_KEY_Num_Lock},
    {Qt::Key_ScrollLock, XKB_KEY_Scroll_Lock},
    {Qt::Key_Menu, XKB_KEY_Menu},
    {Qt::Key_Help, XKB_KEY_Help},
    {Qt::Key_Select, XKB_KEY_Select},
    {Qt::Key_Execute, XKB_KEY_Execute},
    {Qt::Key_Cancel, XKB_KEY_Cancel},
    {Qt::Key_Undo, XKB_KEY_Undo},
    {Qt::Key_Redo, XKB_KEY_Redo},
    {Qt::Key_Find, XKB_KEY_Find},
    // Of the browser.
    {Qt::Key_Back, XKB_KEY_XF86Back},
    {Qt::Key_Forward, XKB_KEY_XF86Forward},
    {Qt::Key_Stop, XKB_KEY_XF86Stop},
    {Qt::Key_Refresh, XKB_KEY_XF86Refresh},
    {Qt::Key_Reload, XKB_KEY_XF86Reload},
    {Qt::Key_HomePage, XKB_KEY_XF86HomePage},
    {Qt::Key_Favorites, XKB_KEY_XF86Favorites},
    {Qt::Key_Search, XKB_KEY_XF86Search},
    {Qt::Key_OpenUrl, XKB_KEY_XF86OpenURL},
    {Qt::Key_WWW, XKB_KEY_XF86WWW},
    {Qt::Key_History, XKB_KEY_XF86History},
    {Qt::Key_AddFavorite, XKB_KEY_XF86AddFavorite},
    // Of sound and film.
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
    {Qt::Key_AudioRewind, XKB_KEY_XF86AudioRewind},
    {Qt::Key_AudioForward, XKB_KEY_XF86AudioForward},
    {Qt::Key_AudioRepeat, XKB_KEY_XF86AudioRepeat},
    {Qt::Key_AudioRandomPlay, XKB_KEY_XF86AudioRandomPlay},
    {Qt::Key_Eject, XKB_KEY_XF86Eject},
    // Of programs.
    {Qt::Key_LaunchMail, XKB_KEY_XF86Mail},
    {Qt::Key_LaunchMedia, XKB_KEY_XF86AudioMedia},
    {Qt::Key_Launch0, XKB_KEY_XF86MyComputer},
    {Qt::Key_Launch1, XKB_KEY_XF86Calculator},
    {Qt::Key_Calculator, XKB_KEY_XF86Calculator},
    {Qt::Key_Launch2, XKB_KEY_XF86Launch0},
    {Qt::Key_Launch3, XKB_KEY_XF86Launch1},
    {Qt::Key_Launch4, XKB_KEY_XF86Launch2},
    {Qt::Key_Launch5, XKB_KEY_XF86Launch3},
    {Qt::Key_Launch6, XKB_KEY_XF86Launch4},
    {Qt::Key_Launch7, XKB_KEY_XF86Launch5},
    {Qt::Key_Launch8, XKB_KEY_XF86Launch6},
    {Qt::Key_Launch9, XKB_KEY_XF86Launch7},
    {Qt::Key_LaunchA, XKB_KEY_XF86Launch8},
    {Qt::Key_LaunchB, XKB_KEY_XF86Launch9},
    {Qt::Key_LaunchC, XKB_KEY_XF86LaunchA},
    {Qt::Key_LaunchD, XKB_KEY_XF86LaunchB},
    {Qt::Key_LaunchE, XKB_KEY_XF86LaunchC},
    {Qt::Key_LaunchF, XKB_KEY_XF86LaunchD},
    {Qt::Key_LaunchG, XKB_KEY_XF86LaunchE},
    {Qt::Key_LaunchH, XKB_KEY_XF86LaunchF},
    {Qt::Key_Explorer, XKB_KEY_XF86Explorer},
    {Qt::Key_Documents, XKB_KEY_XF86Documents},
    {Qt::Key_Tools, XKB_KEY_XF86Tools},
    {Qt::Key_Messenger, XKB_KEY_XF86Messenger},
    {Qt::Key_WebCam, XKB_KEY_XF86WebCam},
    {Qt::Key_Phone, XKB_KEY_XF86Phone},
    {Qt::Key_Game, XKB_KEY_XF86Game},
    {Qt::Key_Shop, XKB_KEY_XF86Shop},
    {Qt::Key_Finance, XKB_KEY_XF86Finance},
    {Qt::Key_MenuKB, XKB_KEY_XF86MenuKB},
    {Qt::Key_Terminal, XKB_KEY_XF86Terminal},
    {Qt::Key_TaskPane, XKB_KEY_XF86TaskPane},
    {Qt::Key_Display, XKB_KEY_XF86Display},
    {Qt::Key_DOS, XKB_KEY_XF86DOS},
    {Qt::Key_Go, XKB_KEY_XF86Go},
    {Qt::Key_Xfer, XKB_KEY_XF86Xfer},
    {Qt::Key_RotateWindows, XKB_KEY_XF86RotateWindows},
    // Of editing.
    {Qt::Key_New, XKB_KEY_XF86New},
    {Qt::Key_Open, XKB_KEY_XF86Open},
    {Qt::Key_Save, XKB_KEY_XF86Save},
    {Qt::Key_Close, XKB_KEY_XF86Close},
    {Qt::Key_Cut, XKB_KEY_XF86Cut},
    {Qt::Key_Copy, XKB_KEY_XF86Copy},
    {Qt::Key_Paste, XKB_KEY_XF86Paste},
    {Qt::Key_Send, XKB_KEY_XF86Send},
    {Qt::Key_Reply, XKB_KEY_XF86Reply},
    {Qt::Key_MailForward, XKB_KEY_XF86MailForward},
    {Qt::Key_ZoomIn, XKB_KEY_XF86ZoomIn},
    {Qt::Key_ZoomOut, XKB_KEY_XF86ZoomOut},
    // Of the machine.
    {Qt::Key_Sleep, XKB_KEY_XF86Sleep},
    {Qt::Key_Standby, XKB_KEY_XF86Standby},
    {Qt::Key_Suspend, XKB_KEY_XF86Suspend},
    {Qt::Key_Hibernate, XKB_KEY_XF86Hibernate},
    {Qt::Key_WakeUp, XKB_KEY_XF86WakeUp},
    {Qt::Key_PowerOff, XKB_KEY_XF86PowerOff},
    {Qt::Key_PowerDown, XKB_KEY_XF86PowerDown},
    {Qt::Key_LogOff, XKB_KEY_XF86LogOff},
    {Qt::Key_ScreenSaver, XKB_KEY_XF86ScreenSaver},
    {Qt::Key_MonBrightnessUp, XKB_KEY_XF86MonBrightnessUp},
    {Qt::Key_MonBrightnessDown, XKB_KEY_XF86MonBrightnessDown},
    {Qt::Key_KeyboardLightOnOff, XKB_KEY_XF86KbdLightOnOff},
    {Qt::Key_KeyboardBrightnessUp, XKB_KEY_XF86KbdBrightnessUp},
    {Qt::Key_KeyboardBrightnessDown, XKB_KEY_XF86KbdBrightnessDown},
    {Qt::Key_Battery, XKB_KEY_XF86Battery},
    {Qt::Key_Bluetooth, XKB_KEY_XF86Bluetooth},
    {Qt::Key_WLAN, XKB_KEY_XF86WLAN},
    {Qt::Key_UWB, XKB_KEY_XF86UWB},
    {Qt::Key_TouchpadToggle, XKB_KEY_XF86TouchpadToggle},
    {Qt::Key_TouchpadOn, XKB_KEY_XF86TouchpadOn},
    {Qt::Key_TouchpadOff, XKB_KEY_XF86TouchpadOff},
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

// Two pages of X11's symbols the toolkit keeps in pages of its own.
constexpr int kAccentKeys = Qt::Key_Dead_Grave & ~0xff;
constexpr int kAsianKeys = Qt::Key_Multi_key & ~0xff;

constexpr bool isAsianKey(quint32 low)
{
    return low >= (XKB_KEY_Kanji & 0xff) && low < 0x40;
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
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return XKB_KEY_F1 + quint32(key - Qt::Key_F1);
    const quint32 low = quint32(key) & 0xff;
    if ((key & ~0xff) == kAccentKeys)
        return plainSymbol((XKB_KEY_dead_grave & ~0xffu) | low);
    if ((key & ~0xff) == kAsianKeys && isAsianKey(low))
        return (XKB_KEY_Kanji & ~0xffu) | low;
    const NamedKey* found = find(kNamedKeys, isTheKey);
    return found ? found->symbol : XKB_KEY_NoSymbol;
}

int keyOfSymbol(xkb_keysym_t plain)
{
    const auto hasTheSymbol = [plain](const NamedKey& each) { return each.symbol == plain; };
    if (const NamedKey* found = find(kNamedKeys, hasTheSymbol))
        return found->key;
    if (const NamedKey* found = find(kKeypadKeys, hasTheSymbol))
        return found->key | Qt::KeypadModifier;
    if (plain >= XKB_KEY_F1 && plain <= XKB_KEY_F35)
        return Qt::Key_F1 + int(plain - XKB_KEY_F1);
    if ((plain & ~0xffu) == (XKB_KEY_Kanji & ~0xffu) && isAsianKey(plain & 0xff))
        return kAsianKeys | int(plain & 0xff);
    const quint32 codePoint = xkb_keysym_to_utf32(plain);
    return isCharacter(codePoint) && !isOnKeypad(plain) ? int(QChar::toUpper(codePoint))
                                                        : int(Qt::Key_unknown);
}

QString keyNameOfSymbol(xkb_keysym_t plain)
{
    const QString name = parseableKeyName({}, keyOfSymbol(plain));
    return !name.isEmpty() && symbolOfKey(QKeySequence(name)[0]) == plain ? name : QString();
}
