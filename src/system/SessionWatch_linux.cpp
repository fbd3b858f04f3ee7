#include "system/SessionWatch.h"

#include "system/Logind_linux.h"
#include "system/ScreenSavers_linux.h"

#include <QDebug>
#include <QFileInfo>
#include <QTimer>

struct SessionWatch::Private
{
    std::unique_ptr<Logind> logind;
    std::unique_ptr<ScreenSavers> screenSavers;
    bool isScreenOff = false;
};

namespace {

/// Without an address the library would start a bus.
bool hasSessionBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace

SessionWatch::SessionWatch(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    const auto update = [this] {
        const bool off =
            (d->logind && d->logind->isLocked()) || (d->screenSavers && d->screenSavers->isActive());
        if (std::exchange(d->isScreenOff, off) != off)
            emit screenOffChanged(off);
    };
    // The start need not wait for a bus.
    QTimer::singleShot(0, this, [this, update] {
        const QDBusConnection system = QDBusConnection::systemBus();
        if (system.isConnected()) {
            d->logind = std::make_unique<Logind>(system);
            connect(d->logind.get(), &Logind::aboutToSleep, this, &SessionWatch::aboutToSleep);
            connect(d->logind.get(), &Logind::resumed, this, [this] {
                if (d->screenSavers)
                    d->screenSavers->ask();
                emit resumed();
            });
            connect(d->logind.get(), &Logind::aboutToShutDown, this, &SessionWatch::aboutToShutDown);
            connect(d->logind.get(), &Logind::lockedChanged, this, update);
        }
        const QDBusConnection session =
            hasSessionBus() ? QDBusConnection::sessionBus() : QDBusConnection(QString());
        if (session.isConnected()) {
            d->screenSavers = std::make_unique<ScreenSavers>(session);
            connect(d->screenSavers.get(), &ScreenSavers::activeChanged, this, update);
        }
    });
}

SessionWatch::~SessionWatch() = default;

void SessionWatch::readyForSleep()
{
    if (d->logind)
        d->logind->release();
}

bool SessionWatch::isScreenOff() const
{
    return d->isScreenOff;
}
