#pragma once

#include <QObject>
#include <QStringList>
#include <memory>

/// The one privileged step of the program: lets this computer's users open the adapters of strips. The system
/// asks the administrator; a small helper beside the program does it. Main thread; nothing here waits.
class AccessGrant : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Idle,
        Pending,   ///< the system asks
        Late,      ///< likewise, but without any answer for long
        Cancelled, ///< the user said no
        Failed,    ///< it cannot be done so
        Granted
    };

    static constexpr int kLateMs = 60000;

    explicit AccessGrant(int lateMs = kLateMs, QObject* parent = nullptr);
    /// What is under way is given up.
    ~AccessGrant() override;

    /// Whether this system has such a step, and somebody who may be asked.
    static bool isPossible();
    /// What does the same in a terminal, for members of `group`. Empty where nothing has to be granted.
    static QStringList commands(const QString& group);
    /// The file of the rule that gives access to whoever sits at this computer; empty where there is none.
    static QString installedRule();
    /// What loads the adapters' driver in a terminal.
    static QStringList driverCommands();

    State state() const { return m_state; }
    /// Nothing happens while it is asked already.
    void request();
    /// The next trouble begins anew.
    void forget();

signals:
    void stateChanged();

private:
    void setState(State state);

    State m_state = State::Idle;
    struct Private;
    std::unique_ptr<Private> d;
};
