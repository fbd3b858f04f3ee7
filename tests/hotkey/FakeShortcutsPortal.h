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
        QVariantList arguments{QVariant::fromValue(QDBusObjectPath(ofSession)), what};
        if (signal != "ShortcutsChanged")
            arguments += {quint64(1), QVariantMap()};
        send(Portal::kPath, kInterface, signal, arguments);
    }
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
        QString place = message.service().mid(1);
        place = Portal::kPath + "/%1/" + place.replace('.', '_') + '/';
        const QString request = place.arg("request") + options["handle_token"].toString();
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        if (method == "CreateSession")
            session = place.arg("session") + options["session_handle_token"].toString();
        const Answer answer = answers.value(method);
        if (method == "BindShortcuts")
            askUser(qdbus_cast<PortalShortcuts>(message.arguments().at(1)), answer % Twice == Grant);
        const QVariantMap results{{"session_handle", session}, {"shortcuts", QVariant::fromValue(bound)}};
        for (int times = answer == Twice ? 2 : 1; times > 0; --times)
            send(request, Portal::kRequest, "Response", {uint(answer % Twice), results});
        return true;
    }

private:
    void askUser(const PortalShortcuts& shortcuts, bool isGranted)
    {
        asked = shortcuts;
        bound.clear();
        for (const auto& [id, properties] : asked) {
            if (isGranted && id != refused)
                bound.append({id, {{"trigger_description", chosen.value(id, "Ctrl+Alt+Shift+F10")}}});
        }
    }
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
