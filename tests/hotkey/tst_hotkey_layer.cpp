// The logic behind system-wide shortcuts, over a platform that only keeps books.
#include "FakeKeyboard.h"
#include "LogCapture.h"
#include "hotkey/QHotkey.h"
#include "hotkey/WindowsKeys.h"

#include <QtTest>

namespace {

using Shortcuts = QSet<QHotkey::NativeShortcut>;
constexpr Qt::KeyboardModifiers kModifiers(FakeKeyboard::kHeld);
const auto kF1 = FakeKeyboard::shortcut(Qt::Key_F1), kF2 = FakeKeyboard::shortcut(Qt::Key_F2);

FakeKeyboard& keyboard()
{
    return *FakeKeyboard::s_current;
}

} // namespace

class tst_HotkeyLayer : public QObject
{
    Q_OBJECT

private slots:
    // Each case has an application of its own, and with it a platform.
    void init()
    {
        static int count = 1;
        static char name[] = "tst_hotkey_layer";
        static char* names[] = {name, nullptr};
        m_app = std::make_unique<QCoreApplication>(count, names);
        FakeKeyboard::s_ours.clear();
        FakeKeyboard::set({});
    }
    void cleanup() { m_app.reset(); }

    void threadsShareAShortcutUntilTheLastOneGivesItUp()
    {
        QThread worker;
        worker.start();
        auto* far = new QHotkey;
        far->moveToThread(&worker);
        std::atomic<bool> isOn{false}; // the first use of all is on another thread
        QMetaObject::invokeMethod(far, [&] { isOn = far->setShortcut(Qt::Key_F1, kModifiers, true); });
        QTRY_VERIFY(isOn.load());
        auto near = std::make_unique<QHotkey>();
        QVERIFY(near->setShortcut(Qt::Key_F1, kModifiers, true));
        QCOMPARE(FakeKeyboard::s_ours, Shortcuts{kF1});
        QCOMPARE(keyboard().thread(), QThread::currentThread());

        std::atomic<QThread*> activatedOn{nullptr};
        std::atomic<int> releases{0};
        connect(far, &QHotkey::activated, far, [&] { activatedOn = QThread::currentThread(); });
        connect(far, &QHotkey::released, far, [&] { ++releases; });
        QSignalSpy pressed(near.get(), &QHotkey::activated);
        keyboard().press(Qt::Key_F2);
        keyboard().press(Qt::Key_F1);
        QCOMPARE(pressed.count(), 0); // queued, for the filter runs inside the message pump
        QTRY_COMPARE(pressed.count(), 1);
        QTRY_COMPARE(activatedOn.load(), &worker);

        near.reset();
        QCOMPARE(FakeKeyboard::s_ours, Shortcuts{kF1});
        keyboard().release(Qt::Key_F1);
        QTRY_COMPARE(releases.load(), 1);
        connect(&worker, &QThread::finished, far, &QObject::deleteLater);
        worker.quit();
        QTRY_VERIFY(FakeKeyboard::s_ours.isEmpty()); // its end waits for this event loop
        QVERIFY(worker.wait());
    }

    void aRegisteredShortcutChangesOnlyOnRequest()
    {
        QHotkey hotkey;
        QSignalSpy changes(&hotkey, &QHotkey::registeredChanged);
        QVERIFY(!hotkey.setRegistered(true));
        LogCapture log;
        QVERIFY(hotkey.setShortcut(QKeySequence("Ctrl+Alt+Shift+F1, Ctrl+B"), true));
        QVERIFY(log.contains("Keysequences with multiple shortcuts are not allowed!"));

        QVERIFY(!hotkey.setShortcut(Qt::Key_F2, kModifiers) && !hotkey.setNativeShortcut(kF2));
        QCOMPARE(hotkey.shortcut(), QKeySequence("Ctrl+Alt+Shift+F1"));
        keyboard().press(Qt::Key_F1);
        QSignalSpy pressed(&hotkey, &QHotkey::activated);
        QVERIFY(hotkey.setShortcut(Qt::Key_F2, kModifiers, true));
        QCOMPARE(FakeKeyboard::s_ours, Shortcuts{kF2});
        QCoreApplication::processEvents();
        QCOMPARE(pressed.count(), 0); // the press was meant for what it was before

        QVERIFY(hotkey.setNativeShortcut(kF1, true) && hotkey.shortcut().isEmpty());
        QVERIFY(hotkey.setShortcut(QKeySequence()));
        QVERIFY(FakeKeyboard::s_ours.isEmpty() && !hotkey.currentNativeShortcut().valid);
        QCOMPARE(changes.count(), 6);
    }

