#pragma once

#include "effects/dynamicMusic/AbsMusicEffect.h"
#include "effects/dynamicMusic/PeakValues/ColorWalk.h"
#include "effects/dynamicMusic/PeakValues/PeakBars.h"

namespace Json {
class Value;
}

/// Level bars that follow the peak of the sound. One class for eight effects: the number behind the last "_"
/// of the effect id chooses how the bars look. Where the bars lie comes from a file of the device or of its
/// model; without one they grow from the middle to both ends.
class AudioPeakValues : public AbsMusicEffect
{
    Q_OBJECT

public:
    Q_INVOKABLE AudioPeakValues(const EffectWorkerOptions& options, QObject* parent);

    EffectWorkerOptions options() override;

public slots:
    int load(const ControlOptions& ctlOptions) override;
    void unload() override;
    /// Emits one picture, unless there is no channel at all.
    void peakValuesChanged(QVector<QVector<QString>> peaks) override;

protected:
    void onCapturerBound() override {}

private:
    void readJson(const QString& model, const QString& id);
    void readKeyArray(const Json::Value& root) const;
    void readKeyMusic(const Json::Value& root);
    void dropSegmentsOutside();
    void addDefaultSegments();

    EffectWorkerOptions m_options;
    int m_ledCount = 255; ///< length of the emitted list
    QVector<PeakSegment> m_musicSegments;
    int m_widthSize = 20;
    int m_heightSize = 15;
    int m_keyNum = 0;
    int m_keySpace = 5;
    ColorWalk m_walk;
    PeakBars::Variant m_variant;
};
