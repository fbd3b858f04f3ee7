#pragma once

#include <QComboBox>

/// A combo box of gradients: closed, it shows the current one as its ComboBoxDelegate has it. The texts of
/// the items are for the keyboard and for those who do not see.
class GradientImgComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit GradientImgComboBox(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
