#include "support/capture/ScreenCastSession_linux.h"

#include "support/Portal_linux.h"
#include "support/capture/ScreenCastTalk_linux.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QJsonValue>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace {

using Outcome = ScreenCastTalk::Outcome;
using Step = ScreenCastTalk::Step;

QString storedToken()
{
    return ConfigurationManager::instance()->appConfig(ConfigKeys::kScreenCastToken.key).toString();
}

void storeToken(const QString& token)
{
    if (token != storedToken())
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenCastToken.key, token);
}

bool wasStartedBySystem()
{
    return QCoreApplication::instance()->property("isAutoStartup").toBool();
}

} // namespace

struct ScreenCastSession::Private
{
    Private(ScreenCastSession* session, std::shared_ptr<ScreenCastFeed> box, const ScreenCastPace& times);

    void show(SourceTrouble trouble);
    void watchPortal();
    void begin(bool dialogAllowed, const QString& token);
    void endTalk();
    void onStarting();
    void onGranted(int remote, const ScreenCastStreams& streams);
    void onFailed(Outcome outcome, Step step);
    void onClosed();
    void onStreamsLost();
    bool wasJustClosed() const;
    void pause();
    void goOn();
    void onOwnerChanged(const QString& oldOwner, const QString& newOwner);
    void restoreLater();

    ScreenCastSession* const q;
    const std::shared_ptr<ScreenCastFeed> feed;
    const ScreenCastPace pace;
    std::unique_ptr<QDBusServiceWatcher> portal; ///< from the first conversation on
    std::unique_ptr<ScreenCastTalk> talk;
    bool isOffering = false;
    bool isDialogAllowed = false; ///< whether the present conversation may lead to one
    bool usesToken = false;       ///< whether it has one to show
    bool hasAnswered = false;     ///< the user said no, or ended it: only he can begin again
    bool isPausing = false;
    bool wasClosedInPause = false; ///< not by the user, then
    QTimer dialog;                 ///< runs while a dialog is not likely
    QTimer again;
    int againMs;
    QElapsedTimer sinceOffer;
    QElapsedTimer sinceClosed;
};

ScreenCastSession::Private::Private(ScreenCastSession* session, std::shared_ptr<ScreenCastFeed> box,
                                    const ScreenCastPace& times)
    : q(session)
    , feed(std::move(box))
    , pace(times)
    , againMs(times.leastAgainMs)
{
    dialog.setSingleShot(true);
    again.setSingleShot(true);
    connect(&dialog, &QTimer::timeout, q, [this] { show(SourceTrouble::Asking); });
    connect(&again, &QTimer::timeout, q, [this] { begin(isDialogAllowed, storedToken()); });
    feed->setLostListener([this] {
        QMetaObject::invokeMethod(
            q, [this] { onStreamsLost(); }, Qt::QueuedConnection);
    });
}

void ScreenCastSession::Private::show(SourceTrouble trouble)
{
    if (isOffering || feed->trouble() != trouble)
        feed->withdraw(trouble);
    isOffering = false;
}

void ScreenCastSession::Private::watchPortal()
{
    if (portal)
        return;
    portal = std::make_unique<QDBusServiceWatcher>(Portal::kService, QDBusConnection::sessionBus(),
                                                   QDBusServiceWatcher::WatchForOwnerChange);
    connect(portal.get(), &QDBusServiceWatcher::serviceOwnerChanged, q,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                onOwnerChanged(oldOwner, newOwner);
            });
}

void ScreenCastSession::Private::begin(bool dialogAllowed, const QString& token)
{
    endTalk();
    isDialogAllowed = dialogAllowed;
    usesToken = !token.isEmpty();
    if (!usesToken && !dialogAllowed) {
        show(SourceTrouble::NotAsked);
        return;
    }
    if (feed->trouble() != SourceTrouble::Lost)
        show(SourceTrouble::None);
    watchPortal();
    talk = std::make_unique<ScreenCastTalk>(token, pace.answerMs, nullptr);
    connect(talk.get(), &ScreenCastTalk::starting, q, [this] { onStarting(); });
    connect(talk.get(), &ScreenCastTalk::tokenGiven, q, &storeToken);
    connect(talk.get(), &ScreenCastTalk::granted, q,
            [this](int remote, const ScreenCastStreams& streams) { onGranted(remote, streams); });
    connect(talk.get(), &ScreenCastTalk::failed, q,
            [this](Outcome outcome, Step step) { onFailed(outcome, step); });
    connect(talk.get(), &ScreenCastTalk::closed, q, [this] { onClosed(); });
}

/// It may be the talk itself that calls.
void ScreenCastSession::Private::endTalk()
{
    dialog.stop();
    again.stop();
    if (!talk)
        return;
    talk->disconnect(q);
    talk.release()->deleteLater();
}

