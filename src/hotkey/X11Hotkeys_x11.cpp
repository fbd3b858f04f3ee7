#include "hotkey/X11Hotkeys_x11.h"

#include "hotkey/KeySymbols_x11.h"

#include <QX11Info>
#include <algorithm>
#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#define explicit isExplicit // the name of a member there
#include <xcb/xkb.h>
#undef explicit

namespace {

/// Of a US keyboard, compiled where it is first needed.
const KeyboardMap& usKeyboard()
{
    static const KeyboardMap map = KeyboardMap::compiled("us");
    return map;
}

QString nameOf(xkb_keysym_t symbol)
{
    char name[64] = {};
    xkb_keysym_get_name(symbol, name, sizeof(name));
    return QString::fromLatin1(name);
}

bool isKeyDown(xcb_connection_t* connection, quint8 key)
{
    const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&free)> reply(
        xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr), free);
    return reply && (reply->keys[key / 8] & (1 << (key % 8)));
}

} // namespace

std::unique_ptr<X11Hotkeys> X11Hotkeys::create()
{
    uint8_t firstEvent = 0;
    xcb_connection_t* connection = QX11Info::connection();
    const bool hasExtension =
        connection && xkb_x11_setup_xkb_extension(
                          connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr);
    const KeyboardMap map = hasExtension ? KeyboardMap::ofServer(connection) : KeyboardMap();
    return std::unique_ptr<X11Hotkeys>(map.isValid() ? new X11Hotkeys(map, firstEvent) : nullptr);
}

X11Hotkeys::X11Hotkeys(KeyboardMap map, quint8 keyboardEvent)
    : m_keyboardEvent(keyboardEvent)
{
    setMap(std::move(map));
    // Both wait for what the server has sent along: the other half of a repeat, the other notices of a
    // change.
    for (QTimer* timer : {&m_releaseTimer, &m_renewalTimer})
        timer->setSingleShot(true);
    connect(&m_releaseTimer, &QTimer::timeout, this, &X11Hotkeys::endReleased);
    connect(&m_renewalTimer, &QTimer::timeout, this, &X11Hotkeys::renew);
}

void X11Hotkeys::setMap(KeyboardMap map)
{
    m_map = std::move(map);
    m_locks = XCB_MOD_MASK_LOCK | m_map.modifierOf(XKB_KEY_Num_Lock) | m_map.modifierOf(XKB_KEY_Scroll_Lock);
}

quint32 X11Hotkeys::nativeKeycode(Qt::Key keycode, bool& ok)
{
    const xkb_keysym_t symbol = symbolOfKey(keycode);
    ok = symbol != XKB_KEY_NoSymbol;
    return symbol;
}

quint32 X11Hotkeys::nativeKeypadKeycode(Qt::Key keycode, bool& ok)
{
    const xkb_keysym_t symbol = symbolOfKey(keycode | static_cast<int>(Qt::KeypadModifier));
    ok = symbol != XKB_KEY_NoSymbol;
    return symbol;
}

