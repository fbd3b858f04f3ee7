#include "effects/screenSync/subModes/LeftHalfScreen.h"

#include "effects/screenSync/ScreenBand.h"

LeftHalfScreen::LeftHalfScreen(const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
{
}

QVector<LV_RGB> LeftHalfScreen::frameToColors(cv::Mat frame)
{
    m_colors = bandColors(kLeftBand, frame, m_colors.size());
    return m_colors;
}
