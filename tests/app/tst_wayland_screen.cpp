// The screen of a Wayland desktop, handed out by a portal, and its colours on simulated strips.
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "WaylandStage.h"
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
constexpr LV_RGB kRed{255, 0, 0}, kDark{};
const QString kEffect = "id.effect.screenSync.fullScreen";

} // namespace

class WaylandScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_stage.start());
        m_stage.bus().useAsSession();
        qputenv("XDG_SESSION_TYPE", "wayland");
        qputenv("LUMIVAR_SERIAL_PORTS", m_ports.toLocal8Bit());
        for (int i = 0; i < 2; ++i) {
            StripSimulator::Options options;
            options.portName = QString("ttySIM%1").arg(i);
            options.serial[3] = static_cast<char>(i);
            m_strips.push_back(std::make_unique<StripSimulator>(options));
            QVERIFY(m_strips.back()->plugIn());
            m_stored.insert("LV0127:" + options.serial.toHex().toUpper(), storedStrip(kEffect, kLeds));
        }
    }
    void init()
    {
        m_portal.dialogs = 0;
        m_portal.goodToken.clear();
        m_portal.isUserSlow = true;
        paint(Qt::red);
    }
    void cleanup()
    {
        m_app.reset();
        QCoreApplication::instance()->setProperty("isAutoStartup", QVariant());
    }

    void pageAsksAfterASilentStartAndOffersToAskAgain()
    {
        config()->reset();
        LanguageManager::instance()->switchLanguage("zh");
        QCoreApplication::instance()->setProperty("isAutoStartup", true);
        for (const QString& id : m_stored.keys())
            config()->controllerJsonObj(id) = m_stored[id].toObject();
        m_app = std::make_unique<LumivarApp>(nullptr);
        QTRY_COMPARE_WITH_TIMEOUT(m_app->deviceManager().controllerIds().size(), 2, kWaitMs);
        m_app->mainWindow().showNormal();
        EffectsManager& effects = m_app->deviceManager().effects();
        const auto notice = [&] { return effects.effectProperty(m_stored.keys()[1], "notice").toString(); };
        QTRY_VERIFY_WITH_TIMEOUT(notice().contains("同意"), kWaitMs);
        QCOMPARE(m_portal.dialogs, 0); // the user has not come yet
        openPage();
        QTRY_VERIFY_WITH_TIMEOUT(m_portal.isDialogOpen() && tells("对话框", false), kWaitMs);
        m_portal.answerDialog(1);
        QTRY_VERIFY_WITH_TIMEOUT(tells("您没有同意", true), kWaitMs);
        openPage(); // he has said no
        click();
        QTRY_VERIFY_WITH_TIMEOUT(m_portal.isDialogOpen() && tells("对话框", false), kWaitMs);
        QCOMPARE(m_portal.dialogs, 2);
        m_portal.answerDialog(0);
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);

        m_portal.isUserSlow = false;
        for (int times = 0; times < 2; ++times) {
            QVERIFY(m_stage.endSharing());
            QTRY_VERIFY_WITH_TIMEOUT(show(kDark) && tells("已结束", true), kWaitMs);
            click();
            QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);
        }
        // The other way to read the desktop, which cannot be here, and back.
        DeskCaptureOption::current()->setCurMode(0);
        QTRY_VERIFY_WITH_TIMEOUT(show(kDark) && tells("没有可以读取的屏幕", false), kWaitMs);
        DeskCaptureOption::current()->setCurMode(1);
        QTRY_VERIFY_WITH_TIMEOUT(show(kRed) && tells("", false), kWaitMs);
    }

private:
    void paint(const QColor& color)
    {
        QImage image(2, 2, QImage::Format_RGB32);
        image.fill(color);
        m_stage.show(0, image);
    }
    void openPage()
    {
        m_app->mainWindow().switchToHomePage();
        emit m_app->mainWindow().homePage()->controllerEntryOrdered(m_stored.keys()[0]);
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
        return std::all_of(m_strips.begin(), m_strips.end(),
                           [&](const auto& strip) { return strip->shows(color, kLeds); });
    }
    static ConfigurationManager* config() { return ConfigurationManager::instance(); }

    WaylandStage m_stage;
    ScreenPortal& m_portal = m_stage.portal();
    QTemporaryDir m_folder;
    const QString m_ports = m_folder.filePath("ports.json");
    QJsonObject m_stored;
    std::vector<std::unique_ptr<StripSimulator>> m_strips;
    std::unique_ptr<LumivarApp> m_app;
};

QTEST_MAIN(WaylandScreenTest)
#include "tst_wayland_screen.moc"
