#include "FakeController.h"
#include "FakeKeyboard.h"
#include "LogCapture.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/HotKeyEditDialog.h"
#include "ui/HotKeyEditWidget.h"

#include <QLineEdit>
#include <QTableWidget>
#include <QtTest>

namespace {

constexpr int kAll = FakeKeyboard::kHeld;
const QString kMarquee = "id.effect.marquee.marquee";
const QString kOnOff = "id.hotkey.turnOffOn";

FakeKeyboard& keyboard()
{
    return static_cast<FakeKeyboard&>(*QHotkeyPrivate::instance());
}

QJsonObject bindingOf(int key)
{
    return {{"keyCode", key}, {"modifiers", kAll}};
}

QJsonValue stored(const QString& id)
{
    return ConfigurationManager::instance()->appConfig(ConfigKeys::hotkeyBindingKey(id));
}

} // namespace

/// The hotkeys on a keyboard of the test's own: which are had, and what they do to devices and page.
class HotkeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        FakeKeyboard::set({});
    }
    void cleanup()
    {
        m_app.reset();
        m_devices.clear();
        QVERIFY(FakeKeyboard::s_ours.isEmpty());
    }

    void whatCannotBeHadIsTriedAgainQuietly()
    {
        HotKeyManager manager;
        constexpr Qt::KeyboardModifiers held(kAll);
        const auto set = [&](const char* id, Qt::Key key) { return manager.setHotkey(id, key, held); };
        const auto isFree = [&](Qt::Key key) { return manager.isHotkeyFree(key, held); };
        auto* timer = manager.findChild<QTimer*>();
        QVERIFY(set("a", Qt::Key_A) && set("a", Qt::Key_Tab));
        QVERIFY(isFree(Qt::Key_A) && !isFree(Qt::Key_Backtab)); // the key of a by another name
        FakeKeyboard::set({}, {}, false);
        QVERIFY(!set("a", Qt::Key_X) && manager.trouble("a") == HotkeyTrouble::None); // keeps what it has
        QVERIFY(!set("no", Qt::Key_N) && !timer->isActive());
        FakeKeyboard::set({Qt::Key_X}, {Qt::Key_M});
        QVERIFY(!set("x", Qt::Key_X) && !set("m", Qt::Key_M) && timer->isActive());
        QCOMPARE(manager.trouble("m"), HotkeyTrouble::NoSuchKey);
        FakeKeyboard::set({}); // what waits to be tried again is not another action's either
        QVERIFY(!isFree(Qt::Key_X) && !isFree(Qt::Key_M));

        LogCapture log;
        FakeKeyboard::set({Qt::Key_X}, {Qt::Key_M}, false);
        manager.retry();
        QVERIFY(log.containing("").isEmpty());
        FakeKeyboard::set({Qt::Key_X, Qt::Key_M}); // a key that comes, but is another's
        emit keyboard().servesAgain();
        emit keyboard().servesAgain();
        QCOMPARE(manager.trouble("m"), HotkeyTrouble::Taken);
        QVERIFY(log.count("taken after all") == 1 && log.count("Failed to register") == 1);

        FakeKeyboard::set({Qt::Key_Tab, Qt::Key_X, Qt::Key_M});
        keyboard().lose(Qt::Key_Tab);
        QTRY_COMPARE(manager.trouble("a"), HotkeyTrouble::Taken);
        FakeKeyboard::set({});
        const QSignalSpy troubles(&manager, &HotKeyManager::troubleChanged);
        timer->setInterval(1); // instead of half a minute
        QTRY_VERIFY(!timer->isActive());
        QCOMPARE(troubles.size(), 3);
        const QSignalSpy pressed(&manager, &HotKeyManager::hotkeyActived);
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_N, Qt::Key_X, Qt::Key_M})
            keyboard().press(key);
        QTRY_COMPARE(pressed.size(), 4);
    }

    void brokenBindingsBecomeTheDefaults()
    {
        const auto read = [](const QJsonValue& key, const QJsonValue& modifiers) {
            return HotkeyBinding::fromStored(QJsonObject{{"keyCode", key}, {"modifiers", modifiers}});
        };
        for (const int key : {-1, 0, int(Qt::Key_unknown), int(Qt::Key_Shift), int(Qt::Key_AltGr), 0x1777777,
                              int(Qt::CTRL) | Qt::Key_A, int('a')})
            QVERIFY2(!read(key, kAll), qPrintable(QString::number(key, 16)));
        for (const QJsonValue& odd : QVector<QJsonValue>{-1, 1, "65", 65.5, 1e300, true, QJsonValue()})
            QVERIFY(!read(odd, kAll) && !read(Qt::Key_A, odd));
        for (const int key : {int(Qt::Key_A), int(Qt::Key_Plus), int(Qt::Key_Space), int(Qt::Key_Adiaeresis),
                              0x42F, int(Qt::Key_Tab), int(Qt::Key_F35), int(Qt::Key_VolumeMute)}) {
            const auto good = read(key, kAll);
            QVERIFY2(good, qPrintable(QString::number(key, 16)));
            QVERIFY(HotkeyBinding::fromCombine(good->toCombine()) == *good);
        }
        const auto keypad = read(Qt::Key_4, kAll | int(Qt::KeypadModifier));
        QVERIFY(keypad && HotkeyBinding::fromCombine(keypad->toCombine()) == *keypad);

        auto* config = ConfigurationManager::instance();
        const QJsonObject chosen{{"keyCode", Qt::Key_P}, {"modifiers", kAll}, {"more", 1}};
        config->setAppConfig(ConfigKeys::hotkeyBindingKey("id.hotkey.nextEffect"), chosen);
        config->setAppConfig(ConfigKeys::hotkeyBindingKey(kOnOff), bindingOf(-1));
        config->setAppConfig(ConfigKeys::hotkeyBindingKey("id.hotkey.preEffect"), "Left");
        FakeKeyboard::set({Qt::Key_P});
        start(0);
        QCOMPARE(stored(kOnOff), QJsonValue(bindingOf(Qt::Key_F10)));
        QCOMPARE(stored("id.hotkey.preEffect"), QJsonValue(bindingOf(Qt::Key_Left)));
        QCOMPARE(stored("id.hotkey.increaseBrightness"), QJsonValue(bindingOf(Qt::Key_Up)));
        QCOMPARE(stored("id.hotkey.nextEffect"), QJsonValue(chosen)); // no stand-in for what cannot be had
        QVERIFY(FakeKeyboard::holds(Qt::Key_F10) && FakeKeyboard::s_ours.size() == 4);
    }

    void everyPressCounts()
    {
        start(0);
        LogCapture log;
        for (const auto key : {Qt::Key_F10, Qt::Key_Right, Qt::Key_Down})
            keyboard().press(key);
        QTRY_COMPARE(log.count("The controller list is empty"), 3);
        start(2);
        for (int i = 0; i < 11; ++i) // as if there had been none without a device
            keyboard().press(Qt::Key_F10);
        QTRY_COMPARE(log.count("switched by hotkey actived:"), 11);
        QVERIFY(!options(0).enable && !options(1).enable);
    }

    void groupsAreWalkedBothWays()
    {
        start(2);
        m_devices[1]->setEnable(false);
        openPage();
        QStringList forth;
        do {
            forth += bound(0);
            press(Qt::Key_Right);
            QVERIFY(bound(1) == bound(0) && options(1).enable);
            QVERIFY(page().currentWorker() == bound(0) && page().currentGroup() == options(0).workMode);
        } while (bound(0) != kMarquee && forth.size() < 20);
        QVERIFY(forth.size() > 3);
        while (!forth.isEmpty()) {
            press(Qt::Key_Left);
            QCOMPARE(bound(0), forth.takeLast());
        }
        // From different groups all meet at the screen.
        m_app->deviceManager().setControllerEffect(id(0), "id.effect.singleColor.singleColor1", true);
        press(Qt::Key_Left);
        QVERIFY(options(0).workMode == "id.effect.screenSync" && bound(0) == bound(1));
    }

    void brightnessKeepsDifferencesUpToItsLimits()
    {
        start(2);
        m_devices[0]->setBrightness(0.95F);
        m_devices[1]->setBrightness(0.5375F);
        openPage();
        const QSignalSpy wishes(&page(), &ControlPage::brightnessChanged);
        press(Qt::Key_Up);
        QVERIFY(options(0).brightness == 1.0F && options(1).brightness == 0.6375F);
        QCOMPARE(page().brightness(), 1.0F);
        for (int i = 0; i < 9; ++i)
            press(Qt::Key_Down);
        QVERIFY(options(0).brightness == 0.1F && options(1).brightness == 0.0F);
        press(Qt::Key_Down);
        QVERIFY(options(0).brightness == 0.0F && page().brightness() == 0.0F && wishes.isEmpty());
    }

    void userGivesAnActionAnotherKey()
    {
        FakeKeyboard::set({Qt::Key_F10, Qt::Key_X, Qt::Key_Right});
        start(1);
        HotKeyEditWidget table;
        m_app->fillHotkeys(table);
        QVERIFY(isMarked(table, 0) && isMarked(table, 1) && !isMarked(table, 2));
        for (const char* refused : {"X", "Right", "Left", "F10", "", "Nonsense", "Shift+A"})
            QCOMPARE(edit(table, refused), "Ctrl+Alt+Shift+F10");
        QCOMPARE(stored(kOnOff), QJsonValue(bindingOf(Qt::Key_F10)));
        // Its own one, once it can be had; what becomes free meanwhile shows as soon as the page does.
        FakeKeyboard::set({});
        edit(table, "F10");
        QVERIFY(FakeKeyboard::holds(Qt::Key_F10) && !isMarked(table, 0) && isMarked(table, 1));
        table.show();
        QVERIFY(!isMarked(table, 1));
        QCOMPARE(edit(table, "P"), "Ctrl+Alt+Shift+P");
        QVERIFY(FakeKeyboard::holds(Qt::Key_P) && !FakeKeyboard::holds(Qt::Key_F10));
        QCOMPARE(stored(kOnOff), QJsonValue(bindingOf(Qt::Key_P)));
    }

    void aDesktopThatDecidesOnKeysIsShownAndAsksAtTheRightTime()
    {
        qApp->setProperty("isAutoStartup", true);
        const int& asked = keyboard().questionsAllowed = 0;
        start(0);
        QCOMPARE(asked, 0);
        m_app->mainWindow().show();
        QCOMPARE(asked, 1);
        HotKeyEditWidget table, another;
        m_app->fillHotkeys(table);
        const auto* row = table.findChild<QTableWidget*>()->item(0, 1);
        keyboard().give(Qt::Key_F10, "Super+F7", HotkeyTrouble::None);
        QTRY_VERIFY(row->text().startsWith("Super+F7 ("));
        m_app->fillHotkeys(another);
        QCOMPARE(another.findChild<QTableWidget*>()->item(0, 1)->text(), row->text());
        keyboard().give(Qt::Key_F10, {}, HotkeyTrouble::NoKeysYet);
        QTRY_VERIFY(isMarked(table, 0) && row->text() == "Ctrl+Alt+Shift+F10");

        emit keyboard().userDecided(false); // he is asked where he looks for them, and there only
        m_app.reset();
        start(0);
        m_app->mainWindow().show();
        QCOMPARE(asked, 1);
        m_app->fillHotkeys(table);
        table.show();
        QCOMPARE(asked, 2);
        emit keyboard().userDecided(true);
        m_app.reset();
        start(0); // an autostart as well
        QCOMPARE(asked, 3);
        qApp->setProperty("isAutoStartup", {});
    }

