#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

class QLabel;
class QSlider;

/// The speed slider of the effects that need nothing else. Property "speed", 1 to 200.
/// A value set from outside is reported back like one set by hand.
class SFrmColorMap : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SFrmColorMap(QWidget* parent);

public slots:
    void onSpeedSliderChanged(int v);

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QLabel* m_speedLabel = nullptr;
    QSlider* m_speedSlider = nullptr;
};
