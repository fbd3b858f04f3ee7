#pragma once

#include "PrivateBus.h"
#include "support/Portal_linux.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>

using PortalShortcuts = QVector<QPair<QString, QVariantMap>>;

/// The desktop's portal for shortcuts, which remembers what the user has granted.
class FakeShortcutsPortal : public QDBusVirtualObject
{
public:
    enum Answer { Grant, Refuse, End, Twice }; ///< the first three are the protocol's numbers

    explicit FakeShortcutsPortal(QDBusConnection bus)
        : m_bus(std::move(bus))
    {
        qDBusRegisterMetaType<QPair<QString, QVariantMap>>();
        qDBusRegisterMetaType<PortalShortcuts>();
        m_bus.registerVirtualObject(Portal::kPath, this, QDBusConnection::SubPath);
    }
    bool appear() { return m_bus.registerService(Portal::kService); }
    void vanish() { m_bus.unregisterService(Portal::kService); }

    QMap<QString, Answer> answers; ///< by method; default: Grant
    QMap<QString, QString> chosen; ///< the user's own keys, by action
    QString refused;               ///< an action that the user leaves out
    QStringList calls, closed;     ///< methods; sessions and requests
    PortalShortcuts asked, bound;
    QString session;

    void tell(const QString& signal, const QVariant& what, const QString& ofSession)
    {
        send(Portal::kPath, kInterface, signal,
             {QVariant::fromValue(QDBusObjectPath(ofSession)), what, quint64(1), QVariantMap()});
    }
    void endSession() { send(session, Portal::kSession, "Closed", {QVariantMap()}); }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        const QString method = message.member();
        if (message.interface() != kInterface) {
            closed += method == "Close" ? QStringList{message.path()} : QStringList();
            return true;
        }
        calls += method;
        const QVariantMap options = qdbus_cast<QVariantMap>(message.arguments().last());
        const QString request = Portal::kPath + "/request/" + options["handle_token"].toString();
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        const uint answer = answers.value(method) % Twice;
        if (method == "CreateSession")
            session = Portal::kPath + "/session/" + options["session_handle_token"].toString();
        if (method == "BindShortcuts") {
            asked = qdbus_cast<PortalShortcuts>(message.arguments().at(1));
            bound.clear();
            for (const auto& [id, properties] : answer == Grant ? asked : PortalShortcuts()) {
                if (id != refused)
                    bound.append({id, {{"trigger_description", chosen.value(id, "Ctrl+Alt+Shift+F10")}}});
            }
        }
        const QVariantMap results{{"session_handle", session}, {"shortcuts", QVariant::fromValue(bound)}};
        for (int times = answers.value(method) == Twice ? 2 : 1; times > 0; --times)
            send(request, Portal::kRequest, "Response", {answer, results});
        return true;
    }

private:
    void send(const QString& path, const QString& interface, const QString& signal,
              const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
        message.setArguments(arguments);
        m_bus.send(message);
    }

    const QString kInterface = "org.freedesktop.portal.GlobalShortcuts";
    QDBusConnection m_bus;
};
