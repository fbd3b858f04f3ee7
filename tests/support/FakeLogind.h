#pragma once

#include "PrivateBus.h"
#include "StripSimulator.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QSocketNotifier>
#include <unistd.h>

/// As much of a log-in manager, and of a screen saver, as a session needs.
class FakeLogind : public QDBusVirtualObject
{
public:
    explicit FakeLogind(const PrivateBus& bus)
        : m_bus(bus.connection("logind"))
    {
        m_bus.registerVirtualObject("/org/freedesktop", this, QDBusConnection::SubPath);
        m_bus.registerService(kSaver);
    }
    ~FakeLogind() override { QDBusConnection::disconnectFromBus("logind"); }

    bool comes() { return m_bus.registerService(kService); }
    void goes() { m_bus.unregisterService(kService); }
    void prepareFor(const QString& what, bool begins)
    {
        isPreparing = begins;
        send(kPath, kService + ".Manager", "PrepareFor" + what, {begins});
    }
    void setLocked(bool locked)
    {
        isLocked = locked;
        send(kPath + "/session/_37", "org.freedesktop.DBus.Properties", "PropertiesChanged",
             {kService + ".Session", QVariantMap{{"LockedHint", locked}}, QStringList()});
    }
    void setSaverActive(bool active)
    {
        isSaverActive = active;
        send("/org/freedesktop/ScreenSaver", kSaver, "ActiveChanged", {active});
    }

    bool isLocked = false, isPreparing = false, isSaverActive = false, refuses = false;
    int held = 0, taken = 0; ///< inhibitors, now and in all
    int asked = 0;           ///< whether it still prepares for sleep
    double releasedMs = 0;   ///< when the last one was closed, in the strips' time

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (message.member() == "Inhibit" && refuses)
            return connection.send(message.createErrorReply(QDBusError::AccessDenied, "no"));
        QVariant answer(isSaverActive);
        if (message.member() == "Inhibit") {
            answer = inhibitor();
        } else if (message.member() == "GetSession") {
            answer = QVariant::fromValue(QDBusObjectPath(kPath + "/session/_37"));
        } else if (message.member() == "Get") {
            const bool aboutSleep = message.arguments().last() == "PreparingForSleep";
            asked += aboutSleep;
            answer = QVariant::fromValue(QDBusVariant(aboutSleep ? isPreparing : isLocked));
        }
        return connection.send(message.createReply(answer));
    }

private:
    QVariant inhibitor()
    {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            qFatal("no pipe");
        ++held;
        ++taken;
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
    const QString kSaver = "org.freedesktop.ScreenSaver";
    QDBusConnection m_bus;
};
