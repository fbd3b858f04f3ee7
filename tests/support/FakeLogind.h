#pragma once

#include "PrivateBus.h"
#include "StripSimulator.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QSocketNotifier>
#include <unistd.h>

/// As much of a log-in manager, and of a screen saver, as a session needs, on a bus of their own.
class FakeLogind : public QDBusVirtualObject
{
public:
    FakeLogind()
    {
        m_bus.registerVirtualObject("/org/freedesktop", this, QDBusConnection::SubPath);
        m_bus.registerService(kSaver);
        comes();
    }
    ~FakeLogind() override { QDBusConnection::disconnectFromBus("logind"); }

    void comes() { m_bus.registerService(kService); }
    void goes() { m_bus.unregisterService(kService); }
    void prepareFor(const QString& what, bool begins)
    {
        send(kPath, kService + ".Manager", "PrepareFor" + what, {isPreparing = begins});
    }
    void setLocked(bool locked)
    {
        send(kSession, "org.freedesktop.DBus.Properties", "PropertiesChanged",
             {kService + ".Session", QVariantMap{{"LockedHint", isLocked = locked}}, QStringList()});
    }
    void setSaverActive(bool active)
    {
        send("/org/freedesktop/ScreenSaver", kSaver, "ActiveChanged", {isSaverActive = active});
    }

    PrivateBus bus;
    bool isLocked = false, isPreparing = false, isSaverActive = false, refuses = false;
    int held = 0;          ///< inhibitors
    double releasedMs = 0; ///< when the last one was closed, in the strips' time
    int asked = 0;         ///< whether it still prepares for sleep

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const auto property = [](bool value) { return QVariant::fromValue(QDBusVariant(value)); };
        const QString word = message.arguments().value(1, message.member()).toString();
        if (message.member() == "Inhibit" && refuses)
            return connection.send(message.createErrorReply(QDBusError::AccessDenied, "no"));
        asked += word == "PreparingForSleep";
        return connection.send(message.createReply(message.member() == "Inhibit" ? inhibitor()
                                                   : message.member() == "GetSession"
                                                       ? QVariant::fromValue(QDBusObjectPath(kSession))
                                                   : word == "PreparingForSleep" ? property(isPreparing)
                                                   : word == "LockedHint"        ? property(isLocked)
                                                                                 : QVariant(isSaverActive)));
    }

private:
    QVariant inhibitor()
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            qFatal("no pipe");
        ++held;
        auto* end = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
        connect(end, &QSocketNotifier::activated, this, [this, end] { // nobody has the other end any more
            releasedMs = StripSimulator::nowMs();
            --held;
            end->setEnabled(false);
            ::close(int(end->socket()));
        });
        QDBusUnixFileDescriptor given;
        given.giveFileDescriptor(ends[1]);
        return QVariant::fromValue(given);
    }
    void send(const QString& path, const QString& interface, const QString& name, const QVariantList& values)
    {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(values);
        m_bus.send(signal);
    }

    const QString kService = "org.freedesktop.login1", kPath = "/org/freedesktop/login1";
    const QString kSession = kPath + "/session/_37", kSaver = "org.freedesktop.ScreenSaver";
    QDBusConnection m_bus = bus.start() ? bus.connection("logind") : QDBusConnection("");
};
