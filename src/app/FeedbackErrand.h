#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

class FeedbackManager;
class FeedbackProgress;
class NetRCManager;
class QWidget;

/// A message of the user's on its way to the service or into a file: gathered, then sent or kept, and a box
/// of the window's tells how it went. What takes over a second shows its progress and can be cancelled, about
/// which nothing is said. One at a time; no matter what becomes of the dialog that the message came from.
/// Main thread.
class FeedbackErrand : public QObject
{
    Q_OBJECT

public:
    /// All three outlive it.
    FeedbackErrand(FeedbackManager& feedback, NetRCManager& net, QWidget& window);
    ~FeedbackErrand() override;

    void send(const QString& message, const QString& contact);
    void save(const QString& message, const QString& contact, const QString& file);
    /// Ends what is under way as soon as that can be, and nothing of it shows any more.
    void cancel();

private:
    enum class Step { None, Gathering, Sending };

    void start(const QString& message, const QString& contact, const QString& file);
    void onZipped(const QString& path, const QString& error);
    void sendArchive();
    void showProgress(int percent);
    void openProgressBox();
    void clearScreen();
    /// False when the user has cancelled: then nobody is told.
    bool end();

    FeedbackManager& m_feedback;
    NetRCManager& m_net;
    QWidget& m_window;
    Step m_step = Step::None;
    QString m_file; ///< to save to; empty: it is to be sent
    bool m_isCancelled = false;
    bool m_isCursorShown = false; ///< the waiting one, until there is something to look at
    int m_percent = -1;
    QTimer m_patience;
    QPointer<FeedbackProgress> m_box;
};
