#include "effects/colorful/GradientHandler.h"
#include "effects/colorful/GradientWidget.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr double kSceneWidth = 361; // the widget is 380 wide

bool activate(QWidget* window)
{
    window->activateWindow();
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}

QColorDialog* dialog()
{
    return qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
}

/// The editor between two fields that can take the keyboard.
struct Editor : QWidget
{
    explicit Editor(const QGradientStops& keyColors)
    {
        auto* rows = new QVBoxLayout(this);
        for (QWidget* row : std::initializer_list<QWidget*>{&before, &widget, &after})
            rows->addWidget(row);
        widget.setFixedSize(380, 25);
        widget.setKeyColors(keyColors);
        before.setFocus();
        show();
        activate(this);
    }

    /// The i-th from the left, as it is seen; 0 is an end.
    GradientHandler* handle(int i) const
    {
        QMultiMap<int, QGraphicsItem*> found;
        for (QGraphicsItem* item : view->items())
            found.insert(view->mapFromScene(item->sceneBoundingRect().center()).x(), item);
        return dynamic_cast<GradientHandler*>(found.values().at(i));
    }
    QPoint middle(int i) const { return view->mapFromScene(handle(i)->sceneBoundingRect().center()); }
    void move(const QPoint& to)
    {
        QMouseEvent event(QEvent::MouseMove, to, viewport->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &event);
    }
    void drag(const QPoint& from, int by)
    {
        QTest::mousePress(viewport, Qt::LeftButton, {}, from);
        move(from + QPoint(by, 0));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, from + QPoint(by, 0));
    }
    void drag(int i, int by) { drag(middle(i), by); }
    void click(const QPoint& at) const { QTest::mouseClick(viewport, Qt::LeftButton, {}, at); }
    QMenu* menu(int i) const
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, middle(i), viewport->mapToGlobal(middle(i)));
        QApplication::sendEvent(viewport, &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    bool answer(const QColor& color)
    {
        if (!dialog() || !activate(dialog()))
            return false;
        dialog()->setCurrentColor(color);
        dialog()->accept();
        return activate(this); // which a window manager would do
    }
    void keys(const QVector<Qt::Key>& keys, Qt::KeyboardModifiers modifiers = {})
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(&widget, key, modifiers);
    }
    QGradientStops stops() const { return widget.gradientStops().mid(1, widget.keyColors().size()); }
    double pos(int i) const { return stops().at(i).first; }

    QLineEdit before;
    GradientWidget widget;
    QLineEdit after;
    QGraphicsView* view = widget.findChild<QGraphicsView*>();
    QWidget* viewport = view->viewport();
};

} // namespace

class TestGradientEditor : public QObject
{
    Q_OBJECT

private slots:
    void handlesAreDraggedAlongTheBar()
    {
        Editor editor({{0.5, Qt::red}, {0.25, Qt::blue}});
        const GradientHandler* red = editor.handle(2);
        const QPoint from = editor.middle(2);
        QTest::mousePress(editor.viewport, Qt::LeftButton, {}, from);
        editor.move(from + QPoint(100, 15));
        QVERIFY(qFuzzyCompare(red->position(), 0.5 + 100 / kSceneWidth) && red->y() == 0);
        editor.move(QPoint(-900, 0));
        QTest::mouseRelease(editor.viewport, Qt::LeftButton, {}, from);
        QCOMPARE(editor.widget.gradientStops(),
                 (QGradientStops{{0, Qt::white}, {0, Qt::red}, {0.25, Qt::blue}, {1, Qt::white}}));
        editor.drag(3, -100); // an end stays, and is no bare bar
        QVERIFY(!dialog() && editor.handle(3)->position() == 1.0);
        editor.drag(QPoint(5, 10), 100); // red, where an end is as well
        QVERIFY(editor.pos(1) > 0.25);

        editor.widget.setKeyColors({{0.5, Qt::red}, {0.5, Qt::blue}}); // both are in reach
        const QPoint middle = editor.middle(1);
        editor.drag(middle, -100);
        editor.drag(middle, 100);
        QVERIFY(editor.pos(0) < 0.3 && editor.pos(1) > 0.7);

        const QPointer<GradientHandler> dragged(editor.handle(1)); // who hears of it may set a gradient
        const auto set = [&editor] { editor.widget.setKeyColors({{0.9, Qt::green}}); };
        connect(&editor.widget, &GradientWidget::keyColorChanged, &editor, set);
        editor.drag(1, 40);
        QVERIFY(dragged && !dragged->scene()); // gone, but not under the feet of its own event
        QTRY_VERIFY(!dragged);
        QVERIFY(editor.stops() == (QGradientStops{{0.9, Qt::green}}) && !dialog());
    }

