#pragma once

#include <QObject>

/// The user's choice of capture back end. Main thread. Found through the application object's property
/// kProperty. A DeskDuplManager that finds one follows it, and the choice may be there before any capture;
/// it makes one of its own only where there is none.
class DeskCaptureOption : public QObject
{
    Q_OBJECT

public:
    /// Holds this object's address as an unsigned integer.
    static constexpr char kProperty[] = "runtime.options.deskCaptureOption";

    /// The object whose address the application's property holds; null without one.
    static DeskCaptureOption* current();

    explicit DeskCaptureOption(int totalOfMode, QObject* parent = nullptr);
    ~DeskCaptureOption() override;

    int curMode() const { return m_curMode; }
    /// Takes effect at once; a mode that does not exist is refused with a warning.
    void setCurMode(int mode);
    int totalOfMode() const { return m_totalOfMode; }

signals:
    void curModeChanged(int mode);

private:
    const int m_totalOfMode;
    int m_curMode = 0;
};