    void aRefusalLeavesAHotkeyUnregisteredAndSaysWhy()
    {
        LogCapture log;
        QHotkey hotkey;
        QVERIFY(!hotkey.setShortcut(Qt::Key_Help, kModifiers, true));
        QVERIFY(log.contains("Unable to map shortcut to native keys. Key:"));
        QCOMPARE(hotkey.trouble(), HotkeyTrouble::NoSuchKey);
        QVERIFY(!hotkey.currentNativeShortcut().valid);

        const auto obstacleTo = [](Qt::Key key) { return keyboard().obstacleTo(key, kModifiers); };
        FakeKeyboard::set({Qt::Key_F1});
        QCOMPARE(obstacleTo(Qt::Key_Help), HotkeyTrouble::NoSuchKey);
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::Taken);
        QVERIFY(!log.contains("Failed"));
        QVERIFY(!hotkey.setShortcut(Qt::Key_F1, kModifiers, true));
        QVERIFY(log.contains("Failed to register Ctrl+Alt+Shift+F1. Error: somebody has it"));
        QCOMPARE(hotkey.trouble(), HotkeyTrouble::Taken);
        FakeKeyboard::set({});
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::None);
        QVERIFY(FakeKeyboard::s_ours.isEmpty());
        QVERIFY(hotkey.setRegistered(true) && hotkey.trouble() == HotkeyTrouble::None);
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::None); // it would be shared

        FakeKeyboard::s_ours.clear(); // the system has forgotten it
        QVERIFY(!hotkey.setRegistered(false) && !hotkey.isRegistered());
        QVERIFY(log.contains("Failed to unregister Ctrl+Alt+Shift+F1. Error: it is not there"));
    }

    void aShortcutTakenAwayCanBeTakenAgain()
    {
        auto *first = new QHotkey, *second = new QHotkey;
        QVERIFY(first->setShortcut(Qt::Key_F1, kModifiers, true));
        QVERIFY(second->setShortcut(Qt::Key_F1, kModifiers, true));
        keyboard().lose(Qt::Key_F1);
        delete second; // while the news is on its way
        QTRY_VERIFY(!first->isRegistered());
        QCOMPARE(first->trouble(), HotkeyTrouble::Taken);
        QVERIFY(first->setRegistered(true));
        // Whoever takes it again at once does not keep a dead hotkey.
        connect(first, &QHotkey::registeredChanged, this,
                [first](bool isRegistered) { isRegistered || first->setRegistered(true); });
        QVERIFY(!first->setShortcut(Qt::Key_F2, kModifiers, true));
        QCOMPARE(FakeKeyboard::s_ours, Shortcuts{kF1});
        delete first;
        QVERIFY(FakeKeyboard::s_ours.isEmpty());
    }

    void hotkeysMayOutliveTheApplication()
    {
        auto* survivor = new QHotkey;
        QVERIFY(survivor->setShortcut(Qt::Key_F1, kModifiers, true));
        const LogCapture log;
        m_app.reset();
        QVERIFY(log.contains("QHotkeyPrivate destroyed with registered shortcuts!"));
        QVERIFY(!FakeKeyboard::s_current);
        QVERIFY(FakeKeyboard::s_ours.isEmpty());
        QVERIFY(!survivor->setRegistered(true));
        QVERIFY(!survivor->setShortcut(Qt::Key_F2, kModifiers, true));

        init();
        QVERIFY(survivor->setShortcut(Qt::Key_F1, kModifiers, true));
        QSignalSpy pressed(survivor, &QHotkey::activated);
        keyboard().press(Qt::Key_F1);
        QTRY_COMPARE(pressed.count(), 1);
        m_app.reset();
        delete survivor;
    }

    void windowsKeysFollowTheKeyboardLayout()
    {
        const auto isKey = [](int qtKey, int virtualKey) {
            const auto layout = [](ushort c) -> short { return c == 0xC4 ? 0x1DE : -1; }; // with Shift
            bool ok = false;
            const quint32 found = WindowsKeys::virtualKey(qtKey, layout, ok);
            return (ok ? int(found) : -1) == virtualKey;
        };
        QVERIFY(isKey(Qt::Key_Adiaeresis, 0xDE) && isKey(Qt::Key_Period, 110) && isKey(0x416, 0x16));
        QVERIFY(isKey(Qt::Key_F24, 135) && isKey(Qt::Key_Play, 250) && isKey(Qt::Key_Shift, -1));
        QVERIFY(isKey(Qt::Key_4 | int(Qt::KeypadModifier), 100));
        QVERIFY(isKey(Qt::Key_Plus | int(Qt::KeypadModifier), 107));
        QVERIFY(isKey(Qt::Key_Left | int(Qt::KeypadModifier), 37));
        QCOMPARE(WindowsKeys::modifiers(kModifiers | Qt::KeypadModifier), 7U);
        QCOMPARE(WindowsKeys::shortcutId(40, 7), 0x7728); // Ctrl+Alt+Shift+Down
    }

private:
    std::unique_ptr<QCoreApplication> m_app;
};

QTEST_APPLESS_MAIN(tst_HotkeyLayer)
#include "tst_hotkey_layer.moc"
