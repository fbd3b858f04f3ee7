#include "FakeController.h"
#include "LogCapture.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "app/LumivarApp.h"
#include "app/StripPlaces.h"
#include "controllers/SerialLine.h"
#include "effects/screenSync/layoutEditor/SSLOptWidget.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/ControllerConfigDialog.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/StripPreview.h"
#include "ui/WallColorDialog.h"

#include <QtTest>
#include <QtWidgets>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kLeds = 30;
const QString kSingleColor = "id.effect.singleColor.singleColor1";
const QString kMarquee = "id.effect.marquee.marquee";
const QString kFlowing = "id.effect.colorful.flowingEffect";

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

} // namespace

/// The program's flows on the real window and on simulated strips. Each case has devices of its own.
class FlowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        config()->reset();
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("LUMIVAR_SERIAL_PORTS", m_folder->filePath("ports.json").toLocal8Bit());
    }
    void cleanup()
    {
        m_app.reset();
        QDir::setCurrent(m_dataFolder);
        m_strips.clear();
        m_ids.clear();
        m_folder.reset();
    }

    void eachDeviceKeepsItsPlaceWhenAllAreDriven()
    {
        start({"id.effect.screenSync.fullScreen", "id.effect.screenSync.fullScreen"});
        const QJsonObject canvas{{"w", 40}, {"h", 20}};
        const QJsonValue layout = property(1, "LEDMap");
        effects().setEffectProperty(id(0), "screenSize", canvas);
        effects().setEffectProperty(id(0), "blur", 0.25);
        openPage(0);
        click("multDevControlCheckBox");
        QCOMPARE(property(1, "blur").toDouble(), 0.25);
        // A change made in this mode: the page's device has it, the other only if it is one of the look.
        const QJsonObject moved{{"id", 3}, {"x", 39}, {"y", 19}};
        emit page().sOptWidPropertyChanged("LEDPos", moved);
        emit page().sOptWidPropertyChanged("screenSize", canvas);
        emit page().sOptWidPropertyChanged("saturation", 0.5);
        QVERIFY(property(0, "LEDMap").toArray().contains(moved) && property(1, "saturation") == 0.5);
        QVERIFY(property(1, "screenSize") != canvas && property(1, "LEDMap") == layout);
    }

    void allDevicesAreNeverMeantUnseen()
    {
        config()->setAppConfig(ConfigKeys::kSingleControlMode.key, false);
        config()->setAppConfig(ConfigKeys::kEnableMultiDeviceControlView.key, false);
        start({kMarquee, kMarquee});
        const auto isEachOnItsOwn = [this] {
            click("LEDDisableButton");
            const bool isOtherLit = options(1).enable;
            click("pushButton_on");
            return isOtherLit && config()->appConfig(ConfigKeys::kSingleControlMode.key).toBool();
        };
        openPage(0);
        QVERIFY(isEachOnItsOwn());
        QTest::mousePress(header(), Qt::LeftButton);
        click("multDevControlCheckBox");
        QVERIFY(!isEachOnItsOwn());
        QTest::mousePress(header(), Qt::LeftButton);
        QVERIFY(isEachOnItsOwn());
    }

    void buttonPressedInsideTheCountDialogCounts()
    {
        config()->setAppConfig(ConfigKeys::kPhyBtnAction.key, 1);
        start({kFlowing});
        auto* dialog = openCountDialog();
        QVERIFY(dialog->isModal() && bound(0).isEmpty()); // nothing else is operated meanwhile
        m_strips[0]->pressButton();
        QTRY_VERIFY_WITH_TIMEOUT(!bound(0).isEmpty(), kWaitMs);
        giveCount(dialog);
        QVERIFY(bound(0) == kSingleColor && options(0).subMode == kSingleColor);
        QTRY_COMPARE_WITH_TIMEOUT(m_strips[0]->lastFrame().colors.size(), 7, kWaitMs);
    }

    void pageAndOptionsGoWithTheirDevice()
    {
        config()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, true);
        config()->setAppConfig(ConfigKeys::kPhyBtnAction.key, 1);
        start({"id.effect.screenSync.fullScreen", kMarquee});
        openPage(0);
        m_strips[1]->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(!homeButton(1), kWaitMs);
        QVERIFY(!window().isHomePage()); // another device's page
        const std::function<void()> changes[] = {[this] { m_strips[0]->pressButton(); },
                                                 [this] { giveCount(openCountDialog()); },
                                                 [this] { m_strips[0]->unplug(); }};
        for (const auto& change : changes) {
            openPage(0);
            pickScreenGroup();
            const QPointer<SSLOptWidget> editor(page().findChild<SSLOptWidget*>());
            QVERIFY(editor);
            for (const char* language : {"de", "en"}) {
                const QJsonArray layout = editor->effectProperty("LEDMap").toArray(); // as the worker told
                QCOMPARE(layout.size(), static_cast<int>(options(0).nbLeds));
                LanguageManager::instance()->switchLanguage(language);
            }
            change();
            QTRY_VERIFY_WITH_TIMEOUT(!editor || !editor->isVisible(), kWaitMs);
        }
        QTRY_VERIFY_WITH_TIMEOUT(window().isHomePage() && !homeButton(0), kWaitMs);
        QTRY_VERIFY(!page().findChild<AbsWorkerWidget*>());
    }

    void windowSaysWhatStandsInTheWay()
    {
        start({});
        const auto* ofDevices = window().homePage()->findChild<QLabel*>("noticeLabel");
        const auto* ofWindow = window().findChild<QLabel*>("noticeLabel", Qt::FindDirectChildrenOnly);
        QVERIFY(!ofDevices->isVisible() && !ofWindow->isVisible());
        StripSimulator strip({});
        QVERIFY(strip.plugIn());
        auto other = std::make_unique<SerialLine>();
        QVERIFY(other->open(strip.location()));
        const QString port = strip.options().portName;
        const QWidget* reasons = window().homePage()->findChild<QWidget*>("findingList");
        const auto isTold = [&] {
            QString all;
            for (const auto* label : reasons->findChildren<QLabel*>())
                all += label->isVisible() ? label->text() : "";
            return all.contains(port);
        };
        QTRY_VERIFY_WITH_TIMEOUT(isTold(), kWaitMs);
        QVERIFY(!ofDevices->isVisible()); // it is said once
        auto device = QSharedPointer<FakeController>::create("LVTEST:1");
        QVERIFY(QMetaObject::invokeMethod(&manager(), "addController", Q_ARG(AbsRGBControllerPtr, device)));
        QTRY_VERIFY_WITH_TIMEOUT(ofDevices->isVisible() && !reasons->isVisible(), kWaitMs);
        const QString text = ofDevices->text();
        LanguageManager::instance()->switchLanguage("de");
        QVERIFY(ofDevices->text() != text && ofDevices->text().contains(port));
        LanguageManager::instance()->switchLanguage("en");
        manager().removeController("LVTEST:1");
        QTRY_VERIFY(isTold());

        QFile file(config()->configPath() + "/effects"); // a file where a folder should be
        QVERIFY(QDir(file.fileName()).removeRecursively() && file.open(QIODevice::WriteOnly));
        config()->setEffectJsonValue(kMarquee, "somebody", "speed", 7);
        config()->save();
        QTRY_VERIFY(ofWindow->isVisible());
        QVERIFY(file.remove());
        config()->save();
        QTRY_VERIFY(!ofWindow->isVisible());
    }

    void accessThatWasGrantedIsTriedAtOnce()
    {
        const QByteArray path = qgetenv("PATH");
        const uid_t self = getuid();
        const auto restore = qScopeGuard([&] {
            qputenv("PATH", path);
            if (setreuid(self, uid_t(-1)) != 0)
                qFatal("no way back");
        });
        QVERIFY(QFile::link("/bin/true", m_folder->filePath("pkexec"))); // an administrator who agrees
        QVERIFY(QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755)));
        qputenv("PATH", QFile::encodeName(m_folder->path())); // and nobody else is asked
        StripSimulator strip({});
        QVERIFY(strip.plugIn());
        SerialLine other;
        QVERIFY(other.open(strip.location()) && QFile::setPermissions(strip.location(), {}));
        const auto offered = [this] { return window().homePage()->findChild<QPushButton*>("accessButton"); };
        QVERIFY(self != 0 || setreuid(65534, uid_t(-1)) == 0); // rights are those of the real user
        const LogCapture log;
        const auto attempts = [&] { return log.count("Failed to open the serial port"); };
        start({});
        QTRY_VERIFY_WITH_TIMEOUT(offered() && attempts() == 1, kWaitMs); // the next one is seconds away
        QTest::mouseClick(offered(), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!offered() || attempts() > 1, kWaitMs);
        QTimer late;
        late.setSingleShot(true);
        late.start(2000);
        QTRY_VERIFY_WITH_TIMEOUT(!late.isActive() || attempts() > 1, kWaitMs);
        QVERIFY(attempts() > 1);
    }

    void pageSaysWhyNothingIsChosenOrShown()
    {
        QDir::setCurrent(m_folder->path()); // no data files but the probe
        QVERIFY(QDir().mkdir("effects") && QFile::copy(PROBE_PLUGIN, "effects/probe.so"));
        start({"id.probe.sync", "id.probe.sync"});
        openPage(0);
        // A plug-in that does not tell what is of the look alone shares all that it has.
        click("multDevControlCheckBox");
        emit page().sOptWidPropertyChanged("value", 7);
        QCOMPARE(property(1, "value").toInt(), 7);
        click("singleDevControlCheckBox");

        const QString effect = "当前的效果不可用，请另选一种。";
        const QString mode = "当前的工作模式不可用，请另选一种。";
        const auto* shown = page().findChild<QLabel*>("noticeLabel");
        const auto shows = [shown](const QString& source) {
            return shown->isVisible() != source.isEmpty() &&
                   shown->text() == QCoreApplication::translate("EffectNotice", source.toUtf8().constData());
        };
        QVERIFY(shows(""));
        const auto say = [this](const QString& text) {
            effects().setEffectProperty(id(0), "notice", text);
            emit effects().boundWorker(id(0))->effectPropertyChanged("notice", text);
        };
        // What the worker says: as soon as it does, in each language, and on a page that is opened later.
        for (const QString& text : {mode, QString()}) {
            say(text);
            QTRY_VERIFY(shows(text));
            LanguageManager::instance()->switchLanguage(text.isEmpty() ? "en" : "de");
            QVERIFY(shows(text));
            openPage(0);
            QVERIFY(shows(text));
        }
        // What it offers to do: it hears when its page is seen, and of a click; the other device does not.
        auto* button = page().findChild<QPushButton*>("noticeButton");
        QVERIFY(!button->isVisible());
        effects().setEffectProperty(id(0), "noticeAction", "请求屏幕画面");
        say(mode);
        QTRY_COMPARE(button->text(), QString("Ask for the screen"));
        openPage(0);
        QCOMPARE(property(0, "noticeAction"), QJsonValue(false));
        effects().setEffectProperty(id(0), "noticeAction", "请求屏幕画面");
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(property(0, "noticeAction") == true && property(1, "noticeAction").isNull());
        effects().setEffectProperty(id(0), "noticeAction", "请求屏幕画面");
        manager().setControllerEffect(id(0), bound(0), true); // in the tray, say
        QCOMPARE(property(0, "noticeAction"), QJsonValue(false));
        effects().setEffectProperty(id(0), "noticeAction", QJsonValue());
        effects().setEffectProperty(id(0), "notice", "");
        // A plug-in that yields no worker, and back; then one that is gone, and one with its group.
        emit page().workerChanged("id.probe.none");
        QVERIFY(shows(effect));
        emit page().workerChanged("id.probe.sync");
        QVERIFY(shows(""));
        for (const char* gone : {"id.probe.gone", "id.gone.effect"}) {
            manager().setControllerEffect(id(0), gone, false);
            openPage(0);
            QVERIFY(shows(QByteArray(gone) == "id.probe.gone" ? effect : mode));
        }
        // The last one of a group is gone as well: another of the group stands in.
        config()->setGlobalValue(ConfigKeys::lastBindingKey(id(0), "id.effect.singleColor"),
                                 "id.effect.singleColor.gone");
        emit page().workGoupChanged("id.effect.singleColor");
        QCOMPARE(bound(0), kSingleColor);
        QVERIFY(shows(""));
    }

    void wallColoursAreSetOnWhiteAndStayWithTheirDevice()
    {
        start({kSingleColor, kSingleColor});
        openPage(0);
        setColour(200, 0, 0);
        const auto dialog = [this] { return window().findChild<WallColorDialog*>(); };
        for (const int turn : {1, 2}) {
            click("wallColorButton");
            QTRY_VERIFY_WITH_TIMEOUT(shows(0, turn == 1 ? LV_RGB{255, 255, 255} : LV_RGB{255, 102, 255}),
                                     kWaitMs);
            dialog()->findChild<QSlider*>("greenSlider")->setValue(40);
            window().switchToHomePage();
            QTRY_VERIFY_WITH_TIMEOUT(shows(0, {255, 102, 255}), kWaitMs);
            turn == 1 ? dialog()->reject() : m_strips[0]->unplug(); // it goes with its device
            QTRY_VERIFY_WITH_TIMEOUT(!dialog() && (homeButton(0) || turn == 2), kWaitMs);
            if (turn == 1)
                QTRY_VERIFY_WITH_TIMEOUT(shows(0, {200, 0, 0}), kWaitMs);
            else
                QVERIFY(m_strips[0]->plugIn());
            QTRY_VERIFY_WITH_TIMEOUT(homeButton(0), kWaitMs);
            openPage(0);
        }
        QCOMPARE(manager().controller(id(0))->correction().whiteGreen, 0.4);
        QVERIFY(manager().controller(id(1))->correction() == ColorCorrection());
        const auto* notice = page().findChild<QLabel*>("noticeLabel");
        for (const int milliAmps : {40, 0}) {
            ColorCorrection correction;
            correction.powerLimitMa = milliAmps;
            manager().controller(id(0))->setCorrection(correction);
            QTRY_COMPARE_WITH_TIMEOUT(notice->isVisible(), milliAmps > 0, kWaitMs);
        }
        click("wallColorButton"); // the program may be quit with it
        QVERIFY(dialog());
    }

    void lightOnThePageIsWhatTheStripGets()
    {
        start({kSingleColor});
        const StripPreview& preview = page().stripPreview();
        const auto shines = [&](LV_RGB color) { return preview.colors() == QVector<LV_RGB>(kLeds, color); };
        openPage(0);
        setColour(200, 100, 0);
        QTRY_VERIFY(shines({200, 100, 0}) && preview.places().size() == kLeds);
        slider()->setValue(50);
        QTRY_VERIFY(shines({100, 50, 0}));
        click("LEDDisableButton");
        QTRY_VERIFY(shines({}));
        click("LEDEnableButton");
        QTRY_VERIFY(shines({100, 50, 0}));
        manager().setDark(true);
        QTRY_VERIFY(preview.colors().isEmpty());
        manager().setDark(false);

        const QPointF first = preview.places().constFirst();
        click("installDirectionRTLButton");
        QTRY_COMPARE(preview.places().constFirst(), QPointF(1 - first.x(), first.y()));
        click("installDirectionLTRButton");
        manager().setControllerEffect(id(0), "id.effect.screenSync.cinemaScreen", true);
        const QJsonObject moved{{"id", 0}, {"x", 60}, {"y", 33}};
        effects().setEffectProperty(id(0), "LEDPos", moved);
        QTRY_COMPARE(preview.places().constFirst(), QPointF(60.5 / 120, 0.5));
        QTRY_VERIFY(!preview.places().isEmpty());
        effects().setEffectProperty(id(0), "resetCmd", {});
        QTRY_COMPARE(preview.places().constFirst(), first);
        manager().controller(id(0))->setNbLeds(7);
        QTRY_COMPARE(preview.places().size(), 7);
        manager().setControllerEffect(id(0), kSingleColor, true);

        // Unseen nothing is shown, and it goes on when it is seen again.
        const auto restsWhile = [&](const std::function<void(bool)>& hide) {
            QTRY_VERIFY(preview.isSeen() && preview.colors().size() == 7);
            const auto before = preview.colors();
            hide(true);
            manager().controller(id(0))->setBrightness(slider()->value() == 90 ? 0.7F : 0.9F);
            QTest::qWait(200); // for what must not come
            QCOMPARE(preview.colors(), before);
            hide(false);
            QTRY_COMPARE(preview.colors(), manager().controller(id(0))->sentColors());
            QVERIFY(preview.colors() != before);
        };
        restsWhile([&](bool hide) { hide ? window().switchToHomePage() : openPage(0); });
        restsWhile([&](bool hide) { hide ? window().hide() : window().show(); });
        restsWhile([&](bool hide) { hide ? window().showMinimized() : window().showNormal(); });
    }

    void everyLedStandsWhereItsUserHasIt()
    {
        ControlOptions strip;
        strip.model = "LV0127";
        const auto places = [&](uint leds, uint direction, const char* half, const QJsonObject& layout = {},
                                const QJsonObject& shipped = {}) {
            strip.nbLeds = leds;
            strip.installDirection = direction;
            const auto points =
                stripPlaces(strip, QString("id.effect.screenSync.%1").arg(half), layout, shipped).points;
            const auto isInside = [](const QPointF& at) { return QRectF(0, 0, 1, 1).contains(at); };
            return std::all_of(points.begin(), points.end(), isInside) ? points : QVector<QPointF>();
        };
        // Half a screen: its edge, and the way along it, of which a mirrored one exchanges left and right.
        const QVector<std::tuple<const char*, uint, QLineF>> edges{{"topHalfScreen", 0, {0, 0, 1, 0}},
                                                                   {"topHalfScreen", 1, {1, 0, 0, 0}},
                                                                   {"bottomHalfScreen", 0, {0, 1, 1, 1}},
                                                                   {"bottomHalfScreen", 1, {1, 1, 0, 1}},
                                                                   {"leftHalfScreen", 0, {0, 1, 0, 0}},
                                                                   {"leftHalfScreen", 1, {1, 1, 1, 0}},
                                                                   {"rightHalfScreen", 0, {1, 0, 1, 1}},
                                                                   {"rightHalfScreen", 1, {0, 0, 0, 1}},
                                                                   {"other", 0, {0, 1, 1, 1}},
                                                                   {"other", 1, {1, 1, 0, 1}}};
        for (const auto& [half, direction, way] : edges) {
            const auto points = places(120, direction, half);
            QVERIFY2(points.size() == 120 && QLineF(points.first(), way.p1()).length() < 0.05, half);
            QVERIFY2(QLineF(points.last(), way.p2()).length() < 0.05, half);
        }
        QVERIFY(places(0, 0, "topHalfScreen").isEmpty() && places(1, 1, "other").size() == 1);

        const QJsonObject wild{{"id", 1}, {"x", -9}, {"y", 900}};
        const QJsonArray leds{QJsonObject{{"id", 0}, {"x", 9}, {"y", 1}}, wild, QJsonObject{{"id", 70}}};
        const QJsonObject layout{{"LEDMap", leds}, {"screenSize", QJsonObject{{"w", 10}, {"h", 4}}}};
        QCOMPARE(places(3, 0, "cinemaScreen", layout).first(), QPointF(0.95, 0.375));
        QCOMPARE(places(3, 1, "cinemaScreen", layout).first(), QPointF(0.05, 0.375));
        QCOMPARE(places(2, 0, "cinemaScreen", {{"LEDMap", leds}}).size(), 2); // of no canvas

        // A strip of another length goes the way that its model is shipped with, from end to end.
        const QJsonObject shipped{{"key_len", 10},
                                  {"key_wid", 10},
                                  {"key_array", QJsonArray{QJsonObject{{"id", 1}, {"x", 0}, {"y", 9}},
                                                           QJsonObject{{"id", 2}, {"x", 0}, {"y", 0}},
                                                           QJsonObject{{"id", 3}, {"x", 9}, {"y", 0}}}}};
        for (const uint count : {2U, 3U, 300U}) {
            const auto points = places(count, 0, "other", {}, shipped);
            QVERIFY(points.first() == QPointF(0.05, 0.95) && points.last() == QPointF(0.95, 0.05));
        }
        QCOMPARE(places(5, 0, "other", {}, shipped)[1], QPointF(0.05, 0.5));

        strip.model = "LV0N03";
        const auto cell = [](double x, double y) { return QPointF((x + 0.5) / 23, (y + 0.5) / 11); };
        for (const uint direction : {0U, 1U}) { // it is what it is
            const auto matrix = places(253, direction, "topHalfScreen", {}, shipped);
            QVERIFY(matrix[0] == cell(0, 10) && matrix[22] == cell(22, 10) && matrix[23] == cell(22, 9));
            QCOMPARE(matrix[252], cell(22, 0));
        }
    }

