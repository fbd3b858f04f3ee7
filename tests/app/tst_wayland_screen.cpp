// The screen of a Wayland desktop: a picture in a real media server, handed out by a portal of the test's
// own, and its colours on simulated strips.
#include "FakeScreenCast.h"
#include "PipeWireServer.h"
#include "PipeWireSource.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int kWaitMs = 30000;
constexpr int kLeds = 120;
constexpr LV_RGB kRed{255, 0, 0}, kGreen{0, 255, 0}, kDark{};
const QString kEffect = "id.effect.screenSync.fullScreen";

/// Of a desktop that hands out screens alone.
class ScreenPortal : public FakeScreenCast
{
public:
    using FakeScreenCast::FakeScreenCast;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override
    {
        const bool isOfKeys = (call.interface() + call.arguments().value(0).toString()).contains("Shortcuts");
        return !isOfKeys && FakeScreenCast::handleMessage(call, connection);
    }
};

/// What stands between the program and the user's screen.
class Desktop
{
public:
    bool start() { return bus.start() && startPictures() && portal.come(); }
    bool startPictures()
    {
        m_picture.reset();
        if (!server.start())
            return false;
        portal.socket = server.socket();
        return makePicture();
    }
    /// One a session, as compositors do.
    bool makePicture()
    {
        m_picture = std::make_unique<PipeWireSource>(server.connection(), PipeWireSource::Kind());
        show(Qt::red);
        const bool isThere = QTest::qWaitFor([this] { return m_picture->node() != PW_ID_ANY; }, kWaitMs);
        portal.streams = {{m_picture->node(), {{"id", "left"}}}};
        return isThere;
    }
    void show(const QColor& color)
    {
        QImage image(2, 2, QImage::Format_RGB32);
        image.fill(color);
        m_picture->show(image);
    }

    PrivateBus bus;
    PipeWireServer server;
    ScreenPortal portal{bus};

private:
    std::unique_ptr<PipeWireSource> m_picture;
};

QString idOf(const StripSimulator& strip)
{
    return "LV0127:" + QString(strip.options().serial.toHex().toUpper());
}

} // namespace

class WaylandScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_desktop.start());
        m_desktop.bus.useAsSession();
        qputenv("XDG_SESSION_TYPE", "wayland");
    }
    void init()
    {
        m_desktop.portal.dialogs = 0;
        m_desktop.portal.goodToken.clear();
        m_desktop.portal.isUserSlow = true;
        m_desktop.show(Qt::red);
    }
    void cleanup()
    {
        m_app.reset();
        m_strips.clear();
        QCoreApplication::instance()->setProperty("isAutoStartup", QVariant());
    }

    void userConsentsOnceAndEveryStripFollows()
    {
        ProgramUnderTest program;
        program.environment.insert("XDG_SESSION_TYPE", "wayland");
        program.environment.insert("QT_QPA_PLATFORM", "offscreen");
        plugIn(program.portsFile(), 2);
        QJsonObject stored;
        for (const auto& strip : m_strips)
            stored.insert(idOf(*strip), storedStrip(kEffect, kLeds));
        program.writeConfig("controllers.json", stored);
        FakeScreenCast& portal = m_desktop.portal;

        program.start();
        QTRY_VERIFY_WITH_TIMEOUT(portal.isDialogOpen(), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(program.logText().count(" has connected to " + kEffect) == 2, kWaitMs);
        portal.answerDialog(0);
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed), kWaitMs);
        m_desktop.show(Qt::green);
        QTRY_VERIFY_WITH_TIMEOUT(show(kGreen), kWaitMs);
        QVERIFY(program.terminate());
        QCOMPARE(program.readConfig("app.json")["runtime.screenCastToken"].toString(), portal.goodToken);

        program.start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(show(kGreen), kWaitMs);
        m_desktop.server.stop();
        QTRY_VERIFY_WITH_TIMEOUT(show(kDark), kWaitMs);
        QVERIFY(m_desktop.startPictures());
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed), kWaitMs);
        portal.leave();
        QTRY_VERIFY_WITH_TIMEOUT(show(kDark), kWaitMs);
        QVERIFY(portal.come());
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed), kWaitMs);
        QCOMPARE(portal.dialogs, 1);
        QVERIFY(program.terminate());
        QTRY_VERIFY(show(kDark));
        QTRY_COMPARE(portal.openSessions, 0);
    }

    void pageAsksAfterASilentStartAndOffersToAskAgain()
    {
        FakeScreenCast& portal = m_desktop.portal;
        startInside(2);
        EffectsManager& effects = m_app->deviceManager().effects();
        const QString other = idOf(*m_strips[1]);
        QTRY_VERIFY_WITH_TIMEOUT(effects.effectProperty(other, "notice").toString().contains("同意"),
                                 kWaitMs);
        QCOMPARE(portal.dialogs, 0); // the user has not come yet
        openPage();
        QTRY_VERIFY_WITH_TIMEOUT(portal.isDialogOpen() && tells("对话框", false), kWaitMs);
        portal.answerDialog(1);
        QTRY_VERIFY_WITH_TIMEOUT(tells("您没有同意", true), kWaitMs);
        openPage(); // he has said no
        click();
        QTRY_VERIFY_WITH_TIMEOUT(portal.isDialogOpen() && tells("对话框", false), kWaitMs);
        QCOMPARE(portal.dialogs, 2);
        portal.answerDialog(0);
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);

        portal.isUserSlow = false;
        for (int times = 0; times < 2; ++times) {
            portal.endSession();
            QVERIFY(m_desktop.makePicture());
            QTRY_VERIFY_WITH_TIMEOUT(show(kDark) && tells("已结束", true), kWaitMs);
            click();
            QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);
        }
        // The other way to read the desktop, which cannot be here, and back.
        DeskCaptureOption::current()->setCurMode(0);
        QTRY_VERIFY_WITH_TIMEOUT(show(kDark) && tells("没有可以读取的屏幕", false), kWaitMs);
        QVERIFY(m_desktop.makePicture());
        DeskCaptureOption::current()->setCurMode(1);
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);
    }

