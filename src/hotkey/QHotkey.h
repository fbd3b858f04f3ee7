#pragma once

#include "viewModels/HotkeyTrouble.h"

#include <QKeySequence>
#include <QLoggingCategory>
#include <QObject>

Q_DECLARE_LOGGING_CATEGORY(logHotkey)

/// One system-wide keyboard shortcut, which works while the application has no focus. Several objects may
/// share a shortcut. Usable on any thread: calls that ask the platform, and the end of a registered object,
/// wait for the GUI thread's event loop, so other threads must be done with theirs before it ends. Without an
/// application every registration fails.
class QHotkey : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool registered READ isRegistered WRITE setRegistered NOTIFY registeredChanged)
    Q_PROPERTY(QKeySequence shortcut READ shortcut WRITE setShortcut RESET resetShortcut)

public:
    /// What the platform knows a shortcut by.
    struct NativeShortcut
    {
        NativeShortcut() = default;
        NativeShortcut(quint32 nativeKey, quint32 nativeModifier)
            : key(nativeKey)
            , modifier(nativeModifier)
            , valid(true)
        {
        }
        bool operator==(const NativeShortcut& other) const
        {
            return key == other.key && modifier == other.modifier && valid == other.valid;
        }
        bool operator!=(const NativeShortcut& other) const { return !(*this == other); }

        quint32 key = 0;      ///< native key code
        quint32 modifier = 0; ///< native modifier mask
        bool valid = false;
    };

    explicit QHotkey(QObject* parent = nullptr);
    ~QHotkey() override;

    bool isRegistered() const { return m_registered; }
    /// Empty while unset, or set by its native form.
    QKeySequence shortcut() const;
    /// What the shortcut is for, where the desktop keeps a list of them: a name that stays the same for ever,
    /// and a text for the user, a source text of the translation context "HotkeyDescription". To be set
    /// before it is registered.
    void setAction(const QString& id, const QString& description);
    NativeShortcut currentNativeShortcut() const { return m_nativeShortcut; }
    /// Why the last registration failed, or a registered shortcut has no keys; None where it works.
    HotkeyTrouble trouble() const { return m_trouble; }
    /// The keys that the desktop has given it instead of those asked for, in the desktop's words; else empty.
    QString desktopKeys() const { return m_desktopKeys; }

public slots:
    /// False where the platform refuses. A shortcut that it will not give back counts as unregistered too.
    bool setRegistered(bool registered);
    /// Each of these fails on a registered object unless `autoRegister` is set, which registers the new
    /// shortcut at once. After a failure the object is unset or unregistered, never half-changed.
    bool setShortcut(QKeySequence shortcut, bool autoRegister = false);
    bool setShortcut(Qt::Key keyCode, Qt::KeyboardModifiers modifiers, bool autoRegister = false);
    bool setNativeShortcut(QHotkey::NativeShortcut nativeShortcut, bool autoRegister = false);
    bool resetShortcut();

signals:
    /// These two come queued, on the object's own thread, and only while the shortcut is registered.
    void activated();
    void released();
    /// Within the call that changes it, on the GUI thread; queued where the platform takes a shortcut away.
    void registeredChanged(bool registered);
    /// What the desktop has made of a registered shortcut is another: trouble() and desktopKeys(). Queued.
    void desktopKeysChanged();

private:
    friend class QHotkeyPrivate;

    bool makeChangeable(bool autoRegister);
    void unset();

    Qt::Key m_keyCode = Qt::Key_unknown; ///< unset
    Qt::KeyboardModifiers m_modifiers;
    NativeShortcut m_nativeShortcut;
    // Written by the singleton, on this object's own thread or while that waits.
    bool m_registered = false;
    HotkeyTrouble m_trouble = HotkeyTrouble::None;
    QString m_desktopKeys;
    QString m_actionId;
    QString m_description;
};

uint qHash(const QHotkey::NativeShortcut& shortcut, uint seed = 0);

Q_DECLARE_METATYPE(QHotkey::NativeShortcut)
