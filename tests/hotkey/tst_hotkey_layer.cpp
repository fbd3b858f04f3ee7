// The logic behind system-wide shortcuts, over a platform that only keeps books.
#include "LogCapture.h"
#include "hotkey/QHotkey.h"
#include "hotkey/QHotkeyPrivate.h"
#include "hotkey/WindowsKeys.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

namespace {

using Shortcut = QHotkey::NativeShortcut;

class FakePlatform : public QHotkeyPrivate
{
public:
    FakePlatform() { s_current = this; }
    ~FakePlatform() override { s_current = nullptr; }

    using QHotkeyPrivate::activateShortcut;
    using QHotkeyPrivate::releaseShortcut;
    void take(Shortcut shortcut)
    {
        trouble = HotkeyTrouble::Taken;
        s_registered.removeAll(shortcut);
        loseShortcut(shortcut);
    }

    static inline FakePlatform* s_current = nullptr;
    static inline QVector<Shortcut> s_registered; ///< with the system, which outlives the application
    static inline QVector<Shortcut> s_takenElsewhere;

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override
    {
        ok = keycode != Qt::Key_Help; // the one key that this keyboard lacks
        return keycode;
    }
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override
    {
        ok = true;
        return modifiers;
    }
    bool registerShortcut(Shortcut shortcut) override
    {
        trouble = HotkeyTrouble::Taken;
        error = QStringLiteral("somebody has it");
        if (s_takenElsewhere.contains(shortcut) || s_registered.contains(shortcut))
            return false;
        s_registered += shortcut;
        return true;
    }
    bool unregisterShortcut(Shortcut shortcut) override
    {
        error = QStringLiteral("it is not there");
        return s_registered.removeOne(shortcut);
    }
    bool nativeEventFilter(const QByteArray&, void*, long*) override { return false; }
};

FakePlatform& platform()
{
    return *FakePlatform::s_current;
}

constexpr auto kModifiers = Qt::ControlModifier | Qt::AltModifier;
const Shortcut kF1(Qt::Key_F1, kModifiers);
const Shortcut kF2(Qt::Key_F2, kModifiers);

} // namespace

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    return std::make_unique<FakePlatform>();
}

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
        FakePlatform::s_registered.clear();
        FakePlatform::s_takenElsewhere.clear();
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
        QCOMPARE(FakePlatform::s_registered, QVector<Shortcut>{kF1});
        QCOMPARE(platform().thread(), QThread::currentThread());

        std::atomic<QThread*> activatedOn{nullptr};
        std::atomic<int> releases{0};
        connect(far, &QHotkey::activated, far, [&] { activatedOn = QThread::currentThread(); });
        connect(far, &QHotkey::released, far, [&] { ++releases; });
        QSignalSpy pressed(near.get(), &QHotkey::activated);
        platform().activateShortcut(kF2);
        platform().activateShortcut(kF1);
        QCOMPARE(pressed.count(), 0); // queued, for the filter runs inside the message pump
        QTRY_COMPARE(pressed.count(), 1);
        QTRY_COMPARE(activatedOn.load(), &worker);

        near.reset();
        QCOMPARE(FakePlatform::s_registered, QVector<Shortcut>{kF1});
        platform().releaseShortcut(kF1);
        QTRY_COMPARE(releases.load(), 1);
        connect(&worker, &QThread::finished, far, &QObject::deleteLater);
        worker.quit();
        QTRY_VERIFY(FakePlatform::s_registered.isEmpty()); // its end waits for this event loop
        QVERIFY(worker.wait());
    }

    void manyThreadsAtOnceLeaveTheBooksBalanced()
    {
        std::atomic<int> failures{0}, running{4};
        const auto work = [&] {
            QHotkeyPrivate::instance()->addMapping(Qt::Key_Help, kModifiers, kF2);
            for (int i = 0; i < 40; ++i) {
                QHotkey first, second;
                failures += !first.setShortcut(Qt::Key_F1, kModifiers, true);
                failures += !second.setShortcut(i % 2 ? Qt::Key_F1 : Qt::Key_Help, kModifiers, true);
                failures += !first.setShortcut(Qt::Key_F2, kModifiers, true);
            }
            --running;
        };
        std::vector<std::unique_ptr<QThread>> workers;
        for (int i = 0; i < running; ++i)
            workers.emplace_back(QThread::create(work));
        for (const auto& worker : workers)
            worker->start();
        while (running > 0) {
            if (FakePlatform::s_current) {
                platform().activateShortcut(kF1); // on its way while its hotkeys end
                platform().activateShortcut(kF2);
            }
            QTest::qWait(0);
        }
        for (const auto& worker : workers)
            QVERIFY(worker->wait());
        QCOMPARE(failures.load(), 0);
        QVERIFY(FakePlatform::s_registered.isEmpty());
    }

    void aRegisteredShortcutChangesOnlyOnRequest()
    {
        QHotkey hotkey;
        QSignalSpy changes(&hotkey, &QHotkey::registeredChanged);
        QVERIFY(!hotkey.setRegistered(true));
        LogCapture log;
        QVERIFY(hotkey.setShortcut(QKeySequence("Ctrl+Alt+F1, Ctrl+B"), true));
        QVERIFY(log.contains("Keysequences with multiple shortcuts are not allowed!"));

        QVERIFY(!hotkey.setShortcut(Qt::Key_F2, kModifiers) && !hotkey.setNativeShortcut(kF2));
        QCOMPARE(hotkey.shortcut(), QKeySequence("Ctrl+Alt+F1"));
        platform().activateShortcut(kF1);
        QSignalSpy pressed(&hotkey, &QHotkey::activated);
        QVERIFY(hotkey.setShortcut(Qt::Key_F2, kModifiers, true));
        QCOMPARE(FakePlatform::s_registered, QVector<Shortcut>{kF2});
        QCoreApplication::processEvents();
        QCOMPARE(pressed.count(), 0); // the press was meant for what it was before

        QVERIFY(hotkey.setNativeShortcut(kF1, true) && hotkey.shortcut().isEmpty());
        QVERIFY(hotkey.setShortcut(QKeySequence()));
        QVERIFY(FakePlatform::s_registered.isEmpty() && !hotkey.currentNativeShortcut().valid);
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

        const auto obstacleTo = [](Qt::Key key) { return platform().obstacleTo(key, kModifiers); };
        FakePlatform::s_takenElsewhere += kF1;
        QCOMPARE(obstacleTo(Qt::Key_Help), HotkeyTrouble::NoSuchKey);
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::Taken);
        QVERIFY(!log.contains("Failed"));
        QVERIFY(!hotkey.setShortcut(Qt::Key_F1, kModifiers, true));
        QVERIFY(log.contains("Failed to register Ctrl+Alt+F1. Error: somebody has it"));
        QCOMPARE(hotkey.trouble(), HotkeyTrouble::Taken);
        FakePlatform::s_takenElsewhere.clear();
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::None);
        QVERIFY(FakePlatform::s_registered.isEmpty());
        QVERIFY(hotkey.setRegistered(true) && hotkey.trouble() == HotkeyTrouble::None);
        QCOMPARE(obstacleTo(Qt::Key_F1), HotkeyTrouble::None); // it would be shared

        FakePlatform::s_registered.clear(); // the system has forgotten it
        QVERIFY(!hotkey.setRegistered(false) && !hotkey.isRegistered());
        QVERIFY(log.contains("Failed to unregister Ctrl+Alt+F1. Error: it is not there"));
    }

    void aShortcutTakenAwayCanBeTakenAgain()
    {
        auto *first = new QHotkey, *second = new QHotkey;
        QVERIFY(first->setShortcut(Qt::Key_F1, kModifiers, true));
        QVERIFY(second->setShortcut(Qt::Key_F1, kModifiers, true));
        platform().take(kF1);
        delete second; // while the news is on its way
        QTRY_VERIFY(!first->isRegistered());
        QCOMPARE(first->trouble(), HotkeyTrouble::Taken);
        QVERIFY(first->setRegistered(true));
        // Whoever takes it again at once does not keep a dead hotkey.
        connect(first, &QHotkey::registeredChanged, this,
                [first](bool isRegistered) { isRegistered || first->setRegistered(true); });
        QVERIFY(!first->setShortcut(Qt::Key_F2, kModifiers, true));
        QCOMPARE(FakePlatform::s_registered, QVector<Shortcut>{kF1});
        delete first;
        QVERIFY(FakePlatform::s_registered.isEmpty());
    }

    void hotkeysMayOutliveTheApplication()
    {
        auto* survivor = new QHotkey;
        QVERIFY(survivor->setShortcut(Qt::Key_F1, kModifiers, true));
        {
            LogCapture log;
            m_app.reset();
            QVERIFY(log.contains("QHotkeyPrivate destroyed with registered shortcuts!"));
        }
        QVERIFY(!FakePlatform::s_current);
        QVERIFY(FakePlatform::s_registered.isEmpty());
        QVERIFY(!survivor->setRegistered(true));
        QVERIFY(!survivor->setShortcut(Qt::Key_F2, kModifiers, true));

        init();
        QVERIFY(survivor->setShortcut(Qt::Key_F1, kModifiers, true));
        QSignalSpy pressed(survivor, &QHotkey::activated);
        platform().activateShortcut(kF1);
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
        QCOMPARE(WindowsKeys::modifiers(kModifiers | Qt::KeypadModifier), 3U);
        QCOMPARE(WindowsKeys::shortcutId(40, 7), 0x7728); // Ctrl+Alt+Shift+Down
    }

private:
    std::unique_ptr<QCoreApplication> m_app;
};

QTEST_APPLESS_MAIN(tst_HotkeyLayer)
#include "tst_hotkey_layer.moc"