private:
    /// The program with a strip for each effect, which is what it had last.
    void start(const QStringList& storedEffects)
    {
        for (const QString& effect : storedEffects) {
            StripSimulator::Options options;
            options.portName = QString("ttySIM%1").arg(m_strips.size());
            options.serial[2] = static_cast<char>(++m_serials);
            m_ids += "LV0127:" + QString(options.serial.toHex().toUpper());
            config()->controllerJsonObj(m_ids.last()) = storedStrip(effect, kLeds);
            m_strips.push_back(std::make_unique<StripSimulator>(options));
            QVERIFY(m_strips.back()->plugIn());
        }
        m_app = std::make_unique<LumivarApp>(nullptr);
        window().resize(1180, 850); // as on a screen larger than this one
        QTRY_COMPARE_WITH_TIMEOUT(manager().controllerIds().size(), storedEffects.size(), kWaitMs);
    }
    MainWindow& window() { return m_app->mainWindow(); }
    ControlPage& page() { return *window().controlPage(); }
    DeviceManager& manager() { return m_app->deviceManager(); }
    EffectsManager& effects() { return manager().effects(); }
    QString id(int strip) const { return m_ids[strip]; }
    QString bound(int strip) { return effects().boundEffectId(id(strip)); }
    QJsonValue property(int strip, const char* key) { return effects().effectProperty(id(strip), key); }
    const ControlOptions& options(int strip) { return manager().controlOptions(id(strip)); }

    QSlider* slider() { return page().findChild<QSlider*>("brightnessSlider"); }
    QLabel* header() { return page().findChild<QLabel*>("modelImageHeader"); }
    /// Null when the home page does not show the device.
    QToolButton* homeButton(int strip)
    {
        QToolButton* found = nullptr;
        for (auto* each : window().homePage()->findChildren<QToolButton*>())
            found = each->property("controllerId") == id(strip) ? each : found;
        return found;
    }
    /// Of the first device.
    ControllerConfigDialog* openCountDialog()
    {
        window().switchToHomePage();
        emit window().homePage()->controllerOptOrdered(id(0));
        return qobject_cast<ControllerConfigDialog*>(QApplication::activeModalWidget());
    }
    static void giveCount(ControllerConfigDialog* dialog)
    {
        dialog->setNbLed(7);
        dialog->accept();
    }
    void openPage(int strip)
    {
        window().switchToHomePage();
        QTest::mouseClick(homeButton(strip), Qt::LeftButton, {}, QPoint(50, 40));
        QTRY_VERIFY(!window().isHomePage());
        QCOMPARE(page().controllerId(), id(strip));
    }
    void pickScreenGroup()
    {
        const QString text = QCoreApplication::translate("GroupInformation", "同屏模式").simplified();
        for (auto* each : page().findChild<QWidget*>("workGroupContainer")->findChildren<QAbstractButton*>())
            each->text().simplified() == text ? press(each) : void();
    }
    void click(const char* name)
    {
        auto* found = window().findChild<QAbstractButton*>(name);
        QVERIFY2(found, name);
        press(found);
    }
    /// A radio button takes clicks on its mark and text, a round one within its disc.
    static void press(QAbstractButton* button)
    {
        const QPoint at = button->height() < 60 ? QPoint(10, button->height() / 2) : button->rect().center();
        QTest::mouseClick(button, Qt::LeftButton, {}, at);
    }
    void setColour(int red, int green, int blue)
    {
        for (const auto& [box, value] : {std::pair("Rbox", red), {"Gbox", green}, {"Bbox", blue}})
            page().findChild<QSpinBox*>(box)->setValue(value);
    }

    bool shows(int strip, LV_RGB color) { return m_strips[strip]->shows(color, kLeds); }

    const QString m_dataFolder = QDir::currentPath();
    std::unique_ptr<QTemporaryDir> m_folder;
    std::vector<std::unique_ptr<StripSimulator>> m_strips;
    QStringList m_ids;
    int m_serials = 0;
    std::unique_ptr<LumivarApp> m_app;
};

QTEST_MAIN(FlowsTest)
#include "tst_flows.moc"
