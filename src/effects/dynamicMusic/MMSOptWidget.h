#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

class MediaSourceOptWidget;
class QLabel;
class QSlider;

/// Options of the level meters: the source of the sound and property "strength", the common gain.
class MMSOptWidget : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit MMSOptWidget(QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void onStrengthSliderChanged(int value);

private:
    void retranslate();

    MediaSourceOptWidget* m_mediaSource = nullptr;
    QLabel* m_strengthLabel = nullptr;
    QSlider* m_strengthSlider = nullptr;
};
