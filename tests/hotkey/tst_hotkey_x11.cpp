// System-wide shortcuts with a real X server, real key presses and another program in the foreground.
#include "LogCapture.h"
#include "VirtualDisplay.h"
#include "hotkey/KeyName.h"
#include "hotkey/KeySymbols_x11.h"
#include "hotkey/KeyboardMap_x11.h"
#include "hotkey/QHotkey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QX11Info>
#include <QtTest>
#include <xcb/xcb.h>
#define explicit isExplicit // the name of a member there
#include <xcb/xkb.h>
#undef explicit

namespace {

constexpr int kWaitMs = 20000;

// Keys of a PC's keyboard, named by what is printed on a US one.
constexpr int k2 = 11, kTab = 23, kQ = 24, kY = 29, kCtrl = 37, kA = 38, kQuote = 48, kGrave = 49,
              kShift = 50, kZ = 52, kComma = 59, kSlash = 61, kAlt = 64, kCapsLock = 66, kF10 = 76,
              kNumLock = 77, kNum4 = 83, kRightAlt = 108, kPageUp = 112, kSuper = 133;
constexpr Qt::KeyboardModifiers kThree = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;
constexpr quint16 kThreeOfX11 = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

/// Another program: a window that has the focus, and grabs of its own.
struct OtherProgram
{
    OtherProgram()
    {
        const uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
        xcb_create_window(connection, 0, window, root, 0, 0, 50, 50, 0, 0, 0, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(connection, window);
    }
    ~OtherProgram() { xcb_disconnect(connection); }
    Q_DISABLE_COPY(OtherProgram)

    bool focus()
    {
        return succeeds(
            xcb_set_input_focus_checked(connection, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME));
    }
    bool grab(int key, quint16 modifiers)
    {
        return succeeds(xcb_grab_key_checked(connection, 0, root, modifiers, xcb_keycode_t(key),
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool ungrab(int key, quint16 modifiers)
    {
        return succeeds(xcb_ungrab_key_checked(connection, xcb_keycode_t(key), root, modifiers));
    }
    /// Whether a press of the key has come to its window since it was last asked.
    bool sees(int key)
    {
        free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        bool isSeen = false;
        while (xcb_generic_event_t* event = xcb_poll_for_queued_event(connection)) {
            isSeen |= event->response_type == XCB_KEY_PRESS && event->pad0 == key;
            free(event);
        }
        return isSeen;
    }

    bool succeeds(xcb_void_cookie_t request)
    {
        xcb_generic_error_t* error = xcb_request_check(connection, request);
        free(error);
        return !error;
    }

    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    xcb_window_t window = xcb_generate_id(connection);
};

/// Counts the events with this code that come to this program.
struct EventCounter : QAbstractNativeEventFilter
{
    explicit EventCounter(int ofCode)
        : code(ofCode)
    {
        qApp->installNativeEventFilter(this);
    }
    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        count += static_cast<const xcb_generic_event_t*>(message)->response_type == code;
        return false;
    }
    int code, count = 0;
};

/// A hotkey that counts.
struct Hotkey
{
    Hotkey(Qt::Key key, Qt::KeyboardModifiers modifiers) { hotkey.setShortcut(key, modifiers, true); }

    QHotkey hotkey;
    QSignalSpy activated{&hotkey, &QHotkey::activated};
    QSignalSpy released{&hotkey, &QHotkey::released};
};

/// A window that keeps the names of the keys pressed in it.
struct NameKeeper : QWidget
{
    QStringList names;
    void keyPressEvent(QKeyEvent* event) override { names += hotkeyKeyName(*event); }
};

} // namespace

class HotkeyX11Test : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(isRun("xset", {"r", "rate", "200", "50"})); }
    void init()
    {
        QVERIFY(setKeyboard("us"));
        QVERIFY(m_other.focus());
    }

