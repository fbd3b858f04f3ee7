#include "ScreenTestKit.h"
#include "effects/EffectNotice.h"
#include "effects/screenSync/layoutEditor/LEDItem.h"
#include "effects/screenSync/layoutEditor/SSLOptWidget.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditView.h"
#include "effects/screenSync/subModes/FullScreenMode.h"

#include <QSpinBox>
#include <QtTest>

using namespace ScreenTestKit;

namespace {

constexpr QColor kGrey(120, 120, 120);
using Points = QVector<QPoint>;

QJsonArray ledMap(const Points& points)
{
    return LedMap{{}, points}.toProperty();
}

/// An open editor, joined with its worker as the page and the application do it.
struct Editor
{
    explicit Editor(const Points& leds, unsigned direction = 0, QSize canvas = {40, 20})
        : worker(loaded<FullScreenMode>(unsigned(leds.size()), direction))
    {
        worker->setScreenSize(canvas);
        worker->setEffectProperty("LEDMap", ledMap(leds));
        widget.resize(560, 480);
        fill("", worker->effectProperty(""));
        QObject::connect(&widget, &AbsWorkerWidget::effectPropertyChanged, worker.get(),
                         &FullScreenMode::setEffectProperty);
        QObject::connect(
            worker.get(), &AbsScreenSync::effectPropertyChanged, &widget,
            [this](const QString& key, const QJsonValue& val) { fill(key, val); }, Qt::QueuedConnection);
        widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
    }

    void fill(const QString& key, const QJsonValue& val)
    {
        const QSignalBlocker blocker(&widget);
        widget.setEffectProperty(key, val);
    }
    void fill(const Points& leds) { fill("LEDMap", ledMap(leds)); }

    ScreenSyncEditView& view() { return *widget.findChild<ScreenSyncEditView*>("strapEditor"); }
    QSpinBox& widthBox() { return *widget.findChild<QSpinBox*>("widthBox"); }
    QList<LEDItem*> items()
    {
        QList<LEDItem*> found;
        for (QGraphicsItem* item : view().scene()->items(Qt::AscendingOrder))
            if (auto* each = dynamic_cast<LEDItem*>(item))
                found.append(each);
        return found;
    }
    Points shown()
    {
        Points cells;
        for (const LEDItem* item : items())
            cells.append(item->gridPos());
        return cells;
    }
    /// Whether the worker has these, and the widget shows so.
    bool isStored(const Points& points)
    {
        const QJsonValue stored = worker->effectProperty("LEDMap");
        return stored == ledMap(points) && widget.effectProperty("LEDMap") == stored &&
               widget.effectProperty("screenSize") == worker->effectProperty("screenSize");
    }

    /// Where a cell shows; outside the canvas as well.
    QPoint at(QPoint cell)
    {
        const QSizeF size = view().editScene()->cellSize();
        return view().mapFromScene((cell.x() + 0.5) * size.width(), (cell.y() + 0.5) * size.height());
    }
    void moveMouse(QPoint to, Qt::MouseButton held = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseMove, to, view().viewport()->mapToGlobal(to), Qt::NoButton, held, {});
        QCoreApplication::sendEvent(view().viewport(), &event);
    }
    void drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(view().viewport(), button, {}, from);
        for (int step = 1; step <= 4; ++step)
            moveMouse(from + (to - from) * step / 4, button);
        QTest::mouseRelease(view().viewport(), button, {}, to);
    }
    void moveCell(QPoint from, QPoint to) { drag(at(from), at(to)); }
    void click(QPoint cell, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(view().viewport(), Qt::LeftButton, keys, at(cell));
    }
    void keys(std::initializer_list<Qt::Key> keys, Qt::KeyboardModifiers held = {})
    {
        view().setFocus();
        for (const Qt::Key key : keys)
            QTest::keyClick(view().viewport(), key, held);
    }
    void undo() { keys({Qt::Key_Z}, Qt::ControlModifier); }
    void wheel(int angle, QPoint pos, QWidget* on = nullptr)
    {
        QWidget* target = on ? on : view().viewport();
        QWheelEvent event(pos, target->mapToGlobal(pos), {}, {0, angle}, {}, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(target, &event);
    }
    bool isInSight(int led)
    {
        return view().viewport()->rect().contains(
            view().mapFromScene(items()[led]->sceneBoundingRect()).boundingRect());
    }
    QColor colorAt(QPoint cell) { return view().viewport()->grab().toImage().pixelColor(at(cell)); }
    /// The worker's frame, left half red, right half blue.
    void sendFrame()
    {
        cv::Mat frame(20, 40, CV_8UC4, cv::Scalar(255, 0, 0, 255));
        frame.colRange(20, 40).setTo(cv::Scalar(0, 0, 255, 255));
        worker->frameInput(frame);
    }

    std::unique_ptr<FullScreenMode> worker;
    SSLOptWidget widget{nullptr};
};

} // namespace

