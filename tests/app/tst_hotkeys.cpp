#include "FakeController.h"
#include "LogCapture.h"
#include "app/LumivarApp.h"
#include "hotkey/QHotkeyPrivate.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/HotKeyEditDialog.h"
#include "ui/HotKeyEditWidget.h"

#include <QLineEdit>
#include <QSet>
#include <QSlider>
#include <QTableWidget>
#include <QtTest>

namespace {

constexpr int kAll = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;
const QString kMarquee = "id.effect.marquee.marquee";
const QString kOnOff = "id.hotkey.turnOffOn";

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

QJsonValue stored(const QString& id)
{
    return ConfigurationManager::instance()->appConfig(ConfigKeys::hotkeyBindingKey(id));
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

/// The hotkeys on a keyboard of the test's own: which are had, and what they do to devices and page.
class HotkeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        QHotkeyPrivate::instance();
        keyboard().missing.clear();
        keyboard().taken.clear();
        keyboard().isAllowed = true;
    }
    void cleanup()
    {
        m_app.reset();
        m_devices.clear();
        QVERIFY(keyboard().ours.isEmpty());
    }

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
        // Not another action's either, where its own still waits to be tried again.
        keyboard().taken.clear();
        keyboard().missing.clear();
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_M})
            QVERIFY(!manager.isHotkeyFree(key, Qt::KeyboardModifiers(kAll)));
        keyboard().taken = {Qt::Key_X};
        keyboard().missing = {Qt::Key_M};

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

    void brokenBindingsBecomeTheDefaults()
    {
        const QJsonObject whole{{"keyCode", Qt::Key_F10}, {"modifiers", kAll}};
        const auto with = [&whole](const char* member, const QJsonValue& value) {
            QJsonObject object = whole;
            object.insert(member, value);
            return QJsonValue(object);
        };
        QJsonObject half = whole;
        half.remove("modifiers");
        auto* config = ConfigurationManager::instance();
        for (const QJsonValue& broken :
             std::initializer_list<QJsonValue>{QJsonValue(),
                                               "F10",
                                               7,
                                               true,
                                               QJsonArray{1, 2},
                                               QJsonObject(),
                                               half,
                                               with("keyCode", -1),
                                               with("keyCode", 0),
                                               with("keyCode", "65"),
                                               with("keyCode", 65.5),
                                               with("keyCode", 1e12),
                                               with("keyCode", Qt::Key_unknown),
                                               with("keyCode", Qt::Key_Shift),
                                               with("keyCode", Qt::Key_AltGr),
                                               with("keyCode", 0x1777777),
                                               with("keyCode", int(Qt::CTRL) | Qt::Key_A),
                                               with("keyCode", 'a'),
                                               with("modifiers", -1),
                                               with("modifiers", 1),
                                               with("modifiers", "Ctrl"),
                                               with("modifiers", 1e300),
                                               with("modifiers", int(Qt::MetaModifier)),
                                               with("modifiers", QJsonValue())}) {
            QVERIFY(!HotkeyBinding::fromStored(broken));
            config->setAppConfig(ConfigKeys::hotkeyBindingKey(kOnOff), broken);
        }
        for (const int modifiers : {0, kAll, int(Qt::ShiftModifier)}) {
            for (const int key :
                 {int(Qt::Key_A), int(Qt::Key_Comma), int(Qt::Key_Plus), int(Qt::Key_Space),
                  int(Qt::Key_Adiaeresis), 0x42F, int(Qt::Key_Tab), int(Qt::Key_Up), int(Qt::Key_F35),
                  int(Qt::Key_Print), int(Qt::Key_VolumeMute), Qt::Key_4 | int(Qt::KeypadModifier)}) {
                const auto good =
                    HotkeyBinding::fromStored(QJsonObject{{"keyCode", key}, {"modifiers", modifiers}});
                QVERIFY2(good, qPrintable(QString::number(key, 16)));
                QVERIFY(HotkeyBinding::fromCombine(good->toCombine()) == *good);
            }
        }
        QCOMPARE(HotkeyBinding::fromStored(whole)->toText(), "Ctrl+Alt+Shift+F10");

        const QJsonObject chosen{{"keyCode", Qt::Key_P}, {"modifiers", kAll}, {"more", 1}};
        config->setAppConfig(ConfigKeys::hotkeyBindingKey("id.hotkey.nextEffect"), chosen);
        config->setAppConfig(ConfigKeys::hotkeyBindingKey(kOnOff), with("keyCode", -1));
        keyboard().taken = {Qt::Key_P};
        start({});
        QCOMPARE(stored(kOnOff), QJsonValue(whole));
        QCOMPARE(stored("id.hotkey.nextEffect"), QJsonValue(chosen)); // no stand-in for what cannot be had
        QCOMPARE(stored("id.hotkey.increaseBrightness").toObject()["keyCode"].toInt(), int(Qt::Key_Up));
        QVERIFY(holds(Qt::Key_F10) && holds(Qt::Key_Left) && keyboard().ours.size() == 4);
    }

    void withoutADeviceNothingHappens()
    {
        start({});
        LogCapture log;
        for (const auto key : {Qt::Key_F10, Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_Up})
            keyboard().press(key);
        QTRY_COMPARE(log.count("The hotkey action has executed: "), 5);
        QCOMPARE(log.count("The controller list is empty"), 5);
        QMetaObject::invokeMethod(m_app.get(), "onHotkeyActived", Q_ARG(QString, "id.none"));
        QVERIFY(log.contains("Unknown hotkey action id:  id.none"));
        add({kMarquee});
        keyboard().press(Qt::Key_F10);
        QTRY_VERIFY(!options(0).enable);
    }

    void everyPressCountsHoweverTheWindowIs()
    {
        start({kMarquee, kMarquee});
        m_app->mainWindow().hide();
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        LogCapture log;
        for (int i = 0; i < 11; ++i)
            keyboard().press(Qt::Key_F10);
        QTRY_COMPARE(log.count("switched by hotkey actived:"), 11);
        QVERIFY(!options(0).enable && !options(1).enable);
        for (int i = 0; i < 3; ++i)
            keyboard().press(Qt::Key_Right);
        QTRY_COMPARE(log.count("The hotkey action has executed: "), 14);
        QVERIFY(options(0).enable && options(0).workMode != kMarquee && bound(0) == bound(1));
    }

    void groupsAreWalkedBothWays()
    {
        start({kMarquee, kMarquee});
        openPage();
        QStringList forth{bound(0)};
        do {
            pressAndWait(Qt::Key_Right);
            QCOMPARE(bound(1), bound(0));
            QCOMPARE(page().currentWorker(), bound(0));
            QCOMPARE(page().currentGroup(), options(0).workMode); // is offered
            forth += bound(0);
        } while (forth.last() != forth.first() && forth.size() < 20);
        QVERIFY(forth.size() > 4 && forth.last() == forth.first());
        for (QStringList back = forth; back.size() > 1;) {
            QCOMPARE(bound(0), back.takeLast());
            pressAndWait(Qt::Key_Left);
        }
        QCOMPARE(bound(0), kMarquee);
        // From different groups all meet at the screen, with their lights on.
        m_app->deviceManager().setControllerEffect(id(0), "id.effect.singleColor.singleColor1", true);
        m_devices[1]->setEnable(false);
        pressAndWait(Qt::Key_Left);
        QCOMPARE(options(0).workMode, "id.effect.screenSync");
        QVERIFY(options(1).enable && bound(0) == bound(1));
    }

    void brightnessKeepsDifferencesUpToItsLimits()
    {
        start({kMarquee, kMarquee});
        m_devices[0]->setBrightness(0.95F);
        m_devices[1]->setBrightness(0.5375F);
        openPage();
        QSignalSpy wishes(&page(), &ControlPage::brightnessChanged);
        pressAndWait(Qt::Key_Up);
        QVERIFY(options(0).brightness == 1.0F && options(1).brightness == 0.6375F);
        const auto* slider = page().findChild<QSlider*>("brightnessSlider");
        QCOMPARE(slider->value(), 100);
        for (int i = 0; i < 9; ++i)
            pressAndWait(Qt::Key_Down);
        QVERIFY(options(0).brightness == 0.1F && options(1).brightness == 0.0F);
        pressAndWait(Qt::Key_Down);
        QVERIFY(options(0).brightness == 0.0F && slider->value() == 0);
        for (int i = 0; i < 10; ++i)
            pressAndWait(Qt::Key_Up);
        QVERIFY(options(1).brightness == 1.0F && wishes.isEmpty());
    }

    void userGivesAnActionAnotherKey()
    {
        keyboard().taken = {Qt::Key_F10, Qt::Key_X};
        start({kMarquee});
        HotKeyEditWidget table;
        m_app->fillHotkeys(table);
        const QStringList before{"F10", "Right", "Left", "Down", "Up"};
        QCOMPARE(keys(table), before);
        QVERIFY(isMarked(table, 0) && !isMarked(table, 1));
        for (const char* refused : {"X", "Right", "F10", "", "Nonsense", "Shift+A"})
            edit(table, refused);
        QCOMPARE(keys(table), before);
        QCOMPARE(stored(kOnOff).toObject()["keyCode"].toInt(), int(Qt::Key_F10));
        // Its own one, once it can be had; what becomes free meanwhile shows as soon as the page does.
        keyboard().taken.clear();
        edit(table, "F10");
        QVERIFY(holds(Qt::Key_F10) && !isMarked(table, 0));
        keyboard().lose(Qt::Key_Right);
        QTRY_VERIFY(isMarked(table, 1));
        keyboard().taken.clear();
        table.show();
        QVERIFY(!isMarked(table, 1));

        edit(table, "P");
        QCOMPARE(keys(table).first(), "P");
        QVERIFY(holds(Qt::Key_P) && !holds(Qt::Key_F10));
        QCOMPARE(stored(kOnOff), QJsonValue(QJsonObject{{"keyCode", Qt::Key_P}, {"modifiers", kAll}}));
        keyboard().press(Qt::Key_P);
        QTRY_VERIFY(!options(0).enable);
        m_app = nullptr;
        m_app = std::make_unique<LumivarApp>(nullptr);
        QVERIFY(holds(Qt::Key_P) && !holds(Qt::Key_F10));
        edit(table, "Q"); // the table of the program that is gone
        QCOMPARE(keys(table).first(), "P");
    }

