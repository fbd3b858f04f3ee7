#pragma once

#include "app/HotkeyBinding.h"
#include "viewModels/HotkeyTrouble.h"

#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QTimer>

class QHotkey;

/// Keeps a system-wide shortcut for each hotkey action, by action id, and tells which one was pressed. One
/// that cannot be had, or is lost, is tried again: by retry(), and every 30 s while it may become free.
/// Stores nothing. Main thread.
class HotKeyManager : public QObject
{
    Q_OBJECT

public:
    explicit HotKeyManager(QObject* parent = nullptr);

    /// Gives the action a combination. False, with a log line, where the system refuses: the action then
    /// keeps the one it has; one without any has this one from when it can be had.
    bool setHotkey(const QString& id, Qt::Key key, Qt::KeyboardModifiers modifiers);
    /// Whether no action has the combination and the system would give it now. Tries it for real.
    bool isHotkeyFree(Qt::Key key, Qt::KeyboardModifiers modifiers);
    /// Why the action's combination does not work at present; None where it does.
    HotkeyTrouble trouble(const QString& id) const { return m_entries.value(id).trouble; }

public slots:
    /// Tries again what does not work at present; only a change is logged.
    void retry();
    void hotkeyTrigger(QString id);

signals:
    void hotkeyActived(QString id);
    void troubleChanged(QString id, HotkeyTrouble trouble);

private:
    struct Entry
    {
        HotkeyBinding binding;
        QSharedPointer<QHotkey> hotkey;
        HotkeyTrouble trouble = HotkeyTrouble::None; ///< last told
    };

    void tryAgain(const QString& id);
    void onRegisteredChanged(const QString& id);
    void followHotkey(const QString& id);

    QMap<QString, Entry> m_entries;
    QTimer m_retryTimer{this};
};
