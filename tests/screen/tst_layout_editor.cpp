#include "ScreenTestKit.h"
#include "effects/EffectNotice.h"
#include "effects/screenSync/layoutEditor/LEDItem.h"
#include "effects/screenSync/layoutEditor/SSLOptWidget.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditScene.h"
#include "effects/screenSync/layoutEditor/ScreenSyncEditView.h"
#include "effects/screenSync/subModes/FullScreenMode.h"

#include <QHelpEvent>
#include <QJsonArray>
#include <QPushButton>
#include <QSpinBox>
#include <QToolTip>
#include <QtTest>
#include <algorithm>

using namespace ScreenTestKit;

namespace {

constexpr QColor kGrey(120, 120, 120);
constexpr QSize kCanvas(40, 20);
using Points = QVector<QPoint>;

QJsonObject led(int id, int x, int y)
{
    return {{"id", id}, {"x", x}, {"y", y}};
}

QJsonArray ledMap(const Points& points)
{
    return LedMap{{}, points}.toProperty();
}

/// Tells how many listen to it.
struct Worker : FullScreenMode
{
    using FullScreenMode::FullScreenMode;
    int followers() const { return receivers(SIGNAL(frameSnapshot(QImage))); }
};

/// An open editor, joined with its worker as the page and the application do it.
struct Editor
{
    explicit Editor(const Points& leds, unsigned direction = 0, QSize canvas = kCanvas)
        : worker(loaded<Worker>(static_cast<unsigned>(leds.size()), direction))
    {
        worker->setScreenSize(canvas);
        worker->setEffectProperty("LEDMap", ledMap(leds));
        widget.resize(560, 480);
        fill("", worker->effectProperty(""));
        QObject::connect(&widget, &AbsWorkerWidget::effectPropertyChanged, worker.get(),
                         [this](const QString& key, const QJsonValue& val) {
                             if (worker)
                                 worker->setEffectProperty(key, val);
                         });
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

    ScreenSyncEditView& view() { return *widget.findChild<ScreenSyncEditView*>("strapEditor"); }
    QSpinBox& box(const char* name) { return *widget.findChild<QSpinBox*>(name); }
    void reset()
    {
        QTest::mouseClick(widget.findChild<QPushButton*>("resetBtn"), Qt::LeftButton);
        QCoreApplication::processEvents(); // the worker's answer
    }

    QList<LEDItem*> items()
    {
        QList<LEDItem*> found;
        for (QGraphicsItem* item : view().scene()->items(Qt::AscendingOrder))
            if (auto* each = dynamic_cast<LEDItem*>(item))
                found.append(each);
        std::sort(found.begin(), found.end(), [](auto* a, auto* b) { return a->id() < b->id(); });
        return found;
    }
    Points shown()
    {
        Points cells;
        for (const LEDItem* item : items())
            cells.append(item->gridPos());
        return cells;
    }
    /// What the worker has, which the widget must mirror.
    Points stored()
    {
        if (widget.effectProperty("LEDMap") != worker->effectProperty("LEDMap"))
            return {};
        Points points;
        for (const QJsonValue& each : worker->effectProperty("LEDMap").toArray())
            points.append(QPoint(each["x"].toInt(), each["y"].toInt()));
        return points;
    }

    /// Where a cell shows; outside the canvas as well.
    QPoint at(QPoint cell)
    {
        const QSizeF size = view().editScene()->cellSize();
        return view().mapFromScene((cell.x() + 0.5) * size.width(), (cell.y() + 0.5) * size.height());
    }
    void mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers keys = {})
    {
        QWidget* target = view().viewport();
        QMouseEvent event(type, pos, target->mapToGlobal(pos), button, buttons, keys);
        QCoreApplication::sendEvent(target, &event);
    }
    void drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton)
    {
        mouse(QEvent::MouseButtonPress, from, button, button);
        for (int step = 1; step <= 4; ++step)
            mouse(QEvent::MouseMove, from + (to - from) * step / 4, Qt::NoButton, button);
        mouse(QEvent::MouseButtonRelease, to, button, Qt::NoButton);
    }
    void moveCell(QPoint from, QPoint to) { drag(at(from), at(to)); }
    void click(QPoint cell, Qt::KeyboardModifiers keys = {})
    {
        mouse(QEvent::MouseButtonPress, at(cell), Qt::LeftButton, Qt::LeftButton, keys);
        mouse(QEvent::MouseButtonRelease, at(cell), Qt::LeftButton, Qt::NoButton, keys);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers keys = {})
    {
        view().setFocus();
        QTest::keyClick(view().viewport(), key, keys);
    }
    static void wheel(QWidget* target, int angle, QPoint pos)
    {
        QWheelEvent event(pos, target->mapToGlobal(pos), {}, QPoint(0, angle), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(target, &event);
    }
    void wheel(int angle, QPoint pos) { wheel(view().viewport(), angle, pos); }

    QColor colorAt(QPoint cell) { return view().viewport()->grab().toImage().pixelColor(at(cell)); }
    /// The worker's frame, left half red, right half blue.
    void sendFrame()
    {
        cv::Mat frame(20, 40, CV_8UC4, cv::Scalar(255, 0, 0, 255));
        frame.colRange(20, 40).setTo(cv::Scalar(0, 0, 255, 255));
        worker->frameInput(frame);
    }

    std::unique_ptr<Worker> worker;
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

    void aLedGoesWhereItIsDropped()
    {
        Editor editor({{20, 10}, {30, 10}});
        QPoint from(30, 10);
        for (const auto& [to, cell] : {std::pair(QPoint(7, 3), QPoint(7, 3)),
                                       {QPoint(-30, -30), QPoint(0, 0)},
                                       {QPoint(1, 1), QPoint(1, 1)},
                                       {QPoint(0, 0), QPoint(0, 0)},
                                       {QPoint(41, 21), QPoint(39, 19)}}) {
            QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
            editor.moveCell(from, to);
            QCOMPARE(changes.count(), 1);
            QCOMPARE(changes[0], (QVariantList{"LEDPos", QJsonValue(led(1, cell.x(), cell.y()))}));
            editor.click(cell); // which is no move, even of one at the edge
            QCOMPARE(editor.stored(), (Points{{20, 10}, cell}));
            QCOMPARE(editor.shown(), editor.stored());
            const LEDItem* item = editor.items()[1]; // snapped: its centre is the cell's
            QCOMPARE(editor.view().mapFromScene(item->pos() + item->rect().center()), editor.at(cell));
            from = cell;
        }
    }

    void aReversedDeviceIsShownAsTheScreenIs()
    {
        Editor editor({{0, 5}, {30, 10}}, 1);
        QCOMPARE(editor.shown(), (Points{{39, 5}, {9, 10}}));
        editor.moveCell({9, 10}, {0, 10});
        QCOMPARE(editor.stored(), (Points{{0, 5}, {39, 10}}));
        editor.sendFrame(); // which the worker flips
        QTRY_COMPARE(editor.colorAt({10, 5}), QColor(Qt::red));
        editor.box("widthBox").setValue(30);
        QCOMPARE(editor.shown(), (Points{{29, 5}, {0, 10}}));
        editor.reset();
        QCOMPARE(editor.shown(), (Points{{119, 0}, {118, 0}}));
        editor.worker->onCtlDirChanged(0);
        QTRY_COMPARE(editor.shown(), (Points{{0, 0}, {1, 0}}));
        editor.worker->onCtlDirChanged(1);
        QTRY_COMPARE(editor.shown(), (Points{{119, 0}, {118, 0}}));
    }

    void severalMoveTogetherByMouseAndKeys()
    {
        Editor editor({{10, 10}, {14, 10}, {14, 13}, {30, 15}});
        QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
        editor.drag(editor.at({7, 7}), editor.at({17, 16})); // a rubber band
        editor.click({14, 13}, Qt::ControlModifier);         // takes it out of the selection
        editor.moveCell({14, 10}, {20, 12});
        QCOMPARE(editor.stored(), (Points{{16, 12}, {20, 12}, {14, 13}, {30, 15}}));
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes[0],
                 (QVariantList{"LEDMap", QJsonValue(QJsonArray{led(0, 16, 12), led(1, 20, 12)})}));

        editor.moveCell({20, 12}, {-9, -9}); // as far as all of them stay on the canvas
        QCOMPARE(editor.stored(), (Points{{0, 0}, {4, 0}, {14, 13}, {30, 15}}));
        editor.moveCell({0, 0}, {39, 25});
        QCOMPARE(editor.stored(), (Points{{35, 19}, {39, 19}, {14, 13}, {30, 15}}));
        editor.moveCell({30, 15}, {31, 15}); // one that is not selected moves alone
        QCOMPARE(editor.stored(), (Points{{35, 19}, {39, 19}, {14, 13}, {31, 15}}));

        changes.clear();
        editor.key(Qt::Key_Escape);
        editor.key(Qt::Key_Left); // nothing is selected
        QCOMPARE(changes.count(), 0);
        editor.click({14, 13});
        editor.key(Qt::Key_Left);
        editor.key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(editor.stored(), (Points{{35, 19}, {39, 19}, {13, 8}, {31, 15}}));
        editor.key(Qt::Key_A, Qt::ControlModifier);
        editor.key(Qt::Key_Up);
        QCOMPARE(editor.stored(), (Points{{35, 18}, {39, 18}, {13, 7}, {31, 14}}));
        changes.clear();
        editor.key(Qt::Key_Right); // one is at the edge already
        QCOMPARE(changes.count(), 0);
    }