private:
    static QStringList keys(const HotKeyEditWidget& table)
    {
        QStringList keys;
        const auto* rows = table.findChild<QTableWidget*>();
        for (int row = 0; row < rows->rowCount(); ++row)
            keys += rows->item(row, 1)->text().remove("Ctrl+Alt+Shift+");
        return keys;
    }
    static bool isMarked(const HotKeyEditWidget& table, int row)
    {
        return !table.findChild<QTableWidget*>()->item(row, 1)->icon().isNull();
    }
    /// Of the first action.
    static void edit(HotKeyEditWidget& table, const QString& key)
    {
        auto* rows = table.findChild<QTableWidget*>();
        emit rows->doubleClicked(rows->model()->index(0, 0));
        auto* dialog = table.findChild<HotKeyEditDialog*>();
        dialog->findChild<QLineEdit*>("keyLineEdit")->setText(key);
        dialog->accept();
        delete dialog;
    }

    void start(const QStringList& effects)
    {
        m_app = std::make_unique<LumivarApp>(nullptr);
        add(effects);
    }
    void add(const QStringList& effects)
    {
        for (const QString& effect : effects) {
            // The second one is offered more than the first.
            m_devices += AbsRGBControllerPtr(
                m_devices.isEmpty() ? new FakeController
                                    : new FakeController("LV0N03:" + QUuid::createUuid().toString()));
            QVERIFY(QMetaObject::invokeMethod(&m_app->deviceManager(), "addController",
                                              Q_ARG(AbsRGBControllerPtr, m_devices.last())));
            m_app->deviceManager().setControllerEffect(id(m_devices.size() - 1), effect, true);
        }
    }
    void pressAndWait(Qt::Key key)
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
