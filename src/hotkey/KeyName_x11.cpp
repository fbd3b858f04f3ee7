#include "hotkey/KeyName.h"

#include "hotkey/KeySymbols_x11.h"
#include "hotkey/KeyboardMap_x11.h"

#include <QKeyEvent>
#include <QX11Info>

namespace {

/// The layout in use stands above the modifiers and the mouse's buttons in an event's state.
xkb_layout_index_t layoutOf(quint32 state)
{
    return (state >> 13) & 3;
}

} // namespace

QString hotkeyKeyName(const QKeyEvent& event)
{
    if (!QX11Info::isPlatformX11() || event.nativeScanCode() == 0)
        return parseableKeyName({}, event.key() | static_cast<int>(event.modifiers() & Qt::KeypadModifier));
    // Asked for each time: it cannot be out of date, and no one types faster.
    const KeyboardMap map = KeyboardMap::ofServer(QX11Info::connection());
    const auto key = static_cast<KeyboardMap::KeyCode>(event.nativeScanCode());
    return keyNameOfSymbol(map.symbolOf(key, layoutOf(event.nativeModifiers())));
}
