#include "hotkey/WindowsKeys.h"

#include <algorithm>
#include <iterator>

namespace {

struct Entry
{
    int key;
    quint32 virtualKey;
};

constexpr Entry kKeys[] = {
    {Qt::Key_Escape, 27},      {Qt::Key_Tab, 9},          {Qt::Key_Backtab, 9},
    {Qt::Key_Backspace, 8},    {Qt::Key_Return, 13},      {Qt::Key_Enter, 13},
    {Qt::Key_Insert, 45},      {Qt::Key_Delete, 46},      {Qt::Key_Pause, 19},
    {Qt::Key_Print, 42},       {Qt::Key_Clear, 12},       {Qt::Key_Home, 36},
    {Qt::Key_End, 35},         {Qt::Key_Left, 37},        {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},       {Qt::Key_Down, 40},        {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},    {Qt::Key_CapsLock, 20},    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145}, {Qt::Key_Menu, 93},        {Qt::Key_Help, 47},
    {Qt::Key_Forward, 167},    {Qt::Key_Stop, 169},       {Qt::Key_Refresh, 168},
    {Qt::Key_VolumeDown, 174}, {Qt::Key_VolumeMute, 173}, {Qt::Key_VolumeUp, 175},
    {Qt::Key_MediaPlay, 179},  {Qt::Key_MediaStop, 178},  {Qt::Key_MediaPrevious, 177},
    {Qt::Key_MediaNext, 176},  {Qt::Key_HomePage, 172},   {Qt::Key_Favorites, 171},
    {Qt::Key_Search, 170},     {Qt::Key_LaunchMail, 180}, {Qt::Key_LaunchMedia, 181},
    {Qt::Key_Launch0, 182},    {Qt::Key_Launch1, 183},    {Qt::Key_Touroku, 148},
    {Qt::Key_Massyo, 147},     {Qt::Key_Mode_switch, 31}, {Qt::Key_Select, 41},
    {Qt::Key_Cancel, 3},       {Qt::Key_Printer, 42},     {Qt::Key_Execute, 43},
    {Qt::Key_Sleep, 95},       {Qt::Key_Play, 250},
};
constexpr Entry kKeypadKeys[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
};
constexpr quint32 kKeypad0 = 96;
constexpr quint32 kF1 = 112;
constexpr uint kCharacters = 0x10000; ///< keys below are those of characters
constexpr int kPoint = 46;
constexpr quint32 kDecimal = 110;

template <typename Table>
quint32 valueIn(const Table& table, int key, bool& ok)
{
    const auto* entry = std::find_if(std::begin(table), std::end(table),
                                     [key](const Entry& each) { return each.key == key; });
    ok = entry != std::end(table);
    return ok ? entry->virtualKey : 0;
}

} // namespace

quint32 WindowsKeys::virtualKey(int key, KeyOfCharacter keyOfCharacter, bool& ok)
{
    ok = true;
    if ((key & Qt::KeyboardModifierMask) == Qt::KeypadModifier) {
        key &= ~Qt::KeypadModifier;
        if (key >= Qt::Key_0 && key <= Qt::Key_9)
            return kKeypad0 + static_cast<quint32>(key - Qt::Key_0);
        const quint32 found = valueIn(kKeypadKeys, key, ok);
        if (ok)
            return found;
        ok = true; // the others, and all without Num lock, are the same as elsewhere
    }
    if (static_cast<uint>(key) < kCharacters) {
        const short found = keyOfCharacter(static_cast<ushort>(key));
        if (found != -1)
            return static_cast<quint32>(found) & 0xFF;
        return key == kPoint ? kDecimal : static_cast<quint32>(key) & 0xFF;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return kF1 + static_cast<quint32>(key - Qt::Key_F1);
    return valueIn(kKeys, key, ok);
}

quint32 WindowsKeys::modifiers(Qt::KeyboardModifiers modifiers)
{
    constexpr quint32 kAlt = 1, kControl = 2, kShift = 4, kWin = 8;
    return (modifiers.testFlag(Qt::AltModifier) ? kAlt : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? kControl : 0) |
           (modifiers.testFlag(Qt::ShiftModifier) ? kShift : 0) |
           (modifiers.testFlag(Qt::MetaModifier) ? kWin : 0);
}

int WindowsKeys::shortcutId(quint32 key, quint32 modifier)
{
    return static_cast<int>(((key ^ (modifier << 8)) & 0x0FFF) | 0x7000);
}
