#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

class MediaSourceOptWidget;

/// Options of the peak effects: the source of the sound, nothing else.
class SFrmAudioPeakValues : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SFrmAudioPeakValues(QWidget* parent);

private:
    MediaSourceOptWidget* m_mediaSource = nullptr;
};
