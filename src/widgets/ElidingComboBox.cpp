#include "widgets/ElidingComboBox.h"

#include <QHelpEvent>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QToolTip>

namespace {

constexpr int kMinChars = 8;

} // namespace

ElidingComboBox::ElidingComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kMinChars);
    setItemDelegate(new QStyledItemDelegate(this)); // the style sheet does not reach the usual one
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
    const QString whole = currentIndex() < 0 ? placeholderText() : option.currentText;
    const QString text = fontMetrics().elidedText(whole, Qt::ElideRight, width - 2);
    // Isolated, so that the ellipsis stands where the text ends, whatever the direction of the widget.
    option.currentText = QChar(0x2068) + text + QChar(0x2069);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

bool ElidingComboBox::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !currentText().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}