    void clickOnTheBareBarAddsAColorOnItsSide()
    {
        Editor editor({{0.5, Qt::red}});
        editor.setLayoutDirection(Qt::RightToLeft);
        const QPoint at(75, 20); // a quarter of the widget
        editor.click(editor.middle(1));
        QVERIFY(!dialog());
        editor.click(at);
        QVERIFY(editor.answer(Qt::green));
        const GradientHandler* green = editor.handle(1); // seen on the side of the click
        QVERIFY(editor.stops().size() == 2 && green->color() == Qt::green && green->position() == 0.75);

        // Drags and keys follow what is seen.
        editor.drag(1, 36);
        editor.keys({Qt::Key_Right});
        QVERIFY(qFuzzyCompare(green->position(), 0.75 - 36 / kSceneWidth - 0.01));
    }

    void menuAndDoubleClickChangeAndDelete()
    {
        Editor editor({{0.3, Qt::red}, {0.6, Qt::blue}});
        QSignalSpy changes(&editor.widget, &GradientWidget::keyColorChanged);
        QPointer<QMenu> open = editor.menu(0); // an end stays
        QCOMPARE(open->actions().size(), 1);
        open->actions().first()->trigger();
        open->close();
        QVERIFY(editor.answer(Qt::yellow));
        QTest::mouseDClick(editor.viewport, Qt::LeftButton, {}, editor.middle(1));
        QVERIFY(dialog()->currentColor() == Qt::red && editor.answer(Qt::green));
        QCOMPARE(editor.widget.gradientStops(),
                 (QGradientStops{{0, Qt::yellow}, {0.3, Qt::green}, {0.6, Qt::blue}, {1, Qt::yellow}}));
        open = editor.menu(1);
        open->actions().last()->trigger();
        QTRY_VERIFY(!open); // a menu goes with its handle
        QCOMPARE(changes.count(), 3);
        open = editor.menu(1);
        QVERIFY(!open->actions().last()->isEnabled()); // the last one
        editor.widget.setKeyColors({{0.1, Qt::red}, {0.2, Qt::red}});
        open->actions().first()->trigger(); // too late
        QVERIFY(!dialog());
    }

    void everythingIsInReachOfTheKeyboard()
    {
        Editor editor({{0.6, Qt::red}, {0.2, Qt::blue}});
        QTest::keyClick(&editor.before, Qt::Key_Tab);
        editor.keys({Qt::Key_Right, Qt::Key_Delete, Qt::Key_Tab}); // an end stays
        editor.keys({Qt::Key_Right}, Qt::ControlModifier);
        editor.keys({Qt::Key_PageUp, Qt::Key_Left, Qt::Key_Return});
        QVERIFY(editor.widget.accessibleName().contains("39") && editor.answer(Qt::green));
        editor.keys({Qt::Key_Insert}); // half way to red
        QVERIFY(editor.answer(Qt::yellow));
        QVERIFY(qFuzzyCompare(editor.pos(0), 0.39) && qFuzzyCompare(editor.pos(1), 0.495));
        editor.keys({Qt::Key_Backtab, Qt::Key_Delete, Qt::Key_Delete, Qt::Key_Delete}); // two of the three
        QCOMPARE(editor.stops(), (QGradientStops{{0.6, Qt::red}}));
        editor.keys({Qt::Key_Home, Qt::Key_Left, Qt::Key_Tab, Qt::Key_Tab});
        QVERIFY(editor.pos(0) == 0 && editor.after.hasFocus());
        QTest::keyClick(&editor.after, Qt::Key_Backtab);
        editor.keys({Qt::Key_Backtab, Qt::Key_Backtab, Qt::Key_Backtab});
        QVERIFY(editor.before.hasFocus());
    }

    void openDialogEndsWithWhatItWasOpenedFor()
    {
        for (const bool isHidden : {true, false}) {
            Editor editor({{0.3, Qt::red}, {0.6, Qt::blue}});
            editor.widget.setFocus();
            editor.keys({Qt::Key_Tab, Qt::Key_Return});
            const QPointer<QColorDialog> asking(dialog());
            isHidden ? editor.hide() : editor.widget.setKeyColors(editor.stops()); // may look the same
            const QGradientStops after = editor.widget.gradientStops();
            QVERIFY(asking && !asking->isVisible());
            asking->setCurrentColor(Qt::cyan);
            asking->accept(); // a click that was on its way
            QCOMPARE(editor.widget.gradientStops(), after);
            QTRY_VERIFY(!asking);
        }
    }
};

QTEST_MAIN(TestGradientEditor)
#include "tst_gradient_editor.moc"
