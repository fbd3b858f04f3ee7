#include "system/SessionWatch.h"

struct SessionWatch::Private
{
};

SessionWatch::SessionWatch(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

SessionWatch::~SessionWatch() = default;

void SessionWatch::readyForSleep() {}

bool SessionWatch::isScreenOff() const
{
    return false;
}
