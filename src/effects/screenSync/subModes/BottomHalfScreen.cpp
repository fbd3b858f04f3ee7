#include "effects/screenSync/subModes/BottomHalfScreen.h"

#include "effects/screenSync/ScreenBand.h"

BottomHalfScreen::BottomHalfScreen(const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
{
}

QVector<LV_RGB> BottomHalfScreen::frameToColors(cv::Mat frame)
{
    m_colors = bandColors(kBottomBand, frame, m_colors.size());
    return m_colors;
}
