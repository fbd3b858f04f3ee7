#pragma once

#include <QObject>
#include <QStringList>

/// The user's choice of capture back end. Main thread. Found through the application object's property
/// kProperty while a DeskDuplManager exists.
class DeskCaptureOption : public QObject
{
    Q_OBJECT

public:
    /// Holds this object's address as an unsigned integer.
    static constexpr char kProperty[] = "runtime.options.deskCaptureOption";

    /// The object whose address the application's property holds; null without one.
    static DeskCaptureOption* current();

    explicit DeskCaptureOption(QStringList modeNames, QObject* parent = nullptr);
    ~DeskCaptureOption() override;

    int curMode() const { return m_curMode; }
    /// Takes effect at once; a mode that does not exist is refused with a warning.
    void setCurMode(int mode);
    int totalOfMode() const { return m_modeNames.size(); }
    /// Empty for a mode that does not exist.
    QString modeName(int mode) const { return m_modeNames.value(mode); }

signals:
    void curModeChanged(int mode);

private:
    QStringList m_modeNames;
    int m_curMode = 0;
};