    void whatWasDoneCanBeUndone()
    {
        const Points start{{10, 10}, {14, 10}, {39, 19}};
        Editor editor(start);
        QSpinBox& box = editor.box("widthBox");
        QVector<QPair<QSize, Points>> states;
        const auto state = [&] { return qMakePair(editor.view().editScene()->gridSize(), editor.stored()); };
        const std::function<void()> steps[] = {
            [] {},
            [&] {
                editor.drag(editor.at({10, 10}), editor.at({5, 5}));
            },
            [&] { editor.key(Qt::Key_Up); }, // of the one that was dragged
            [&] { box.setValue(12); },       // which moves LEDs to the border
            [&] { box.setValue(30); },
            [&] { editor.reset(); },
        };
        for (const auto& step : steps) {
            step();
            states.append(state());
        }
        QCOMPARE(states.last().second, (Points{{0, 0}, {1, 0}, {2, 0}}));
        for (int i = states.size() - 2; i >= 0; --i) {
            editor.key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(state(), states[i]);
            QCOMPARE(editor.shown(), editor.stored());
            QCOMPARE(editor.worker->effectProperty("screenSize"), editor.widget.effectProperty("screenSize"));
        }
        editor.key(Qt::Key_Z, Qt::ControlModifier); // there is no more
        QCOMPARE(editor.stored(), start);
        for (int i = 1; i < states.size(); ++i) {
            editor.key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
            QCOMPARE(state(), states[i]);
        }
        box.setFocus(); // with the focus in a number, too
        box.selectAll();
        QTest::keyClicks(&box, "119\r");
        QTest::keyClick(&box, Qt::Key_Down);
        for (const int width : {118, 119, 120}) {
            QCOMPARE(state().first.width(), width);
            QTest::keyClick(&box, Qt::Key_Z, Qt::ControlModifier);
        }
    }

