#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantMap>

class QDBusError;
class QDBusMessage;
class QDBusPendingCallWatcher;

/// One call of a portal's method whose result comes later, as the signal of a request object. Main thread.
/// Deleting it withdraws what is not answered; with it goes a dialog that may be open.
class PortalRequest : public QObject
{
    Q_OBJECT

public:
    enum class Outcome {
        Granted,
        Refused, ///< by the user
        Failed,  ///< ended otherwise, an error or nonsense
        Missing, ///< there is no portal, or none for this
        Gone     ///< the portal has left the bus meanwhile, or says nothing
    };
    /// How long the portal may take; a dialog has all the time of the user, but must have been taken note of.
    struct Patience
    {
        int answerMs = 30000; ///< it may be starting, and then waits for others that start
        bool forUser = false;
    };

    /// Calls with `arguments` and, behind them, `options`, to which a name for the request is added. Answers
    /// by finished(), never from within this call.
    PortalRequest(const QString& interface, const QString& method, const QVariantList& arguments,
                  const QVariantMap& options, Patience patience, QObject* parent);
    ~PortalRequest() override;

    /// What such an error says of the portal; for plain calls.
    static Outcome outcomeOf(const QDBusError& error);

signals:
    /// Once. `results` come from another program: nothing in them is sure.
    void finished(PortalRequest::Outcome outcome, const QVariantMap& results);

private slots:
    void onResponse(const QDBusMessage& message);

private:
    void onReply(QDBusPendingCallWatcher* reply);
    void finish(Outcome outcome, const QString& reason, const QVariantMap& results = {});

    const QString m_method;
    const bool m_isForUser;
    QString m_handle;
    QTimer m_patience;
    bool m_isOver = false;
};
