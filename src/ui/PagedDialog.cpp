#include "ui/PagedDialog.h"

#include "widgets/SliderBar.h"

#include <QGuiApplication>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QStackedWidget>
#include <algorithm>

PagedDialog::PagedDialog(QWidget* parent)
    : BaseDialog(parent)
{
}

void PagedDialog::initPages(SliderBar& bar, QStackedWidget& pages, QSize usualSize)
{
    m_bar = &bar;
    m_pages = &pages;
    m_usualSize = usualSize;
    const QColor ground(61, 66, 77);
    bar.setBgColorStart(ground);
    bar.setBgColorEnd(ground);
    const QColor raised(41, 44, 51);
    bar.setBarColorStart(raised);
    bar.setBarColorEnd(raised);
    bar.setTextNormalColor({187, 187, 188});
    bar.setTextSelectColor({231, 150, 26});
    bar.setLineColor({250, 160, 14});
    bar.setFlat(true);
    bar.setBarStyle(SliderBar::BarStyle_Line);
    bar.setLineWidth(4);
    bar.setKeyMove(true);
    bar.setFocus();
}

void PagedDialog::setPageNames(const QString& names)
{
    m_bar->setItems(names);
    m_bar->setAccessibleDescription(m_bar->currentItem());
}

void PagedDialog::showPage(int index, const QString& name)
{
    m_pages->setCurrentIndex(index);
    m_bar->setAccessibleDescription(name);
}

void PagedDialog::keepFromWheel(const QVector<QWidget*>& controls)
{
    for (QWidget* control : controls)
        control->installEventFilter(this);
}

bool PagedDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
        event->ignore();
        return true;
    }
    return BaseDialog::eventFilter(watched, event);
}

QSize PagedDialog::neededSize() const
{
    // On a page that was not seen yet nothing has the font and the margins of the style.
    const auto parts = m_pages->findChildren<QWidget*>();
    for (const QWidget* part : parts)
        part->ensurePolished();
    std::for_each(parts.rbegin(), parts.rend(), [](const QWidget* part) {
        if (part->layout())
            part->layout()->activate();
    });
    int width = qMax(m_usualSize.width(), minimumSizeHint().width());
    QVector<const QWidget*> pages;
    for (int i = 0; i < m_pages->count(); ++i) {
        const auto* area = qobject_cast<QScrollArea*>(m_pages->widget(i));
        pages.append(area ? area->widget() : m_pages->widget(i));
        if (area)
            width = qMax(width, area->widget()->minimumSizeHint().width() +
                                    area->verticalScrollBar()->sizeHint().width());
    }
    const QMargins frame = layout()->contentsMargins();
    const int inside = width - frame.left() - frame.right();
    int height = 0;
    for (const QWidget* page : qAsConst(pages))
        height = qMax(height,
                      page->hasHeightForWidth() ? page->heightForWidth(inside) : page->sizeHint().height());
    const int around = minimumSizeHint().height() - m_pages->minimumSizeHint().height();
    return {width, qMax(m_usualSize.height(), height + around)};
}

void PagedDialog::growAround(QPoint centre)
{
    const QScreen* there = QGuiApplication::screenAt(centre);
    const QRect room = (there ? there : screen())->availableGeometry();
    const QSize wanted = neededSize().expandedTo(size()).boundedTo(room.size());
    if (wanted == size() && testAttribute(Qt::WA_Moved)) // once it has a place
        return;
    QRect place({}, wanted);
    place.moveCenter(centre);
    place.moveLeft(qBound(room.left(), place.left(), room.right() + 1 - place.width()));
    place.moveTop(qBound(room.top(), place.top(), room.bottom() + 1 - place.height()));
    // With setGeometry() the place under a window manager is taken from its frame, and menus open elsewhere.
    resize(wanted);
    move(place.topLeft());
}

void PagedDialog::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        growAround(parentWidget() ? parentWidget()->window()->geometry().center()
                                  : screen()->availableGeometry().center());
    BaseDialog::showEvent(event);
}

void PagedDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
        // The parts hear of the language after this.
        QMetaObject::invokeMethod(
            this, [this] { growAround(geometry().center()); }, Qt::QueuedConnection);
    }
    BaseDialog::changeEvent(event);
}