quint32 X11Hotkeys::nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok)
{
    const auto orUsual = [](quint16 mask, quint16 usual) { return mask ? mask : usual; };
    quint32 native = 0;
    if (modifiers & Qt::ShiftModifier)
        native |= XCB_MOD_MASK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        native |= XCB_MOD_MASK_CONTROL;
    if (modifiers & Qt::AltModifier)
        native |= orUsual(m_map.modifierOf(XKB_KEY_Alt_L), XCB_MOD_MASK_1);
    if (modifiers & Qt::MetaModifier)
        native |= orUsual(m_map.modifierOf(XKB_KEY_Super_L), XCB_MOD_MASK_4);
    ok = !(modifiers & ~(Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return native;
}

KeyboardMap::Keys X11Hotkeys::placeOf(xkb_keysym_t symbol) const
{
    const KeyboardMap::Keys keys = m_map.keysWith(symbol);
    return keys.isEmpty() ? usKeyboard().keysWith(symbol) : keys;
}

bool X11Hotkeys::take(const QHotkey::NativeShortcut& shortcut, const KeyGrab& grab)
{
    trouble = HotkeyTrouble::Taken;
    const bool isOurs = std::any_of(m_taken.begin(), m_taken.end(),
                                    [&grab](const Taken& each) { return each.grab.overlaps(grab); });
    if (isOurs) {
        error = QStringLiteral("another shortcut of this program stands on the same key");
        return false;
    }
    switch (takeKeys(QX11Info::connection(), quint32(QX11Info::appRootWindow()), grab)) {
    case GrabResult::Granted:
        m_taken.push_back({shortcut, grab});
        return true;
    case GrabResult::Taken:
        error = QStringLiteral("another program has taken it");
        return false;
    case GrabResult::Gone:
        error = QStringLiteral("the X server does not answer");
        trouble = HotkeyTrouble::NotAllowed;
        return false;
    }
    return false;
}

bool X11Hotkeys::registerShortcut(QHotkey::NativeShortcut shortcut)
{
    const KeyboardMap::Keys keys = placeOf(shortcut.key);
    if (keys.isEmpty()) {
        error = QStringLiteral("the keyboard has no key %1").arg(nameOf(shortcut.key));
        trouble = HotkeyTrouble::NoSuchKey;
        return false;
    }
    return take(shortcut, {keys, quint16(shortcut.modifier), m_locks});
}

bool X11Hotkeys::unregisterShortcut(QHotkey::NativeShortcut shortcut)
{
    const auto found = std::find_if(m_taken.begin(), m_taken.end(),
                                    [&](const Taken& each) { return each.shortcut == shortcut; });
    if (found == m_taken.end()) {
        error = QStringLiteral("it is not registered");
        return false;
    }
    releaseKeys(QX11Info::connection(), quint32(QX11Info::appRootWindow()), found->grab);
    m_taken.erase(found);
    return true;
}

/// Moves the grabs to where their symbols stand now.
void X11Hotkeys::renew()
{
    KeyboardMap map = KeyboardMap::ofServer(QX11Info::connection());
    if (!map.isValid())
        return;
    setMap(std::move(map));
    // All that move are given up first: they may change places with one another.
    std::vector<Taken> moving;
    for (auto each = m_taken.begin(); each != m_taken.end();) {
        const KeyboardMap::Keys keys = m_map.keysWith(each->shortcut.key);
        const KeyGrab wanted{keys.isEmpty() ? each->grab.keys : keys, each->grab.modifiers, m_locks};
        if (wanted == each->grab) {
            ++each;
            continue;
        }
        releaseKeys(QX11Info::connection(), quint32(QX11Info::appRootWindow()), each->grab);
        moving.push_back({each->shortcut, wanted});
        each = m_taken.erase(each);
    }
    for (const Taken& each : moving) {
        if (take(each.shortcut, each.grab))
            continue;
        qCWarning(logHotkey).noquote() << "The keyboard has changed, and" << nameOf(each.shortcut.key)
                                       << "cannot be taken any more:" << error;
        loseShortcut(each.shortcut);
    }
}

bool X11Hotkeys::nativeEventFilter(const QByteArray& eventType, void* message, long*)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type) { // with one bit more where another client made the event up
    case XCB_KEY_PRESS: {
        const auto* press = static_cast<const xcb_key_press_event_t*>(message);
        return onPress(press->detail, press->state, press->time);
    }
    case XCB_KEY_RELEASE: {
        const auto* release = static_cast<const xcb_key_release_event_t*>(message);
        return onRelease(release->detail, release->time);
    }
    case XCB_MAPPING_NOTIFY:
        if (static_cast<const xcb_mapping_notify_event_t*>(message)->request != XCB_MAPPING_POINTER)
            m_renewalTimer.start();
        return false;
    default:
        if (event->response_type == m_keyboardEvent)
            onKeyboardEvent(static_cast<const quint8*>(message));
        return false;
    }
}

void X11Hotkeys::onKeyboardEvent(const quint8* event)
{
    switch (event[1]) { // their kind, in all of them
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
        m_renewalTimer.start();
        return;
    case XCB_XKB_STATE_NOTIFY: // with every modifier as well
        if (reinterpret_cast<const xcb_xkb_state_notify_event_t*>(event)->group != m_map.layoutInUse())
            m_renewalTimer.start();
        return;
    default:
        return;
    }
}

bool X11Hotkeys::onPress(KeyCode key, quint16 state, quint32 time)
{
    const auto holding = held(key);
    if (holding != m_held.end()) {
        if (holding->isReleased && holding->releaseTime == time) { // a repeat
            holding->isReleased = false;
            return true;
        }
        // Released for good. Where no event said so it went to another program.
        const QHotkey::NativeShortcut shortcut = holding->shortcut;
        m_held.erase(holding);
        releaseShortcut(shortcut);
    }
    const auto pressed = std::find_if(m_taken.begin(), m_taken.end(), [key, state](const Taken& each) {
        return each.grab.matches(key, state);
    });
    if (pressed == m_taken.end())
        return false;
    m_held.push_back({key, pressed->shortcut});
    activateShortcut(pressed->shortcut);
    return true;
}

bool X11Hotkeys::onRelease(KeyCode key, quint32 time)
{
    const auto holding = held(key);
    if (holding == m_held.end())
        return false;
    holding->isReleased = true;
    holding->releaseTime = time;
    m_releaseTimer.start();
    return true;
}

void X11Hotkeys::endReleased()
{
    std::vector<QHotkey::NativeShortcut> ended;
    for (auto each = m_held.begin(); each != m_held.end();) {
        // On a busy machine the press of a repeat may come later than its release: then the key is still
        // down.
        if (each->isReleased && !isKeyDown(QX11Info::connection(), each->key)) {
            ended.push_back(each->shortcut);
            each = m_held.erase(each);
        } else {
            ++each;
        }
    }
    for (const QHotkey::NativeShortcut& shortcut : ended)
        releaseShortcut(shortcut);
}

std::vector<X11Hotkeys::Held>::iterator X11Hotkeys::held(KeyCode key)
{
    return std::find_if(m_held.begin(), m_held.end(), [key](const Held& each) { return each.key == key; });
}
