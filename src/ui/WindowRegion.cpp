#include "ui/WindowRegion.h"

#include <algorithm>

WindowRegion windowRegionAt(QPoint position, QSize window, int titleHeight, int borderWidth,
                            const QVector<QRect>& buttons)
{
    const int x = position.x();
    const int y = position.y();
    const int w = window.width();
    const int h = window.height();
    const int b = borderWidth;

    const auto lies = [position](const QRect& button) { return button.contains(position); };
    if (y > b && y < titleHeight && x > b && std::none_of(buttons.begin(), buttons.end(), lies))
        return WindowRegion::Caption;

    if (y < b && x <= b)
        return WindowRegion::TopLeft;
    if (y < b && x < w - b)
        return WindowRegion::Top;
    if (y > b && x < b && y < h - b)
        return WindowRegion::Left;
    if (y == b && x <= b)
        return WindowRegion::TopLeft;

    if (y >= h - b && x <= b)
        return WindowRegion::BottomLeft;
    if (y > h - b && x > b && x < w - b)
        return WindowRegion::Bottom;
    if (y >= h - b && x >= w - b)
        return WindowRegion::BottomRight;
    if (y > b)
        return x > w - b && y < h - b ? WindowRegion::Right : WindowRegion::None;
    return x >= w - b ? WindowRegion::TopRight : WindowRegion::None;
}

Qt::Edges edgesOf(WindowRegion region)
{
    switch (region) {
    case WindowRegion::Left:
        return Qt::LeftEdge;
    case WindowRegion::Right:
        return Qt::RightEdge;
    case WindowRegion::Top:
        return Qt::TopEdge;
    case WindowRegion::Bottom:
        return Qt::BottomEdge;
    case WindowRegion::TopLeft:
        return Qt::TopEdge | Qt::LeftEdge;
    case WindowRegion::TopRight:
        return Qt::TopEdge | Qt::RightEdge;
    case WindowRegion::BottomLeft:
        return Qt::BottomEdge | Qt::LeftEdge;
    case WindowRegion::BottomRight:
        return Qt::BottomEdge | Qt::RightEdge;
    case WindowRegion::None:
    case WindowRegion::Caption:
        break;
    }
    return {};
}

QRect draggedGeometry(const QRect& start, Qt::Edges edges, QPoint distance, QSize minimum)
{
    if (!edges)
        return start.translated(distance);
    QRect dragged = start;
    if (edges & Qt::LeftEdge)
        dragged.setLeft(std::min(start.left() + distance.x(), start.right() + 1 - minimum.width()));
    if (edges & Qt::RightEdge)
        dragged.setWidth(std::max(start.width() + distance.x(), minimum.width()));
    if (edges & Qt::TopEdge)
        dragged.setTop(std::min(start.top() + distance.y(), start.bottom() + 1 - minimum.height()));
    if (edges & Qt::BottomEdge)
        dragged.setHeight(std::max(start.height() + distance.y(), minimum.height()));
    return dragged;
}

QSize openingSize(QSize window, QSize available)
{
    constexpr int kMargin = 16;
    return window.boundedTo(available - QSize(2 * kMargin, 2 * kMargin));
}

QRect fittedGeometry(const QRect& window, const QRect& screen, QSize minimum)
{
    constexpr double kShare = 0.8;
    if (screen.contains(window))
        return window;
    const QSize share(static_cast<int>(screen.width() * kShare), static_cast<int>(screen.height() * kShare));
    QRect fitted(screen.topLeft(), share.expandedTo(minimum));
    fitted.moveCenter(screen.center());
    // On a screen that is too small the title bar must remain in reach.
    fitted.moveTo(std::max(fitted.left(), screen.left()), std::max(fitted.top(), screen.top()));
    return fitted;
}

QPoint logicalPosition(QPoint physical, QPoint screenTopLeft, double pixelRatio)
{
    return screenTopLeft + (physical - screenTopLeft) / pixelRatio;
}

QRect maximisedClient(const QRect& window, const QRect& workArea, Qt::Edges hiddenBars)
{
    constexpr int kBarPx = 2;
    const auto strip = [hiddenBars](Qt::Edge edge) { return hiddenBars & edge ? kBarPx : 0; };
    const QRect shown = window.intersected(workArea);
    if (shown.isEmpty())
        return window; // on its way to another screen
    return shown.adjusted(strip(Qt::LeftEdge), strip(Qt::TopEdge), -strip(Qt::RightEdge),
                          -strip(Qt::BottomEdge));
}
