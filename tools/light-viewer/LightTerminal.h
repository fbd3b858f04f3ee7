#pragma once

#include "GlowPicture.h"
#include "Terminal.h"
#include "TerminalCanvas.h"

#include <QElapsedTimer>

#include <memory>

/// Shows the lights in the terminal, or as a line of text every second where the output is none.
class LightTerminal
{
public:
    LightTerminal();

    void show(const QVector<LV_RGB>& colors);

private:
    void fit(int leds);

    std::unique_ptr<Terminal> m_terminal; ///< null for plain text
    TerminalCanvas m_canvas{1, 1};
    QVector<QByteArray> m_shown;
    std::unique_ptr<GlowPicture> m_glow;
    int m_leds = -1;
    QElapsedTimer m_sinceLine;
};
