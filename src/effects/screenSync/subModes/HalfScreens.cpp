#include "effects/screenSync/subModes/HalfScreens.h"

HalfScreen::HalfScreen(const ScreenBand& band, const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
    , m_band(band)
{
}

QVector<LV_RGB> HalfScreen::frameToColors(cv::Mat frame)
{
    m_colors = bandColors(m_band, frame, m_colors.size());
    return m_colors;
}

std::vector<cv::Rect> HalfScreen::lookedAt(const cv::Size& frame)
{
    return {bandPlace(m_band, frame, m_colors.size())};
}
