#include "widgets/EffectWorkerButton.h"

#include <QIcon>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace {

const QColor kChecked(247, 175, 55);
const QColor kUnchecked(211, 212, 211);
const QColor kText(212, 212, 212);
const QColor kFocus(255, 217, 8);
constexpr int kTextPadding = 10;
constexpr qreal kIconUnit = 100.0; ///< diameter at which the icon has its own size
constexpr qreal kFocusWidth = 3.0;
constexpr int kSlightlySmallerPx = 2;
constexpr int kSmallestTextPx = 10;

} // namespace

EffectWorkerButton::EffectWorkerButton(QWidget* parent)
    : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void EffectWorkerButton::setDiameter(int diameter)
{
    m_diameter = diameter;
    ensurePolished();
    setFixedSize(diameter, diameter + fontMetrics().height() + kTextPadding);
}

bool EffectWorkerButton::hitButton(const QPoint& pos) const
{
    const int radius = (qMin(width(), height()) + 1) / 2;
    const QPoint offset = pos - rect().center();
    return QPoint::dotProduct(offset, offset) <= radius * radius;
}

void EffectWorkerButton::mouseReleaseEvent(QMouseEvent* event)
{
    // Not the base class's: that would toggle by the style's rectangle. Whoever hears of the change may
    // replace this button, so it comes last.
    setDown(false);
    if (event->button() == Qt::LeftButton && hitButton(event->pos()))
        setChecked(true);
}

void EffectWorkerButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QRadioButton::keyPressEvent(event);
}

void EffectWorkerButton::changeEvent(QEvent* event)
{
    if ((event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) && m_diameter > 0)
        setDiameter(m_diameter);
    QRadioButton::changeEvent(event);
}

const QPixmap& EffectWorkerButton::picture()
{
    const qreal ratio = devicePixelRatioF();
    const QIcon::Mode mode = isChecked() ? QIcon::Selected : QIcon::Normal;
    const QString key = QStringLiteral("%1 %2 %3 %4 %5 %6")
                            .arg(icon().cacheKey())
                            .arg(mode)
                            .arg(ratio)
                            .arg(width())
                            .arg(iconSize().width())
                            .arg(iconSize().height());
    if (key == m_pictureKey)
        return m_picture;
    m_pictureKey = key;
    m_picture = icon().pixmap(window()->windowHandle(), iconSize(), mode);
    if (m_picture.isNull())
        return m_picture;
    const QSizeF logical = QSizeF(m_picture.size()) / m_picture.devicePixelRatio();
    const QSize shown(static_cast<int>(logical.width() * width() / kIconUnit),
                      static_cast<int>(logical.height() * width() / kIconUnit));
    const QSize device = (QSizeF(shown) * ratio).toSize();
    if (device != m_picture.size())
        m_picture = m_picture.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_picture.setDevicePixelRatio(ratio);
    return m_picture;
}

void EffectWorkerButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? kChecked : kUnchecked);
    const QRect disc(0, 0, width(), width());
    painter.drawEllipse(disc);
    if (!icon().isNull()) {
        const QPixmap& pixmap = picture();
        const QSizeF size = QSizeF(pixmap.size()) / pixmap.devicePixelRatio();
        painter.drawPixmap(QPointF((width() - size.width()) / 2, (width() - size.height()) / 2), pixmap);
    }
    if (hasFocus()) {
        constexpr qreal kInset = kFocusWidth / 2;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(isChecked() ? QColor(Qt::white) : kFocus, kFocusWidth));
        painter.drawEllipse(QRectF(disc).adjusted(kInset, kInset, -kInset, -kInset));
    }
    if (!text().isEmpty())
        drawText(painter);
}

void EffectWorkerButton::drawText(QPainter& painter)
{
    const QRect strip(0, minimumWidth(), minimumWidth(), minimumHeight() - minimumWidth());
    if (m_fitted.text != text() || m_fitted.font != font() || m_fitted.size != strip.size())
        m_fitted = {text(), font(), strip.size(), fit(strip.size())};
    painter.setFont(m_fitted.fit.font);
    painter.setPen(kText);
    painter.drawText(strip, m_fitted.fit.flags, m_fitted.fit.text);
}

EffectWorkerButton::Fit EffectWorkerButton::fit(const QSize& strip) const
{
    // A long name gets somewhat smaller, then it takes two lines, and only then it is cut.
    constexpr int kLine = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine;
    constexpr int kLines = Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextWordWrap;
    const int fullPx = QFontInfo(font()).pixelSize();
    const auto fits = [this, &strip](const QFont& font, int flags) {
        const QRect needed = QFontMetrics(font).boundingRect(QRect(QPoint(), strip), flags, text());
        return needed.width() <= strip.width() && needed.height() <= strip.height();
    };
    QFont font = this->font();
    for (int px = fullPx; px >= fullPx - kSlightlySmallerPx; --px) {
        font.setPixelSize(px);
        if (fits(font, kLine))
            return {font, kLine, text()};
    }
    for (int px = fullPx - kSlightlySmallerPx; px >= qMin(kSmallestTextPx, fullPx); --px) {
        font.setPixelSize(px);
        if (fits(font, kLines))
            return {font, kLines, text()};
    }
    const QFontMetrics metrics(font);
    return {font, kLine, metrics.elidedText(text(), Qt::ElideRight, strip.width(), Qt::TextShowMnemonic)};
}
