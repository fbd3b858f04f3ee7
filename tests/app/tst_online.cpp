#include "OnlineServer.h"
#include "ProgramUnderTest.h"
#include "SigningKey.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"
#include "app/LumivarApp.h"
#include "support/config/ConfigurationManager.h"
#include "ui/FeedbackProgress.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kUsualTimeoutMs = 10000; ///< of a request
const QString kStripId = "LV0127:01020304";
const QByteArray kVersion = "/app/version", kAd = "/app/get_advertisement_info.php", kUsage = "/app/usage",
                 kFeedback = "/app/feedback";

} // namespace

/// The program and the online service: as a process of its own, watched from outside, and without its main
/// function, so that what the user sees can be looked at.
class OnlineTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        // The product's settings are read once, so it is the same service in all cases.
        m_server = std::make_unique<OnlineServer>();
        m_server->setKey(m_key);
        QVERIFY(m_server->listen(m_port));
        m_port = static_cast<quint16>(m_server->address().port());
        const QByteArray file = m_folder.filePath("product.json").toLocal8Bit();
        ProgramUnderTest::writeFile(file, "{\"service\": \"" + m_server->address().toString().toLatin1() +
                                              "\", \"serviceKey\": \"" + m_server->publicKey().toBase64() +
                                              "\"}");
        qputenv("LUMIVAR_PRODUCT", file);
        m_program = std::make_unique<ProgramUnderTest>();
        m_program->environment.insert("SOCKET_WATCH", m_program->path("sockets"));
        m_program->environment.insert("LD_PRELOAD", SOCKET_WATCH);
        m_program->environment.insert("ASAN_OPTIONS", "detect_leaks=0:verify_asan_link_order=0");
        auto* config = ConfigurationManager::instance();
        config->reset();
        QDir(config->resourcesPath()).removeRecursively();
    }
    void cleanup()
    {
        m_app.reset();
        m_program.reset();
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void withoutAServiceNoSocketIsMade()
    {
        VirtualDisplay display;
        QVERIFY(display.start());
        m_program->environment.remove("LUMIVAR_PRODUCT");
        m_program->setDisplay(display.name());
        startAgreed();
        const QString help = "xdotool search --onlyvisible --name ^Lumivar$ windowfocus --sync key alt+e";
        QTRY_VERIFY_WITH_TIMEOUT(display.run("sh", {"-c", help}), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_program->logText().contains("HelpDialog Opnening"), kWaitMs);
        // A window manager learns whose it is, so that the window never covers it.
        const QString owners = "for each in $(xdotool search --class lumivar); "
                               "do xprop -id $each WM_TRANSIENT_FOR; done | grep 'window id'";
        QTRY_VERIFY_WITH_TIMEOUT(display.run("sh", {"-c", owners}), kWaitMs / 4);
        QVERIFY(m_program->terminate());
        QVERIFY(m_program->logText().contains("HelpDialog Closing"));
        QCOMPARE(sockets(), QByteArray());
        QCOMPARE(m_server->connectionCount(), 0);
    }

    void useIsReportedWithConsentOnly()
    {
        QList<QJsonObject> reports;
        connect(m_server.get(), &OnlineServer::requested, this, [&](const QByteArray& path) {
            if (path == kUsage)
                reports.append(QJsonDocument::fromJson(m_server->requests().last().body).object());
        });
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(asked(kVersion) == 1 && asked(kAd) == 1, kWaitMs);
        QVERIFY(m_program->terminate());
        QVERIFY(!sockets().isEmpty() && reports.isEmpty()); // the watch is one

        startAgreed();
        QTRY_COMPARE_WITH_TIMEOUT(reports.size(), 1, kWaitMs);
        QVERIFY(m_program->terminate());
        QTRY_COMPARE_WITH_TIMEOUT(reports.size(), 2, kWaitMs);
        const auto opened = reports[0]["open"].toString(), closed = reports[1]["close"].toString();
        QVERIFY(opened.size() == 14 && reports[0]["close"] == "");
        QVERIFY(reports[1]["open"] == opened && closed.size() == 14 && closed >= opened);
    }

    void silentServersHoldNothingUp()
    {
        for (const QByteArray& path : {kVersion, kUsage})
            m_server->setFault(path, ServerFault::SilentAfterConnect);
        advertise("https://silent.invalid/red.png");
        m_program->environment.insert("SILENT_NAME_SERVER", "1");
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        StripSimulator strip(options);
        QVERIFY(strip.plugIn());
        m_program->writeConfig("controllers.json",
                               {{kStripId, storedStrip("id.effect.singleColor.singleColor1", 60)}});
        startAgreed();
        QTRY_VERIFY_WITH_TIMEOUT(strip.isLit() && asked(kUsage) == 1 && asked(kVersion) == 1, kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(sockets().contains("look-up"), kWaitMs);
        const QDeadlineTimer usual(kUsualTimeoutMs);
        QVERIFY(m_program->terminate() && !usual.hasExpired());
        QTRY_VERIFY(!strip.isLit());
    }

    void installerIsHandedOverOnceAllGoesWell()
    {
        const QByteArray folder = m_folder.path().toLocal8Bit(), installer(300000, 'i');
        const QString opener = m_folder.filePath("bin/xdg-open"), opened = m_folder.filePath("opened");
        // Finds nobody the first time; then it takes longer than the program lives.
        ProgramUnderTest::writeFile(opener, "#!/bin/sh\ncd " + folder +
                                                "\n[ -e asked ] || { touch asked; exit 3; }\n"
                                                "sleep 2\necho \"$1\" >new && mv new opened\n");
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", folder + "/bin:" + qgetenv("PATH"));
        m_server->setInstaller("lumivar.deb", installer);
        m_server->setVersion({{"version", "99.0.0"}});
        m_server->setFault("/download/", ServerFault::CutInTheMiddle, 1);
        makeApp();
        for (const QString told : {"network", "lumivar.deb"}) {
            orderUpdate();
            box()->defaultButton()->click();
            QTRY_VERIFY_WITH_TIMEOUT(box() && box()->text().contains(told), kWaitMs);
            box()->accept();
        }
        orderUpdate();
        QTimer::singleShot(0, box()->defaultButton(), &QPushButton::click);
        QCOMPARE(QCoreApplication::exec(), 0); // until the program ends for the installer
        m_app.reset();
        QVERIFY(!QFile::exists(opened));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(opened), kWaitMs);
        const QString path = QString::fromLocal8Bit(ProgramUnderTest::readFile(opened)).trimmed();
        QVERIFY(path.endsWith("/lumivar.deb") && ProgramUnderTest::readFile(path) == installer);
    }

    void startShowsTheAdvertisementAndUserHearsHowFeedbackWent()
    {
        QBuffer png;
        QPixmap picture(40, 40);
        picture.fill(Qt::red);
        picture.save(&png, "PNG");
        m_server->setFile("/red.png", png.data(), "image/png");
        advertise(m_server->address().toString() + "/red.png");
        makeApp();
        QWidget* adBox = find<QWidget>("ADBox1");
        QTRY_COMPARE_WITH_TIMEOUT(adBox->grab().toImage().pixelColor(2, 2), QColor(Qt::red), kWaitMs);
        sendFeedback();
        find<QPushButton>("pushButton_send")->click(); // by mistake
        find<QDialog>("HelpDialog")->reject();         // it is told all the same
        QVERIFY(hears("Feedback success"));
        m_server->setFault(kFeedback, ServerFault::ServerError);
        sendFeedback();
        QVERIFY(hears("Feedback fails with: InternalServerError"));
        const QString file = m_folder.filePath("report.zip");
        find<QPushButton>("saveReportBtn")->click();
        auto* files = m_app->mainWindow().findChild<QFileDialog*>();
        emit files->fileSelected(file);
        QVERIFY(hears("report.zip"));
        QVERIFY(ProgramUnderTest::readFile(file).startsWith("PK"));
        emit files->fileSelected(m_folder.filePath("gone/report.zip"));
        QVERIFY(hears("could not be saved"));
        QCOMPARE(asked(kFeedback), 2);
    }

    void cancelAndQuitEndFeedbackWithoutAWord()
    {
        m_server->setFault(kFeedback, ServerFault::SilentAfterConnect);
        makeApp();
        sendFeedback();
        QTRY_VERIFY_WITH_TIMEOUT(asked(kFeedback) == 1 && box<FeedbackProgress>(), kWaitMs);
        QVERIFY(!QGuiApplication::overrideCursor()); // the box says it by now
        box<FeedbackProgress>()->findChild<QPushButton*>()->click();
        find<QDialog>("HelpDialog")->reject();
        QTRY_VERIFY(!QApplication::activeModalWidget() && !find<QDialog>("HelpDialog"));
        sendFeedback();
        QTRY_COMPARE_WITH_TIMEOUT(asked(kFeedback), 2, kWaitMs);
        m_app.reset();
        QVERIFY(!QApplication::activeModalWidget());
    }

private:
    QByteArray sockets() const { return ProgramUnderTest::readFile(m_program->path("sockets")); }
    int asked(const QByteArray& path) const { return m_server->requestCount(path); }
    void advertise(const QString& picture)
    {
        const QJsonObject place{{"ad1_image_url", picture},
                                {"ad1_local_file_name", "red.png"},
                                {"ad1_image_href", ""},
                                {"enable", 1},
                                {"vertion", 3}};
        m_server->setAdvertisement(place);
    }

    void startAgreed()
    {
        m_program->writeConfig("app.json", {{"online.reportUsage", true}});
        m_program->start();
    }
    void makeApp()
    {
        m_app = std::make_unique<LumivarApp>(nullptr);
        m_app->mainWindow().show();
    }
    template <typename T>
    T* find(const char* name) const
    {
        return m_app->mainWindow().findChild<T*>(QLatin1String(name));
    }
    template <typename Box = QMessageBox>
    static Box* box()
    {
        return qobject_cast<Box*>(QApplication::activeModalWidget());
    }
    /// Waits for a box that says so and closes it.
    static bool hears(const QString& text)
    {
        const bool isTold = QTest::qWaitFor([] { return box(); }, kWaitMs) && box()->text().contains(text) &&
                            !QGuiApplication::overrideCursor();
        if (box())
            box()->accept();
        return isTold;
    }
    void orderUpdate() const
    {
        QTRY_VERIFY_WITH_TIMEOUT(find<QWidget>("newVersionBtn")->isVisible(), kWaitMs);
        QTest::mouseClick(find<QWidget>("newVersionBtn"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(box(), kWaitMs);
    }
    /// By the way that a user goes.
    void sendFeedback() const
    {
        QTest::mouseClick(find<QWidget>("pushButton_help"), Qt::LeftButton);
        find<QPlainTextEdit>("userMsgEdit")->setPlainText("It blinks");
        find<QPushButton>("pushButton_send")->click();
    }

    QTemporaryDir m_folder;
    SigningKey m_key;
    quint16 m_port = 0;
    std::unique_ptr<OnlineServer> m_server;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<LumivarApp> m_app;
};

QTEST_MAIN(OnlineTest)
#include "tst_online.moc"
