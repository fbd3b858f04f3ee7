#pragma once

#include "hotkey/QHotkeyPrivate.h"
#include "support/PortalRequest_linux.h"

#include <QDBusServiceWatcher>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>

class QDBusMessage;

/// Shortcuts by the desktop's portal for them. What is registered counts as had until the portal has said
/// otherwise; all of one turn of the event loop are asked for together. The portal keeps them for ever and
/// tells them again (ListShortcuts); only where it does not is it asked to bind them, for then the desktop
/// may ask the user. What he refuses is asked for again only after a change of his own. A session takes one
/// request to bind, so a change is a new session. Which keys they have is the desktop's decision.
/// A native shortcut is the plain symbol of the key (KeySymbols_x11.h) and Qt's modifiers.
class PortalHotkeys : public QHotkeyPrivate
{
    Q_OBJECT

public:
    /// Says nothing on the bus before the first shortcut.
    PortalHotkeys();

    void allowQuestions() override;

protected:
    quint32 nativeKeycode(Qt::Key keycode, bool& ok) override;
    quint32 nativeKeypadKeycode(Qt::Key keycode, bool& ok) override;
    quint32 nativeModifiers(Qt::KeyboardModifiers modifiers, bool& ok) override;
    bool registerShortcut(QHotkey::NativeShortcut shortcut) override;
    bool unregisterShortcut(QHotkey::NativeShortcut shortcut) override;
    bool canRegister(QHotkey::NativeShortcut shortcut) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, long* result) override;

private slots:
    void onSignal(const QDBusMessage& message);

private:
    using Outcome = PortalRequest::Outcome;
    using Shortcuts = QMap<QString, QHotkey::NativeShortcut>; ///< by action

    template <typename Taker>
    void ask(const QString& method, const QVariantList& arguments, bool isForUser, Taker taker);
    void update();
    void open();
    void list();
    void bind();
    void onListed(const QVariant& listed);
    void onBound(Outcome outcome, const QVariant& bound);
    void take(const QVariant& shortcuts);
    void refuse(const QSet<QString>& ids);
    void fail(Outcome outcome);
    void endSession();
    void onOwnerChanged(const QString& oldOwner, const QString& newOwner);

    QDBusServiceWatcher m_portal;
    QTimer m_update;
    QTimer m_retry{this};
    QPointer<PortalRequest> m_request; ///< the one that is awaited
    QString m_session;                 ///< path; empty: none
    Shortcuts m_asked;                 ///< what the session is for
    bool m_isOpening = false;
    bool m_isSpent = false;                  ///< the session has had its request to bind
    bool m_isChange = false;                 ///< it follows one with other shortcuts
    bool m_mayAsk = false;                   ///< the desktop may ask the user
    bool m_hasToWait = false;                ///< for m_mayAsk
    QString m_obstacle;                      ///< why the portal cannot serve at present
    QSet<QHotkey::NativeShortcut> m_refused; ///< by the user
};
