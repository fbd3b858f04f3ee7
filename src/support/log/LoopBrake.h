#pragma once

#include <QString>

/// Keeps a figure that is measured for ever from filling the loop log: three lines of news, then one every
/// five minutes as long as nothing changes, or when it changes all the time. One object for each such line.
class LoopBrake
{
public:
    /// Whether the line is to be logged. A figure is news when it is off by more than a quarter, a text when
    /// it differs. `nowMs` is of a clock that never goes back.
    bool isDue(double figure, const QString& text = {}, qint64 nowMs = steadyMs());

private:
    static qint64 steadyMs();

    double m_figure = 0.0;
    QString m_text;
    int m_lines = 0; ///< of the same news
    qint64 m_lastMs = 0;
    qint64 m_hourMs = 0; ///< when the present one began
    int m_linesOfHour = 0;
};
