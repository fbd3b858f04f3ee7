#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMap>
#include <QObject>

/// A panel that shows notifiers; the watcher is there before any panel is.
class NotifierPanel : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_isShown)

public:
    explicit NotifierPanel(const QString& address)
        : m_bus(QDBusConnection::connectToBus(address, "panel"))
    {
        m_bus.registerObject("/StatusNotifierWatcher", this, QDBusConnection::ExportAllContents);
        isWatching = m_bus.registerService("org.kde.StatusNotifierWatcher");
    }
    ~NotifierPanel() override { QDBusConnection::disconnectFromBus("panel"); }

    void show()
    {
        m_isShown = true;
        emit StatusNotifierHostRegistered();
    }
    void clickItem() const
    {
        QDBusMessage click = QDBusMessage::createMethodCall(item, "/StatusNotifierItem",
                                                            "org.kde.StatusNotifierItem", "Activate");
        m_bus.send(click << 0 << 0);
    }
    /// The menu's entries by their text, as they are now.
    QMap<QString, int> menu() const
    {
        const QDBusMessage layout =
            m_bus.call(toMenu("GetLayout") << 0 << -1 << QStringList{"label"}, QDBus::Block, kMenuMs);
        QMap<QString, int> entries;
        if (layout.type() == QDBusMessage::ReplyMessage)
            collect(layout.arguments().at(1).value<QDBusArgument>(), entries);
        return entries;
    }
    void choose(const QString& entry) const
    {
        const QDBusVariant nothing(0);
        m_bus.send(toMenu("Event") << menu().value(entry) << "clicked" << QVariant::fromValue(nothing) << 0U);
    }
    bool isWatching = false;
    QString item;

public slots:
    void RegisterStatusNotifierItem(const QString& service) { item = service; }

signals:
    void StatusNotifierHostRegistered();

private:
    QDBusMessage toMenu(const char* method) const
    {
        return QDBusMessage::createMethodCall(item, "/MenuBar", "com.canonical.dbusmenu", method);
    }
    static void collect(const QDBusArgument& item, QMap<QString, int>& entries)
    {
        int id = 0;
        QVariantMap properties;
        item.beginStructure();
        item >> id >> properties;
        if (properties.contains("label"))
            entries[properties["label"].toString()] = id;
        item.beginArray();
        while (!item.atEnd()) {
            QDBusVariant child;
            item >> child;
            collect(child.variant().value<QDBusArgument>(), entries);
        }
        item.endArray();
        item.endStructure();
    }

    static constexpr int kMenuMs = 20000;
    QDBusConnection m_bus;
    bool m_isShown = false;
};
