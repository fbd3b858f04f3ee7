#include "effects/dynamicMusic/ElidingComboBox.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QToolTip>

namespace {

constexpr int kMinChars = 8;

} // namespace

ElidingComboBox::ElidingComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kMinChars);
}

void ElidingComboBox::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const int width =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width();
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, width - 2);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

bool ElidingComboBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && !currentText().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}
