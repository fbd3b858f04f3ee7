#include "FakeController.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/DeviceControlWidget.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/PanelPopup.h"
#include "ui/TrayMenu.h"
#include "ui/WorkerListView.h"

#include <QApplication>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QtTest>

namespace {

const QString kMarquee = "id.effect.marquee.marquee";
const QString kColorful = "id.effect.colorful.ColorMap_3";
const QString kMoodShadow = "id.effect.colorful.moodShadow";

} // namespace

/// The tray's menu of the real application, opened as a tray would that leaves the drawing to the program.
class TrayPanelsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        ConfigurationManager::instance()->reset();
        LanguageManager::instance()->switchLanguage("zh");
        m_app = std::make_unique<LumivarApp>(nullptr);
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (auto* menu = qobject_cast<TrayMenu*>(each))
                m_menu = menu;
        }
        QVERIFY(m_menu);
    }
    void cleanup() { m_app.reset(); }

    void panelDrivesItsDeviceAndThePageFollows()
    {
        const AbsRGBControllerPtr first = addDevice("A:1");
        const AbsRGBControllerPtr other = addDevice("B:1");
        emit m_app->mainWindow().homePage()->controllerEntryOrdered("A:1");
        const ControlPage& page = *m_app->mainWindow().controlPage();
        QTRY_COMPARE(page.controllerId(), QString("A:1"));
        DeviceControlWidget* panel = openPanel(0);
        QCOMPARE(light(panel), other->options().enable);

        button(panel, "lightDisableBtn")->click();
        slider(panel)->setValue(35);
        QVERIFY(!first->options().enable && first->options().brightness == 0.35F);
        QTRY_VERIFY(!page.isLightEnabled() && page.brightness() == 0.35F);
        choose(panel, "effectGroupView", "GroupInformation", "幻彩模式"); // turns the light on
        QVERIFY(first->options().enable && light(panel));
        QCOMPARE(m_app->deviceManager().effects().boundEffectId("A:1"), kColorful);
        choose(panel, "effectView", "EffectNames", "影随心动");
        QCOMPARE(m_app->deviceManager().effects().boundEffectId("A:1"), kMoodShadow);
        QCOMPARE(page.currentWorker(), kMoodShadow);
        QVERIFY(other->options().enable && other->options().brightness == 1.0F);
        QCOMPARE(other->options().subMode, kMarquee);

        // A click on what is chosen orders nothing.
        QSignalSpy orders(panel, &DeviceControlWidget::effectGroupChanged);
        choose(panel, "effectGroupView", "GroupInformation", "幻彩模式");
        QVERIFY(orders.isEmpty());
    }

    void panelFollowsWhatHappensElsewhere()
    {
        const AbsRGBControllerPtr device = addDevice("A:1");
        DeviceControlWidget* panel = openPanel(0);
        panel->setFixedHeight(300);
        auto* scrolled = panel->findChild<QScrollArea*>("scrollArea")->verticalScrollBar();
        QSignalSpy echo(panel, &DeviceControlWidget::brightChanged);
        device->setEnable(false);
        QTRY_VERIFY(!light(panel));
        device->setBrightness(0.53F);
        QTRY_COMPARE(slider(panel)->value(), 53);
        m_app->deviceManager().setControllerEffect("A:1", kMoodShadow, false);
        auto* effects = panel->findChild<WorkerListView*>("effectView");
        QTRY_COMPARE(effects->currentButton(), effects->button(kMoodShadow).data());
        QVERIFY(echo.isEmpty());
        // The effect comes into view, but then the user looks elsewhere.
        QCoreApplication::processEvents();
        QVERIFY(scrolled->value() > 0);
        scrolled->setValue(0);
        device->setBrightness(0.7F);
        QTRY_COMPARE(slider(panel)->value(), 70);
        QCoreApplication::processEvents();
        QCOMPARE(scrolled->value(), 0);
        // What has changed while it was closed stands there when it opens again.
        panel->window()->close();
        device->setBrightness(0.2F);
        QCOMPARE(slider(openPanel(0))->value(), 20);
    }

    void panelOfAllShowsTheFirstAndDrivesEach()
    {
        QVERIFY(addDevice("A:1"));
        QCOMPARE(entries().size(), 1); // one device is no choice
        const AbsRGBControllerPtr second = addDevice("B:1");
        second->setBrightness(0.1F);
        QCOMPARE(entries().size(), 3);
        QCOMPARE(entries()[2]->text(), QString("所有设备"));
        DeviceControlWidget* panel = openPanel(2);
        QCOMPARE(slider(panel)->value(), 100);
        slider(panel)->setValue(50);
        QCOMPARE(second->options().brightness, 0.5F);
        const AbsRGBControllerPtr third = addDevice("C:1"); // while it is open
        m_app->deviceManager().removeController("A:1");
        QVERIFY(panel->isVisible() && entries()[2]->isEnabled());
        panel->window()->close();
        panel = openPanel(2);
        choose(panel, "effectGroupView", "GroupInformation", "幻彩模式");
        QCOMPARE(second->options().subMode, kColorful);
        QCOMPARE(third->options().subMode, kColorful);
    }

    void menuUnderThePointerStaysAsItIs()
    {
        QVERIFY(addDevice("A:1"));
        QVERIFY(addDevice("B:1"));
        QPointer<DeviceControlWidget> panel = openPanel(1);
        const QList<QAction*> shown = m_menu->actions();
        QVERIFY(addDevice("C:1"));
        QCOMPARE(m_menu->actions(), shown);
        m_app->deviceManager().removeController("B:1");
        QVERIFY(panel && !panel->isVisible() && m_menu->isVisible());
        QVERIFY(!entries()[1]->isEnabled());
        m_menu->close();
        QTRY_COMPARE(entries()[1]->toolTip(), QString("C:1"));
        QTRY_VERIFY(!panel);
        m_app->deviceManager().removeController("A:1");
        m_app->deviceManager().removeController("C:1");
        QVERIFY(entries().isEmpty());
    }

    void entriesBearTheNamesAndPanelsAreMadeWhenTheyOpen()
    {
        const AbsRGBControllerPtr device = addDevice("A:1");
        QCOMPARE(entries()[0]->text(), QString("A:1"));
        device->setKindName("Bed & <b>desk</b>\n");
        QCOMPARE(entries()[0]->text(), QString("Bed && <b>desk</b> (A)"));
        QVERIFY(addDevice("B:1"));
        QVERIFY(!m_menu->findChild<DeviceControlWidget*>());
        LanguageManager::instance()->switchLanguage("de");
        QTRY_COMPARE(entries()[2]->text(), QString("Alle Geräte"));
        DeviceControlWidget* panel = openPanel(0);
        QCOMPARE(m_menu->findChildren<DeviceControlWidget*>().size(), 1);
        for (const char* language : {"ar", "zh"}) {
            LanguageManager::instance()->switchLanguage(language);
            QTRY_COMPARE(button(panel, "lightDisableBtn")->text().simplified(),
                         QCoreApplication::translate("DeviceControlWidget", "关灯"));
            QCOMPARE(slider(panel)->accessibleName(),
                     QCoreApplication::translate("DeviceControlWidget", "亮度"));
        }
    }

    void tabGoesRoundInThePanel()
    {
        QVERIFY(addDevice("A:1"));
        DeviceControlWidget* panel = openPanel(0);
        QTest::keyClick(panel->window(), Qt::Key_Tab);
        QWidget* const start = panel->focusWidget();
        QCOMPARE(start, button(panel, "lightEnableBtn"));
        QList<QWidget*> way;
        for (int left = 20; left > 0 && (way.isEmpty() || way.last() != start); --left) {
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : panel->focusWidget(),
                            Qt::Key_Tab);
            way.append(panel->focusWidget());
            QVERIFY(way.last() == slider(panel) || qobject_cast<QRadioButton*>(way.last())->isChecked());
        }
        QCOMPARE(way.size(), 4); // brightness, group, effect, and the light again
        QCOMPARE(way[0], slider(panel));
        QCOMPARE(way[3], start);
        QVERIFY(panel->isVisible());
        QTest::mouseClick(panel, Qt::LeftButton, {}, {5, 5}); // beside everything
        QVERIFY(panel->isVisible());
        QTest::keyClick(panel->focusWidget(), Qt::Key_Escape);
        QVERIFY(!panel->isVisible() && m_menu->isVisible());
    }

    void popupStandsWhollyOnItsScreen_data()
    {
        QTest::addColumn<QPoint>("anchor");
        QTest::addColumn<QPoint>("place");
        QTest::newRow("beside the pointer") << QPoint(100, 50) << QPoint(100, 50);
        QTest::newRow("from a bar below") << QPoint(700, 599) << QPoint(700, 299);
        QTest::newRow("in the corner") << QPoint(1700, 599) << QPoint(1500, 299);
        QTest::newRow("from a bar above") << QPoint(700, -5) << QPoint(700, 20);
        QTest::newRow("too high for either") << QPoint(700, 310) << QPoint(700, 20);
    }
    void popupStandsWhollyOnItsScreen()
    {
        QFETCH(QPoint, anchor);
        QTEST(PanelPopup::placeBeside(anchor, {200, 300}, {100, 20, 1600, 580}), "place");
    }

