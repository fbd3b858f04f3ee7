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

    /// What the desktop is told of the action, where it keeps a list: a source text of the translation
    /// context "HotkeyDescription". Before the first combination.
    void setDescription(const QString& id, const QString& text) { m_descriptions.insert(id, text); }
    /// Gives the action a combination. False, with a log line, where the system refuses: the action then
    /// keeps the one it has; one without any has this one from when it can be had.
    bool setHotkey(const QString& id, Qt::Key key, Qt::KeyboardModifiers modifiers);
    /// Whether no action has the combination and the system would give it now. Tries it for real.
    bool isHotkeyFree(Qt::Key key, Qt::KeyboardModifiers modifiers);
    /// Why the action's combination does not work at present; None where it does.
    HotkeyTrouble trouble(const QString& id) const { return m_entries.value(id).trouble; }
    /// Those that work instead of the action's combination, in the desktop's words; empty where that does.
    QString desktopKeys(const QString& id) const { return m_entries.value(id).desktopKeys; }

public slots:
    /// A desktop that asks the user about shortcuts may do so from now on: he is there, or agreed before.
    void allowQuestions();
    /// Tries again what does not work at present; only a change is logged.
    void retry();
    void hotkeyTrigger(QString id);

signals:
    void hotkeyActived(QString id);
    void troubleChanged(QString id, HotkeyTrouble trouble);
    void desktopKeysChanged(QString id, QString keys);
    /// The desktop has asked the user, or remembers what he said.
    void userDecided(bool isGranted);

private:
    struct Entry
    {
        HotkeyBinding binding;
        QSharedPointer<QHotkey> hotkey;
        HotkeyTrouble trouble = HotkeyTrouble::None; ///< last told
        QString desktopKeys = {};                    ///< last told
    };

    void followPlatform();
    void tryAgain(const QString& id);
    void onRegisteredChanged(const QString& id);
    void followHotkey(const QString& id);

    QMap<QString, Entry> m_entries;
    QMap<QString, QString> m_descriptions; ///< by action
    QTimer m_retryTimer{this};
};