private:
    static bool isMarked(const HotKeyEditWidget& table, int row)
    {
        return !table.findChild<QTableWidget*>()->item(row, 1)->icon().isNull();
    }
    /// Gives the first action another key; the shortcut that it has then.
    static QString edit(HotKeyEditWidget& table, const QString& key)
    {
        auto* rows = table.findChild<QTableWidget*>();
        emit rows->doubleClicked(rows->model()->index(0, 0));
        auto* dialog = table.findChild<HotKeyEditDialog*>();
        dialog->findChild<QLineEdit*>("keyLineEdit")->setText(key);
        dialog->accept();
        delete dialog;
        return rows->item(0, 1)->text();
    }
    /// On the marquee, and so many devices more; the second one is offered more than the first.
    void start(int devices)
    {
        if (!m_app)
            m_app = std::make_unique<LumivarApp>(nullptr);
        for (; devices > 0; --devices) {
            const QString model = m_devices.isEmpty() ? "LVTEST:" : "LV0N03:";
            m_devices += AbsRGBControllerPtr(new FakeController(model + QUuid::createUuid().toString()));
            QMetaObject::invokeMethod(&m_app->deviceManager(), "addController",
                                      Q_ARG(AbsRGBControllerPtr, m_devices.last()));
            m_app->deviceManager().setControllerEffect(id(m_devices.size() - 1), kMarquee, true);
        }
    }
    void press(Qt::Key key)
    {
        LogCapture log;
        keyboard().press(key);
        QTRY_VERIFY(log.contains("The hotkey action has executed: "));
    }
    void openPage()
    {
        emit m_app->mainWindow().homePage()->controllerEntryOrdered(id(0));
        QTRY_COMPARE(page().controllerId(), id(0));
    }
    ControlPage& page() { return *m_app->mainWindow().controlPage(); }
    QString id(int device) const { return m_devices[device]->options().id; }
    const ControlOptions& options(int device) const { return m_devices[device]->options(); }
    QString bound(int device) { return m_app->deviceManager().effects().boundEffectId(id(device)); }

    std::unique_ptr<LumivarApp> m_app;
    QVector<AbsRGBControllerPtr> m_devices;
};

QTEST_MAIN(HotkeysTest)
#include "tst_hotkeys.moc"
