#include "effects/colorful/SFrmColorMap.h"
#include "effects/singlecolor/FrmSingleColor.h"
#include "widgets/ColorWheel.h"
#include "widgets/SliderBar.h"

#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

namespace {

struct ShownWheel : ColorWheel
{
    explicit ShownWheel(int width = 200)
    {
        resize(width, 200); // the ring lies 70 to 90 from the middle
        show();
    }
};

} // namespace

class TestOptionWidgets : public QObject
{
    Q_OBJECT

private slots:
    void ringGivesTheHueToClicksAndDrags()
    {
        ShownWheel wheel;
        QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
        wheel.setColor(QColor::fromHsv(30, 200, 100));
        QCOMPARE(colors.count(), 0); // told, not picked
        // Up, just below right, and two between, where a hue is reckoned by 3.14.
        const QVector<QPair<QPoint, int>> hues{
            {{100, 20}, 90}, {{180, 101}, 359}, {{157, 43}, 44}, {{43, 157}, 224}};
        for (const auto& [point, hue] : hues) {
            QTest::mouseClick(&wheel, Qt::LeftButton, {}, point);
            const auto color = colors.takeLast().at(0).value<QColor>();
            QCOMPARE(color.hsvHue(), hue);
            QVERIFY(color.hsvSaturation() == 200 && color.value() == 100);
        }

        // A drag belongs to the part it began in.
        const auto drag = [&wheel](const QPoint& to) {
            QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&wheel, &move);
        };
        colors.clear();
        drag(QPoint(20, 100)); // begun elsewhere
        QTest::mousePress(&wheel, Qt::LeftButton, {}, QPoint(180, 100));
        drag(QPoint(100, 100)); // the square
        drag(QPoint(100, 20));  // back on the ring
        QCOMPARE(colors.count(), 2);
        QCOMPARE(wheel.color().hsvHue(), 90);
        QTest::mouseRelease(&wheel, Qt::LeftButton, {}, QPoint(100, 20));
        drag(QPoint(20, 100));
        QCOMPARE(colors.count(), 2);
    }

    void squareShowsWhatAClickGives()
    {
        ShownWheel wheel(300); // the wheel is centred: the square's side is 99, from (100.5, 50.5)
        wheel.setColor(QColor::fromHsv(240, 255, 255));
        wheel.setColor(Qt::white); // keeps the hue
        const QPoint at(150, 75);  // half way to the right, a quarter down
        const QImage picture = wheel.grab().toImage();
        const QColor up = picture.pixelColor(150, 20);
        QVERIFY2(qAbs(up.hsvHue() - 90) <= 1 && up.hsvSaturation() > 250, "as the ring's click gives");
        QTest::mouseClick(&wheel, Qt::LeftButton, {}, at);
        QTest::mouseClick(&wheel, Qt::LeftButton, {}, QPoint(5, 5)); // a corner outside both
        QCOMPARE(wheel.color().hsvHue(), 240);
        for (const auto& [color, near] : {std::pair(wheel.color(), 0.01), {picture.pixelColor(at), 0.03}})
            QVERIFY(qAbs(color.hsvSaturationF() - 0.5) < near && qAbs(color.valueF() - 0.2475) < near);
    }

    void numbersWheelAndOutsideStayInStep()
    {
        FrmSingleColor options(nullptr);
        options.show();
        auto* green = options.findChild<QSpinBox*>("Gbox");
        auto* wheel = options.findChild<ColorWheel*>("colorWheel");
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        const auto lastChange = [&changes] { return changes.last().at(1).toJsonValue().toArray(); };

        options.setEffectProperty("color", QJsonArray{10, 20, 30});
        QCOMPARE(changes.count(), 1); // reported back once
        QCOMPARE(lastChange(), (QJsonArray{10, 20, 30}));
        QCOMPARE(wheel->color().rgb(), qRgb(10, 20, 30));
        green->setFocus();
        green->selectAll();
        QTest::keyClicks(green, "200");
        QTest::keyClick(green, Qt::Key_Return);
        QCOMPARE(lastChange(), (QJsonArray{10, 200, 30}));
        QCOMPARE(wheel->color().hsvHue(), QColor(10, 200, 30).hsvHue());

        const int before = changes.count();
        QTest::mouseClick(wheel, Qt::LeftButton, {},
                          wheel->rect().center() - QPoint(0, wheel->height() / 2 - 18));
        QCOMPARE(changes.count(), before + 1);
        QCOMPARE(lastChange().first().toInt(), wheel->color().red());
        options.setEffectProperty("color", 7);
        QCOMPARE(options.effectProperty("").toObject().value("color").toArray(), lastChange());
    }

    void colorDialogSetsTheColorOfOptionsThatMayVanishUnderIt()
    {
        for (const bool vanish : {false, true}) { // as when the device is unplugged
            QPointer<FrmSingleColor> options(new FrmSingleColor(nullptr));
            options->setEffectProperty("color", QJsonArray{10, 20, 30});
            QColor offered;
            QTimer::singleShot(0, this, [&] {
                if (vanish)
                    delete options;
                if (auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget())) {
                    offered = dialog->currentColor();
                    dialog->setCurrentColor(QColor(4, 5, 6));
                    dialog->accept();
                }
            });
            options->findChild<QPushButton*>("selectColorBtn")->click();
            QCOMPARE(offered, QColor(10, 20, 30));
            QVERIFY(vanish ? !options : options->effectProperty("color").toArray() == QJsonArray({4, 5, 6}));
            delete options;
        }
    }

    void speedSliderReportsEverything()
    {
        SFrmColorMap options(nullptr);
        options.show();
        // The margins alone leave 14, which cuts the text.
        QVERIFY(options.findChild<QLabel*>("speedLabel")->height() >= 20);
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        QTest::keyClick(options.findChild<QSlider*>("speedSlider"), Qt::Key_Right);
        QVERIFY(changes.count() == 1 && changes.last().at(1).toJsonValue() == 2);
        options.setEffectProperty("", QJsonObject{{"speed", 120}});
        QCOMPARE(changes.count(), 2); // comes back, like a change by hand
        QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"speed", 120}}));
    }

    void barMovesByItemsPlacesAndKeys()
    {
        SliderBar bar;
        QSignalSpy changes(&bar, &SliderBar::currentItemChanged);
        bar.setHorizontal(false);
        bar.setItems("a;b;c;d");
        bar.resize(80, 200);
        bar.show();
        QCOMPARE(changes.last(), (QVariantList{0, "a"}));
        bar.moveTo(QPointF(10, 900));
        QCOMPARE(bar.currentIndex(), 0);
        bar.moveTo(QPointF(10, 125)); // the third quarter of the height
        QCOMPARE(bar.currentItem(), QString("c"));

        bar.setKeyMove(true);
        for (const auto key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) // there is no fifth
            QTest::keyClick(&bar, key);
        QCOMPARE(bar.currentIndex(), 2);

        bar.setHorizontal(true);
        bar.setLayoutDirection(Qt::RightToLeft); // a row begins at the right
        bar.moveTo(QPointF(bar.width() - 1, 10));
        QCOMPARE(bar.currentItem(), QString("a"));
        QTest::keyClick(&bar, Qt::Key_Left);
        bar.moveTo(bar.currentIndex());
        QCOMPARE(bar.currentItem(), QString("b"));
    }
};

QTEST_MAIN(TestOptionWidgets)
#include "tst_option_widgets.moc"