class TestLayoutEditor : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        config()->reset();
        config()->setAppConfig("devUpdateInterval", 8000);
    }

    void aReversedDeviceIsShownAsTheScreenIs()
    {
        Editor editor({{0, 5}, {30, 10}}, 1);
        QCOMPARE(editor.shown(), (Points{{39, 5}, {9, 10}}));
        editor.moveCell({9, 10}, {0, 10});
        QVERIFY(editor.isStored({{0, 5}, {39, 10}}));
        editor.sendFrame(); // which the worker flips
        QTRY_COMPARE(editor.colorAt({10, 5}), QColor(Qt::red));
        QCOMPARE(editor.colorAt({30, 5}), QColor(Qt::blue));
        editor.widthBox().setValue(30);
        for (const uint32_t direction : {1U, 0U, 1U}) {
            editor.worker->onCtlDirChanged(direction);
            QTRY_COMPARE(editor.shown(), direction ? (Points{{29, 5}, {0, 10}}) : (Points{{0, 5}, {29, 10}}));
        }
    }

    void severalMoveTogetherByMouseAndKeys()
    {
        Editor editor({{10, 10}, {14, 10}, {14, 13}, {30, 15}});
        QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
        editor.drag(editor.at({7, 7}), editor.at({17, 16})); // a rubber band
        editor.click({14, 13}, Qt::ControlModifier);         // takes it out of the selection
        editor.moveCell({14, 10}, {-9, 12});                 // as far as all of them stay on the canvas
        QVERIFY(editor.isStored({{0, 12}, {4, 12}, {14, 13}, {30, 15}}));
        QCOMPARE(changes.count(), 1);        // so that it is stored once
        editor.moveCell({30, 15}, {31, 15}); // one that is not selected moves alone
        QVERIFY(editor.isStored({{0, 12}, {4, 12}, {14, 13}, {31, 15}}));

        editor.keys({Qt::Key_Escape, Qt::Key_Right}); // nothing is selected
        editor.click({14, 13});
        editor.keys({Qt::Key_Right});
        editor.keys({Qt::Key_Up}, Qt::ShiftModifier);
        QVERIFY(editor.isStored({{0, 12}, {4, 12}, {15, 8}, {31, 15}}));
        editor.keys({Qt::Key_A}, Qt::ControlModifier);
        editor.keys({Qt::Key_Up, Qt::Key_Left}); // one is at the edge already
        QVERIFY(editor.isStored({{0, 11}, {4, 11}, {15, 7}, {31, 14}}));
        editor.keys({Qt::Key_Escape, Qt::Key_PageUp, Qt::Key_Left});     // the last one
        editor.keys({Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_Down}); // round by the first
        editor.keys({Qt::Key_Escape, Qt::Key_PageDown, Qt::Key_Down});   // the first one
        QVERIFY(editor.isStored({{0, 12}, {4, 12}, {15, 7}, {30, 14}}));
    }

    void whatWasDoneCanBeUndone()
    {
        Editor editor({{10, 10}, {14, 10}, {39, 19}});
        QVector<QJsonValue> states;
        const auto state = [&] { return editor.worker->effectProperty(""); };
        const auto after = [&] {
            states.append(state());
            return &editor;
        };
        after()->moveCell({39, 19}, {5, 5});
        after()->keys({Qt::Key_Up});      // of the one that was dragged
        after()->widthBox().setValue(12); // which moves LEDs to the border
        const QJsonValue last = state();
        while (!states.isEmpty()) {
            editor.undo();
            QCOMPARE(state(), states.takeLast());
            QVERIFY(editor.isStored(editor.shown()));
        }
        editor.keys({Qt::Key_Z, Qt::Key_Z, Qt::Key_Z}, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(state(), last);
        editor.widthBox().setValue(119);
        editor.widthBox().setFocus(); // with the focus in a number, too
        QTest::keyClick(&editor.widthBox(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(state(), last);
    }

    void whatComesFromOutsideEndsTheUndoing()
    {
        Editor editor({{10, 10}, {14, 10}});
        const auto next = loaded<FullScreenMode>(2);
        for (const auto& [key, val] : {std::pair("LEDMap", QJsonValue(ledMap({{1, 1}, {2, 2}}))),
                                       {"screenSize", QJsonObject{{"w", 50}, {"h", 30}}},
                                       {"effectObject", next->effectProperty("effectObject")}}) {
            const QPoint from = editor.shown()[0];
            editor.moveCell(from, from + QPoint(2, 2));
            editor.fill(key, val);
            const QJsonValue before = editor.widget.effectProperty("");
            editor.undo();
            QCOMPARE(editor.widget.effectProperty(""), before);
        }

        // The answer to a drop may be another strip.
        connect(&editor.widget, &AbsWorkerWidget::effectPropertyChanged, [&] { editor.fill(Points()); });
        editor.moveCell(editor.shown()[0], {8, 8});
        QVERIFY(editor.items().isEmpty());
        // A LED held by the mouse may go as well.
        editor.fill({{1, 1}, {2, 2}});
        QTest::mousePress(editor.view().viewport(), Qt::LeftButton, {}, editor.at({2, 2}));
        editor.fill({{5, 5}});
        editor.moveMouse(editor.at({9, 9}));
        QTest::mouseRelease(editor.view().viewport(), Qt::LeftButton, {}, editor.at({9, 9}));
        QCOMPARE(editor.shown(), (Points{{5, 5}}));
    }

    void aSizeCountsWhenItIsWhole()
    {
        Editor editor({{35, 15}});
        QSpinBox& box = editor.widthBox();
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, "110\r"); // by way of 11, which would move the LED
        QVERIFY(editor.isStored({{35, 15}}));
        QCOMPARE(editor.worker->effectProperty("screenSize"), QJsonValue(QJsonObject{{"w", 110}, {"h", 20}}));
        editor.view().setFocus();
        editor.wheel(120, {5, 5}, &box); // the page is being scrolled
        QCOMPARE(box.value(), 110);

        // The worker takes smaller ones than the boxes offer: no LED may go beyond those.
        editor.worker->setScreenSize({8, 4});
        editor.fill("", editor.worker->effectProperty(""));
        editor.moveCell({7, 3}, {9, 5});
        QVERIFY(editor.isStored({{7, 3}}));
        QCOMPARE(editor.worker->effectProperty("screenSize"), QJsonValue(QJsonObject{{"w", 8}, {"h", 4}}));
        // What lies outside shows where its light comes from.
        editor.fill({{2147483647, -2147483647}, {-1, 99}, {6, 2}});
        QCOMPARE(editor.shown(), (Points{{7, 0}, {0, 3}, {6, 2}}));
    }

    void framesComeWhileTheEditorIsSeen()
    {
        Editor editor({{0, 0}});
        const QPoint left(10, 10);
        QCOMPARE(editor.colorAt(left), kGrey);
        // The monitor went and the strip became dark: so did what the editor shows, until it is back.
        for (const char* notice : {"", "gone", ""}) {
            editor.sendFrame();
            emit editor.worker->effectPropertyChanged(EffectNotice::kKey, notice);
            QTRY_COMPARE(editor.colorAt(left), *notice ? kGrey : QColor(Qt::red));
        }

        editor.sendFrame(); // one that waits
        editor.widget.hide();
        editor.fill("effectObject", editor.worker->effectProperty("effectObject"));
        editor.sendFrame();
        QCoreApplication::processEvents();
        editor.widget.show();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);

        auto next = loaded<FullScreenMode>(1);
        const cv::Mat green(20, 40, CV_8UC4, cv::Scalar(0, 255, 0, 255));
        editor.sendFrame();
        editor.fill("effectObject", next->effectProperty("effectObject"));
        next->frameInput(green);
        editor.sendFrame(); // of one that is no longer followed
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::green));
        next->frameInput(green);
        next.reset();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);
    }

    void theCanvasShowsWholeAndIsZoomedAndPanned()
    {
        Editor editor({{39, 19}, {20, 10}, {0, 0}});
        for (const QSize window : {QSize(900, 400), QSize(300, 900), QSize(560, 480)}) {
            editor.widget.resize(window);
            QCoreApplication::processEvents();
            QCOMPARE(editor.view().sceneRect().width() / editor.view().sceneRect().height(), 2.0);
            QVERIFY(editor.isInSight(0) && editor.isInSight(2));
        }
        const QPoint mouse = editor.at({20, 10});
        editor.wheel(720, mouse);
        QVERIFY(!editor.isInSight(0));
        QVERIFY((editor.at({20, 10}) - mouse).manhattanLength() <= 2); // it stays under the mouse
        editor.drag({200, 200}, {180, 190}, Qt::RightButton);
        QVERIFY((editor.at({20, 10}) - mouse - QPoint(-20, -10)).manhattanLength() <= 4);
        editor.drag({400, 300}, {-2000, -2000}, Qt::RightButton);
        QVERIFY(editor.isInSight(0));   // a square at the edge shows whole
        editor.wheel(20000000, mouse);  // no bound, and nothing breaks
        editor.widthBox().setValue(41); // another canvas shows whole
        QVERIFY(editor.isInSight(0) && editor.isInSight(2));
    }

    void eachOfManyLedsCanBeSeenAndReached()
    {
        const Points crowd = LedMap::defaultGrid(300).points;
        Editor many(crowd, 0, QSize(120, 67));
        const QList<LEDItem*> items = many.items();
        for (int zoomed = 0; zoomed < 2; ++zoomed) {
            for (LEDItem* item : items)
                QCOMPARE(many.view().scene()->itemAt(item->mapToScene(item->rect().center()), {}), item);
            many.wheel(360, many.at(crowd[0]));
        }
        many.moveCell(crowd[0], {110, 60}); // where there is room again
        QCOMPARE(items[0]->rect().size(), QSizeF(30, 30));
    }
};

QTEST_MAIN(TestLayoutEditor)
#include "tst_layout_editor.moc"
