// The conversation with a desktop's screen-cast portal, with a fake of it on a bus of the test's own.
#include "FakeScreenCast.h"
#include "support/capture/ScreenCastSession_linux.h"
#include "support/capture/ScreenCastStreams_linux.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QScreen>
#include <QtTest>
#include <atomic>
#include <fcntl.h>
#include <thread>

using Way = FakeScreenCast::Way;
Q_DECLARE_METATYPE(Way)

#define TRY(condition) QVERIFY(QTest::qWaitFor([&] { return bool(condition); }, kPatienceMs))
#define TRY_TROUBLE(desk, expected) TRY((desk).feed->trouble() == (expected))

namespace {

constexpr int kPatienceMs = 15000;
constexpr int kNeverMs = 600000;

QString storedToken()
{
    return ConfigurationManager::instance()->appConfig(ConfigKeys::kScreenCastToken.key).toString();
}

/// A desktop and a program on it.
struct Desk
{
    Desk(const PrivateBus& bus, bool hasToken = false)
        : portal(bus)
    {
        if (!portal.come())
            qFatal("no portal");
        if (hasToken)
            portal.goodToken = "token of last year";
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenCastToken.key, portal.goodToken);
        qApp->setProperty("isAutoStartup", false);
        startProgram();
    }
    void startProgram()
    {
        session.reset();
        takenAt = 0;
        feed = std::make_shared<ScreenCastFeed>();
        session = std::make_unique<ScreenCastSession>(feed, nullptr, pace);
    }
    /// Until whatever was said before has been heard and answered.
    void settle() const
    {
        const auto ping = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                         "org.freedesktop.DBus.Peer", "Ping");
        for (int round = 0; round < 3; ++round) {
            QDBusConnection::sessionBus().call(ping, QDBus::BlockWithGui);
            portal.connection().call(ping, QDBus::BlockWithGui);
            QCoreApplication::processEvents();
        }
    }
    /// Takes what is offered as the grabber does, once.
    bool offers()
    {
        if (const auto offer = feed->takeOffer()) {
            takenAt = fcntl(offer->remote, F_GETFD) >= 0 && offer->streams.size() == 1 ? feed->number() : 0;
            close(offer->remote);
        }
        return feed->trouble() == SourceTrouble::None && takenAt == feed->number() &&
               portal.openSessions == 1;
    }
    void loseStreams() const { feed->reportLost(feed->number()); }

    FakeScreenCast portal;
    ScreenCastPace pace{kNeverMs, kNeverMs, 20, 200};
    std::shared_ptr<ScreenCastFeed> feed;
    quint64 takenAt = 0;
    std::unique_ptr<ScreenCastSession> session;
};

} // namespace

class TestScreenCast : public QObject
{
    Q_OBJECT

    PrivateBus m_bus;

private slots:
    void initTestCase()
    {
        QVERIFY(m_bus.start());
        m_bus.useAsSession();
    }

    void theUserIsAskedOnceForAllStarts()
    {
        Desk desk(m_bus);
        desk.settle();
        QVERIFY(desk.portal.calls.isEmpty());
        desk.session->request(SourceRequest::Needed);
        TRY(desk.offers());
        QCOMPARE(desk.portal.dialogs, 1);
        QCOMPARE(desk.portal.calls.mid(0, 3), QStringList({"Register", "GetAll", "CreateSession"}));
        for (const auto& [key, value] : {std::pair{"types", 1u}, {"persist_mode", 2u}, {"cursor_mode", 1u}})
            QCOMPARE(desk.portal.selection.value(key).toUInt(), value);
        QVERIFY(desk.portal.selection.value("multiple").toBool());
        for (int start = 0; start < 2; ++start) {
            QCOMPARE(storedToken(), desk.portal.goodToken);
            desk.startProgram();
            TRY(desk.portal.openSessions == 0);
            desk.session->request(SourceRequest::Needed);
            TRY(desk.offers());
        }
        QCOMPARE(desk.portal.dialogs, 1);
    }

