#include "effects/screenSync/subModes/TopHalfScreen.h"

#include "effects/screenSync/ScreenBand.h"

TopHalfScreen::TopHalfScreen(const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
{
}

QVector<LV_RGB> TopHalfScreen::frameToColors(cv::Mat frame)
{
    m_colors = bandColors(kTopBand, frame, m_colors.size());
    return m_colors;
}
