#pragma once

#include "support/capture/ScreenCastFeed_linux.h"

#include <QObject>
#include <memory>

/// How long things take with a portal, all in milliseconds.
struct ScreenCastPace
{
    int answerMs = 30000;    ///< an answer; a portal that is being started waits for others
    int dialogMs = 1000;     ///< with a token no dialog comes: one that does takes longer than this
    int leastAgainMs = 1000; ///< until what broke is tried again; doubled each time up to the most
    int mostAgainMs = 30000;
};

/// The conversation with the desktop's screen-cast portal: asks the user once, keeps the token of his
/// consent, and offers the streams of one session with all the monitors that he picked. Main thread. Nothing
/// is said on the bus before the first request. A session that the user ends is asked for again only when he
/// wants; one that broke (the portal, the compositor or the media server was restarted) is restored by the
/// token as soon as there is somebody to ask.
class ScreenCastSession : public QObject
{
    Q_OBJECT

public:
    explicit ScreenCastSession(std::shared_ptr<ScreenCastFeed> feed, QObject* parent = nullptr,
                               const ScreenCastPace& pace = {});
    /// Closes the session.
    ~ScreenCastSession() override;

    void request(SourceRequest request);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