private:
    void plugIn(const QString& portsFile, int strips)
    {
        for (int i = 0; i < strips; ++i) {
            StripSimulator::Options options;
            options.portsFile = portsFile;
            options.portName = QString("ttySIM%1").arg(i);
            options.serial[3] = static_cast<char>(i);
            m_strips.push_back(std::make_unique<StripSimulator>(options));
            QVERIFY(m_strips.back()->plugIn());
        }
    }
    /// The program in this process, as the system starts it.
    void startInside(int strips)
    {
        config()->reset();
        LanguageManager::instance()->switchLanguage("zh");
        QCoreApplication::instance()->setProperty("isAutoStartup", true);
        qputenv("LUMIVAR_SERIAL_PORTS", m_folder.filePath("ports.json").toLocal8Bit());
        plugIn(m_folder.filePath("ports.json"), strips);
        for (const auto& strip : m_strips)
            config()->controllerJsonObj(idOf(*strip)) = storedStrip(kEffect, kLeds);
        m_app = std::make_unique<LumivarApp>(nullptr);
        QTRY_COMPARE_WITH_TIMEOUT(m_app->deviceManager().controllerIds().size(), strips, kWaitMs);
        m_app->mainWindow().showNormal();
    }
    void openPage()
    {
        m_app->mainWindow().switchToHomePage();
        emit m_app->mainWindow().homePage()->controllerEntryOrdered(idOf(*m_strips[0]));
    }
    template <typename Widget>
    Widget* part(const char* name)
    {
        return m_app->mainWindow().controlPage()->findChild<Widget*>(name);
    }
    /// Whether the page's notice has this in it; none for no notice.
    bool tells(const QString& text, bool hasButton)
    {
        const auto* notice = part<QLabel>("noticeLabel");
        return notice->isVisible() == !text.isEmpty() && notice->text().contains(text) &&
               part<QPushButton>("noticeButton")->isVisible() == hasButton;
    }
    void click() { QTest::mouseClick(part<QPushButton>("noticeButton"), Qt::LeftButton); }
    bool show(LV_RGB color) const
    {
        return std::all_of(m_strips.begin(), m_strips.end(), [&](const auto& strip) {
            const QVector<LV_RGB> shown = strip->shownColors();
            return shown.size() == kLeds && shown.count(color) == kLeds;
        });
    }
    static ConfigurationManager* config() { return ConfigurationManager::instance(); }

    Desktop m_desktop;
    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<StripSimulator>> m_strips;
    std::unique_ptr<LumivarApp> m_app;
};

QTEST_MAIN(WaylandScreenTest)
#include "tst_wayland_screen.moc"