    void onlyWhoMayAskAsks_data()
    {
        QTest::addColumn<bool>("isAutostart");
        QTest::addColumn<bool>("hasToken");
        QTest::addColumn<SourceTrouble>("earlier");
        QTest::addColumn<SourceRequest>("request");
        QTest::addColumn<SourceTrouble>("trouble");
        QTest::addColumn<int>("dialogs");
        using R = SourceRequest;
        using T = SourceTrouble;
        QTest::addRow("autostart") << true << false << T::None << R::Needed << T::NotAsked << 0;
        QTest::addRow("autostart, token") << true << true << T::None << R::Needed << T::None << 0;
        QTest::addRow("autostart, page") << true << false << T::None << R::Shown << T::None << 1;
        for (const T no : {T::Refused, T::Withdrawn}) {
            const char* name = no == T::Refused ? "refused" : "withdrawn";
            const bool hasToken = no == T::Withdrawn;
            const int asked = hasToken ? 0 : 1;
            QTest::addRow("%s, effect", name) << false << hasToken << no << R::Needed << no << asked;
            QTest::addRow("%s, page", name) << false << hasToken << no << R::Shown << no << asked;
            QTest::addRow("%s, wanted", name) << false << hasToken << no << R::Wanted << T::None << 2 * asked;
        }
    }

    void onlyWhoMayAskAsks()
    {
        QFETCH(bool, hasToken);
        QFETCH(SourceTrouble, earlier);
        Desk desk(m_bus, hasToken);
        if (earlier == SourceTrouble::Refused)
            desk.portal.ways["Start"] = Way::Refused;
        if (earlier != SourceTrouble::None)
            desk.session->request(SourceRequest::Needed);
        if (earlier == SourceTrouble::Withdrawn) {
            TRY(desk.offers());
            desk.portal.endSession();
        }
        TRY(earlier == SourceTrouble::None || desk.feed->trouble() == earlier);
        desk.portal.ways.clear();
        desk.settle();
        const int calls = desk.portal.calls.size();

        QFETCH(bool, isAutostart);
        QFETCH(SourceRequest, request);
        QFETCH(SourceTrouble, trouble);
        qApp->setProperty("isAutoStartup", isAutostart);
        desk.session->request(request);
        TRY(trouble != SourceTrouble::None || desk.offers());
        desk.settle();
        QCOMPARE(desk.feed->trouble(), trouble);
        QTEST(desk.portal.dialogs, "dialogs");
        QCOMPARE(desk.portal.calls.size() != calls, trouble == SourceTrouble::None);
    }

    void anOpenDialogIsNotDoubledAndGoesWithTheProgram()
    {
        Desk desk(m_bus);
        desk.portal.isUserSlow = true;
        desk.session->request(SourceRequest::Needed);
        TRY(desk.portal.isDialogOpen());
        TRY_TROUBLE(desk, SourceTrouble::Asking);
        desk.session->request(SourceRequest::Wanted);
        desk.settle();
        QCOMPARE(desk.portal.dialogs, 1);
        desk.startProgram();
        TRY(!desk.portal.isDialogOpen());
        TRY(desk.portal.openSessions == 0);
    }

