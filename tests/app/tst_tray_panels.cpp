#include "FakeController.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/DeviceControlWidget.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/TrayMenu.h"
#include "ui/WorkerListView.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int kAll = 3; ///< place of the entry for both devices, after a line
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
        for (QWidget* each : QApplication::topLevelWidgets())
            m_menu = qobject_cast<TrayMenu*>(each) ? static_cast<TrayMenu*>(each) : m_menu;
        m_first = addDevice("A:1").data();
    }
    void cleanup() { m_app.reset(); }

    void panelAndDeviceAndPageFollowEachOther()
    {
        const AbsRGBControllerPtr other = addDevice("B:1");
        emit m_app->mainWindow().homePage()->controllerEntryOrdered("A:1");
        const ControlPage& page = *m_app->mainWindow().controlPage();
        DeviceControlWidget* panel = openPanel(0);
        const auto* light = part<QRadioButton>(panel, "lightEnableBtn");
        panel->setFixedHeight(300);
        part<QRadioButton>(panel, "lightDisableBtn")->click();
        slider(panel)->setValue(35);
        QVERIFY(!m_first->options().enable && m_first->options().brightness == 0.35F);
        QTRY_VERIFY(!page.isLightEnabled() && page.brightness() == 0.35F);
        chooseColorful(panel); // turns the light on
        QVERIFY(m_first->options().enable && light->isChecked() && m_first->options().subMode == kColorful);
        auto* effects = part<WorkerListView>(panel, "effectView");
        effects->button(kMoodShadow)->setChecked(true);
        QVERIFY(m_first->options().subMode == kMoodShadow && page.currentWorker() == kMoodShadow);
        QVERIFY(other->options().brightness == 1.0F && other->options().subMode == kMarquee);

        // What happens elsewhere.
        QSignalSpy echo(panel, &DeviceControlWidget::brightChanged);
        m_first->setEnable(false);
        m_first->setBrightness(0.53F);
        QTRY_VERIFY(!light->isChecked() && slider(panel)->value() == 53);
        m_app->deviceManager().setControllerEffect("A:1", kColorful, false);
        QTRY_COMPARE(effects->currentButton(), effects->button(kColorful).data());
        QVERIFY(echo.isEmpty());
        // The effect comes into view, but then the user looks elsewhere.
        QScrollBar* scrolled = part<QScrollArea>(panel, "scrollArea")->verticalScrollBar();
        QCoreApplication::processEvents();
        QVERIFY(scrolled->value() > 0);
        scrolled->setValue(0);
        m_first->setBrightness(0.7F);
        QTRY_COMPARE(slider(panel)->value(), 70);
        QCoreApplication::processEvents();
        QCOMPARE(scrolled->value(), 0);
        // What has changed while it was closed stands there when it opens again.
        panel->window()->close();
        m_first->setBrightness(0.2F);
        QCOMPARE(slider(openPanel(0))->value(), 20);
    }

    void panelOfAllShowsTheFirstAndDrivesEachThatIsThere()
    {
        QVERIFY(!entry(2)->menu()); // one device is no choice
        const AbsRGBControllerPtr second = addDevice("B:1");
        second->setBrightness(0.1F);
        DeviceControlWidget* panel = openPanel(kAll);
        QCOMPARE(slider(panel)->value(), 100);
        slider(panel)->setValue(50);
        QCOMPARE(second->options().brightness, 0.5F);
        // The menu under the pointer stays as it is, but for what has gone.
        const QList<QAction*> shown = m_menu->actions();
        const AbsRGBControllerPtr third = addDevice("C:1");
        m_app->deviceManager().removeController("A:1");
        QVERIFY(m_menu->actions() == shown && panel->isVisible() && entry(kAll)->isEnabled());
        panel->window()->close();
        chooseColorful(openPanel(kAll));
        QVERIFY(second->options().subMode == kColorful && third->options().subMode == kColorful);
        const QPointer<DeviceControlWidget> own = openPanel(1);
        m_app->deviceManager().removeController("B:1");
        QVERIFY(own && !own->isVisible() && m_menu->isVisible() && !entry(1)->isEnabled());
        m_menu->close();
        QTRY_COMPARE(entry(0)->toolTip(), QString("C:1"));
        QTRY_VERIFY(!own);
    }

    void entriesBearTheNamesAndPanelsAreMadeWhenTheyOpen()
    {
        QCOMPARE(entry(0)->text(), QString("A:1"));
        m_first->setKindName("Bed & <b>desk</b>\n");
        QCOMPARE(entry(0)->text(), QString("Bed && <b>desk</b> (A)"));
        QVERIFY(addDevice("B:1") && !m_menu->findChild<DeviceControlWidget*>());
        DeviceControlWidget* panel = openPanel(0);
        QCOMPARE(m_menu->findChildren<DeviceControlWidget*>().size(), 1);
        LanguageManager::instance()->switchLanguage("de"); // while both are open
        QTRY_COMPARE(entry(kAll)->text(), QString("Alle Geräte"));
        QCOMPARE(slider(panel)->accessibleName(), QString("Helligkeit"));
    }

    void tabGoesRoundInThePanel()
    {
        DeviceControlWidget* panel = openPanel(0);
        QTest::keyClick(panel->window(), Qt::Key_Tab);
        QSet<QWidget*> way;
        for (QWidget* at = panel->focusWidget(); !way.contains(at); at = panel->focusWidget()) {
            QVERIFY(at == slider(panel) || at->property("checked").toBool());
            way += at;
            QTest::keyClick(at, Qt::Key_Tab);
        }
        QCOMPARE(way.size(), 4);                              // light, brightness, group and effect
        QTest::mouseClick(panel, Qt::LeftButton, {}, {5, 5}); // beside everything
        QVERIFY(panel->isVisible());
        QTest::keyClick(panel->focusWidget(), Qt::Key_Escape);
        QVERIFY(!panel->isVisible() && m_menu->isVisible());
    }

private:
    AbsRGBControllerPtr addDevice(const QString& id)
    {
        AbsRGBControllerPtr device(new FakeController(id, 3, id.section(':', 0, 0)));
        DeviceManager& devices = m_app->deviceManager();
        QMetaObject::invokeMethod(&devices, "addController", Q_ARG(AbsRGBControllerPtr, device));
        device->setBrightness(1.0F);
        devices.setControllerEffect(id, kMarquee, true);
        return device;
    }
    QAction* entry(int place) const { return m_menu->actions()[place]; }
    DeviceControlWidget* openPanel(int place)
    {
        m_menu->popup({});
        entry(place)->menu()->popup({50, 50});
        return entry(place)->menu()->findChild<DeviceControlWidget*>();
    }
    template <typename Part>
    static Part* part(const QWidget* panel, const char* name)
    {
        return panel->findChild<Part*>(name);
    }
    static QSlider* slider(const QWidget* panel) { return part<QSlider>(panel, "brightSlider"); }
    static void chooseColorful(const QWidget* panel)
    {
        part<ChoiceGrid>(panel, "effectGroupView")->button("id.effect.colorful")->click();
    }

    std::unique_ptr<LumivarApp> m_app;
    QPointer<AbsRGBController> m_first;
    TrayMenu* m_menu = nullptr;
};

QTEST_MAIN(TrayPanelsTest)
#include "tst_tray_panels.moc"
