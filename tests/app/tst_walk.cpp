#include "ScreenPainter.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"

#include <QtTest>
#include <QtWidgets>
#include <algorithm>
#include <map>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kLeds = 60;
constexpr int kMovedLed = 20;
constexpr QSize kScreen(2800, 1000);
constexpr QRect kOwnMonitor(0, 0, 1400, 1000); ///< the program's window stands here
constexpr QRect kFilmMonitor(1400, 0, 1400, 1000);

QString stripId(int number)
{
    return QStringLiteral("LV0127:0102030%1").arg(number);
}

} // namespace

/// A user's way through all that can be set on a page: the whole program but its main function, on a screen
/// with a window manager, two strips on their lines, a real pointer and real keys. With LUMIVAR_WALK_PICTURES
/// naming a folder, a picture after each step is left there.
class WalkTest : public QObject
{
    Q_OBJECT

public:
    explicit WalkTest(const VirtualDisplay& display)
        : m_display(display)
    {
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_display.setMonitor("own", kOwnMonitor, true));
        QVERIFY(m_display.setMonitor("film", kFilmMonitor));
        ScreenPainter painter(m_display.name());
        painter.fill(kFilmMonitor.adjusted(0, 0, -kFilmMonitor.width() / 2, 0), Qt::red);
        painter.fill(kFilmMonitor.adjusted(kFilmMonitor.width() / 2, 0, 0, 0), Qt::blue);
        m_display.startProgram(m_windowManager, "openbox", {"--sm-disable"});
        QVERIFY(m_windowManager.waitForStarted());