private:
    AbsRGBControllerPtr addDevice(const QString& id)
    {
        ConfigurationManager::instance()->controllerJsonObj(id) = {{"brightness", 1.0},
                                                                   {"enable", true},
                                                                   {"nbLeds", 3},
                                                                   {"workMode", "id.effect.marquee"},
                                                                   {"subMode", kMarquee}};
        const AbsRGBControllerPtr device(new FakeController(id, 3, id.section(':', 0, 0)));
        device->loadConfig();
        QMetaObject::invokeMethod(&m_app->deviceManager(), "addController",
                                  Q_ARG(AbsRGBControllerPtr, device));
        return m_app->deviceManager().controller(id);
    }
    QList<QAction*> entries() const
    {
        QList<QAction*> result;
        for (QAction* each : m_menu->actions()) {
            if (each->menu())
                result.append(each);
        }
        return result;
    }
    /// As the user does: the menu, then the entry's submenu.
    DeviceControlWidget* openPanel(int entry)
    {
        m_menu->popup({});
        QMenu* submenu = entries()[entry]->menu();
        m_menu->setActiveAction(entries()[entry]);
        if (!submenu->isVisible())
            submenu->popup({50, 50});
        return submenu->findChild<DeviceControlWidget*>();
    }
    static QAbstractButton* button(const QWidget* panel, const char* name)
    {
        return panel->findChild<QAbstractButton*>(name);
    }
    static QSlider* slider(const QWidget* panel) { return panel->findChild<QSlider*>("brightSlider"); }
    static bool light(const QWidget* panel) { return button(panel, "lightEnableBtn")->isChecked(); }
    static void choose(const QWidget* panel, const char* grid, const char* context, const char* name)
    {
        const QString text = QCoreApplication::translate(context, name);
        for (auto* each : panel->findChild<QWidget*>(grid)->findChildren<QRadioButton*>()) {
            if (each->text().simplified() == text)
                return each->click();
        }
        QFAIL(name);
    }

    std::unique_ptr<LumivarApp> m_app;
    TrayMenu* m_menu = nullptr;
};

QTEST_MAIN(TrayPanelsTest)
#include "tst_tray_panels.moc"