    void worksWhileAnotherProgramHasTheFocus()
    {
        Hotkey first(Qt::Key_F10, kThree), twin(Qt::Key_F10, kThree),
            keypad(Qt::Key_4, kThree | Qt::KeypadModifier);
        int presses = 0;
        for (const int lock : {kCapsLock, kNumLock, kCapsLock, kNumLock}) { // one, both, the other, none
            press({lock});
            pressThreeAnd(kF10);
            pressThreeAnd(kNum4);
            ++presses;
            for (Hotkey* each : {&first, &twin, &keypad}) {
                QTRY_COMPARE_WITH_TIMEOUT(each->released.count(), presses, kWaitMs);
                QCOMPARE(each->activated.count(), presses);
            }
        }
        QVERIFY(!m_other.sees(kF10));

        first.hotkey.setRegistered(false);
        pressThreeAnd(kF10);
        QTRY_COMPARE_WITH_TIMEOUT(twin.activated.count(), presses + 1, kWaitMs);
        twin.hotkey.setRegistered(false);
        pressThreeAnd(kF10);
        QVERIFY(m_other.sees(kF10));
        QCOMPARE(first.activated.count(), presses);
    }
    void heldKeyActsOnce()
    {
        Hotkey held(Qt::Key_F10, Qt::ControlModifier), other(Qt::Key_A, Qt::ControlModifier);
        EventCounter counter(XCB_KEY_PRESS);
        send("keydown", {kCtrl, kF10});
        QTRY_VERIFY_WITH_TIMEOUT(counter.count > 5, kWaitMs);
        send("keyup", {kCtrl}); // no release of the key itself
        held.hotkey.setRegistered(false);
        QVERIFY(held.hotkey.setRegistered(true)); // still the same press
        counter.count = 0;
        QTRY_VERIFY_WITH_TIMEOUT(counter.count > 5, kWaitMs);
        QVERIFY(held.activated.count() == 1 && held.released.isEmpty());
        press({kCtrl, kA});
        send("keyup", {kF10});
        QTRY_COMPARE_WITH_TIMEOUT(held.released.count(), 1, kWaitMs);
        QVERIFY(held.activated.count() == 1 && other.activated.count() == 1);

        // All that happens waits in the queue while the other program runs.
        held.hotkey.setShortcut(Qt::Key_F10, {}, true);
        send("key", QVector<int>(10, kF10));
        QTRY_COMPARE_WITH_TIMEOUT(held.released.count(), 11, kWaitMs);
        QCOMPARE(held.activated.count(), 11);
    }
    void worksInAnOpenMenuAndAfterIt()
    {
        Hotkey hotkey(Qt::Key_A, Qt::ControlModifier);
        QMenu menu;
        QAction* entry = menu.addAction("&A entry");
        QSignalSpy entryTriggered(entry, &QAction::triggered);
        menu.popup({100, 100});
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        send("keydown", {kCtrl, kA});
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.activated.count(), 1, kWaitMs);
        QVERIFY(menu.isVisible() && entryTriggered.isEmpty());
        menu.close(); // so the release goes to the other program
        QTRY_VERIFY_WITH_TIMEOUT(m_other.focus(), kWaitMs);
        send("keyup", {kA, kCtrl});
        press({kCtrl, kA});
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.activated.count(), 2, kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.released.count(), 2, kWaitMs);
    }

    void combinationOfAnotherProgramIsRefusedWhole()
    {
        constexpr quint16 kWithNumLock = kThreeOfX11 | XCB_MOD_MASK_2;
        QVERIFY(m_other.grab(kF10, kWithNumLock));
        Hotkey hotkey(Qt::Key_F10, kThree), lacking(Qt::Key_F35, kThree);
        QVERIFY(!hotkey.hotkey.isRegistered() && !lacking.hotkey.isRegistered());
        QCOMPARE(hotkey.hotkey.trouble(), HotkeyTrouble::Taken);
        QCOMPARE(lacking.hotkey.trouble(), HotkeyTrouble::NoSuchKey);
        // Nothing of it is left behind, as soon as the server has read so.
        QTRY_VERIFY_WITH_TIMEOUT(m_other.grab(kF10, kThreeOfX11), kWaitMs);
        QVERIFY(m_other.ungrab(kF10, kThreeOfX11) && m_other.ungrab(kF10, kWithNumLock));
        QVERIFY(hotkey.hotkey.setRegistered(true));
        QVERIFY(!m_other.grab(kF10, kWithNumLock | XCB_MOD_MASK_LOCK));
    }

    void keyFollowsItsSymbol()
    {
        const auto isAt = [this](int key, int letter, const char* before, const char* after,
                                 quint8 layout = 0) {
            if (!setKeyboard(before))
                return false;
            Hotkey hotkey(Qt::Key(letter), Qt::ControlModifier);
            bool isRight = setKeyboard(after) && (layout == 0 || lockLayout(layout));
            for (const int each : {kA, kQ, kZ, kY}) {
                press({kCtrl, each});
                isRight &= m_other.sees(each) == (each != key);
            }
            return QTest::qWaitFor([&] { return hotkey.released.count() == 1; }, kWaitMs) && isRight &&
                   hotkey.activated.count() == 1 && (layout == 0 || lockLayout(0));
        };
        QVERIFY(isAt(kQ, Qt::Key_A, "us", "fr"));
        QVERIFY(isAt(kQ, Qt::Key_A, "fr", "ru")); // which has no Latin letters
        QVERIFY(isAt(kZ, Qt::Key_Z, "ru", "ru")); // from the beginning
        QVERIFY(isAt(kA, Qt::Key_A, "us,ru", "us,ru", 1));
        QVERIFY(isAt(kA, 0x424, "us,ru", "us,ru")); // Cyrillic, not in use
        QVERIFY(isAt(kY, Qt::Key_Z, "us,de", "us,de", 1));
    }
    void keysChangePlacesUnlessAnotherProgramHasThem()
    {
        QVERIFY(m_other.grab(kSlash, XCB_MOD_MASK_CONTROL));
        Hotkey y(Qt::Key_Y, Qt::ControlModifier), z(Qt::Key_Z, Qt::ControlModifier),
            minus(Qt::Key_Minus, Qt::ControlModifier);
        QVERIFY(minus.hotkey.isRegistered());
        LogCapture log;
        QVERIFY(setKeyboard("de"));
        QTRY_VERIFY_WITH_TIMEOUT(!minus.hotkey.isRegistered(), kWaitMs);
        QCOMPARE(minus.hotkey.trouble(), HotkeyTrouble::Taken);
        QVERIFY(log.contains("The keyboard has changed"));
        press({kCtrl, kZ});
        QTRY_COMPARE_WITH_TIMEOUT(y.activated.count(), 1, kWaitMs);
        press({kCtrl, kY});
        QTRY_COMPARE_WITH_TIMEOUT(z.activated.count(), 1, kWaitMs);
        QVERIFY(!minus.hotkey.setRegistered(true));
        QVERIFY(m_other.ungrab(kSlash, XCB_MOD_MASK_CONTROL));
        QVERIFY(minus.hotkey.setRegistered(true));
    }

    void keysAreFoundByTheirNames()
    {
        using Keys = KeyboardMap::Keys;
        const auto found = [](const char* layout, const char* name) {
            return KeyboardMap::compiled(layout).keysWith(symbolOfKey(QKeySequence(name)[0]));
        };
        QCOMPARE(found("us,ru", ","), Keys{kComma});
        QCOMPARE(found("us", "Backtab"), Keys{kTab});
        QCOMPARE(found("us", "Num+Left"), Keys{kNum4});
        QCOMPARE(found("us", "Num+."), (Keys{91, 129}));
        QCOMPARE(found("us", "Media Play"), (Keys{172, 208, 215})); // not of one name
        QCOMPARE(found("us", "Launch (6)"), Keys{211});
        for (const QByteArray layout : {"us", "us(intl)", "de", "de(neo)", "ch", "fr", "tr", "pl", "lv", "gr",
                                        "ru", "il", "ara", "in", "th", "jp", "kr", "ge"}) {
            const KeyboardMap map = KeyboardMap::compiled(layout);
            QVERIFY2(map.isValid(), layout.constData());
            for (int key = 8; key < 256; ++key) {
                const auto code = KeyboardMap::KeyCode(key);
                const xkb_keysym_t symbol = map.symbolOf(code, 0);
                const QKeySequence name(keyNameOfSymbol(symbol));
                QVERIFY2(name.isEmpty() ? xkb_keysym_to_utf32(symbol) <= ' '
                                        : map.keysWith(symbolOfKey(name[0])).contains(code),
                         (layout + ": " + QByteArray::number(key)).constData());
            }
        }
    }
    void pressedKeyIsNamedByItsOwnSymbol()
    {
        NameKeeper keeper;
        keeper.show();
        QVERIFY(QTest::qWaitForWindowExposed(&keeper, kWaitMs));
        keeper.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&keeper, kWaitMs));
        QVERIFY(setKeyboard("de"));
        send("key", {20, kGrave, kNum4, kNumLock, kNum4, kNumLock, kSuper, kCapsLock, kCapsLock, kPageUp});
        send("keydown", {kShift, kRightAlt});
        send("key", {kQ, k2, kQuote, kTab});
        send("keyup", {kShift, kRightAlt});
        const QStringList names{"ß", "^",    "NUM+4", "", "NUM+4", "",  "",  "",
                                "",  "PGUP", "",      "", "Q",     "2", "Ä", "TAB"};
        QTRY_COMPARE_WITH_TIMEOUT(keeper.names, names, kWaitMs);
        QVERIFY(setKeyboard("ru"));
        send("key", {kA});
        QTRY_COMPARE_WITH_TIMEOUT(keeper.names.mid(names.size()), QStringList("Ф"), kWaitMs);
    }

