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
        for (QGraphicsItem* item : view().scene()->items(Qt::AscendingOrder)) {
            if (auto* each = dynamic_cast<LEDItem*>(item))
                found.append(each);
        }
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
    void wheel(int angle, QPoint pos)
    {
        QWheelEvent event(pos, view().viewport()->mapToGlobal(pos), {}, QPoint(0, angle), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view().viewport(), &event);
    }

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

    void aLedGoesWhereItIsDropped_data()
    {
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QPoint>("cell");
        QTest::newRow("cell") << QPoint(7, 3) << QPoint(7, 3);
        QTest::newRow("first column and row") << QPoint(0, 0) << QPoint(0, 0);
        QTest::newRow("far beyond the left top") << QPoint(-30, -30) << QPoint(0, 0);
        QTest::newRow("beyond the right bottom") << QPoint(41, 21) << QPoint(39, 19);
    }
    void aLedGoesWhereItIsDropped()
    {
        QFETCH(QPoint, to);
        QFETCH(QPoint, cell);
        Editor editor({{20, 10}, {30, 10}});
        QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
        editor.moveCell({30, 10}, to);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes[0], (QVariantList{"LEDPos", QJsonValue(led(1, cell.x(), cell.y()))}));
        QCOMPARE(editor.stored(), (Points{{20, 10}, cell}));
        QCOMPARE(editor.shown(), editor.stored());
        // Snapped: its centre is the cell's.
        const LEDItem* item = editor.items()[1];
        QCOMPARE(editor.view().mapFromScene(item->pos() + item->rect().center()), editor.at(cell));
        editor.click(cell); // which is no move, even of one at the edge
        QCOMPARE(editor.stored()[1], cell);
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

    void severalMoveTogetherAndAreStoredOnce()
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
    }

    void arrowsMoveWhatIsSelected()
    {
        Editor editor({{10, 10}, {14, 10}});
        QSignalSpy changes(&editor.widget, &AbsWorkerWidget::effectPropertyChanged);
        editor.key(Qt::Key_Left); // nothing is selected
        QCOMPARE(changes.count(), 0);
        editor.click({10, 10});
        editor.key(Qt::Key_Left);
        editor.key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(editor.stored(), (Points{{9, 5}, {14, 10}}));
        editor.key(Qt::Key_A, Qt::ControlModifier);
        editor.key(Qt::Key_Right);
        editor.key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(editor.stored(), (Points{{10, 0}, {15, 5}}));
        changes.clear();
        editor.key(Qt::Key_Up); // at the edge already
        QCOMPARE(changes.count(), 0);
        editor.key(Qt::Key_Escape);
        editor.key(Qt::Key_Down);
        QCOMPARE(editor.stored(), (Points{{10, 0}, {15, 5}}));
    }

    void whatWasDoneCanBeUndone()
    {
        const Points start{{10, 10}, {14, 10}, {39, 19}};
        Editor editor(start);
        QVector<QPair<QSize, Points>> states;
        const auto state = [&] { return qMakePair(editor.view().editScene()->gridSize(), editor.stored()); };
        const auto step = [&](auto action) {
            action();
            states.append(state());
        };
        step([] {});
        step([&] { editor.moveCell({10, 10}, {5, 5}); });
        step([&] {
            editor.key(Qt::Key_A, Qt::ControlModifier);
            editor.key(Qt::Key_Up);
        });
        step([&] { editor.box("widthBox").setValue(12); }); // which moves LEDs to the border
        step([&] { editor.box("widthBox").setValue(30); });
        step([&] { editor.reset(); });
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
            editor.key(i % 2 ? Qt::Key_Y : Qt::Key_Z,
                       Qt::ControlModifier | (i % 2 ? Qt::NoModifier : Qt::ShiftModifier));
            QCOMPARE(state(), states[i]);
        }
        // With the focus in a number, too.
        editor.box("widthBox").setFocus();
        editor.box("widthBox").selectAll();
        QTest::keyClicks(&editor.box("widthBox"), "119\r");
        QTest::keyClick(&editor.box("widthBox"), Qt::Key_Down);
        QCOMPARE(state().first.width(), 118);
        QTest::keyClick(&editor.box("widthBox"), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(state().first.width(), 119);
        QTest::keyClick(&editor.box("widthBox"), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(state().first.width(), 120);
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
        QVERIFY(isKept([&] { editor.fill("LEDMap", ledMap({{1, 1}, {2, 2}, {3, 3}})); })); // another strip
        QVERIFY(isKept([&] { editor.fill("LEDMap", ledMap({{1, 1}, {2, 2}})); }));
        QVERIFY(isKept([&] { editor.fill("screenSize", QJsonObject{{"w", 50}, {"h", 30}}); }));
        const auto next = loaded<FullScreenMode>(2);
        QVERIFY(isKept([&] { editor.fill("effectObject", next->effectProperty("effectObject")); }));
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
        QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal({5, 5}), {}, QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&box, &wheel); // the page is being scrolled
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
        QCOMPARE(editor.colorAt(left), kGrey);
        editor.sendFrame();
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::red));
        QCOMPARE(editor.colorAt({30, 10}), QColor(Qt::blue));
        editor.fill("effectObject", editor.worker->effectProperty("effectObject")); // twice
        QCOMPARE(editor.worker->followers(), 1);

        editor.sendFrame(); // one that waits
        editor.widget.hide();
        QCOMPARE(editor.worker->followers(), 0);
        editor.fill("effectObject", editor.worker->effectProperty("effectObject"));
        QCOMPARE(editor.worker->followers(), 0);
        editor.widget.show();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);
        QCOMPARE(editor.worker->followers(), 1);
        editor.sendFrame();
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::red));

        // The strip became dark: so did what the editor shows, and the last word counts.
        editor.sendFrame();
        emit editor.worker->effectPropertyChanged(EffectNotice::kKey, "gone");
        QTRY_COMPARE(editor.colorAt(left), kGrey);
        emit editor.worker->effectPropertyChanged(EffectNotice::kKey, "");
        editor.sendFrame();
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::red));

        const auto next = loaded<FullScreenMode>(1);
        editor.sendFrame();
        editor.fill("effectObject", next->effectProperty("effectObject"));
        QCOMPARE(editor.worker->followers(), 0);
        next->frameInput(cv::Mat(20, 40, CV_8UC4, cv::Scalar(0, 255, 0, 255)));
        QTRY_COMPARE(editor.colorAt(left), QColor(Qt::green));
        editor.fill("effectObject", editor.worker->effectProperty("effectObject"));
        editor.sendFrame();
        editor.worker.reset();
        QCoreApplication::processEvents();
        QCOMPARE(editor.colorAt(left), kGrey);
        editor.moveCell({0, 0}, {5, 5}); // without a worker that hears of it
        editor.widget.hide();
        editor.widget.show();
    }

    void framesThatNobodyCouldPaintCostNoPainting()
    {
        Editor editor({{0, 0}});
        QCoreApplication::processEvents();
        struct Paints : QObject
        {
            bool eventFilter(QObject*, QEvent* event) override
            {
                count += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
            int count = 0;
        } paints;
        editor.view().viewport()->installEventFilter(&paints);
        for (int i = 0; i < 50; ++i)
            editor.sendFrame();
        QTRY_VERIFY(paints.count > 0);
        QCoreApplication::processEvents();
        QVERIFY2(paints.count <= 2, qPrintable(QString::number(paints.count)));
    }

    void anAddressIsTakenOfALivingWorkerOnly_data()
    {
        QTest::addColumn<QJsonValue>("address");
        const QString dead = loaded<FullScreenMode>(1)->effectProperty("effectObject").toString();
        for (const char* text : {"", "0", "12", "xyz", "-1", "ffffffffffffffff", "123456789abcdef01234"})
            QTest::newRow(text) << QJsonValue(text);
        QTest::newRow("dead") << QJsonValue(dead + "0");
        QTest::newRow("a number") << QJsonValue(1e18);
        QTest::newRow("null") << QJsonValue();
    }
    void anAddressIsTakenOfALivingWorkerOnly()
    {
        QFETCH(QJsonValue, address);
        Editor editor({{0, 0}});
        const LogCapture log;
        editor.fill("effectObject", address);
        QCOMPARE(log.count("[SSLOptWidget]: There is no such worker:"), 1);
        editor.sendFrame(); // the one that it had stays
        QTRY_COMPARE(editor.colorAt({10, 10}), QColor(Qt::red));
        const QString text = editor.worker->effectProperty("effectObject").toString();
        QCOMPARE(FullScreenMode::atAddress(text), static_cast<FullScreenMode*>(editor.worker.get()));
        editor.worker.reset();
        QVERIFY(!FullScreenMode::atAddress(text));
    }

    void anOddMapHarmsNothing()
    {
        Editor editor({{3, 3}, {4, 4}});
        const LogCapture log;
        for (const QJsonValue& odd : {QJsonValue("map"), QJsonValue(), QJsonValue(ledMap(Points(0x10000)))})
            editor.fill("LEDMap", odd);
        QCOMPARE(log.count("[SSLOptWidget]: The LED map is refused"), 3);
        QCOMPARE(editor.shown(), (Points{{3, 3}, {4, 4}}));

        // By the order, whatever the ids say; what lies outside shows where its light comes from.
        editor.fill("LEDMap",
                    QJsonArray{led(7, 2147483647, -2147483647), led(7, -1, 99), 5, "odd", led(0, 6, 7)});
        QCOMPARE(editor.shown(), (Points{{39, 0}, {0, 19}, {0, 0}, {0, 0}, {6, 7}}));
        editor.fill("screenSize", QJsonObject{{"w", 60}, {"h", 1e9}});
        editor.fill("screenSize", QJsonObject{{"w", "odd"}, {"h", 150}});
        editor.fill("deviceDir", "odd");
        editor.fill("unknown", 1);
        editor.fill("", "odd");
        QCOMPARE(editor.shown(), (Points{{9, 0}, {0, 19}, {0, 0}, {0, 0}, {6, 7}}));
        editor.fill("LEDMap", QJsonArray());
        editor.key(Qt::Key_A, Qt::ControlModifier);
        editor.key(Qt::Key_Left);
        QVERIFY(editor.items().isEmpty());
    }

    void allOfTheCanvasShowsAtFirst_data()
    {
        QTest::addColumn<QSize>("canvas");
        QTest::addColumn<QSize>("window");
        QTest::newRow("screen") << QSize(120, 67) << QSize(560, 480);
        QTest::newRow("square in a wide window") << QSize(100, 99) << QSize(900, 400);
        QTest::newRow("tower in a tall window") << QSize(20, 100) << QSize(400, 900);
        QTest::newRow("high in a tall window") << QSize(99, 100) << QSize(300, 700);
    }
    void allOfTheCanvasShowsAtFirst()
    {
        QFETCH(QSize, canvas);
        QFETCH(QSize, window);
        const QPoint corner(canvas.width() - 1, canvas.height() - 1);
        Editor editor({{0, 0}, corner}, 0, canvas);
        editor.widget.resize(window);
        QCoreApplication::processEvents();
        const QRectF rect = editor.view().sceneRect();
        QCOMPARE(rect.width() / rect.height(), 1.0 * canvas.width() / canvas.height());
        if (canvas.width() > canvas.height())
            QCOMPARE(rect.width(), 1.0 * editor.view().width());
        else
            QCOMPARE(rect.height(), 1.0 * editor.view().height());
        for (const LEDItem* item : editor.items()) {
            const QRect seen = editor.view().mapFromScene(item->sceneBoundingRect()).boundingRect();
            QVERIFY(editor.view().viewport()->rect().contains(seen));
        }
        editor.moveCell(corner, {1, 1});
        QCOMPARE(editor.stored()[1], QPoint(1, 1));
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
        editor.moveCell({20, 10}, {18, 9});
        QCOMPARE(editor.stored()[1], QPoint(18, 9));
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

    void crowdedLedsNeverCoverEachOther()
    {
        Points crowd;
        for (int i = 0; i < 60; ++i)
            crowd.append(QPoint(10 + i % 15, 5 + i / 15));
        crowd.append(QPoint(38, 18)); // has room
        Editor many(crowd, 0, QSize(120, 67));
        const QList<LEDItem*> items = many.items();
        QCOMPARE(items.last()->rect().size(), QSizeF(30, 30));
        for (int zoomed = 0; zoomed < 2; ++zoomed) {
            for (int i = 0; i < items.size(); ++i) {
                const QPointF centre = items[i]->mapToScene(items[i]->rect().center());
                for (int other = 0; other < items.size(); ++other) {
                    const QRectF square = items[other]->mapRectToScene(items[other]->rect());
                    QCOMPARE(square.contains(centre), other == i);
                }
                QCOMPARE(many.view().scene()->itemAt(centre, {}), items[i]);
            }
            many.moveCell(crowd[0], QPoint(110 - zoomed, 60)); // where there is room again
            QCOMPARE(items[0]->rect().size(), QSizeF(30, 30));
            many.key(Qt::Key_Z, Qt::ControlModifier);
            QVERIFY(items[0]->rect().width() < 15);
            many.wheel(360, many.at({60, 60}));
        }
    }

    void theNumbersOfACellAreTold()
    {
        Editor editor({{3, 3}, {8, 8}, {3, 3}});
        const auto tipAt = [&](QPoint cell) {
            QWidget* target = editor.view().viewport();
            QHelpEvent help(QEvent::ToolTip, editor.at(cell), target->mapToGlobal(editor.at(cell)));
            QCoreApplication::sendEvent(target, &help);
            return QToolTip::text();
        };
        QCOMPARE(tipAt({3, 3}), QString("LED 1, 3"));
        QCOMPARE(tipAt({8, 8}), QString("LED 2"));
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        QCOMPARE(tipAt({30, 10}), QString());
    }
};

QTEST_MAIN(TestLayoutEditor)
#include "tst_layout_editor.moc"