    void aPortalThatFailsIsSurvived_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<Way>("way");
        QTest::addColumn<SourceTrouble>("trouble");
        using T = SourceTrouble;
        const auto add = [](const char* method, const char* name, Way way, T trouble) {
            QTest::addRow("%s: %s", method, name) << method << way << trouble;
        };
        for (const char* method :
             {"GetAll", "CreateSession", "SelectSources", "Start", "OpenPipeWireRemote"}) {
            // Then there is a token already.
            const bool isLast = qstrcmp(method, "OpenPipeWireRemote") == 0;
            const bool isDialog = qstrcmp(method, "Start") == 0;
            const T silence = isLast ? T::Lost : T::NotAsked;
            const T no = isLast || isDialog ? silence : T::NoPortal;
            add(method, "an error", Way::Error, no);
            add(method, "nonsense", Way::Nonsense, no);
            add(method, "nothing", Way::Silent, silence);
            add(method, "dies at once", Way::DiesAtOnce, silence);
            if (isLast || qstrcmp(method, "GetAll") == 0)
                continue;
            add(method, "dies", Way::Dies, silence);
            add(method, "twice", Way::Twice, T::None);
            add(method, "from elsewhere", Way::OwnPath, T::None);
        }
    }

    void aPortalThatFailsIsSurvived()
    {
        QFETCH(QString, method);
        QFETCH(Way, way);
        QFETCH(SourceTrouble, trouble);
        Desk desk(m_bus);
        if (way == Way::Silent)
            desk.pace.answerMs = 1000;
        desk.startProgram();
        desk.portal.ways[method] = way;
        desk.session->request(SourceRequest::Needed);
        if (trouble != SourceTrouble::None) {
            TRY(desk.portal.calls.contains(method));
            TRY_TROUBLE(desk, trouble);
            desk.settle();
            QVERIFY(!desk.feed->takeOffer());
            desk.portal.ways.clear();
            if (way == Way::Dies || way == Way::DiesAtOnce)
                QVERIFY(desk.portal.come());
            desk.session->request(SourceRequest::Shown); // nothing of that was the user's answer
        }
        TRY(desk.offers());
        desk.settle();
        QVERIFY(!desk.feed->takeOffer());
        QCOMPARE(desk.portal.openSessions, 1);
        QVERIFY(trouble != SourceTrouble::None || desk.portal.calls.count("OpenPipeWireRemote") == 1);
    }

    void aPortalThatComesLateIsNoReasonForADialog()
    {
        for (const bool hasToken : {false, true}) {
            Desk desk(m_bus, hasToken);
            desk.portal.leave();
            desk.session->request(SourceRequest::Needed);
            TRY_TROUBLE(desk, SourceTrouble::NoPortal);
            QVERIFY(desk.portal.come());
            if (hasToken) {
                TRY(desk.offers());
                QVERIFY(desk.portal.calls.contains("Register"));
            } else {
                TRY_TROUBLE(desk, SourceTrouble::NotAsked);
            }
            QCOMPARE(desk.portal.dialogs, 0);
        }
    }

    void aTokenThatIsWorthNothingIsReplaced_data()
    {
        QTest::addColumn<bool>("chokes");
        QTest::addColumn<int>("response");
        QTest::addColumn<SourceTrouble>("trouble");
        QTest::newRow("ignored, consent") << false << 0 << SourceTrouble::None;
        QTest::newRow("ignored, refused") << false << 1 << SourceTrouble::Refused;
        QTest::newRow("ignored, ended") << false << 2 << SourceTrouble::NotAsked;
        QTest::newRow("failed, consent") << true << 0 << SourceTrouble::None;
        QTest::newRow("failed, ended") << true << 2 << SourceTrouble::NotAsked;
    }

    void aTokenThatIsWorthNothingIsReplaced()
    {
        Desk desk(m_bus, true);
        desk.pace.dialogMs = 1;
        desk.startProgram();
        QFETCH(bool, chokes);
        desk.portal.chokesOnTokens = chokes;
        desk.portal.goodToken = "another";
        desk.portal.isUserSlow = true;
        qApp->setProperty("isAutoStartup", chokes);
        desk.session->request(SourceRequest::Needed);
        if (chokes) { // nobody is asked out of nowhere
            TRY_TROUBLE(desk, SourceTrouble::Lost);
            TRY(desk.portal.calls.count("SelectSources") > 1);
            QCOMPARE(storedToken(), QString("token of last year"));
            desk.session->request(SourceRequest::Shown);
        }
        TRY_TROUBLE(desk, SourceTrouble::Asking);
        TRY(desk.portal.isDialogOpen());
        QFETCH(int, response);
        desk.portal.answerDialog(uint(response));
        QFETCH(SourceTrouble, trouble);
        TRY_TROUBLE(desk, trouble);
        if (response == 0)
            TRY(desk.offers());
        desk.settle();
        QCOMPARE(storedToken(), response == 0 ? desk.portal.goodToken : QString());
        QCOMPARE(desk.portal.dialogs, 1);
    }

    void whatBreaksIsRestoredByTheToken_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<bool>("givesTokens");
        for (const char* what : {"streams", "streams asleep", "portal", "portal with a last word"}) {
            QTest::addRow("%s", what) << what << true;
            QTest::addRow("%s, no token", what) << what << false;
        }
    }

    void whatBreaksIsRestoredByTheToken()
    {
        QFETCH(QString, what);
        QFETCH(bool, givesTokens);
        Desk desk(m_bus);
        desk.portal.givesTokens = givesTokens;
        const bool isAsleep = what == "streams asleep";
        if (isAsleep)
            desk.pace.leastAgainMs = desk.pace.mostAgainMs = kNeverMs;
        desk.startProgram();
        desk.session->request(SourceRequest::Needed);
        TRY(desk.offers());
        for (int time = 0; time < 3; ++time) {
            if (what.startsWith("streams"))
                desk.loseStreams();
            if (what == "portal with a last word")
                desk.portal.endSession();
            if (what.startsWith("portal"))
                desk.portal.leave();
            TRY_TROUBLE(desk, SourceTrouble::Lost);
            if (what.startsWith("portal"))
                QVERIFY(desk.portal.come());
            if (isAsleep)
                desk.session->request(SourceRequest::Again);
            if (givesTokens) {
                TRY(desk.offers());
                continue;
            }
            TRY_TROUBLE(desk, SourceTrouble::NotAsked);
            desk.session->request(SourceRequest::Shown);
            TRY(desk.offers());
        }
        QCOMPARE(desk.portal.dialogs, givesTokens ? 1 : 4);
    }

    void streamsThatEndBeforeTheUserIsHeardAreNotRestored()
    {
        Desk desk(m_bus);
        desk.session->request(SourceRequest::Needed);
        TRY(desk.offers());
        desk.loseStreams();
        QCoreApplication::processEvents();
        QCOMPARE(desk.feed->trouble(), SourceTrouble::Lost);
        desk.portal.endSession();
        TRY_TROUBLE(desk, SourceTrouble::Withdrawn);
    }

    void aSessionThatTheLockOfTheScreenEndedComesBackWithTheLight_data()
    {
        QTest::addColumn<QString>("order");
        QTest::addColumn<SourceTrouble>("trouble");
        QTest::newRow("dark, ended") << "de" << SourceTrouble::None;
        QTest::newRow("ended, dark") << "ed" << SourceTrouble::None;
        QTest::newRow("ended by the user") << "dle" << SourceTrouble::Withdrawn;
    }

    void aSessionThatTheLockOfTheScreenEndedComesBackWithTheLight()
    {
        QFETCH(QString, order);
        QFETCH(SourceTrouble, trouble);
        Desk desk(m_bus, true);
        desk.session->request(SourceRequest::Needed);
        TRY(desk.offers());
        for (const QChar event : order + 'l') {
            if (event == 'e')
                desk.portal.endSession();
            if (event == 'e')
                TRY_TROUBLE(desk, SourceTrouble::Withdrawn);
            else
                desk.session->request(event == 'd' ? SourceRequest::Pausing : SourceRequest::Again);
        }
        TRY(trouble != SourceTrouble::None || desk.offers());
        desk.settle();
        QCOMPARE(desk.feed->trouble(), trouble);
        QCOMPARE(desk.portal.dialogs, 0);
    }

    void streamsHaveNamesThatLastAndDiffer()
    {
        Desk desk(m_bus);
        const QRect screen = qApp->primaryScreen()->geometry();
        desk.portal.streams = {
            {0, {{"id", "no node"}}},
            {7, {{"id", "a"}, {"position", QPoint(5000, 0)}, {"size", QSize(640, 480)}}},
            {8, {{"id", "a"}}},
            {9, {{"position", screen.topLeft()}, {"size", screen.size()}}},
            {10, {{"id", 5}, {"position", "here"}, {"size", QSize(-4, 1 << 30)}}},
            {11, {{"position", QSize(1 << 30, 1 << 30)}, {"size", QPoint(640, 480)}}},
        };
        desk.session->request(SourceRequest::Needed);
        std::optional<ScreenCastFeed::Offer> offer;
        TRY((offer = desk.feed->takeOffer()));
        close(offer->remote);
        QStringList told;
        for (const ScreenCastStream& stream : qAsConst(offer->streams))
            told << QString("%1 %2 %3%4")
                        .arg(stream.id, stream.name, QString::number(stream.place.width()),
                             stream.primary ? "!" : "");
        const QString width = QString::number(screen.width());
        const QString own = QString("portal:%1x%2+0+0").arg(width).arg(screen.height());
        QCOMPARE(told,
                 QStringList({"portal:a 屏幕 2 640", "portal:a~2 屏幕 3 0", own + " 屏幕 4 " + width + "!",
                              "portal:5 屏幕 5 0", "portal:640x480+0+0 屏幕 6 640"}));
    }

    void aListenerThatWasTakenAwayIsNotRunningAnyMore()
    {
        ScreenCastFeed feed;
        std::atomic_bool isIn = false;
        std::atomic_bool isOut = false;
        feed.setLostListener([&] {
            isIn = true;
            QThread::msleep(50); // the one who takes it away should come meanwhile
            isOut = true;
        });
        std::thread grabber([&] { feed.reportLost(feed.number()); });
        while (!isIn)
            std::this_thread::yield();
        feed.setLostListener({});
        const bool hasWaited = isOut;
        grabber.join();
        QVERIFY(hasWaited);
    }
};

QTEST_MAIN(TestScreenCast)
#include "tst_screen_cast.moc"
