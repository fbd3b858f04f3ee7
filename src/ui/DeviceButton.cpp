#include "ui/DeviceButton.h"

#include <QKeyEvent>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {
constexpr int kNameStripHeight = 18;
constexpr int kNameMargin = 5;
constexpr int kNameLift = 2; ///< keeps clear of the focus frame
} // namespace

DeviceButton::DeviceButton(QWidget* parent)
    : QToolButton(parent)
{
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
}

void DeviceButton::setName(const QString& name)
{
    setText(name);
    setShortcut(QKeySequence()); // a "&" in a name is no mnemonic
    setToolTip(name.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(name.toHtmlEscaped()));
    setAccessibleName(name);
    m_shownName = QString();
}

QRect DeviceButton::nameStrip() const
{
    QRect strip = rect();
    strip.moveTop(height() - kNameStripHeight);
    return strip;
}

void DeviceButton::cutName()
{
    QString line = text();
    for (QChar& c : line) {
        const bool breaks = c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                            c == QChar::ParagraphSeparator;
        if (breaks)
            c = QLatin1Char(' ');
    }
    m_shownName = fontMetrics().elidedText(line, Qt::ElideRight, width() - 2 * kNameMargin);
}

/// The style's own layout would draw the name over the whole width and beyond, and underline after a "&".
void DeviceButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    const QIcon icon = option.icon;
    option.icon = QIcon();
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const QRect strip = nameStrip() & rect();
    if (!icon.isNull()) {
        option.icon = icon;
        option.toolButtonStyle = Qt::ToolButtonIconOnly;
        option.rect = QRect(0, 0, width(), strip.top());
        painter.drawControl(QStyle::CE_ToolButtonLabel, option);
    }

    if (m_shownName.isNull())
        cutName();
    // On the font's own base line: the line of a fallback font may be higher than the strip. The name's own
    // direction, not the page's, says where it begins.
    const QFontMetrics metrics = fontMetrics();
    const int x = (width() - metrics.horizontalAdvance(m_shownName)) / 2;
    const int y = strip.top() + (strip.height() - metrics.height()) / 2 + metrics.ascent();
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    painter.setPen(option.palette.color(QPalette::ButtonText));
    painter.drawText(x, y - kNameLift, m_shownName);
}

void DeviceButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else if (event->key() == Qt::Key_F2)
        emit renameOrdered();
    else
        QToolButton::keyPressEvent(event);
}

void DeviceButton::changeEvent(QEvent* event)
{
    m_shownName = QString(); // the font may be another one
    QToolButton::changeEvent(event);
}
