#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

class MMSOptWidget;
class SFrmMoodShadow;

/// Options of the mood that breathes with the music: the source of the sound and the strength, below them
/// those of the mood. Properties: those of both.
class MM2SOptWid : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit MM2SOptWid(QWidget* parent);

protected:
    bool event(QEvent* event) override;

private:
    void alignLabels();

    MMSOptWidget* m_sound = nullptr;
    SFrmMoodShadow* m_mood = nullptr;
};
