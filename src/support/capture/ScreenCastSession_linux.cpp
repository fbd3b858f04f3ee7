#include "support/capture/ScreenCastSession_linux.h"

struct ScreenCastSession::Private
{
    std::shared_ptr<ScreenCastFeed> feed;
};

ScreenCastSession::ScreenCastSession(std::shared_ptr<ScreenCastFeed> feed, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->feed = std::move(feed);
}

ScreenCastSession::~ScreenCastSession() = default;

void ScreenCastSession::request(SourceRequest) {}
