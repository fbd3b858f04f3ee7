#include "effects/screenSync/subModes/RightHalfScreen.h"

#include "effects/screenSync/ScreenBand.h"

RightHalfScreen::RightHalfScreen(const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
{
}

QVector<LV_RGB> RightHalfScreen::frameToColors(cv::Mat frame)
{
    m_colors = bandColors(kRightBand, frame, m_colors.size());
    return m_colors;
}