    void whatComesFromOutsideEndsTheUndoing()
    {
        Editor editor({{10, 10}, {14, 10}});
        const auto isKept = [&](auto change) {
            const QPoint from = editor.shown()[0];
            editor.moveCell(from, from + QPoint(2, 2));
            change();
            const QJsonValue before = editor.widget.effectProperty("");
            editor.key(Qt::Key_Z, Qt::ControlModifier);
            return editor.widget.effectProperty("") == before;
        };
        const auto next = loaded<FullScreenMode>(2);
        for (const auto& [key, val] : {std::pair("LEDMap", QJsonValue(ledMap({{1, 1}, {2, 2}, {3, 3}}))),
                                       {"LEDMap", ledMap({{1, 1}, {2, 2}})},
                                       {"screenSize", QJsonObject{{"w", 50}, {"h", 30}}},
                                       {"effectObject", next->effectProperty("effectObject")}})
            QVERIFY(isKept([&, key = key, val = val] { editor.fill(key, val); }));
        QVERIFY(!isKept([] {}));

        // A LED held by the mouse may go as well.
        editor.mouse(QEvent::MouseButtonPress, editor.at(editor.shown()[1]), Qt::LeftButton, Qt::LeftButton);
        editor.fill("LEDMap", ledMap({{5, 5}}));
        editor.mouse(QEvent::MouseMove, editor.at({9, 9}), Qt::NoButton, Qt::LeftButton);
        editor.mouse(QEvent::MouseButtonRelease, editor.at({9, 9}), Qt::LeftButton, Qt::NoButton);
        QCOMPARE(editor.shown(), (Points{{5, 5}}));
        // The answer to a drop may be another strip.
        connect(&editor.widget, &AbsWorkerWidget::effectPropertyChanged, &editor.widget,
                [&] { editor.fill("LEDMap", ledMap({})); });
        editor.moveCell({5, 5}, {8, 8});
        QVERIFY(editor.items().isEmpty());
    }

