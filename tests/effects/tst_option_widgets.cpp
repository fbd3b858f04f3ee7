#include "effects/colorful/SFrmColorMap.h"
#include "effects/dynamicMusic/MMSOptWidget.h"
#include "effects/dynamicMusic/Mode2/MM2SOptWid.h"
#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"
#include "effects/dynamicMusic/strengthSlider.h"
#include "effects/singlecolor/FrmSingleColor.h"
#include "widgets/ColorWheel.h"
#include "widgets/SliderBar.h"

#include <QtTest>
#include <QtWidgets>

namespace {

struct ShownWheel : ColorWheel
{
    explicit ShownWheel(int width = 200)
    {
        resize(width, 200); // the ring lies 70 to 90 from the middle
        show();
    }
};

QJsonValue lastValue(const QSignalSpy& changes)
{
    return changes.last().at(1).toJsonValue();
}

QJsonArray capturers(const QStringList& ids)
{
    QJsonArray list;
    for (const QString& id : ids)
        list.append(QJsonObject{{"id", id}, {"desc", "The " + id}});
    return list;
}

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
            QVERIFY(color.hsvHue() == hue && color.hsvSaturation() == 200 && color.value() == 100);
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
        QVERIFY(colors.count() == 2 && wheel.color().hsvHue() == 90);
    }

    void keysGoAboutInTheSquareAndAroundTheRing()
    {
        ShownWheel wheel;
        wheel.setColor(QColor::fromHsv(358, 200, 1));
        const QVector<QPair<Qt::Key, QColor>> steps{
            {Qt::Key_Right, QColor::fromHsv(358, 230, 1)},     {Qt::Key_Up, QColor::fromHsv(358, 230, 0)},
            {Qt::Key_Down, QColor::fromHsv(358, 230, 30)},     {Qt::Key_PageUp, QColor::fromHsv(28, 230, 30)},
            {Qt::Key_PageDown, QColor::fromHsv(358, 230, 30)}, {Qt::Key_Left, QColor::fromHsv(358, 200, 30)}};
        QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
        for (const auto& [key, color] : steps) {
            QTest::keyClick(&wheel, key, Qt::ControlModifier);
            QCOMPARE(colors.takeLast().at(0).value<QColor>(), color);
            QCOMPARE(QAccessible::queryAccessibleInterface(&wheel)->text(QAccessible::Value), color.name());
        }
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
        options.setEffectProperty("color", QJsonArray{10, 20, 30});
        QVERIFY(changes.count() == 1 && lastValue(changes) == QJsonArray({10, 20, 30})); // once
        QCOMPARE(wheel->color().rgb(), qRgb(10, 20, 30));
        green->setFocus();
        green->selectAll();
        QTest::keyClicks(green, "200");
        QTest::keyClick(green, Qt::Key_Return);
        QCOMPARE(lastValue(changes), QJsonValue(QJsonArray{10, 200, 30}));
        QCOMPARE(wheel->color().hsvHue(), QColor(10, 200, 30).hsvHue());
        changes.clear();
        QTest::mouseClick(wheel, Qt::LeftButton, {}, {wheel->width() / 2, 18}); // on the ring
        QVERIFY(changes.count() == 1 && lastValue(changes)[0] == wheel->color().red());
        options.setEffectProperty("color", 7);
        QCOMPARE(options.effectProperty("")["color"], lastValue(changes));
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
        const QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        QTest::keyClick(options.findChild<QSlider*>("speedSlider"), Qt::Key_Right);
        QVERIFY(changes.count() == 1 && lastValue(changes) == 2);
        options.setEffectProperty("", QJsonObject{{"speed", 120}});
        QCOMPARE(changes.count(), 2); // comes back, like a change by hand
        QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"speed", 120}}));
    }

    void barMovesByItemsPlacesAndKeys()
    {
        SliderBar bar;
        QSignalSpy changes(&bar, &SliderBar::currentItemChanged);
        bar.setItems("a;b;c;d");
        bar.resize(200, 80);
        bar.setKeyMove(true);
        bar.show();
        QCOMPARE(changes.last(), (QVariantList{0, "a"}));
        bar.moveTo(QPointF(900, 10));
        QCOMPARE(bar.currentIndex(), 0);
        bar.moveTo(QPointF(125, 10));                                    // the third quarter of the width
        for (const auto key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) // there is no fifth
            QTest::keyClick(&bar, key);
        QCOMPARE(bar.currentItem(), QString("c"));
        bar.setLayoutDirection(Qt::RightToLeft); // a row begins at the right
        bar.moveTo(QPointF(bar.width() - 1, 10));
        QCOMPARE(bar.currentItem(), QString("a"));
        QTest::keyClick(&bar, Qt::Key_Left);
        QCOMPARE(bar.currentItem(), QString("b"));
    }

    void sliderOfTheStrengthFindsItsPlaceAgain()
    {
        QCOMPARE(StrengthSlider::valueOf(-1e300) + StrengthSlider::valueOf(1e300), 1 + 200);
        for (int value = 1; value <= 200; ++value)
            QCOMPARE(StrengthSlider::valueOf(StrengthSlider::strengthOf(value)), value);
    }

    void choiceOfASoundSourceStaysOnIt()
    {
        SFrmAudioPeakValues options(nullptr);
        auto* box = options.findChild<QComboBox*>("devicesComboBox");
        const QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonObject{{"captureId", "b"}, {"capturers", capturers({"a", "b"})}});
        QCOMPARE(box->currentText(), QString("The b"));
        options.setEffectProperty("capturers", capturers({"new", "a", "b"}));
        QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"captureId", "b"}}));
        options.setEffectProperty("capturers", capturers({"new", "a"}));
        QVERIFY(box->currentIndex() == -1 && changes.isEmpty()); // not the first, which nobody has chosen
        for (int device = 1; device <= 2; ++device) {            // the page shows one after the other
            options.setEffectProperty("captureId", "a");
            QTest::keyClick(box, Qt::Key_Up);
            QVERIFY(changes.count() == device && lastValue(changes) == "new");
        }
        options.setEffectProperty("captureId", "a"); // stands in for another one
        options.show();
        box->showPopup();
        QTest::keyClick(box->view(), Qt::Key_Return);
        QVERIFY(changes.count() == 3 && lastValue(changes) == "a");
    }

    void moodAndSoundAreOneWidget()
    {
        MM2SOptWid options(nullptr);
        const QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonObject{{"strength", 0.75}, {"speed", 0.25}});
        options.setEffectProperty("strength", QJsonValue());
        const QJsonValue told = options.effectProperty(""); // which is no change of the user's
        QVERIFY(told["strength"] == 0.75 && told["speed"] == 0.25 && changes.isEmpty());
        auto* strength = options.findChild<QSlider*>("strengthSlider");
        auto* speed = options.findChild<QSlider*>("speedSlider");
        QTest::keyClick(strength, Qt::Key_Home);
        QTest::keyClick(speed, Qt::Key_End);
        QVERIFY(changes.count() == 2 && changes[0][0] == "strength" && changes[1][0] == "speed");
    }

    void longTextsKeepThePageInShape()
    {
        const auto widthWith = [](int letters) {
            MMSOptWidget options(nullptr);
            options.setEffectProperty("capturers", capturers({QString(letters, 'x')}));
            return options.minimumSizeHint().width();
        };
        QCOMPARE(widthWith(300), widthWith(3));
    }
};

QTEST_MAIN(TestOptionWidgets)
#include "tst_option_widgets.moc"
