#pragma once

#include "support/PortalRequest_linux.h"
#include "support/capture/ScreenCastFeed_linux.h"

#include <functional>

/// One conversation with the screen-cast portal: a session from its creation to the streams, and further
/// until somebody ends it. Main thread. Deleting it closes the session.
class ScreenCastTalk : public QObject
{
    Q_OBJECT

public:
    using Outcome = PortalRequest::Outcome;
    enum class Step { Greeting, Creating, Selecting, Starting, Opening, Done };

    /// With the token of an earlier consent, or none. Each answer of the portal may take `answerMs`, but for
    /// the user's.
    ScreenCastTalk(const QString& token, int answerMs, QObject* parent);
    ~ScreenCastTalk() override;

signals:
    /// From now on the portal may show a dialog; it does where there was no token.
    void starting();
    /// The consent's new token, which replaces the old one; empty where the portal gives none.
    void tokenGiven(const QString& token);
    /// Whoever hears it owns `remote`.
    void granted(int remote, const ScreenCastStreams& streams);
    /// Before the user consented it comes to nothing. Nothing follows.
    void failed(ScreenCastTalk::Outcome outcome, ScreenCastTalk::Step step);
    /// After his consent the session was ended. Nothing follows.
    void closed();

private slots:
    void onClosed();

private:
    using Next = std::function<void(const QVariantMap& results)>;

    void greet();
    void onGreeted(QDBusPendingCallWatcher* reply);
    void create();
    void select();
    void start();
    void open();
    void onOpened(QDBusPendingCallWatcher* reply);
    void useSession(const QString& handle);
    /// Goes on with `next` when that is granted.
    void ask(const QString& method, const QVariantList& arguments, const QVariantMap& options,
             const Next& next);
    void fail(Outcome outcome);

    const QString m_token;
    const int m_answerMs;
    Step m_step = Step::Greeting;
    bool m_isOver = false;
    bool m_hidesCursor = false;
    QString m_session;
    ScreenCastStreams m_streams;
};
