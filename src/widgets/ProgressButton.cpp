#include "widgets/ProgressButton.h"

#include <QMenu>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

constexpr int kWhole = 100;

} // namespace

ProgressButton::ProgressButton(QWidget* parent)
    : QPushButton(parent)
{
}

void ProgressButton::setPercent(int percent)
{
    m_percent = qMin(percent, kWhole);
    update();
}

QAction* ProgressButton::openMenu(const QString& entry)
{
    auto* menu = new QMenu(window());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction* action = menu->addAction(entry);
    menu->popup(mapToGlobal({isRightToLeft() ? width() - menu->sizeHint().width() : 0, height()}));
    return action;
}

void ProgressButton::paintEvent(QPaintEvent* event)
{
    if (m_percent < 0)
        return QPushButton::paintEvent(event);
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    QStyleOptionButton rest = option;
    rest.state |= QStyle::State_On;
    painter.drawControl(QStyle::CE_PushButton, rest);
    const QRect done(0, 0, width() * m_percent / kWhole, height());
    painter.setClipRect(QStyle::visualRect(layoutDirection(), rect(), done));
    painter.drawControl(QStyle::CE_PushButton, option);
}