private:
    static bool isRun(const char* name, const QStringList& with) { return !QProcess::execute(name, with); }
    static void send(const char* how, const QVector<int>& keys)
    {
        QStringList arguments{how};
        for (const int key : keys)
            arguments += QString::number(key);
        QVERIFY(isRun("xdotool", arguments));
    }
    /// One after the other, and up again in reverse.
    static void press(const QVector<int>& keys)
    {
        send("keydown", keys);
        send("keyup", QVector<int>(keys.rbegin(), keys.rend()));
    }
    static void pressThreeAnd(int key) { press({kCtrl, kAlt, kShift, key}); }

    /// Waits until this program has taken notice of what the function does to the keyboard.
    static bool isNoticed(const std::function<bool()>& function)
    {
        EventCounter notices(xcb_get_extension_data(QX11Info::connection(), &xcb_xkb_id)->first_event);
        if (!function() || !QTest::qWaitFor([&] { return notices.count > 0; }, kWaitMs))
            return false;
        bool isQueueDone = false;
        QTimer::singleShot(0, qApp, [&] { isQueueDone = true; });
        return QTest::qWaitFor([&] { return isQueueDone; }, kWaitMs);
    }
    static bool setKeyboard(const char* to)
    {
        return isNoticed([&] { return isRun("setxkbmap", {to}); });
    }
    static bool lockLayout(quint8 to)
    {
        return isNoticed([to, x = QX11Info::connection()] {
            xcb_xkb_latch_lock_state(x, XCB_XKB_ID_USE_CORE_KBD, 0, 0, true, to, 0, false, 0);
            return xcb_flush(x) > 0;
        });
    }

    OtherProgram m_other;
};

int main(int argc, char** argv)
{
    qunsetenv("WAYLAND_DISPLAY"); // of the developer's own session
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("QT_QPA_PLATFORM", "xcb");
    VirtualDisplay display;
    if (!display.start())
        return 1;
    qputenv("DISPLAY", display.name());
    QApplication app(argc, argv);
    HotkeyX11Test test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hotkey_x11.moc"
