#include "widgets/LineWrappedRadioButton.h"

#include <QResizeEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

/// A word that is wider is cut rather than let it push everything else aside.
constexpr int kMaxWordWidth = 260;

int textWidth(const QFontMetrics& metrics, const QString& text)
{
    return metrics.size(Qt::TextShowMnemonic | Qt::TextSingleLine, text).width();
}

} // namespace

LineWrappedRadioButton::LineWrappedRadioButton(QWidget* parent)
    : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

QSize LineWrappedRadioButton::minimumSizeHint() const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    const QSize empty = style()->sizeFromContents(QStyle::CT_RadioButton, &option, QSize(), this);
    return {empty.width(), sizeHint().height()};
}

int LineWrappedRadioButton::longestWordWidth() const
{
    int longest = 0;
    const QStringList words = text().simplified().split(u' ', Qt::SkipEmptyParts);
    for (const QString& word : words)
        longest = qMax(longest, textWidth(fontMetrics(), word));
    return longest + chromeWidth() + 1;
}

int LineWrappedRadioButton::chromeWidth() const
{
    const QRect text = style()->itemTextRect(fontMetrics(), QRect(0, 0, -1, 0), Qt::TextShowMnemonic,
                                             isEnabled(), this->text());
    return sizeHint().width() - text.width() - 1;
}

QString LineWrappedRadioButton::wrapped(const QString& text, const QFontMetrics& metrics, int limit)
{
    QString source = text;
    source.replace(u'\n', u' ').append(u' ');
    QString result;
    QString line;
    QString word;
    for (const QChar c : qAsConst(source)) {
        word += c;
        if (!c.isSpace())
            continue;
        if (!line.isEmpty() && textWidth(metrics, line + word.trimmed()) > limit) {
            result += line.trimmed() + u'\n';
            line.clear();
        }
        line += word;
        word.clear();
    }
    return (result + line.trimmed()).trimmed();
}

void LineWrappedRadioButton::wrapTo(int width)
{
    const QString lines = wrapped(text(), fontMetrics(), width - chromeWidth());
    if (lines != text())
        setText(lines);
}

bool LineWrappedRadioButton::event(QEvent* event)
{
    const bool isHandled = QRadioButton::event(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::Polish || type == QEvent::FontChange || type == QEvent::StyleChange ||
        type == QEvent::LanguageChange) { // after whoever holds the button has set the text
        setMinimumWidth(qMin(longestWordWidth(), kMaxWordWidth));
        wrapTo(width());
    }
    return isHandled;
}

void LineWrappedRadioButton::resizeEvent(QResizeEvent* event)
{
    QRadioButton::resizeEvent(event);
    wrapTo(event->size().width());
}

bool LineWrappedRadioButton::hitButton(const QPoint& pos) const
{
    return rect().contains(pos);
}

void LineWrappedRadioButton::paintEvent(QPaintEvent* event)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    if (style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, &option, this) > 0)
        return QRadioButton::paintEvent(event);

    // The style can only draw from the left: the face first, then each line in a rectangle of its own width.
    QStylePainter painter(this);
    option.text.clear();
    painter.drawControl(QStyle::CE_RadioButton, option);
    const QStringList lines = text().split(u'\n');
    const int height = fontMetrics().lineSpacing();
    int y = (this->height() - height * lines.size()) / 2;
    for (const QString& line : lines) {
        option.text = line;
        const int width = textWidth(fontMetrics(), line);
        option.rect = QRect((this->width() - width) / 2, y, width + 1, height);
        painter.drawControl(QStyle::CE_RadioButtonLabel, option);
        y += height;
    }
}
