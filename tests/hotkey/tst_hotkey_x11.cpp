// System-wide shortcuts with a real X server, real key presses and another program in the foreground.
#include "LogCapture.h"
#include "VirtualDisplay.h"
#include "hotkey/HotkeySession_x11.h"
#include "hotkey/KeyName.h"
#include "hotkey/KeySymbols_x11.h"
#include "hotkey/KeyboardMap_x11.h"
#include "hotkey/QHotkey.h"

#include <QAbstractNativeEventFilter>
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
constexpr int k1 = 10, k2 = 11, kQ = 24, kY = 29, kCtrl = 37, kA = 38, kQuote = 48, kGrave = 49, kShift = 50,
              kZ = 52, kComma = 59, kSlash = 61, kAlt = 64, kSpace = 65, kCapsLock = 66, kF10 = 76,
              kNumLock = 77, kNum4 = 83, kRightAlt = 108, kPageUp = 112, kRight = 114, kSuper = 133;
constexpr Qt::KeyboardModifiers kThree = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;
constexpr quint16 kThreeOfX11 = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

/// Another program: a window that has the focus, and grabs of its own.
class OtherProgram
{
public:
    explicit OtherProgram(const QByteArray& display)
        : m_connection(xcb_connect(display.constData(), nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
        , m_window(xcb_generate_id(m_connection))
    {
        const uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(m_connection, m_window);
    }
    ~OtherProgram() { xcb_disconnect(m_connection); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    bool focus()
    {
        return succeeds(
            xcb_set_input_focus_checked(m_connection, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME));
    }
    bool grab(int key, quint16 modifiers)
    {
        return succeeds(xcb_grab_key_checked(m_connection, 0, m_root, modifiers, xcb_keycode_t(key),
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool ungrab(int key, quint16 modifiers)
    {
        return succeeds(xcb_ungrab_key_checked(m_connection, xcb_keycode_t(key), m_root, modifiers));
    }
    /// Whether a press of the key has come to its window since it was last asked.
    bool sees(int key)
    {
        free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
        bool isSeen = false;
        while (xcb_generic_event_t* event = xcb_poll_for_queued_event(m_connection)) {
            isSeen |= event->response_type == XCB_KEY_PRESS && event->pad0 == key;
            free(event);
        }
        return isSeen;
    }

private:
    bool succeeds(xcb_void_cookie_t request)
    {
        xcb_generic_error_t* error = xcb_request_check(m_connection, request);
        free(error);
        return !error;
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window;
};

/// Counts the events of one kind that come to this program: those with this code and, unless 0, this detail.
class EventCounter : public QAbstractNativeEventFilter
{
public:
    explicit EventCounter(int code, int detail = 0)
        : m_code(code)
        , m_detail(detail)
    {
        qApp->installNativeEventFilter(this);
    }
    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        count += event->response_type == m_code && (m_detail == 0 || event->pad0 == m_detail);
        return false;
    }
    int count = 0;

private:
    const int m_code;
    const int m_detail;
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
class NameKeeper : public QWidget
{
public:
    QStringList names;

protected:
    void keyPressEvent(QKeyEvent* event) override { names += hotkeyKeyName(*event); }
};

} // namespace

class HotkeyX11Test : public QObject
{
    Q_OBJECT

public:
    explicit HotkeyX11Test(const VirtualDisplay& display)
        : m_display(display)
        , m_other(display.name())
    {
    }

private slots:
    void initTestCase() { QVERIFY(m_display.run("xset", {"r", "rate", "200", "50"})); }
    void init()
    {
        QVERIFY(setKeyboard("us"));
        QVERIFY(m_other.focus());
    }

    void worksWhileAnotherProgramHasTheFocus_data()
    {
        QTest::addColumn<QVector<int>>("locks");
        QTest::newRow("no lock") << QVector<int>{};
        QTest::newRow("Caps lock") << QVector<int>{kCapsLock};
        QTest::newRow("Num lock") << QVector<int>{kNumLock};
        QTest::newRow("both") << QVector<int>{kCapsLock, kNumLock};
    }
    void worksWhileAnotherProgramHasTheFocus()
    {
        QFETCH(QVector<int>, locks);
        Hotkey first(Qt::Key_F10, kThree), twin(Qt::Key_F10, kThree),
            keypad(Qt::Key_4, kThree | Qt::KeypadModifier);
        QVERIFY(first.hotkey.isRegistered() && twin.hotkey.isRegistered() && keypad.hotkey.isRegistered());
        for (const int lock : locks)
            press({lock});
        pressThreeAnd(kF10);
        pressThreeAnd(kNum4);
        QTRY_COMPARE_WITH_TIMEOUT(keypad.released.count(), 1, kWaitMs);
        for (const int lock : locks)
            press({lock});
        for (Hotkey* each : {&first, &twin, &keypad}) {
            QCOMPARE(each->activated.count(), 1);
            QCOMPARE(each->released.count(), 1);
        }
        QVERIFY(!m_other.sees(kF10));

        first.hotkey.setRegistered(false);
        pressThreeAnd(kF10);
        QTRY_COMPARE_WITH_TIMEOUT(twin.activated.count(), 2, kWaitMs);
        twin.hotkey.setRegistered(false);
        pressThreeAnd(kF10);
        QVERIFY(m_other.sees(kF10));
        QCOMPARE(first.activated.count(), 1);
    }
    void heldKeyActsOnce_data()
    {
        QTest::addColumn<bool>("onlyPressesRepeat");
        QTest::newRow("told by release and press") << false;
        QTest::newRow("told by presses alone") << true;
    }
    void heldKeyActsOnce()
    {
        QFETCH(bool, onlyPressesRepeat);
        setOnlyPressesRepeat(onlyPressesRepeat);
        Hotkey held(Qt::Key_F10, Qt::ControlModifier), other(Qt::Key_A, Qt::ControlModifier);
        EventCounter counter(XCB_KEY_PRESS, kF10);
        down({kCtrl, kF10});
        QTRY_VERIFY_WITH_TIMEOUT(counter.count > 5, kWaitMs);
        up({kCtrl}); // no release of the key itself
        held.hotkey.setRegistered(false);
        QVERIFY(held.hotkey.setRegistered(true)); // still the same press
        counter.count = 0;
        QTRY_VERIFY_WITH_TIMEOUT(counter.count > 5, kWaitMs);
        QCOMPARE(held.activated.count(), 1);
        QCOMPARE(held.released.count(), 0);
        press({kCtrl, kA});
        up({kF10});
        QTRY_COMPARE_WITH_TIMEOUT(held.released.count(), 1, kWaitMs);
        QCOMPARE(held.activated.count(), 1);
        QCOMPARE(other.activated.count(), 1);
        setOnlyPressesRepeat(false);
    }
    void everyPressCountsWhenTheProgramIsBusy()
    {
        Hotkey hotkey(Qt::Key_F10, Qt::NoModifier);
        // All that happens waits in the queue while the other program runs.
        QVERIFY(m_display.run("xdotool",
                              QStringList{"key"} + QVector<QString>(10, QString::number(kF10)).toList()));
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.released.count(), 10, kWaitMs);
        QCOMPARE(hotkey.activated.count(), 10);
    }
    void worksInAnOpenMenuAndAfterIt()
    {
        Hotkey hotkey(Qt::Key_A, Qt::ControlModifier);
        QMenu menu;
        QAction* entry = menu.addAction("&A entry");
        QSignalSpy entryTriggered(entry, &QAction::triggered);
        menu.popup({100, 100});
        QVERIFY(QTest::qWaitForWindowExposed(&menu));
        down({kCtrl, kA});
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.activated.count(), 1, kWaitMs);
        QVERIFY(menu.isVisible() && entryTriggered.isEmpty());
        menu.close(); // so the release goes to the other program
        QTRY_VERIFY_WITH_TIMEOUT(m_other.focus(), kWaitMs);
        up({kA, kCtrl});
        press({kCtrl, kA});
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.activated.count(), 2, kWaitMs);
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.released.count(), 2, kWaitMs);
    }

    void combinationOfAnotherProgramIsRefusedWhole()
    {
        constexpr quint16 kWithNumLock = kThreeOfX11 | XCB_MOD_MASK_2;
        QVERIFY(m_other.grab(kF10, kWithNumLock));
        Hotkey hotkey(Qt::Key_F10, kThree);
        QVERIFY(!hotkey.hotkey.isRegistered());
        QCOMPARE(hotkey.hotkey.trouble(), HotkeyTrouble::Taken);
        // Nothing of it is left behind, as soon as the server has read so.
        QTRY_VERIFY_WITH_TIMEOUT(m_other.grab(kF10, kThreeOfX11), kWaitMs);
        QVERIFY(m_other.ungrab(kF10, kThreeOfX11) && m_other.ungrab(kF10, kWithNumLock));
        QVERIFY(hotkey.hotkey.setRegistered(true));
        QVERIFY(!m_other.grab(kF10, kWithNumLock | XCB_MOD_MASK_LOCK));
    }
    void keyThatNoKeyboardHasIsToldSo()
    {
        Hotkey hotkey(Qt::Key_F35, kThree);
        QVERIFY(!hotkey.hotkey.isRegistered());
        QCOMPARE(hotkey.hotkey.trouble(), HotkeyTrouble::NoSuchKey);
    }

    void keyFollowsItsSymbol_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::addColumn<bool>("secondLayout");
        QTest::addColumn<int>("letter");
        QTest::addColumn<int>("key");
        QTest::newRow("to German") << "us"
                                   << "de" << false << int(Qt::Key_Z) << int(kY);
        QTest::newRow("to French") << "us"
                                   << "fr" << false << int(Qt::Key_A) << int(kQ);
        QTest::newRow("back") << "fr"
                              << "us" << false << int(Qt::Key_A) << int(kA);
        QTest::newRow("to no Latin letters") << "fr"
                                             << "ru" << false << int(Qt::Key_A) << int(kQ);
        QTest::newRow("first without Latin letters") << "ru"
                                                     << "ru" << false << int(Qt::Key_Z) << int(kZ);
        QTest::newRow("other layout in use") << "us,ru"
                                             << "us,ru" << true << int(Qt::Key_A) << int(kA);
        QTest::newRow("Cyrillic, not in use") << "us,ru"
                                              << "us,ru" << false << 0x424 << int(kA);
        QTest::newRow("in the layout in use") << "us,de"
                                              << "us,de" << true << int(Qt::Key_Z) << int(kY);
    }
    void keyFollowsItsSymbol()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        QFETCH(bool, secondLayout);
        QFETCH(int, letter);
        QFETCH(int, key);
        QVERIFY(setKeyboard(before));
        Hotkey hotkey(Qt::Key(letter), Qt::ControlModifier);
        QVERIFY(hotkey.hotkey.isRegistered());
        QVERIFY(setKeyboard(after));
        QVERIFY(!secondLayout || lockLayout(1));
        for (const int each : {kA, kQ, kZ, kY}) {
            press({kCtrl, each});
            QVERIFY(m_other.sees(each) == (each != key));
        }
        QTRY_COMPARE_WITH_TIMEOUT(hotkey.released.count(), 1, kWaitMs);
        QCOMPARE(hotkey.activated.count(), 1);
        if (secondLayout)
            lockLayout(0);
    }
    void twoKeysChangePlaces()
    {
        Hotkey y(Qt::Key_Y, Qt::ControlModifier), z(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(setKeyboard("de"));
        press({kCtrl, kZ});
        QTRY_COMPARE_WITH_TIMEOUT(y.activated.count(), 1, kWaitMs);
        press({kCtrl, kY});
        QTRY_COMPARE_WITH_TIMEOUT(z.activated.count(), 1, kWaitMs);
    }
    void keyThatMovesToATakenPlaceIsLostUntilItIsFree()
    {
        QVERIFY(m_other.grab(kY, XCB_MOD_MASK_CONTROL));
        Hotkey hotkey(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(hotkey.hotkey.isRegistered());
        LogCapture log;
        QVERIFY(setKeyboard("de"));
        QTRY_VERIFY_WITH_TIMEOUT(!hotkey.hotkey.isRegistered(), kWaitMs);
        QCOMPARE(hotkey.hotkey.trouble(), HotkeyTrouble::Taken);
        QVERIFY(log.contains("The keyboard has changed"));
        QVERIFY(!hotkey.hotkey.setRegistered(true));
        QVERIFY(m_other.ungrab(kY, XCB_MOD_MASK_CONTROL));
        QVERIFY(hotkey.hotkey.setRegistered(true));
    }

    void keysAreFoundByTheirNames()
    {
        using Keys = KeyboardMap::Keys;
        const auto found = [](const char* layout, const char* name) {
            return KeyboardMap::compiled(layout).keysWith(
                symbolOfKey(QKeySequence(QString::fromUtf8(name))[0]));
        };
        QCOMPARE(found("de", "Ä"), Keys{kQuote});
        QCOMPARE(found("ru", "Ф"), Keys{kA});
        QCOMPARE(found("us", "!"), Keys{k1});
        QCOMPARE(found("fr", "!"), Keys{kSlash});
        QCOMPARE(found("us,ru", ","), Keys{kComma});
        QCOMPARE(found("us", "Backtab"), Keys{23});
        QCOMPARE(found("us", "Num+Left"), Keys{kNum4});
        QCOMPARE(found("us", "Num+."), (Keys{91, 129}));
        QCOMPARE(found("us", "Media Play"), (Keys{172, 208, 215}));
        QCOMPARE(found("us", "Print"), (Keys{107, 218}));
        QCOMPARE(found("us", "F12"), Keys{96});
    }
    void everyNameLeadsBackToItsKey_data()
    {
        QTest::addColumn<QByteArray>("layout");
        for (const char* layout :
             {"us", "us(intl)", "gb", "de", "de(neo)", "at", "ch", "fr", "be",  "es", "it", "pt",
              "br", "tr",       "az", "pl", "cz",      "sk", "hu", "ro", "se",  "no", "dk", "fi",
              "lv", "lt",       "ru", "ua", "bg",      "rs", "gr", "il", "ara", "ir", "in", "th",
              "vn", "jp",       "kr", "cn", "ge",      "am", "kz", "mt", "gn"})
            QTest::addRow("%s", layout) << QByteArray(layout);
    }
    void everyNameLeadsBackToItsKey()
    {
        QFETCH(QByteArray, layout);
        const KeyboardMap map = KeyboardMap::compiled(layout);
        QVERIFY(map.isValid());
        for (int key = 8; key < 256; ++key) {
            const xkb_keysym_t symbol = map.symbolOf(KeyboardMap::KeyCode(key), 0);
            const QString name = keyNameOfSymbol(symbol);
            const QKeySequence parsed(name);
            const QByteArray told = QStringLiteral("%1: %2").arg(key).arg(name).toUtf8();
            if (name.isEmpty()) {
                QVERIFY2(xkb_keysym_to_utf32(symbol) <= ' ', told.constData());
                continue;
            }
            QVERIFY2(parsed.count() == 1, told.constData());
            QVERIFY2(map.keysWith(symbolOfKey(parsed[0])).contains(KeyboardMap::KeyCode(key)),
                     told.constData());
        }
    }
    void pressedKeyIsNamedByItsOwnSymbol_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QVector<int>>("keys");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("us") << "us" << QVector<int>{kNum4,     kNumLock, kNum4,  kNumLock, kSuper, kCapsLock,
                                                    kCapsLock, kComma,   kF10,   kShift,   k2,     21,
                                                    23,        kSpace,   kRight, kPageUp}
                            << QStringList{"Num+4", "", "Num+4", "",  "",    "",      "",      ",",
                                           "F10",   "", "2",     "=", "Tab", "Space", "Right", "PgUp"};
        QTest::newRow("de") << "de" << QVector<int>{20, kGrave, kRightAlt, kQ, kShift, kQuote}
                            << QStringList{"ß", "^", "", "Q", "", "Ä"};
        QTest::newRow("ru") << "ru" << QVector<int>{kA} << QStringList{"Ф"};
    }
    void pressedKeyIsNamedByItsOwnSymbol()
    {
        QFETCH(QString, layout);
        QFETCH(QVector<int>, keys);
        QFETCH(QStringList, names);
        QVERIFY(setKeyboard(layout));
        NameKeeper keeper;
        keeper.show();
        QVERIFY(QTest::qWaitForWindowExposed(&keeper));
        xcb_set_input_focus(QX11Info::connection(), XCB_INPUT_FOCUS_PARENT, xcb_window_t(keeper.winId()),
                            XCB_CURRENT_TIME);
        xcb_flush(QX11Info::connection());
        QTRY_VERIFY_WITH_TIMEOUT(keeper.isActiveWindow(), kWaitMs);
        for (const int key : keys) {
            if (key == kShift || key == kRightAlt)
                down({key}); // to the end
            else
                press({key});
        }
        up({kShift, kRightAlt});
        QTRY_COMPARE_WITH_TIMEOUT(keeper.names, names, kWaitMs);
    }
    void ruleAcceptsOnlyNamesThatParseBack()
    {
        QCOMPARE(parseableKeyName("right", Qt::Key_Right), QString("RIGHT"));
        QCOMPARE(parseableKeyName("Rechts", Qt::Key_Right), QString("Right"));
        QCOMPARE(parseableKeyName("ß", Qt::Key_Question), QString("ß")); // with Shift
        QCOMPARE(parseableKeyName("4", Qt::Key_4 | int(Qt::KeypadModifier)), QString("Num+4"));
        QCOMPARE(parseableKeyName("Num 4", Qt::Key_Left | int(Qt::KeypadModifier)), QString("Num+Left"));
        QCOMPARE(parseableKeyName("End", Qt::Key_Home), QString("Home")); // not the key of that name
        QCOMPARE(parseableKeyName(" ", Qt::Key_Space), QString("Space"));
        QCOMPARE(parseableKeyName("A", Qt::Key_AltGr), QString());
        QCOMPARE(parseableKeyName("0x1e", Qt::Key_Dead_Grave), QString());
        QCOMPARE(parseableKeyName("0x1e", Qt::Key_unknown), QString());
    }

    void sessionsWithoutGrabsAreKnown()
    {
        const auto hasGrabs = [](const char* platform, const char* variable = "", const char* value = "") {
            QProcessEnvironment environment;
            environment.insert(variable, value);
            return obstacleToKeyGrabs(platform, environment).isEmpty();
        };
        QVERIFY(hasGrabs("xcb"));
        QVERIFY(hasGrabs("xcb", "XDG_SESSION_TYPE", "x11"));
        QVERIFY(!hasGrabs("xcb", "XDG_SESSION_TYPE", "wayland"));
        QVERIFY(!hasGrabs("xcb", "WAYLAND_DISPLAY", "wayland-0"));
        QVERIFY(!hasGrabs("wayland"));
        QVERIFY(!hasGrabs("offscreen"));
    }
    void endOfTheServerIsNoCrash()
    {
        VirtualDisplay display;
        QVERIFY(display.start());
        QProcess orphan;
        display.startProgram(orphan, QCoreApplication::applicationFilePath(), {kOrphan});
        QVERIFY(orphan.waitForReadyRead(kWaitMs));
        QCOMPARE(orphan.readAllStandardOutput().trimmed(), QByteArray("registered"));
        display.stop();
        QVERIFY(orphan.waitForFinished(kWaitMs));
        QCOMPARE(orphan.exitStatus(), QProcess::NormalExit);
    }

public:
    static constexpr char kOrphan[] = "--orphan";

private:
    static QStringList command(const char* name, const QVector<int>& keys)
    {
        QStringList arguments{name};
        for (const int key : keys)
            arguments += QString::number(key);
        return arguments;
    }
    void down(const QVector<int>& keys) { QVERIFY(m_display.run("xdotool", command("keydown", keys))); }
    void up(const QVector<int>& keys) { QVERIFY(m_display.run("xdotool", command("keyup", keys))); }
    /// One after the other, and up again in reverse.
    void press(const QVector<int>& keys)
    {
        const QVector<int> reversed(keys.rbegin(), keys.rend());
        QVERIFY(m_display.run("xdotool", command("keydown", keys) + command("keyup", reversed)));
    }
    void pressThreeAnd(int key) { press({kCtrl, kAlt, kShift, key}); }

    /// Waits until this program has taken notice of what the function does to the keyboard.
    template <typename Function>
    static bool isNoticed(Function function)
    {
        const auto* extension = xcb_get_extension_data(QX11Info::connection(), &xcb_xkb_id);
        EventCounter notices(extension->first_event);
        if (!function() || !QTest::qWaitFor([&] { return notices.count > 0; }, kWaitMs))
            return false;
        bool isQueueDone = false;
        QTimer::singleShot(0, qApp, [&] { isQueueDone = true; });
        return QTest::qWaitFor([&] { return isQueueDone; }, kWaitMs);
    }
    bool setKeyboard(const QString& layouts)
    {
        return isNoticed([&] { return m_display.run("setxkbmap", {layouts}); });
    }
    static bool lockLayout(quint8 layout)
    {
        return isNoticed([layout] {
            xcb_xkb_latch_lock_state(QX11Info::connection(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, true, layout, 0,
                                     false, 0);
            return xcb_flush(QX11Info::connection()) > 0;
        });
    }
    static void setOnlyPressesRepeat(bool isSet)
    {
        constexpr uint32_t kFlag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
        xcb_xkb_per_client_flags(QX11Info::connection(), XCB_XKB_ID_USE_CORE_KBD, kFlag, isSet ? kFlag : 0, 0,
                                 0, 0);
        xcb_flush(QX11Info::connection());
    }

    const VirtualDisplay& m_display;
    OtherProgram m_other;
};

int main(int argc, char** argv)
{
    qunsetenv("WAYLAND_DISPLAY"); // of the developer's own session
    qunsetenv("XDG_SESSION_TYPE");
    qputenv("QT_QPA_PLATFORM", "xcb");
    if (argc == 2 && qstrcmp(argv[1], HotkeyX11Test::kOrphan) == 0) {
        QApplication app(argc, argv);
        static Hotkey hotkey(Qt::Key_F10, kThree);
        puts(hotkey.hotkey.isRegistered() ? "registered" : "refused");
        fflush(stdout);
        return QApplication::exec();
    }
    VirtualDisplay display;
    if (!display.start())
        return 1;
    qputenv("DISPLAY", display.name());
    QApplication app(argc, argv);
    HotkeyX11Test test(display);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hotkey_x11.moc"
