#pragma once

#include <QVector>
#include <memory>
#include <xkbcommon/xkbcommon.h>

struct xcb_connection_t;

/// Which key bears which symbol, with the layouts that the user switches between, of which one is in use. A
/// value of its moment: when the keyboard has changed, ask for a new one. Symbols are plain ones
/// (plainSymbol()).
class KeyboardMap
{
public:
    using KeyCode = quint8;
    using Keys = QVector<KeyCode>;

    /// An invalid one.
    KeyboardMap() = default;
    /// That of the X server now, some 0.3 ms. Invalid where it has no keyboard extension or is gone.
    static KeyboardMap ofServer(xcb_connection_t* connection);
    /// That of a layout such as "us" or "us,ru", of which the one with this number is in use.
    static KeyboardMap compiled(const QByteArray& layouts, xkb_layout_index_t inUse = 0);

    bool isValid() const { return bool(m_keymap); }
    xkb_layout_index_t layoutInUse() const { return m_inUse; }

    /// The keys that bear the symbol: without Shift in the layout in use, else in another one, else with
    /// Shift. Signs that take AltGr do not count.
    Keys keysWith(xkb_keysym_t symbol) const;
    /// What the key alone types in this layout; XKB_KEY_NoSymbol for nothing.
    xkb_keysym_t symbolOf(KeyCode key, xkb_layout_index_t layout) const;
    /// The bits of an event's state that the key with this symbol sets or locks; 0 where there is none.
    quint16 modifierOf(xkb_keysym_t symbol) const;

private:
    KeyboardMap(xkb_keymap* keymap, xkb_layout_index_t inUse);
    xkb_keysym_t symbolAt(KeyCode key, xkb_layout_index_t layout, xkb_level_index_t level) const;

    std::shared_ptr<xkb_keymap> m_keymap;
    xkb_layout_index_t m_inUse = 0;
};
