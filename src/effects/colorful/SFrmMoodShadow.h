#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"

#include <QPointer>

class ComboBoxDelegate;
class GradientImgComboBox;
class GradientWidget;
class IColorStrapManager;
class QLabel;
class QPushButton;
class QSlider;

/// Options of the mood shadow effect: the list of gradients with an editor of the current one, the pace and
/// the length of a cycle. Properties as the worker has them. The list is shared: whoever changes it, box and
/// editor follow, and what the user holds stays in his hand as long as it is still there.
class SFrmMoodShadow : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SFrmMoodShadow(QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private slots:
    void onSpeedSliderValueChanged(int v);
    void onRangeSliderValueChanged(int v);
    void onStrapChanged(int i);
    void onAddBtnClicked();
    void onRmBtnClicked();
    void onGradientKeyColorChanged();

private:
    void listProperties();
    QSlider* makeSlider(const char* name, int least, int most, int step);
    void buildLayout();
    void retranslate();

    void setManager(IColorStrapManager* manager);
    /// Takes the manager's list over.
    void fillBox(int current);
    void onListStrapAdded(int i);
    void onListStrapRemoved(int i);
    void onListStrapChanged(int i);
    QJsonValue boxIndex() const;
    bool isManagerThere() const;
    bool isInBox(int i) const;
    /// The strap in editor and box, for one that both the box and the manager have.
    void showStrap(int i);
    void setCurrentStrap(int i);
    void setCurrentColorStrapView(int i);

    QPointer<IColorStrapManager> m_colorStrapManager;
    GradientImgComboBox* m_colorStrapBox = nullptr;
    ComboBoxDelegate* m_comboBoxDelegate = nullptr;
    GradientWidget* m_gradientEditor = nullptr;
    QPushButton* m_addBtn = nullptr;
    QPushButton* m_rmBtn = nullptr;
    QLabel* m_speedLabel = nullptr;
    QSlider* m_speedSlider = nullptr;
    QLabel* m_rangeLabel = nullptr;
    QSlider* m_rangeSlider = nullptr;
};
