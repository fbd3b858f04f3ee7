#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QColor>

class ColorWheel;
class QPushButton;
class QSpinBox;

/// Options of the single-colour effect: wheel, three numbers and the system's colour dialog, kept in step.
/// Every change, also one from outside, is reported once as "color".
class FrmSingleColor : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit FrmSingleColor(QWidget* parent);

signals:
    void colorChanged(QColor color);

public slots:
    void onColorWheelChanged(QColor color);
    void onRGBBoxChanged(int value);
    void onSelectColorBtnClicked();

protected:
    void changeEvent(QEvent* event) override;

private:
    QColor boxColor() const;
    QSpinBox* addBox(const char* name);
    void buildLayout();
    void retranslate();
    void report();
    void showColor(const QColor& color);

    ColorWheel* m_colorWheel = nullptr;
    QSpinBox* m_redBox = nullptr;
    QSpinBox* m_greenBox = nullptr;
    QSpinBox* m_blueBox = nullptr;
    QPushButton* m_selectColorBtn = nullptr;
};
