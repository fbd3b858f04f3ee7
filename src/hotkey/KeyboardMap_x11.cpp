#include "hotkey/KeyboardMap_x11.h"

#include "hotkey/KeySymbols_x11.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace {

constexpr int kFirstKey = 8; // of X11
constexpr int kLastKey = 255;

xkb_context* context()
{
    static const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), xkb_context_unref);
    return context.get();
}

using State = std::unique_ptr<xkb_state, decltype(&xkb_state_unref)>;

} // namespace

KeyboardMap::KeyboardMap(xkb_keymap* keymap, xkb_layout_index_t inUse)
    : m_keymap(keymap, xkb_keymap_unref)
    , m_inUse(inUse)
{
}

KeyboardMap KeyboardMap::ofServer(xcb_connection_t* connection)
{
    const int32_t keyboard = context() ? xkb_x11_get_core_keyboard_device_id(connection) : -1;
    if (keyboard < 0)
        return {};
    xkb_keymap* keymap =
        xkb_x11_keymap_new_from_device(context(), connection, keyboard, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (!keymap)
        return {};
    const State state(xkb_x11_state_new_from_device(keymap, connection, keyboard), xkb_state_unref);
    return {keymap, state ? xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE) : 0};
}

KeyboardMap KeyboardMap::compiled(const QByteArray& layouts, xkb_layout_index_t inUse)
{
    const xkb_rule_names names{"evdev", "pc105", layouts.constData(), "", ""};
    xkb_keymap* keymap =
        context() ? xkb_keymap_new_from_names(context(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS) : nullptr;
    return keymap ? KeyboardMap(keymap, inUse) : KeyboardMap();
}

xkb_keysym_t KeyboardMap::symbolAt(KeyCode key, xkb_layout_index_t layout, xkb_level_index_t level) const
{
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(m_keymap.get(), key);
    if (layouts == 0)
        return XKB_KEY_NoSymbol;
    const xkb_keysym_t* symbols = nullptr;
    // A key that is the same in all layouts has one only.
    const int count =
        xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, layout % layouts, level, &symbols);
    return count == 1 ? plainSymbol(symbols[0]) : XKB_KEY_NoSymbol;
}

KeyboardMap::Keys KeyboardMap::keysWith(xkb_keysym_t symbol) const
{
    Keys keys;
    if (!m_keymap || symbol == XKB_KEY_NoSymbol)
        return keys;
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts(m_keymap.get());
    for (xkb_level_index_t level = 0; level < 2; ++level) {
        for (xkb_layout_index_t i = 0; i < layouts; ++i) {
            const xkb_layout_index_t layout = (m_inUse + i) % layouts;
            for (int key = kFirstKey; key <= kLastKey; ++key) {
                if (symbolAt(KeyCode(key), layout, level) == symbol)
                    keys += KeyCode(key);
            }
            if (!keys.isEmpty())
                return keys;
        }
    }
    return keys;
}

xkb_keysym_t KeyboardMap::symbolOf(KeyCode key, xkb_layout_index_t layout) const
{
    return m_keymap ? symbolAt(key, layout, 0) : XKB_KEY_NoSymbol;
}

quint16 KeyboardMap::modifierOf(xkb_keysym_t symbol) const
{
    const Keys keys = keysWith(symbol);
    if (keys.isEmpty())
        return 0;
    const State state(xkb_state_new(m_keymap.get()), xkb_state_unref);
    xkb_state_update_key(state.get(), keys.first(), XKB_KEY_DOWN);
    constexpr xkb_mod_mask_t kModifiersOfX11 = 0xff;
    return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_EFFECTIVE) & kModifiersOfX11;
}
