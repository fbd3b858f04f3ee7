#include "ui/WindowRegion.h"

#include <QtTest>

namespace {

// Of the window of 800 by 600 with a button on its title bar, and at 1.5 pixels a unit.
constexpr QSize kWindow(800, 600);
constexpr QRect kButton(700, 0, 100, 50);

WindowRegion at(int x, int y)
{
    return windowRegionAt({x, y}, kWindow, 50, 5, {kButton});
}

} // namespace

class TestWindowRegion : public QObject
{
    Q_OBJECT

private slots:
    void everyPointHasItsRegion()
    {
        QCOMPARE(at(6, 49), WindowRegion::Caption);
        QCOMPARE(at(400, 5), WindowRegion::None); // the line between the border and the caption
        QCOMPARE(at(750, 25), WindowRegion::None);
        QCOMPARE(at(750, 4), WindowRegion::Top); // the border goes over the button
        QCOMPARE(at(4, 594), WindowRegion::Left);
        QCOMPARE(at(796, 25), WindowRegion::Right);
        QCOMPARE(at(400, 596), WindowRegion::Bottom);
        QCOMPARE(at(5, 5), WindowRegion::TopLeft);
        QCOMPARE(at(799, 5), WindowRegion::TopRight);
        QCOMPARE(at(5, 595), WindowRegion::BottomLeft);
        QCOMPARE(at(795, 595), WindowRegion::BottomRight);
    }

    void draggedEdgeStopsAtTheSmallestSize()
    {
        const QRect start(100, 200, 800, 600);
        const QSize least(500, 400);
        const auto drag = [&](WindowRegion region, int dx, int dy) {
            return draggedGeometry(start, edgesOf(region), {dx, dy}, least);
        };
        QCOMPARE(drag(WindowRegion::Caption, -30, 40), QRect(70, 240, 800, 600));
        QCOMPARE(drag(WindowRegion::Left, 9999, 0), QRect(400, 200, 500, 600)); // the right edge stays
        QCOMPARE(drag(WindowRegion::TopRight, 20, -10), QRect(100, 190, 820, 610));
        QCOMPARE(drag(WindowRegion::BottomRight, -9999, -9999), QRect(start.topLeft(), least));
    }

    void windowOpensLargeButInsideItsScreen()
    {
        const QSize wanted(1280, 880);
        QCOMPARE(openingSize(wanted, {1920, 1080}), wanted);
        QCOMPARE(openingSize(wanted, {1366, 728}), QSize(1280, 696)); // below a panel
        QCOMPARE(openingSize(wanted, {1024, 600}), QSize(992, 568));
    }

    void windowIsFittedOnlyWhenItLeavesItsScreen()
    {
        const QRect screen(1920, 0, 1366, 769);
        const QSize least(500, 400);
        QCOMPARE(fittedGeometry({1920, 0, 800, 600}, screen, least), QRect(1920, 0, 800, 600));
        const QRect fitted = fittedGeometry({1900, 0, 800, 600}, screen, least);
        QCOMPARE(fitted.size(), QSize(1092, 615)); // 1092.8 by 615.2
        QCOMPARE(fitted.center(), screen.center());
        // What cannot be 80 % keeps its own size.
        const QRect large = fittedGeometry({0, 0, 800, 600}, screen, {1200, 700});
        QCOMPARE(large.size(), QSize(1200, 700));
        // Larger than the screen: the title bar stays on it.
        QCOMPARE(fittedGeometry({0, 0, 800, 600}, screen, {1500, 800}).topLeft(), screen.topLeft());
    }

    void systemPositionIsRoundedFromTheScreensCorner()
    {
        const QPoint corner(1920, -100);
        QCOMPARE(logicalPosition(corner + QPoint(301, 302), corner, 2.0), corner + QPoint(151, 151));
        QCOMPARE(logicalPosition(corner - QPoint(301, 303), corner, 2.0), corner - QPoint(150, 151));
        // A press on the button at 150 %: taken in the system's pixels it would lie right of it.
        const QPoint press = logicalPosition(QPoint(1065, 45), {0, 0}, 1.5);
        QCOMPARE(press, QPoint(710, 30));
        QCOMPARE(at(press.x(), press.y()), WindowRegion::None);
    }
};

QTEST_GUILESS_MAIN(TestWindowRegion)
#include "tst_window_region.moc"
