#pragma once

#include "support/capture/ScreenCastFeed_linux.h"

#include <QObject>
#include <memory>

/// The conversation with the desktop's screen-cast portal: asks the user once, keeps the token of his
/// consent, and offers the streams of one session with all the monitors that he picked. Main thread. Nothing
/// is said on the bus before the first request. A session that the user ends is asked for again only when he
/// wants; one that broke (the portal, the compositor or the media server was restarted) is restored by the
/// token as soon as there is somebody to ask.
class ScreenCastSession : public QObject
{
    Q_OBJECT

public:
    explicit ScreenCastSession(std::shared_ptr<ScreenCastFeed> feed, QObject* parent = nullptr);
    /// Closes the session.
    ~ScreenCastSession() override;

    void request(SourceRequest request);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
