#pragma once

#include <QComboBox>

/// A combo box for texts of any length: it does not grow with them and ends them with an ellipsis; without a
/// tool tip of its own it has the whole text there.
class ElidingComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ElidingComboBox(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};