        qputenv("LUMIVAR_SERIAL_PORTS", m_folder.filePath("ports.json").toLocal8Bit());
        auto* config = ConfigurationManager::instance();
        config->reset(); // of what the last run has left
        config->setAppConfig("runtime.isEnableScreenSyncAdvanedMode", true);
        for (const int number : {1, 2}) {
            const QString effect = "id.effect.singleColor.singleColor1";
            config->controllerJsonObj(stripId(number)) = storedStrip(effect, kLeds);
            StripSimulator::Options options;
            options.serial = QByteArray("\x01\x02\x03", 3).append(char(number));
            options.portName = QStringLiteral("ttySIM%1").arg(number);
            m_strips[number] = std::make_unique<StripSimulator>(options);
            QVERIFY(m_strips[number]->plugIn());
        }
        m_app = std::make_unique<LumivarApp>(nullptr);
        m_app->mainWindow().show();
        m_app->mainWindow().move(40, 40);
        QVERIFY(QTest::qWaitForWindowActive(&m_app->mainWindow()));
        QTRY_VERIFY_WITH_TIMEOUT(button(stripId(1)) && button(stripId(2)), kWaitMs);
    }
    void cleanupTestCase()
    {
        m_app.reset();
        m_strips.clear();
    }

    void cleanup()
    {
        const QString folder = qEnvironmentVariable("LUMIVAR_WALK_PICTURES"),
                      step = QTest::currentTestFunction();
        if (!folder.isEmpty())
            m_app->mainWindow().screen()->grabWindow(0).save(folder + '/' + step + ".png");
    }

    void userMakesAGradient()
    {
        click(button(stripId(1)));
        QTRY_VERIFY_WITH_TIMEOUT(!m_app->mainWindow().isHomePage(), kWaitMs);
        pickEffect("幻彩模式", "影随心动");
        QTRY_VERIFY_WITH_TIMEOUT(widget("addBtn"), kWaitMs);
        m_strapsBefore = straps().count();
        click(widget("addBtn")); // it is green with one red key
        QTRY_VERIFY_WITH_TIMEOUT(isWithout(1, &LV_RGB::blue), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(hasLed(1, Qt::red) && hasLed(1, Qt::green), kWaitMs);
        drag(bar(0.5), bar(0.25));
        QTRY_COMPARE_WITH_TIMEOUT(qRound(straps().last()["keyColors"][0]["key"].toDouble() * 20), 5, kWaitMs);
        key("Return"); // the key has the focus since it was dragged
        chooseColor(Qt::blue);
        QTRY_VERIFY_WITH_TIMEOUT(hasLed(1, Qt::blue) && isWithout(1, &LV_RGB::red), kWaitMs);
    }
    void userAppliesItToTheOtherStripAndRemovesIt()
    {
        QVERIFY(!hasLed(2, Qt::blue));
        click(widget("multDevControlCheckBox"));
        QTRY_VERIFY_WITH_TIMEOUT(hasLed(2, Qt::blue) && hasLed(2, Qt::green), kWaitMs);
        click(widget("singleDevControlCheckBox"));
        click(widget("rmBtn"));
        QTRY_VERIFY_WITH_TIMEOUT(!isWithout(1, &LV_RGB::red) && !isWithout(2, &LV_RGB::red), kWaitMs);
        QCOMPARE(straps().count(), m_strapsBefore);
    }
    void userChoosesASourceAndMovesLeds()
    {
        pickEffect("同屏模式", "全屏模式");
        QTRY_VERIFY_WITH_TIMEOUT(widget("strapEditor"), kWaitMs);
        choose(qobject_cast<QComboBox*>(widget("comboBox")), "film");
        const QPoint cell = ledCell(kMovedLed);
        const QPoint opposite(canvas().width() - 1 - cell.x(), cell.y());
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(cell), kWaitMs);

        drag(editor(cell), editor(opposite));
        QTRY_COMPARE_WITH_TIMEOUT(ledCell(kMovedLed), opposite, kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(opposite), kWaitMs);
        key("ctrl+z");
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(cell), kWaitMs);
        QCOMPARE(ledCell(kMovedLed), cell);
        key("ctrl+shift+z");
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(opposite), kWaitMs);
        click(widget("resetBtn"));
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(cell), kWaitMs);
        QCOMPARE(ledCell(kMovedLed), cell);
        key("ctrl+z");
        QTRY_VERIFY_WITH_TIMEOUT(showsSide(opposite), kWaitMs);
    }
    void userChangesTheLanguageBetweenTwoLooksAtATrayPanel()
    {
        pickGroup("跑马灯模式");
        m_display.startProgram(m_tray, "trayer", {"--edge", "bottom", "--align", "left"});
        QVERIFY(m_tray.waitForStarted());
        click(widget("pushButton_settings"));
        QTRY_VERIFY_WITH_TIMEOUT(widget("cbxLanguage"), kWaitMs);
        for (const char* dark : {"Turn off the lights", "Ausschalten"}) {
            openTrayPanel();
            QTRY_VERIFY_WITH_TIMEOUT(widget("lightDisableBtn"), kWaitMs);
            QCOMPARE(qobject_cast<QAbstractButton*>(widget("lightDisableBtn"))->text(), dark);
            key("Right");
            QTRY_VERIFY_WITH_TIMEOUT(!isLit(1) && isLit(2), kWaitMs);
            key("Left");
            QTRY_VERIFY_WITH_TIMEOUT(isLit(1), kWaitMs);
            xdotool({"key", "Escape", "Escape"});
            QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activePopupWidget(), kWaitMs);
            choose(qobject_cast<QComboBox*>(widget("cbxLanguage")), "Deutsch");
        }
    }
    void userGivesTheButtonOfTheStripsAMeaning()
    {
        m_app->deviceManager().setControllerEffect(stripId(2), "id.effect.marquee.marquee", true);
        const auto press = [this](int strip) { QVERIFY(m_strips[strip]->pressButton()); };
        press(1); // its own light
        QTRY_VERIFY_WITH_TIMEOUT(!isLit(1) && isLit(2), kWaitMs);
        clickStart(widget("phyBtnSingleCtrllMode"));
        press(2);
        QTRY_VERIFY_WITH_TIMEOUT(!isLit(1) && !isLit(2), kWaitMs);
        auto* action = qobject_cast<QComboBox*>(widget("phyBtnActionCbx"));
        choose(action, action->itemText(1));
        press(1); // the marquee has one more step
        QTRY_VERIFY_WITH_TIMEOUT(isLit(1) && isLit(2), kWaitMs);
        press(1);
        QTRY_VERIFY_WITH_TIMEOUT(isOfOneColor(1) && isOfOneColor(2), kWaitMs);
        clickStart(widget("phyBtnSingleCtrllMode"));
        press(2);
        QTRY_VERIFY_WITH_TIMEOUT(isLit(2) && !isOfOneColor(2), kWaitMs);
        QVERIFY(isOfOneColor(1));
        choose(action, action->itemText(0));
        press(2);
        QTRY_VERIFY_WITH_TIMEOUT(!isLit(2) && isOfOneColor(1), kWaitMs);
    }

