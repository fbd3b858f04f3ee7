#include "effects/dynamicMusic/PeakValues/AudioPeakValues.h"

#include <QDateTime>
#include <QDebug>
#include <algorithm>
#include <cmath>

namespace {

int numberIn(const QString& effectId)
{
    return effectId.mid(effectId.lastIndexOf(u'_') + 1).toInt();
}

/// What does not parse, or is no number after all, is silence.
float firstPeak(const QVector<QVector<QString>>& peaks)
{
    const float peak = peaks.first().value(0).toFloat();
    return std::isfinite(peak) ? peak : 0.0F;
}

} // namespace

AudioPeakValues::AudioPeakValues(const EffectWorkerOptions& options, QObject* parent)
    : AbsMusicEffect(parent)
    , m_options(options)
    , m_variant(PeakBars::variantOf(numberIn(options.id)))
{
    qRegisterMetaType<QVector<QVector<QString>>>("QVector<QVector<QString>>");
}

EffectWorkerOptions AudioPeakValues::options()
{
    return m_options;
}

int AudioPeakValues::load(const ControlOptions& ctlOptions)
{
    const int result = AbsMusicEffect::load(ctlOptions);
    if (result != 0)
        return result;
    readJson(ctlOptions.model, ctlOptions.id);
    if (m_ledCount == 0 || m_keyNum == 0)
        m_ledCount = m_keyNum = nbLeds();
    dropSegmentsOutside();
    if (m_musicSegments.isEmpty())
        addDefaultSegments();
    return 0;
}

void AudioPeakValues::dropSegmentsOutside()
{
    // A segment may begin or end beyond the strip: with direction 1 the last LED is reached in no other way.
    const auto outside = [this](const PeakSegment& segment) {
        const auto [first, last] = std::minmax(segment.start, segment.stop);
        const bool hasLeds = first <= m_ledCount && last >= 1;
        if (hasLeds && first >= -PeakBars::kFarthest && last <= PeakBars::kFarthest)
            return false;
        qWarning() << "[AudioPeakValues]: The segment" << segment.id << "is illegal:" << segment.start << "to"
                   << segment.stop << "of" << m_ledCount;
        return true;
    };
    m_musicSegments.erase(std::remove_if(m_musicSegments.begin(), m_musicSegments.end(), outside),
                          m_musicSegments.end());
}

void AudioPeakValues::addDefaultSegments()
{
    const int half = m_ledCount / 2;
    m_musicSegments = {{1, 1, half, 0}, {2, half + 1, m_ledCount, 1}};
}

void AudioPeakValues::unload()
{
    AbsMusicEffect::unload();
}

void AudioPeakValues::peakValuesChanged(QVector<QVector<QString>> peaks)
{
    if (peaks.isEmpty())
        return;
    const float peak = firstPeak(peaks);
    QVector<LV_RGB> colors(m_ledCount);
    switch (m_variant.paint) {
    case PeakBars::Paint::Bands: {
        const qint64 seconds = QDateTime::currentSecsSinceEpoch();
        for (const PeakSegment& segment : qAsConst(m_musicSegments))
            PeakBars::drawBands(colors, segment, peak, m_variant, seconds);
        break;
    }
    case PeakBars::Paint::Walk:
        m_walk.step();
        for (const PeakSegment& segment : qAsConst(m_musicSegments))
            PeakBars::drawPlain(colors, segment, peak, m_walk.color());
        break;
    case PeakBars::Paint::WholeStrip:
        m_walk.step();
        std::fill_n(colors.begin(), std::min(m_keyNum, colors.size()), m_walk.color());
        break;
    case PeakBars::Paint::Nothing:
        break;
    }
    PeakBars::dim(colors, peak, m_variant.floor);
    emit updateColors(colors);
}
