#include "effects/colorful/GradientImgComboBox.h"

#include "effects/colorful/ComboBoxDelegate.h"

#include <QListView>
#include <QPainter>
#include <QStyleOptionComboBox>

namespace {

constexpr int kFrame = 2;
constexpr double kRadius = 4.0;
constexpr double kDisabledOpacity = 0.4;

} // namespace

GradientImgComboBox::GradientImgComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // no need to ask each item
    if (auto* list = qobject_cast<QListView*>(view()))
        list->setUniformItemSizes(true);
}

void GradientImgComboBox::paintEvent(QPaintEvent* event)
{
    QComboBox::paintEvent(event);
    const auto* delegate = qobject_cast<ComboBoxDelegate*>(itemDelegate());
    const QGradientStops stops = delegate ? delegate->gradientStops(currentIndex()) : QGradientStops();
    if (stops.isEmpty())
        return;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect arrow = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, this);
    QRect field = rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
    if (isRightToLeft())
        field.setLeft(arrow.right() + 1);
    else
        field.setRight(arrow.left() - 1);
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    ComboBoxDelegate::paintGradient(&painter, field, stops, layoutDirection(), kRadius);
}