private:
    void xdotool(const QStringList& arguments)
    {
        QVERIFY(m_display.run("xdotool", arguments));
        QCoreApplication::processEvents();
    }
    void point(QPoint at, const QStringList& then = {})
    {
        xdotool(QStringList{"mousemove", QString::number(at.x()), QString::number(at.y())} + then);
    }
    void click(const QWidget* widget)
    {
        if (!widget)
            QFAIL("nothing to click");
        click(*widget, widget->rect().center());
    }
    void click(const QWidget& widget, QPoint at) { point(widget.mapToGlobal(at), {"click", "1"}); }
    void key(const QString& name) { xdotool({"key", name}); }
    void clickStart(const QWidget* widget) { click(*widget, {8, widget->height() / 2}); }
    void openTrayPanel()
    {
        const QPoint icon(12, kScreen.height() - 12);
        QTRY_VERIFY_WITH_TIMEOUT(isAt(icon, "QSystemTrayIconSys"), kWaitMs); // trayer moves it there
        point(icon, {"click", "3"});
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget(), kWaitMs);
        xdotool({"key", "Down", "Right"}); // the first device, and its panel
    }
    void pickGroup(const char* group)
    {
        click(button(QCoreApplication::translate("GroupInformation", group)));
    }
    void pickEffect(const char* group, const char* effect)
    {
        pickGroup(group);
        const QString name = QCoreApplication::translate("EffectNames", effect);
        QTRY_VERIFY_WITH_TIMEOUT(button(name), kWaitMs);
        click(button(name));
    }

    void drag(QPoint from, QPoint to)
    {
        point(from, {"mousedown", "1"});
        for (const int percent : {10, 50, 90, 100})
            point(from + (to - from) * percent / 100);
        point(to, {"mouseup", "1"});
    }
    void choose(QComboBox* box, const QString& source)
    {
        click(box);
        QTRY_VERIFY_WITH_TIMEOUT(box->view()->isVisible(), kWaitMs);
        const int row = box->findText(source, Qt::MatchContains);
        QVERIFY(row >= 0);
        click(*box->view()->viewport(), box->view()->visualRect(box->model()->index(row, 0)).center());
        QTRY_VERIFY_WITH_TIMEOUT(!box->view()->isVisible(), kWaitMs);
        QCOMPARE(box->currentIndex(), row);
    }
    void chooseColor(const QColor& color)
    {
        QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QColorDialog*>(QApplication::activeWindow()), kWaitMs);
        xdotool({"key", "alt+h", "ctrl+a"}); // its field for the colour's code
        xdotool({"type", color.name()});
        key("Return");
        QTRY_VERIFY_WITH_TIMEOUT(m_app->mainWindow().isActiveWindow(), kWaitMs);
    }

    QJsonArray straps() const
    {
        return ConfigurationManager::instance()
            ->effectJsonValue("id.effect.colorful.colorStraps", ConfigKeys::kAllControllers, "colorStrapList")
            .toArray();
    }
    /// A place of the gradient's bar.
    QPoint bar(double at)
    {
        const auto* view = widget("gradientEditor")->findChild<QGraphicsView*>();
        return view->viewport()->mapToGlobal(view->mapFromScene(at * view->sceneRect().width(), 8));
    }

    QJsonValue property(const QString& name)
    {
        return m_app->deviceManager().effects().effectProperty(stripId(1), name);
    }
    QPoint ledCell(int led)
    {
        return {property("LEDMap")[led]["x"].toInt(), property("LEDMap")[led]["y"].toInt()};
    }
    QSize canvas() { return {property("screenSize")["w"].toInt(), property("screenSize")["h"].toInt()}; }
    /// The middle of a cell of the layout editor.
    QPoint editor(QPoint cell)
    {
        const auto* view = qobject_cast<QGraphicsView*>(widget("strapEditor"));
        const QRectF scene = view->sceneRect();
        const QPointF at((cell.x() + 0.5) * scene.width() / canvas().width(),
                         (cell.y() + 0.5) * scene.height() / canvas().height());
        return view->viewport()->mapToGlobal(view->mapFromScene(scene.topLeft() + at));
    }
    /// Whether the LED that is moved has the colour of its half of the film.
    bool showsSide(QPoint cell)
    {
        const LV_RGB led = frame(1).value(kMovedLed);
        return cell.x() < canvas().width() / 2 ? led.red > 200 && led.blue < 50
                                               : led.blue > 200 && led.red < 50;
    }

    QVector<LV_RGB> frame(int strip) const { return m_strips.at(strip)->lastFrame().colors; }
    bool isWithout(int strip, uint8_t LV_RGB::*part) const
    {
        const QVector<LV_RGB> leds = frame(strip);
        return leds.size() == kLeds &&
               std::all_of(leds.cbegin(), leds.cend(), [part](LV_RGB led) { return led.*part == 0; });
    }
    bool isLit(int strip) const { return frame(strip).count({}) < frame(strip).size(); }
    bool isOfOneColor(int strip) const
    {
        return isLit(strip) && frame(strip).count(frame(strip).constFirst()) == kLeds;
    }
    /// Whether one LED is about of this colour.
    bool hasLed(int strip, const QColor& color) const
    {
        const QVector<LV_RGB> leds = frame(strip);
        return std::any_of(leds.cbegin(), leds.cend(), [&color](LV_RGB led) {
            constexpr int kNear = 40;
            return qAbs(led.red - color.red()) < kNear && qAbs(led.green - color.green()) < kNear &&
                   qAbs(led.blue - color.blue()) < kNear;
        });
    }

    static bool isAt(QPoint place, const char* className)
    {
        const QWidget* there = QApplication::widgetAt(place);
        return there && there->inherits(className);
    }
    /// Of the window, a dialog or the tray's panel.
    static QWidget* widget(const char* name)
    {
        for (QWidget* each : QApplication::allWidgets()) {
            if (each->isVisible() && each->objectName() == name)
                return each;
        }
        return nullptr;
    }
    /// By its text, or by the device whose button it is.
    QAbstractButton* button(const QString& of)
    {
        for (auto* each : m_app->mainWindow().findChildren<QAbstractButton*>()) {
            if (each->isVisible() &&
                (each->text().simplified() == of || each->property("controllerId") == of))
                return each;
        }
        return nullptr;
    }

    const VirtualDisplay& m_display;
    QTemporaryDir m_folder;
    MortalProcess m_windowManager, m_tray;
    std::map<int, std::unique_ptr<StripSimulator>> m_strips;
    std::unique_ptr<LumivarApp> m_app;
    int m_strapsBefore = 0;
};

int main(int argc, char** argv)
{
    VirtualDisplay display(kScreen);
    display.setArguments({"-dpi", "96"});
    if (!display.start())
        return 1;
    qputenv("DISPLAY", display.name());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // not the developer's panel
    QApplication app(argc, argv);
    QApplication::setFont(QFont("Arial")); // as the program does
    WalkTest test(display);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_walk.moc"
