#include "LogCapture.h"
#include "app/HotKeyManager.h"
#include "hotkey/QHotkeyPrivate.h"

#include <QSet>
#include <QtTest>

namespace {

constexpr int kAll = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;

/// The desktop's keyboard, on which another program may hold combinations.
class Keyboard : public QHotkeyPrivate
{
public:
    Keyboard() { s_self = this; }
    using Shortcut = QHotkey::NativeShortcut;

    void press(int key, int modifiers = kAll) { activateShortcut({quint32(key), quint32(modifiers)}); }
    void lose(int key)
    {
        trouble = HotkeyTrouble::Taken;
        taken += key;
        ours.remove({quint32(key), kAll});
        loseShortcut({quint32(key), kAll});
    }

    QSet<int> missing; ///< keys
    QSet<int> taken;   ///< likewise, with every modifier
    bool isAllowed = true;
    QSet<Shortcut> ours;
    static inline Keyboard* s_self = nullptr;

protected:
    quint32 nativeKeycode(Qt::Key key, bool& ok) override
    {
        ok = !missing.contains(key);
        return key == Qt::Key_Backtab ? Qt::Key_Tab : key;
    }
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override
    {
        ok = true;
        return quint32(modifiers);
    }
    bool registerShortcut(Shortcut shortcut) override
    {
        trouble = isAllowed ? HotkeyTrouble::Taken : HotkeyTrouble::NotAllowed;
        if (!isAllowed || taken.contains(int(shortcut.key)))
            return false;
        ours += shortcut;
        return true;
    }
    bool unregisterShortcut(Shortcut shortcut) override { return ours.remove(shortcut); }
    bool nativeEventFilter(const QByteArray&, void*, long*) override { return false; }
};

Keyboard& keyboard()
{
    return *Keyboard::s_self;
}

bool holds(int key)
{
    return keyboard().ours.contains({quint32(key), kAll});
}

bool set(HotKeyManager& manager, const QString& id, Qt::Key key)
{
    return manager.setHotkey(id, key, Qt::KeyboardModifiers(kAll));
}

} // namespace

std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform()
{
    return std::make_unique<Keyboard>();
}

/// The hotkeys on a keyboard of the test's own.
class HotkeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QHotkeyPrivate::instance();
        keyboard().missing.clear();
        keyboard().taken.clear();
        keyboard().isAllowed = true;
    }
    void cleanup() { QVERIFY(keyboard().ours.isEmpty()); }

    void refusedCombinationReplacesNothing()
    {
        HotKeyManager manager;
        QSignalSpy pressed(&manager, &HotKeyManager::hotkeyActived);
        QVERIFY(set(manager, "a", Qt::Key_A) && set(manager, "b", Qt::Key_Tab));
        QVERIFY(set(manager, "a", Qt::Key_A));
        keyboard().taken = {Qt::Key_X};
        QVERIFY(!set(manager, "a", Qt::Key_X) && manager.trouble("a") == HotkeyTrouble::None);
        keyboard().press(Qt::Key_A);
        QTRY_COMPARE(pressed.size(), 1);
        QCOMPARE(pressed[0][0].toString(), "a");

        QVERIFY(set(manager, "a", Qt::Key_C));
        QVERIFY(holds(Qt::Key_C) && !holds(Qt::Key_A));
        keyboard().press(Qt::Key_C);
        QTRY_COMPARE(pressed.size(), 2);

        const auto isFree = [&](Qt::Key key) {
            return manager.isHotkeyFree(key, Qt::KeyboardModifiers(kAll));
        };
        QVERIFY(isFree(Qt::Key_A) && !isFree(Qt::Key_C) && !isFree(Qt::Key_X));
        QVERIFY(!isFree(Qt::Key_Backtab)); // the key of b by another name
        QCOMPARE(keyboard().ours.size(), 2);
    }

    void whatCannotBeHadIsTriedAgainQuietly()
    {
        HotKeyManager manager;
        auto* timer = manager.findChild<QTimer*>();
        QSignalSpy troubles(&manager, &HotKeyManager::troubleChanged);
        QVERIFY(set(manager, "a", Qt::Key_A) && !timer->isActive());
        keyboard().isAllowed = false;
        QVERIFY(!set(manager, "no", Qt::Key_N) && !timer->isActive());
        keyboard().isAllowed = true;
        keyboard().taken = {Qt::Key_X};
        keyboard().missing = {Qt::Key_M};
        QVERIFY(!set(manager, "x", Qt::Key_X) && !set(manager, "m", Qt::Key_M) && timer->isActive());
        QVERIFY(manager.trouble("x") == HotkeyTrouble::Taken &&
                manager.trouble("m") == HotkeyTrouble::NoSuchKey);
        // Not another action's either while its own waits for it.
        QVERIFY(!manager.isHotkeyFree(Qt::Key_X, Qt::KeyboardModifiers(kAll)));

        LogCapture log;
        keyboard().isAllowed = false;
        manager.retry();
        manager.retry();
        QVERIFY(log.containing("").isEmpty());
        keyboard().isAllowed = true;
        manager.retry();
        QVERIFY(holds(Qt::Key_N) && log.count("") == 1 && log.count("taken after all no") == 1);
        // A key that comes, but is another's.
        keyboard().taken += Qt::Key_M;
        keyboard().missing.clear();
        manager.retry();
        manager.retry();
        QCOMPARE(manager.trouble("m"), HotkeyTrouble::Taken);
        QCOMPARE(log.count("Failed to register"), 1);

        keyboard().lose(Qt::Key_A);
        QTRY_COMPARE(log.count("has been lost a"), 1);
        QVERIFY(manager.trouble("a") == HotkeyTrouble::Taken && timer->isActive());
        keyboard().taken.clear();
        troubles.clear();
        timer->setInterval(1); // instead of half a minute
        QTRY_VERIFY(!timer->isActive());
        QVERIFY(holds(Qt::Key_A) && holds(Qt::Key_X) && holds(Qt::Key_M) && troubles.size() == 3);
        QSignalSpy pressed(&manager, &HotKeyManager::hotkeyActived);
        keyboard().press(Qt::Key_A);
        keyboard().press(Qt::Key_X);
        QTRY_COMPARE(pressed.size(), 2);
    }
};

QTEST_MAIN(HotkeysTest)
#include "tst_hotkeys.moc"