    void aSizeCountsWhenItIsWhole()
    {
        Editor editor({{35, 15}});
        QSpinBox& box = editor.box("widthBox");
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, "110"); // by way of 11
        QCOMPARE(editor.stored(), (Points{{35, 15}}));
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(editor.worker->effectProperty("screenSize"), QJsonValue(QJsonObject{{"w", 110}, {"h", 20}}));
        editor.view().setFocus();
        editor.wheel(&box, 120, {5, 5}); // the page is being scrolled
        QCOMPARE(box.value(), 110);

        // One that is told comes back from each box that it changes.
        QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
        editor.widget.setEffectProperty("screenSize", QJsonObject{{"w", 60}, {"h", 40}});
        editor.widget.setEffectProperty("screenSize", QJsonObject{{"w", 60}, {"h", 40}});
        QCOMPARE(changes.count(), 2);
        QCOMPARE(changes[1], (QVariantList{"screenSize", QJsonValue(QJsonObject{{"w", 60}, {"h", 40}})}));
        // The worker takes smaller ones than the boxes offer: no LED may go beyond those.
        editor.worker->setScreenSize({8, 4});
        editor.fill("", editor.worker->effectProperty(""));
        QCOMPARE(editor.shown(), (Points{{7, 3}}));
        editor.moveCell({7, 3}, {-9, 5});
        editor.key(Qt::Key_Z, Qt::ControlModifier);
        editor.moveCell({7, 3}, {9, 5});
        QCOMPARE(editor.stored(), (Points{{7, 3}}));
        QCOMPARE(editor.worker->effectProperty("screenSize"), QJsonValue(QJsonObject{{"w", 8}, {"h", 4}}));
    }

    void framesComeWhileTheEditorIsSeen()
    {
        Editor editor({{0, 0}});
        const QPoint left(10, 10);
        const QJsonValue address = editor.worker->effectProperty("effectObject");
        QCOMPARE(editor.colorAt(left), kGrey);
        editor.fill("effectObject", address); // twice
        QCOMPARE(editor.worker->followers(), 1);
        editor.sendFrame();
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::red));
        QCOMPARE(editor.colorAt({30, 10}), QColor(Qt::blue));

        editor.sendFrame(); // one that waits
        editor.widget.hide();
        editor.fill("effectObject", address);
        QCOMPARE(editor.worker->followers(), 0);
        editor.widget.show();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);
        QCOMPARE(editor.worker->followers(), 1);

        // The monitor went and the strip became dark: so did what the editor shows, until it is back.
        for (const char* notice : {"", "gone"}) {
            editor.sendFrame();
            emit editor.worker->effectPropertyChanged(EffectNotice::kKey, notice);
            QTRY_COMPARE(editor.colorAt(left), *notice ? kGrey : QColor(Qt::red));
        }
        editor.sendFrame();
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::red));

        const auto next = loaded<FullScreenMode>(1);
        editor.sendFrame();
        editor.fill("effectObject", next->effectProperty("effectObject"));
        QCOMPARE(editor.worker->followers(), 0);
        next->frameInput(cv::Mat(20, 40, CV_8UC4, cv::Scalar(0, 255, 0, 255)));
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::green));
        editor.fill("effectObject", address);
        editor.sendFrame();
        editor.worker.reset();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);
        editor.moveCell({0, 0}, {5, 5}); // without a worker that hears of it
        editor.widget.hide();
        editor.widget.show();
    }

    void oddValuesHarmNothing()
    {
        Editor editor({{3, 3}, {4, 4}});
        const LogCapture log;
        const QString address = editor.worker->effectProperty("effectObject").toString();
        for (const QJsonValue& odd :
             {QJsonValue(""), QJsonValue("xyz"), QJsonValue("-1"), QJsonValue("123456789abcdef01234"),
              QJsonValue(address + "0"), QJsonValue(1e18), QJsonValue()})
            editor.fill("effectObject", odd);
        QCOMPARE(log.count("[SSLOptWidget]: There is no such worker:"), 7);
        QCOMPARE(editor.worker->followers(), 1); // the one that it had stays
        for (const QJsonValue& odd : {QJsonValue("map"), QJsonValue(), QJsonValue(ledMap(Points(0x10000)))})
            editor.fill("LEDMap", odd);
        QCOMPARE(log.count("[SSLOptWidget]: The LED map is refused"), 3);
        QCOMPARE(editor.shown(), (Points{{3, 3}, {4, 4}}));

        // By the order, whatever the ids say; what lies outside shows where its light comes from.
        editor.fill("LEDMap", QJsonArray{led(7, 2147483647, -2147483647), led(7, -1, 99), 5, led(0, 6, 7)});
        QCOMPARE(editor.shown(), (Points{{39, 0}, {0, 19}, {0, 0}, {6, 7}}));
        editor.fill("screenSize", QJsonObject{{"w", 60}, {"h", 1e9}});
        editor.fill("screenSize", QJsonObject{{"w", "odd"}, {"h", 150}});
        for (const char* key : {"deviceDir", "unknown", ""})
            editor.fill(key, "odd");
        QCOMPARE(editor.shown(), (Points{{9, 0}, {0, 19}, {0, 0}, {6, 7}}));
        editor.fill("LEDMap", QJsonArray());
        editor.key(Qt::Key_A, Qt::ControlModifier);
        editor.key(Qt::Key_Left);
        QVERIFY(editor.items().isEmpty());
        editor.worker.reset();
        QVERIFY(!FullScreenMode::atAddress(address));
    }

    void allOfTheCanvasShowsAtFirst()
    {
        for (const auto& [canvas, window] : {std::pair(QSize(120, 67), QSize(560, 480)), // a screen
                                             {QSize(100, 99), QSize(900, 400)},
                                             {QSize(20, 100), QSize(400, 900)}}) {
            const QPoint corner(canvas.width() - 1, canvas.height() - 1);
            Editor editor({{0, 0}, corner}, 0, canvas);
            editor.widget.resize(window);
            QCoreApplication::processEvents();
            const QRectF rect = editor.view().sceneRect();
            QCOMPARE(rect.width() / rect.height(), 1.0 * canvas.width() / canvas.height());
            QVERIFY(canvas.width() > canvas.height() ? rect.width() == editor.view().width()
                                                     : rect.height() == editor.view().height());
            for (const LEDItem* item : editor.items()) {
                const QRect seen = editor.view().mapFromScene(item->sceneBoundingRect()).boundingRect();
                QVERIFY(editor.view().viewport()->rect().contains(seen));
            }
            editor.moveCell(corner, {1, 1});
            QCOMPARE(editor.stored()[1], QPoint(1, 1));
        }
    }

    void theWheelZoomsAndTheRightButtonPans()
    {
        Editor editor({{39, 19}, {20, 10}});
        ScreenSyncEditView& view = editor.view();
        const QSizeF base = view.sceneRect().size();
        const QPoint mouse = editor.at({20, 10});
        editor.wheel(720, mouse);
        QCOMPARE(view.sceneRect(), QRectF(QPointF(), base * 2));
        QVERIFY((editor.at({20, 10}) - mouse).manhattanLength() <= 2); // it stays under the mouse
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            const QPoint before = editor.at({20, 10});
            editor.drag({200, 200}, {180, 190}, button);
            const QPoint off = editor.at({20, 10}) - before - QPoint(-20, -10);
            QVERIFY(off.manhattanLength() <= 2);
        }
        editor.drag({400, 300}, {-2000, -2000}, Qt::RightButton); // a square at the edge shows whole
        const QRect last = view.mapFromScene(editor.items()[0]->sceneBoundingRect()).boundingRect();
        QVERIFY(view.viewport()->rect().contains(last));
        editor.wheel(-100000, mouse);
        QCOMPARE(view.sceneRect().size(), base * 0.5);
        editor.wheel(20000000, mouse); // no bound, and nothing breaks
        editor.sendFrame();
        QCoreApplication::processEvents();
        editor.box("widthBox").setValue(41); // another canvas shows whole
        QCOMPARE(view.sceneRect().width(), 1.0 * view.width());
    }

    void eachOfManyLedsCanBeSeenAndReached()
    {
        Points crowd = LedMap::defaultGrid(300).points;
        crowd.append(QPoint(60, 40)); // has room
        Editor many(crowd, 0, QSize(120, 67));
        const QList<LEDItem*> items = many.items();
        QCOMPARE(items.last()->rect().size(), QSizeF(30, 30));
        for (int zoomed = 0; zoomed < 2; ++zoomed) {
            for (LEDItem* item : items) {
                const QPointF centre = item->mapToScene(item->rect().center());
                QCOMPARE(many.view().scene()->itemAt(centre, {}), item);
                for (const LEDItem* other : items)
                    QVERIFY(other == item || !other->mapRectToScene(other->rect()).contains(centre));
            }
            many.moveCell(crowd[0], QPoint(110 - zoomed, 60)); // where there is room again
            QCOMPARE(items[0]->rect().size(), QSizeF(30, 30));
            many.key(Qt::Key_Z, Qt::ControlModifier);
            QVERIFY(items[0]->rect().width() < 15);
            many.wheel(360, many.at(crowd[0]));
        }
        many.moveCell(crowd[0], crowd.last()); // small squares show no number, and of these two one is seen
        QWidget* target = many.view().viewport();
        QHelpEvent help(QEvent::ToolTip, many.at(crowd.last()), target->mapToGlobal(many.at(crowd.last())));
        QCoreApplication::sendEvent(target, &help);
        QCOMPARE(QToolTip::text(), QString("LED 1, 301"));
    }
};

QTEST_MAIN(TestLayoutEditor)
#include "tst_layout_editor.moc"
