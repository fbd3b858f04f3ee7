// The conversation with a desktop's screen-cast portal, with a fake of it on a bus of the test's own.
#include "ScreenPortal.h"
#include "support/capture/ScreenCastSession_linux.h"
#include "support/capture/ScreenCastStreams_linux.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDBusPendingCall>
#include <QMetaEnum>
#include <QScreen>
#include <QtTest>
#include <atomic>
#include <fcntl.h>
#include <future>
#include <unistd.h>

#define TRY(condition) QVERIFY(QTest::qWaitFor([&] { return bool(condition); }, kPatienceMs))

namespace {

constexpr int kPatienceMs = 15000;
constexpr int kNeverMs = 600000;
const QStringList kTroubles{"None",    "NoDisplay", "NotAsked", "Asking",
                            "Refused", "Withdrawn", "NoPortal", "Lost"};

QString storedToken()
{
    return ConfigurationManager::instance()->appConfig(ConfigKeys::kScreenCastToken.key).toString();
}

/// A desktop and a program on it.
struct Desk
{
    explicit Desk(const PrivateBus& bus, bool hasToken = false)
        : portal(bus)
    {
        if (!portal.come())
            qFatal("no portal");
        if (hasToken)
            portal.goodToken = "token of last year";
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenCastToken.key, portal.goodToken);
        qApp->setProperty("isAutoStartup", false);
        startProgram();
        settle();
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
        const auto ping =
            QDBusMessage::createMethodCall("org.freedesktop.DBus", "/", "org.freedesktop.DBus.Peer", "Ping");
        for (int round = 0; round < 3; ++round) {
            // The toolkit's own wait with an event loop misses answers that are quick.
            for (const QDBusConnection& bus : {QDBusConnection::sessionBus(), portal.connection()}) {
                const QDBusPendingCall answer = bus.asyncCall(ping);
                QVERIFY(QTest::qWaitFor([&] { return answer.isFinished(); }));
            }
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
    bool comesTo(SourceTrouble trouble)
    {
        return trouble == SourceTrouble::None ? offers() : feed->trouble() == trouble && !feed->takeOffer();
    }
    void forget(bool chokes) // the token of last year
    {
        portal.goodToken = "another";
        portal.isUserSlow = true;
        portal.chokesOnTokens = chokes;
        pace.dialogMs = 1;
        startProgram();
    }

    /// What may happen to them.
    const QHash<QString, std::function<void()>> events{
        {"wait", [] {}},
        {"autostart", [] { qApp->setProperty("isAutoStartup", true); }},
        {"starts", [this] { startProgram(); }},
        {"needed", [this] { session->request(SourceRequest::Needed); }},
        {"shown", [this] { session->request(SourceRequest::Shown); }},
        {"wanted", [this] { session->request(SourceRequest::Wanted); }},
        {"dark", [this] { session->request(SourceRequest::Pausing); }},
        {"light", [this] { session->request(SourceRequest::Again); }},
        {"works", [this] { (portal.faults.clear(), portal.isThere() || portal.come()); }},
        {"ended", [this] { portal.endSession(); }},
        {"lost", [this] { feed->reportLost(feed->number()); }},
        {"gone", [this] { (portal.leave(), portal.calls.clear()); }},
        {"back", [this] { QVERIFY(portal.come()); }},
        {"slowly", [this] { (pace.leastAgainMs = kNeverMs, startProgram()); }},
        {"tokenless", [this] { portal.givesTokens = false; }},
        {"forgets", [this] { forget(false); }},
        {"chokes", [this] { forget(true); }},
        {"consent", [this] { portal.answerDialog(0); }},
        {"no", [this] { portal.answerDialog(1); }},
        {"timeout", [this] { portal.answerDialog(2); }},
    };
    /// One of them, or what goes wrong with a method of the portal: "Start/Error".
    void live(const QString& event)
    {
        if (events.contains(event))
            return events[event]();
        const auto fault = ScreenPortal::Fault(QMetaEnum::fromType<ScreenPortal::Fault>().keyToValue(
            event.section('/', 1).toLatin1().constData()));
        portal.faults[event.section('/', 0, 0)] = fault;
        pace.answerMs = fault == ScreenPortal::Fault::Silent ? 1000 : kNeverMs;
        startProgram();
    }

    ScreenPortal portal;
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

    void asksOnlyWhoMayBeAskedAndRestoresWhatBreaks_data()
    {
        QTest::addColumn<bool>("hasToken");
        QTest::addColumn<int>("dialogs");
        const auto add = [](bool hasToken, int dialogs, const QString& events) {
            QTest::newRow(qPrintable(events)) << hasToken << dialogs;
        };
        add(false, 1, "needed:None starts needed:None starts needed:None");
        add(false, 0, "autostart needed:NotAsked");
        add(false, 1, "autostart needed:NotAsked shown:None");
        add(true, 0, "autostart needed:None");
        add(false, 1, "Start/Refused needed:Refused needed:Refused shown:Refused");
        add(false, 2, "Start/Refused needed:Refused works wanted:None");
        add(true, 0, "needed:None ended:Withdrawn needed:Withdrawn shown:Withdrawn");
        add(true, 0, "needed:None ended:Withdrawn wanted:None");
        add(true, 1, "forgets needed:Asking wanted:Asking");
        add(false, 0, "gone needed:NoPortal back:NotAsked");
        add(true, 0, "gone needed:NoPortal back:None");
        add(false, 1, "needed:None lost:Lost wait:None lost:Lost wait:None");
        add(false, 1, "needed:None gone:Lost back:None gone:Lost back:None");
        add(false, 1, "needed:None ended:Withdrawn gone:Lost back:None");
        add(false, 2, "tokenless needed:None lost:Lost wait:NotAsked shown:None");
        add(false, 2, "tokenless needed:None gone:Lost back:NotAsked shown:None");
        add(true, 0, "slowly needed:None lost:Lost ended:Withdrawn"); // the streams are the first to say so
        add(true, 0, "slowly needed:None lost:Lost light:None");
        // Desktops end what shares a screen that is locked.
        add(true, 0, "needed:None dark:None ended:Withdrawn light:None");
        add(true, 0, "needed:None ended:Withdrawn dark:Withdrawn light:None");
        add(true, 0, "needed:None dark:None light:None ended:Withdrawn light:Withdrawn");
        add(false, 1, "tokenless needed:None dark:None ended:Withdrawn light:NotAsked");
        // A token that is worth nothing.
        add(true, 1, "forgets needed:Asking consent:None");
        add(true, 1, "forgets needed:Asking no:Refused");
        add(true, 1, "forgets needed:Asking timeout:NotAsked");
        add(true, 0, "chokes autostart needed:Lost");
        add(true, 1, "chokes autostart needed:Lost shown:Asking consent:None");
        add(true, 1, "chokes needed:Asking timeout:NotAsked");
        // A portal that fails.
        for (const QString method :
             {"GetAll", "CreateSession", "SelectSources", "Start", "OpenPipeWireRemote"}) {
            const bool isRequest = method != "GetAll" && method != "OpenPipeWireRemote";
            const bool isLast = method == "OpenPipeWireRemote"; // then there is a token already
            const QString silence = isLast ? "Lost" : "NotAsked";
            const QString no = isLast || method == "Start" ? silence : "NoPortal";
            for (const QString way :
                 {"Error", "Nonsense", "Silent", "DiesAtOnce", "Dies", "Twice", "OwnPath"}) {
                const QString trouble = way == "Error" || way == "Nonsense" ? no : silence;
                const QString how = method + '/' + way + " needed:";
                if (way == "Twice" || way == "OwnPath")
                    add(false, 1, how + "None");
                else if (isRequest || way != "Dies")
                    add(false, isLast ? 1 : -1, how + trouble + " works shown:None");
            }
        }
    }

    void asksOnlyWhoMayBeAskedAndRestoresWhatBreaks()
    {
        QFETCH(bool, hasToken);
        Desk desk(m_bus, hasToken);
        SourceTrouble trouble{};
        for (const QString& step : QString(QTest::currentDataTag()).split(' ')) {
            desk.live(step.section(':', 0, 0));
            trouble = SourceTrouble(kTroubles.indexOf(step.section(':', 1)));
            TRY(!step.contains(':') || desk.comesTo(trouble));
            TRY(trouble != SourceTrouble::Asking || desk.portal.isDialogOpen());
        }
        desk.settle();
        QCOMPARE(desk.feed->trouble(), trouble);
        QFETCH(int, dialogs);
        QCOMPARE(desk.portal.dialogs, dialogs < 0 ? desk.portal.dialogs : dialogs);
        const QStringList& calls = desk.portal.calls;
        QVERIFY(trouble != SourceTrouble::None || calls.contains("Register"));
        QVERIFY(calls.count("OpenPipeWireRemote") <= calls.count("CreateSession"));
        const QString token =
            desk.portal.goodToken == "another" ? "token of last year" : desk.portal.goodToken;
        const bool isSpent = trouble == SourceTrouble::Refused || trouble == SourceTrouble::NotAsked;
        QCOMPARE(storedToken(), isSpent ? QString() : token);
        desk.startProgram();
        TRY(!desk.portal.isDialogOpen() && desk.portal.openSessions == 0);
    }

    void asksForMonitorsWhoseNamesLastAndDiffer()
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
        QVERIFY(desk.portal.calls.isEmpty()); // nothing before it is asked
        desk.session->request(SourceRequest::Needed);
        std::optional<ScreenCastFeed::Offer> offer;
        TRY((offer = desk.feed->takeOffer()));
        close(offer->remote);
        QCOMPARE(desk.portal.calls.mid(0, 3), QStringList({"Register", "GetAll", "CreateSession"}));
        const std::pair<const char*, QVariant> options[]{
            {"types", 1u}, {"persist_mode", 2u}, {"cursor_mode", 1u}, {"multiple", true}};
        for (const auto& [option, value] : options)
            QCOMPARE(desk.portal.selection[option], value);
        QStringList told;
        for (const ScreenCastStream& stream : qAsConst(offer->streams))
            told << QString(stream.primary ? "%1 %2 %3!" : "%1 %2 %3")
                        .arg(stream.id, stream.name)
                        .arg(stream.place.width());
        const QString own = QString("portal:%1x%2+0+0 屏幕 4 %1!").arg(screen.width()).arg(screen.height());
        QCOMPARE(told, QStringList({"portal:a 屏幕 2 640", "portal:a~2 屏幕 3 0", own, "portal:5 屏幕 5 0",
                                    "portal:640x480+0+0 屏幕 6 640"}));
    }

    void aListenerThatWasTakenAwayIsNotRunningAnyMore()
    {
        ScreenCastFeed feed;
        std::atomic_bool isIn = false, isOut = false;
        feed.setLostListener([&] {
            isIn = true;
            QThread::msleep(50); // the one who takes it away should come meanwhile
            isOut = true;
        });
        const auto grabber = std::async(std::launch::async, [&] { feed.reportLost(feed.number()); });
        while (!isIn)
            QThread::yieldCurrentThread();
        feed.setLostListener({});
        QVERIFY(isOut);
    }
};

QTEST_MAIN(TestScreenCast)
#include "tst_screen_cast.moc"
