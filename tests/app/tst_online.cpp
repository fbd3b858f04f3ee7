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
        const QJsonObject product{{"service", m_server->address().toString()},
                                  {"serviceKey", QString::fromLatin1(m_server->publicKey().toBase64())}};
        const QString file = m_folder.filePath("product.json");
        ProgramUnderTest::writeFile(file, QJsonDocument(product).toJson());
        qputenv("LUMIVAR_PRODUCT", file.toLocal8Bit());
        m_program = std::make_unique<ProgramUnderTest>();
        m_program->environment.insert("SOCKET_WATCH", socketFile());
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
        QProcess windowManager;
        display.startProgram(windowManager, "openbox", {"--sm-disable"});
        const auto end =
            qScopeGuard([&windowManager] { windowManager.kill(), windowManager.waitForFinished(); });
        m_program->environment.remove("LUMIVAR_PRODUCT");
        m_program->setDisplay(display.name());
        m_program->writeConfig("app.json", {{"online.reportUsage", true}});
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(display.run("xdotool", {"search", "--onlyvisible", "--name", "^Lumivar$",
                                                         "windowactivate", "--sync"}),
                                 kWaitMs);
        QVERIFY(display.run("xdotool", {"key", "alt+e"}));
        QTRY_VERIFY_WITH_TIMEOUT(m_program->logText().contains("HelpDialog Opnening"), kWaitMs);
        // The window manager knows whose it is, so that the window never covers it.
        QTRY_VERIFY_WITH_TIMEOUT(display.run("sh", {"-c", "for each in $(xdotool search --class lumivar); "
                                                          "do xprop -id $each WM_TRANSIENT_FOR; done | "
                                                          "grep 'window id'"}),
                                 kWaitMs / 4);
        QVERIFY(m_program->terminate());
        QVERIFY(m_program->logText().contains("HelpDialog Closing"));
        QCOMPARE(ProgramUnderTest::readFile(socketFile()), QByteArray());
        QCOMPARE(m_server->connectionCount(), 0);
    }

    void useIsReportedWithConsentOnly()
    {
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(asked(kVersion) == 1 && asked(kAd) == 1, kWaitMs);
        QVERIFY(m_program->terminate());
        QVERIFY(QFile::exists(socketFile())); // the watch is one
        QCOMPARE(asked(kUsage), 0);

        m_program->writeConfig("app.json", {{"online.reportUsage", true}});
        m_program->start();
        QTRY_COMPARE_WITH_TIMEOUT(asked(kUsage), 1, kWaitMs);
        QVERIFY(m_program->terminate());
        QTRY_COMPARE_WITH_TIMEOUT(asked(kUsage), 2, kWaitMs);
        const QJsonObject opened = usageReport(0), closed = usageReport(1);
        QVERIFY(opened["open"].toString().size() == 14 && opened["close"].toString().isEmpty());
        QVERIFY(closed["open"] == opened["open"] && closed["close"].toString() >= closed["open"].toString());
    }

    void aSilentServerHoldsNothingUp()
    {
        m_server->setFault("/", ServerFault::SilentAfterConnect);
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        StripSimulator strip(options);
        QVERIFY(strip.plugIn());
        m_program->writeConfig("app.json", {{"online.reportUsage", true}});
        m_program->writeConfig("controllers.json",
                               {{kStripId, storedStrip("id.effect.singleColor.singleColor1", 60)}});
        m_program->start();
        const auto isDark = [&strip] { return strip.shownColors().count({}) == strip.shownColors().size(); };
        QTRY_VERIFY_WITH_TIMEOUT(!isDark() && asked(kUsage) == 1 && asked(kVersion) == 1, kWaitMs);
        const QElapsedTimer timer = started();
        QVERIFY(m_program->terminate());
        QVERIFY(timer.elapsed() < kUsualTimeoutMs);
        QTRY_VERIFY(isDark());
    }

    void aSilentNameServerHoldsNothingUp()
    {
        m_server->setAdvertisement({{"enable", 1},
                                    {"vertion", 3},
                                    {"ad1_image_url", "https://silent.invalid/red.png"},
                                    {"ad1_local_file_name", "red.png"},
                                    {"ad1_image_href", ""}});
        m_program->environment.insert("SILENT_NAME_SERVER", "1");
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(ProgramUnderTest::readFile(socketFile()).contains("look-up"), kWaitMs);
        const QElapsedTimer timer = started();
        QVERIFY(m_program->terminate());
        QVERIFY(timer.elapsed() < kUsualTimeoutMs);
    }

    void startShowsTheAdvertisement()
    {
        QByteArray png;
        QBuffer buffer(&png);
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(Qt::red);
        picture.save(&buffer, "PNG");
        m_server->setFile("/red.png", png, "image/png");
        m_server->setAdvertisement({{"enable", 1},
                                    {"vertion", 3},
                                    {"ad1_image_url", m_server->address().toString() + "/red.png"},
                                    {"ad1_local_file_name", "red.png"},
                                    {"ad1_image_href", "https://example.org"}});
        makeApp();
        QWidget* box = find<QWidget>("ADBox1");
        QTRY_COMPARE_WITH_TIMEOUT(box->grab().toImage().pixelColor(2, 2), QColor(Qt::red), kWaitMs);
    }

    void installerComesWithTheSecondTryAndIsHandedOver()
    {
        const QString opened = m_folder.filePath("opened"), opener = m_folder.filePath("bin/xdg-open");
        ProgramUnderTest::writeFile(opener, "#!/bin/sh\necho \"$1\" >" + opened.toLocal8Bit() +
                                                ".new && mv " + opened.toLocal8Bit() + ".new " +
                                                opened.toLocal8Bit());
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("PATH", m_folder.filePath("bin:").toLocal8Bit() + qgetenv("PATH"));
        m_server->setInstaller("lumivar.deb", QByteArray(300000, 'i'));
        m_server->setVersion({{"version", "99.0.0"}});
        m_server->setFault("/download/", ServerFault::CutInTheMiddle, 1);
        makeApp();
        for (const bool isGood : {false, true}) {
            QTRY_VERIFY_WITH_TIMEOUT(find<QWidget>("newVersionBtn")->isVisible(), kWaitMs);
            QTest::mouseClick(find<QWidget>("newVersionBtn"), Qt::LeftButton);
            QTRY_VERIFY_WITH_TIMEOUT(box(), kWaitMs);
            if (isGood)
                break;
            box()->findChildren<QPushButton*>().first()->click();
            QTRY_VERIFY_WITH_TIMEOUT(box() && box()->icon() == QMessageBox::Warning, kWaitMs);
            box()->accept();
        }
        QTimer::singleShot(0, box()->defaultButton(), &QPushButton::click);
        QCOMPARE(QCoreApplication::exec(), 0); // until the program ends for the installer
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(opened), kWaitMs);
        const QString path = QString::fromLocal8Bit(ProgramUnderTest::readFile(opened)).trimmed();
        QCOMPARE(QFileInfo(path).fileName(), "lumivar.deb");
        QCOMPARE(ProgramUnderTest::readFile(path), QByteArray(300000, 'i'));
    }

    void userHearsHowFeedbackWent_data()
    {
        QTest::addColumn<bool>("isServerWell");
        QTest::addColumn<QString>("text");
        QTest::newRow("well") << true << QStringLiteral("Feedback success");
        QTest::newRow("badly") << false << QStringLiteral("Feedback fails with: InternalServerError");
    }
    void userHearsHowFeedbackWent()
    {
        QFETCH(bool, isServerWell);
        QFETCH(QString, text);
        m_server->setFault(kFeedback, isServerWell ? ServerFault::None : ServerFault::ServerError);
        makeApp();
        sendFeedback();
        find<QDialog>("HelpDialog")->reject(); // it is told all the same
        QTRY_VERIFY_WITH_TIMEOUT(box(), kWaitMs);
        QCOMPARE(box()->text(), text);
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(asked(kFeedback), 1);
    }

    void cancelAndQuitEndFeedbackWithoutAWord()
    {
        m_server->setFault(kFeedback, ServerFault::SilentAfterConnect);
        makeApp();
        sendFeedback();
        QTRY_VERIFY_WITH_TIMEOUT(asked(kFeedback) == 1 && progress(), kWaitMs);
        QVERIFY(!QGuiApplication::overrideCursor()); // the box says it by now
        progress()->findChild<QPushButton*>()->click();
        find<QDialog>("HelpDialog")->reject();
        QTRY_VERIFY(!progress() && !find<QDialog>("HelpDialog"));
        sendFeedback();
        QTRY_COMPARE_WITH_TIMEOUT(asked(kFeedback), 2, kWaitMs);
        m_app.reset();
        QVERIFY(!box() && !progress());
    }

private:
    QString socketFile() const { return m_program->path("sockets"); }
    int asked(const QByteArray& path) const { return m_server->requestCount(path); }
    QJsonObject usageReport(int number) const
    {
        QList<QJsonObject> found;
        for (const ServerRequest& request : m_server->requests()) {
            if (request.path == kUsage)
                found.append(QJsonDocument::fromJson(request.body).object());
        }
        return found.value(number);
    }
    static QElapsedTimer started()
    {
        QElapsedTimer timer;
        timer.start();
        return timer;
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
    template <typename T>
    static T* visible()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<T*>(widget); found && found->isVisible())
                return found;
        }
        return nullptr;
    }
    static QMessageBox* box() { return visible<QMessageBox>(); }
    static FeedbackProgress* progress() { return visible<FeedbackProgress>(); }
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
