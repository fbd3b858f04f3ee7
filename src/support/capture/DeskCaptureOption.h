#pragma once

#include "support/SharedLibrary.h"
#include "support/capture/CaptureModes.h"

#include <QObject>

/// The way in which the desktop is read: the user's choice, which is kept, else the session's own. Main
/// thread. Found through the application object's property kProperty. A DeskDuplManager that finds one
/// follows it, and the choice may be there before any capture; it makes one of its own only where there is
/// none.
class LUMIVAR_SUPPORT_EXPORT DeskCaptureOption : public QObject
{
    Q_OBJECT

public:
    /// Holds this object's address as an unsigned integer.
    static constexpr char kProperty[] = "runtime.options.deskCaptureOption";

    /// The object whose address the application's property holds; null without one.
    static DeskCaptureOption* current();

    explicit DeskCaptureOption(const QList<CaptureMode>& modes = captureModes(), QObject* parent = nullptr);
    ~DeskCaptureOption() override;

    int curMode() const { return m_curMode; }
    /// The user's choice: takes effect and is stored at once; a mode that does not exist is refused with a
    /// warning.
    void setCurMode(int mode);
    int totalOfMode() const { return m_modes.size(); }
    /// What the mode is, in the language of the moment.
    QString modeDesc(int mode) const;

signals:
    void curModeChanged(int mode);

private:
    const QList<CaptureMode> m_modes;
    int m_curMode;
};
