#pragma once

#include "hotkey/QHotkey.h"

#include <QAbstractNativeEventFilter>
#include <QHash>
#include <QMultiHash>
#include <QPair>
#include <memory>

/// The process-wide keeper of all shortcuts: registers them with the platform, once each, and tells every
/// QHotkey of one when its key goes down and up. Lives on the GUI thread; the wrappers may be called on any.
class QHotkeyPrivate : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Made at first use, on the GUI thread, and ends with the application. Null without one.
    static QHotkeyPrivate* instance();

    QHotkeyPrivate();
    ~QHotkeyPrivate() override;

    /// Invalid where the platform has no such key or modifier.
    QHotkey::NativeShortcut nativeShortcut(Qt::Key keycode, Qt::KeyboardModifiers modifiers);
    /// False, with a log line, where the platform refuses.
    bool addShortcut(QHotkey* hotkey);
    /// False where the hotkey was not there, or, with a log line, where the platform refuses.
    bool removeShortcut(QHotkey* hotkey);
    /// From now on the combination means this shortcut, whatever the platform would make of it.
    bool addMapping(Qt::Key keycode, Qt::KeyboardModifiers modifiers, QHotkey::NativeShortcut nativeShortcut);
    /// Why the combination could not be taken now; None where it could. Tries it with the platform and logs
    /// nothing. On the GUI thread.
    HotkeyTrouble obstacleTo(Qt::Key keycode, Qt::KeyboardModifiers modifiers);
    /// The user is there, or has agreed before: a desktop that asks him about shortcuts may do so from now
    /// on.
    virtual void allowQuestions() {}

signals:
    /// What was refused may be had now.
    void servesAgain();
    /// The desktop has asked the user, or remembers what he said.
    void userDecided(bool isGranted);

protected:
    // What a platform does; all on the GUI thread. A refusal sets `error` and `trouble`.
    virtual quint32 nativeKeycode(Qt::Key keycode, bool& ok) = 0;
    /// Of a combination with Qt::KeypadModifier, which the other modifiers come without.
    virtual quint32 nativeKeypadKeycode(Qt::Key keycode, bool& ok) { return nativeKeycode(keycode, ok); }
    virtual quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) = 0;
    virtual bool registerShortcut(QHotkey::NativeShortcut shortcut) = 0;
    virtual bool unregisterShortcut(QHotkey::NativeShortcut shortcut) = 0;
    /// Whether it could be registered, though nobody has just asked for it.
    virtual bool canRegister(QHotkey::NativeShortcut shortcut)
    {
        return registerShortcut(shortcut) && unregisterShortcut(shortcut);
    }

    /// What the registered shortcuts are for, sorted by id; without those that are for nothing in particular.
    struct Action
    {
        QString id; ///< never empty
        QString description;
        QHotkey::NativeShortcut shortcut;
    };
    QVector<Action> actions() const;

    // What a platform tells.
    void activateShortcut(QHotkey::NativeShortcut shortcut);
    void releaseShortcut(QHotkey::NativeShortcut shortcut);
    /// The platform has taken a registered shortcut away: its hotkeys learn that they are unregistered, and
    /// the present `trouble`, at their next turn of the event loop.
    void loseShortcut(QHotkey::NativeShortcut shortcut);
    /// The desktop has given a registered shortcut these keys instead of its own, or, with a trouble, none.
    void setDesktopKeys(QHotkey::NativeShortcut shortcut, const QString& keys, HotkeyTrouble why);

    QString error; ///< the platform's words for its last refusal
    HotkeyTrouble trouble = HotkeyTrouble::None;

private:
    static QHotkeyPrivate* makeOrFind();
    static void end();

    Q_INVOKABLE QHotkey::NativeShortcut nativeShortcutInvoked(Qt::Key keycode,
                                                              Qt::KeyboardModifiers modifiers);
    Q_INVOKABLE bool addShortcutInvoked(QHotkey* hotkey);
    Q_INVOKABLE bool removeShortcutInvoked(QHotkey* hotkey);
    Q_INVOKABLE bool addMappingInvoked(Qt::Key keycode, Qt::KeyboardModifiers modifiers,
                                       QHotkey::NativeShortcut nativeShortcut);

    Qt::ConnectionType connectionType() const;
    void tell(QHotkey::NativeShortcut shortcut, void (QHotkey::*signal)());
    /// Runs on the thread of each of the shortcut's hotkeys, for those that have it still.
    template <typename Function>
    void forEachQueued(QHotkey::NativeShortcut shortcut, Function news);

    static QHotkeyPrivate* s_instance;
    QHash<QPair<Qt::Key, uint>, QHotkey::NativeShortcut> m_mapping; ///< by key and modifiers
    QMultiHash<QHotkey::NativeShortcut, QHotkey*> m_shortcuts;      ///< those registered
};

/// The platform's own: one source per system.
std::unique_ptr<QHotkeyPrivate> makeHotkeyPlatform();
