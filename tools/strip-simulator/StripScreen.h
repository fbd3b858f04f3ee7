#pragma once

#include "GlowPicture.h"
#include "LedMap.h"
#include "Terminal.h"
#include "TerminalCanvas.h"

#include <QImage>
#include <QStringList>

#include <memory>

/// Draws strips in the terminal: one whose LED positions are known as light around a screen, others as bars.
class StripScreen
{
public:
    struct View
    {
        QString label;
        QStringList facts; ///< short texts, the most important first
        QVector<LV_RGB> colors;
    };

    /// What else there is to see.
    struct Surroundings
    {
        QImage picture; ///< of the screen that the light is behind; null for a dark one
        QStringList facts;
        QString keys;
    };

    explicit StripScreen(const LedMap& map);

    void draw(const QVector<View>& strips, const Surroundings& around);

private:
    void fitTerminal();
    void layOutFrame();
    void drawAroundScreen(const View& strip, const Surroundings& around);
    void drawScreen(const QImage& picture);
    void drawTexts(const QStringList& texts, bool onPanel);
    void drawBars(const QVector<View>& strips);
    int drawBar(int row, const View& strip, bool tall);
    void drawKeys(const QString& more);

    Terminal m_terminal;
    LedMap m_map;
    TerminalCanvas m_canvas{1, 1};
    QVector<QByteArray> m_shown;
    std::unique_ptr<GlowPicture> m_glow; ///< null when bars are drawn
    QRect m_screen;                      ///< the dark screen in front of the light, in pixels
};