void ScreenCastSession::Private::onStarting()
{
    if (usesToken)
        dialog.start(pace.dialogMs);
    else
        show(SourceTrouble::Asking);
}

void ScreenCastSession::Private::onGranted(int remote, const ScreenCastStreams& streams)
{
    dialog.stop();
    hasAnswered = false;
    isOffering = true;
    sinceOffer.start();
    feed->offer(remote, streams);
}

void ScreenCastSession::Private::onFailed(Outcome outcome, Step step)
{
    const bool hadDialog = step <= Step::Starting && feed->trouble() == SourceTrouble::Asking;
    endTalk();
    // Whatever became of a dialog: one that came in spite of a token, or after it failed, says that the
    // token is worth nothing.
    if (outcome == Outcome::Refused || (outcome == Outcome::Failed && hadDialog)) {
        storeToken({});
        hasAnswered = outcome == Outcome::Refused;
        show(hasAnswered ? SourceTrouble::Refused : SourceTrouble::NotAsked);
        return;
    }
    const bool isTokenDoubtful =
        usesToken && outcome == Outcome::Failed && (step == Step::Selecting || step == Step::Starting);
    if (isTokenDoubtful && isDialogAllowed) {
        begin(true, {});
        return;
    }
    const bool hasToken = !storedToken().isEmpty();
    if (hasToken && (outcome != Outcome::Missing || feed->trouble() == SourceTrouble::Lost))
        show(SourceTrouble::Lost);
    else
        show(outcome == Outcome::Gone ? SourceTrouble::NotAsked : SourceTrouble::NoPortal);
    if (hasToken)
        restoreLater();
}

void ScreenCastSession::Private::onClosed()
{
    endTalk();
    hasAnswered = true;
    wasClosedInPause = isPausing;
    sinceClosed.start();
    show(SourceTrouble::Withdrawn);
}

/// The talk goes on for a moment: streams that end are also the first that is seen of the user ending them.
void ScreenCastSession::Private::onStreamsLost()
{
    if (!isOffering || !feed->isLost())
        return;
    show(SourceTrouble::Lost);
    restoreLater();
}

bool ScreenCastSession::Private::wasJustClosed() const
{
    constexpr int kLastWordMs = 2000;
    return feed->trouble() == SourceTrouble::Withdrawn && sinceClosed.elapsed() < kLastWordMs;
}

void ScreenCastSession::Private::pause()
{
    isPausing = true;
    wasClosedInPause = wasClosedInPause || wasJustClosed();
}

void ScreenCastSession::Private::goOn()
{
    isPausing = false;
    againMs = pace.leastAgainMs;
    if (std::exchange(wasClosedInPause, false) && feed->trouble() == SourceTrouble::Withdrawn) {
        hasAnswered = false;
        begin(false, storedToken());
    } else if (again.isActive()) {
        again.start(0);
    }
}

void ScreenCastSession::Private::onOwnerChanged(const QString& oldOwner, const QString& newOwner)
{
    // A portal that goes says of all sessions that they are closed.
    if (!oldOwner.isEmpty() && (isOffering || wasJustClosed())) {
        endTalk();
        hasAnswered = false;
        show(SourceTrouble::Lost);
        restoreLater();
    }
    const SourceTrouble trouble = feed->trouble();
    if (!newOwner.isEmpty() && !talk &&
        (trouble == SourceTrouble::Lost || trouble == SourceTrouble::NoPortal))
        begin(false, storedToken());
}

/// In growing intervals, unless it went well for long.
void ScreenCastSession::Private::restoreLater()
{
    if (sinceOffer.isValid() && sinceOffer.elapsed() > pace.mostAgainMs)
        againMs = pace.leastAgainMs;
    sinceOffer.invalidate();
    isDialogAllowed = false;
    again.start(againMs);
    againMs = std::min(2 * againMs, pace.mostAgainMs);
}

ScreenCastSession::ScreenCastSession(std::shared_ptr<ScreenCastFeed> feed, QObject* parent,
                                     const ScreenCastPace& pace)
    : QObject(parent)
    , d(std::make_unique<Private>(this, std::move(feed), pace))
{
}

ScreenCastSession::~ScreenCastSession()
{
    d->feed->setLostListener({});
}

void ScreenCastSession::request(SourceRequest request)
{
    if (request == SourceRequest::Pausing)
        return d->pause();
    if (request == SourceRequest::Again)
        return d->goOn();
    if (d->isOffering || (d->hasAnswered && request != SourceRequest::Wanted))
        return;
    const bool isDialogAllowed = request != SourceRequest::Needed || !wasStartedBySystem();
    if (d->talk) {
        d->isDialogAllowed = d->isDialogAllowed || isDialogAllowed;
        return;
    }
    d->againMs = d->pace.leastAgainMs;
    d->begin(isDialogAllowed, storedToken());
}
