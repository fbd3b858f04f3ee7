#pragma once

#include "PrivateBus.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QPoint>
#include <QSize>
#include <QStringList>
#include <QVariantMap>

/// A stream as the portal tells of it: "id", "position" (QPoint), "size" (QSize), each where it is known.
struct PortalStream
{
    uint node = 0; ///< of the media server
    QVariantMap properties;
};
Q_DECLARE_METATYPE(PortalStream)

/// A desktop's portal for screens and the user in front of it, who consents at once unless told otherwise.
/// One program at a time speaks with it. Needs the event loop of its thread.
class ScreenPortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// What goes wrong with a call.
    enum class Fault {
        None,
        Error,
        Silent, ///< no answer ever
        Twice,  ///< answered twice
        Refused,
        Ended, ///< neither granted nor refused
        Nonsense,
        OwnPath,   ///< answers somewhere else than was agreed on
        Dies,      ///< before the result comes
        DiesAtOnce ///< before it answers
    };
    Q_ENUM(Fault)

    /// The bus lives longer.
    explicit ScreenPortal(const PrivateBus& bus);
    ~ScreenPortal() override;

    // What it is like, from the next call on.
    QList<PortalStream> streams{
        {42, {{"id", "left"}, {"position", QPoint(0, 0)}, {"size", QSize(640, 480)}}}};
    QString socket;               ///< of the media server to hand out; none: one that says nothing
    QHash<QString, Fault> faults; ///< by method
    bool givesTokens = true;      ///< as version 4 does
    bool chokesOnTokens = false;  ///< fails with one instead of asking the user
    bool isUserSlow = false;      ///< a dialog stays open until answerDialog()
    QString goodToken;            ///< the last one given; another one leads to a dialog

    // What has come of it.
    int dialogs = 0;
    int openSessions = 0;
    QStringList calls;     ///< methods, in their order
    QVariantMap selection; ///< the last options of SelectSources

    /// Takes its name on the bus.
    bool come();
    /// As a crash would: whoever waits gets nothing, sessions are forgotten.
    void leave();
    bool isThere() const { return !m_name.isEmpty(); }
    QDBusConnection connection() const { return QDBusConnection(m_name); }
    bool isDialogOpen() const { return m_start.type() == QDBusMessage::MethodCallMessage; }
    /// 0: consent to what is asked, 1: refuse, 2: end it otherwise. Does nothing without a dialog.
    void answerDialog(uint response);
    /// The user ends the sharing. Does nothing when there is none.
    void endSession();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;

signals:
    void asked();            ///< a dialog has opened
    void answered(uint how); ///< by the user, see answerDialog()
    void restored();         ///< a consent of his counts again
    void closed();           ///< the program needs its session no more, or takes back its question

private:
    void tell(const QString& client, const QString& path, const char* kind, const char* signal,
              const QVariantList& arguments);
    void onRequest(const QDBusMessage& call, const QDBusConnection& connection, Fault fault);
    QVariantMap consent();
    void respond(const QDBusMessage& call, uint response, const QVariantMap& results,
                 Fault fault = Fault::None);
    void onClose(const QString& path);
    QDBusMessage replyWithRemote(const QDBusMessage& call) const;

    const PrivateBus& m_bus;
    QString m_name;       ///< of the connection; empty while it is not there
    QString m_client;     ///< who spoke last
    QString m_session;    ///< the open one's path
    QDBusMessage m_start; ///< what the open dialog is to answer
    int m_times = 0;
    int m_tokens = 0;
};
