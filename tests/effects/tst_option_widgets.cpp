#include "effects/colorful/SFrmColorMap.h"
#include "effects/singlecolor/FrmSingleColor.h"
#include "ui/controls/ColorWheel.h"
#include "ui/controls/SliderBar.h"

#include <QApplication>
#include <QColorDialog>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

namespace {

QColor pixelAt(QWidget& widget, const QPoint& at)
{
    return widget.grab().toImage().pixelColor(at);
}

} // namespace

class TestOptionWidgets : public QObject
{
    Q_OBJECT

private slots:
    void ringGivesTheHue_data();
    void ringGivesTheHue();
    void squareGivesSaturationAndValue();
    void dragBelongsToThePartItBeganIn();
    void greyKeepsTheHue();
    void wheelShowsWhatAClickGives();

    void numbersWheelAndOutsideStayInStep();
    void colorDialogSetsTheColor();
    void optionsMayVanishUnderTheColorDialog();
    void nothingIsCutInTheColorOptions();
    void speedSliderReportsEverything();

    void firstStepOfASlide_data();
    void firstStepOfASlide();
    void clickMovesTheHighlight();
    void barStartsAtItsFirstItem();
    void keysMoveOnlyWhenAllowed();
    void namesAndBordersFindTheirItem();
};

void TestOptionWidgets::ringGivesTheHue_data()
{
    QTest::addColumn<QPoint>("point"); // in 200 by 200 the ring lies 70 to 90 from the middle
    QTest::addColumn<int>("hue");
    QTest::newRow("right") << QPoint(180, 100) << 0;
    QTest::newRow("up") << QPoint(100, 20) << 90;
    QTest::newRow("left") << QPoint(20, 100) << 180;
    QTest::newRow("down") << QPoint(100, 180) << 270;
    QTest::newRow("just below right") << QPoint(180, 101) << 359;
    QTest::newRow("up right, by 3.14") << QPoint(157, 43) << 44;
    QTest::newRow("up left, by 3.14") << QPoint(43, 43) << 135;
    QTest::newRow("down left") << QPoint(43, 157) << 224;
    QTest::newRow("down right") << QPoint(157, 157) << 315;
}

void TestOptionWidgets::ringGivesTheHue()
{
    QFETCH(QPoint, point);
    QFETCH(int, hue);
    ColorWheel wheel;
    wheel.resize(200, 200);
    wheel.show();
    wheel.setColor(QColor::fromHsv(30, 200, 100));
    QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
    QTest::mouseClick(&wheel, Qt::LeftButton, {}, point);
    QCOMPARE(colors.count(), 1);
    const auto color = colors.at(0).at(0).value<QColor>();
    QCOMPARE(color.hsvHue(), hue);
    QCOMPARE(color.hsvSaturation(), 200);
    QCOMPARE(color.value(), 100);
}

void TestOptionWidgets::squareGivesSaturationAndValue()
{
    ColorWheel wheel;
    wheel.resize(300, 200); // the wheel is centred: the square's side is 99, from (100.5, 50.5)
    wheel.show();
    QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
    QTest::mouseClick(&wheel, Qt::LeftButton, {}, QPoint(150, 75));
    QCOMPARE(colors.count(), 1);
    QCOMPARE(wheel.color().hsvHue(), 0);
    QVERIFY2(qAbs(wheel.color().hsvSaturationF() - 0.5) < 0.01, "half way to the right");
    QVERIFY2(qAbs(wheel.color().valueF() - 0.2475) < 0.01, "a quarter down");
    QTest::mouseClick(&wheel, Qt::LeftButton, {}, QPoint(5, 5)); // a corner outside both
    QCOMPARE(colors.count(), 1);
}

void TestOptionWidgets::dragBelongsToThePartItBeganIn()
{
    ColorWheel wheel;
    wheel.resize(200, 200);
    wheel.show();
    QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
    QTest::mouseMove(&wheel, QPoint(100, 20));
    QCOMPARE(colors.count(), 0); // no button
    QTest::mousePress(&wheel, Qt::LeftButton, {}, QPoint(180, 100));
    const auto drag = [&wheel](const QPoint& to) {
        QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&wheel, &move);
    };
    drag(QPoint(150, 100)); // the gap, then the square
    drag(QPoint(100, 100));
    QCOMPARE(colors.count(), 1);
    drag(QPoint(100, 20)); // back on the ring
    QCOMPARE(colors.count(), 2);
    QCOMPARE(wheel.color().hsvHue(), 90);
    QTest::mouseRelease(&wheel, Qt::LeftButton, {}, QPoint(100, 20));
    drag(QPoint(20, 100));
    QCOMPARE(colors.count(), 2);
}

void TestOptionWidgets::greyKeepsTheHue()
{
    ColorWheel wheel;
    wheel.resize(200, 200);
    wheel.show();
    QSignalSpy colors(&wheel, &ColorWheel::colorChanged);
    wheel.setColor(QColor::fromHsv(200, 255, 255));
    wheel.setColor(Qt::white);
    QCOMPARE(colors.count(), 0); // told, not picked
    QTest::mouseClick(&wheel, Qt::LeftButton, {}, QPoint(140, 140));
    QCOMPARE(wheel.color().hsvHue(), 200);
}

void TestOptionWidgets::wheelShowsWhatAClickGives()
{
    ColorWheel wheel;
    wheel.resize(200, 200);
    wheel.setColor(QColor::fromHsv(240, 255, 255));
    const QColor up = pixelAt(wheel, QPoint(100, 20));
    QVERIFY2(qAbs(up.hsvHue() - 90) <= 1 && up.hsvSaturation() > 250,
             "the ring's hue is drawn where it is picked");
    const QColor inside = pixelAt(wheel, QPoint(125, 75)); // three quarters right, a quarter down
    QCOMPARE(inside.hsvHue(), 240);
    QVERIFY2(qAbs(inside.hsvSaturationF() - 0.75) < 0.03 && qAbs(inside.valueF() - 0.25) < 0.03,
             "and so is the square's colour");
}

void TestOptionWidgets::numbersWheelAndOutsideStayInStep()
{
    FrmSingleColor options(nullptr);
    options.show();
    auto* red = options.findChild<QSpinBox*>("Rbox");
    auto* green = options.findChild<QSpinBox*>("Gbox");
    auto* wheel = options.findChild<ColorWheel*>("colorWheel");
    QVERIFY(red && green && wheel);
    QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
    const auto lastChange = [&changes] { return changes.last().at(1).toJsonValue().toArray(); };

    options.setEffectProperty("color", QJsonArray{10, 20, 30});
    QCOMPARE(changes.count(), 1); // reported back once
    QCOMPARE(changes.last().at(0).toString(), QString("color"));
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
    QCOMPARE(red->value(), wheel->color().red());
    QCOMPARE(options.effectProperty("").toObject().value("color").toArray(), lastChange());

    options.setEffectProperty("", QJsonObject{{"color", QJsonArray{1, 2, 3}}});
    QCOMPARE(options.effectProperty("color").toArray(), (QJsonArray{1, 2, 3}));
    options.setEffectProperty("color", 7);
    options.setEffectProperty("speed", 7);
    QCOMPARE(options.effectProperty("color").toArray(), (QJsonArray{1, 2, 3}));
    QCOMPARE(options.effectProperty("speed"), QJsonValue(QJsonValue::Null));
}

void TestOptionWidgets::colorDialogSetsTheColor()
{
    FrmSingleColor options(nullptr);
    options.show();
    options.setEffectProperty("color", QJsonArray{10, 20, 30});
    QColor offered;
    const auto answer = [&offered](const QColor& color) {
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        offered = dialog->currentColor();
        dialog->setCurrentColor(color);
        color == QColor(Qt::black) ? dialog->reject() : dialog->accept();
    };
    auto* button = options.findChild<QPushButton*>("selectColorBtn");
    QCOMPARE(button->property("class").toString(), QString("Button1"));
    QTimer::singleShot(0, this, [&] { answer(QColor(4, 5, 6)); });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(offered, QColor(10, 20, 30));
    QCOMPARE(options.effectProperty("color").toArray(), (QJsonArray{4, 5, 6}));
    QTimer::singleShot(0, this, [&] { answer(Qt::black); });
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(options.effectProperty("color").toArray(), (QJsonArray{4, 5, 6}));
}

void TestOptionWidgets::optionsMayVanishUnderTheColorDialog()
{
    QPointer<FrmSingleColor> options(new FrmSingleColor(nullptr));
    options->show();
    QTimer::singleShot(0, this, [&options] {
        delete options; // as when the device is unplugged
        if (auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget()))
            dialog->accept();
    });
    options->findChild<QPushButton*>("selectColorBtn")->click();
    QVERIFY(!options);
}

void TestOptionWidgets::nothingIsCutInTheColorOptions()
{
    QFile sheet(":/styles/default.qss");
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    FrmSingleColor options(nullptr);
    options.setStyleSheet(QString::fromUtf8(sheet.readAll()));
    QCOMPARE(options.height(), 180);
    QVERIFY(options.minimumSizeHint().height() <= 180);
    options.findChild<QPushButton*>()->setText("Выбрать цвет подсветки"); // a long language
    options.resize(options.minimumSizeHint());
    options.show();
    for (const QWidget* part : options.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        QVERIFY2(options.rect().contains(part->geometry()), qPrintable(part->objectName()));
        QVERIFY2(part->width() >= part->minimumSizeHint().width() &&
                     part->height() >= part->minimumSizeHint().height(),
                 qPrintable(part->objectName()));
    }
}

void TestOptionWidgets::speedSliderReportsEverything()
{
    SFrmColorMap options(nullptr);
    options.resize(300, options.height());
    options.show();
    QCOMPARE(options.height(), 50);
    auto* slider = options.findChild<QSlider*>("speedSlider");
    QVERIFY(slider && slider->height() >= 20);
    auto* label = options.findChild<QLabel*>("speedLabel");
    QVERIFY(label->height() >= 20); // the margins alone leave 14, which cuts the text
    QCOMPARE(label->geometry().center().y(), slider->geometry().center().y());

    QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last().at(1).toJsonValue().toInt(), 2);
    options.setEffectProperty("", QJsonObject{{"speed", 120}});
    QCOMPARE(changes.count(), 2); // comes back, like a change by hand
    QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"speed", 120}}));
    options.setEffectProperty("speed", 100000);
    QCOMPARE(options.effectProperty("speed").toInt(), 200);
    options.setEffectProperty("speed", -3);
    QCOMPARE(options.effectProperty("speed").toInt(), 1);
    options.setEffectProperty("color", 50);
    QCOMPARE(options.effectProperty("speed").toInt(), 1);
}

void TestOptionWidgets::firstStepOfASlide_data()
{
    QTest::addColumn<double>("distance");
    QTest::addColumn<int>("step");
    QTest::newRow("none") << 0.0 << 1;
    QTest::newRow("less than a pixel") << 0.9 << 1;
    QTest::newRow("1: n is 2") << 1.0 << 2;
    QTest::newRow("4: n is 3") << 4.0 << 4;
    QTest::newRow("99: n is 10") << 99.0 << 14;
    QTest::newRow("100: n is 11") << 100.0 << 15;
}

void TestOptionWidgets::firstStepOfASlide()
{
    QFETCH(double, distance);
    QTEST(SliderBar::initStep(distance), "step");
}

void TestOptionWidgets::clickMovesTheHighlight()
{
    SliderBar bar;
    bar.setItems("one;;two;three");
    bar.setBarStyle(SliderBar::BarStyle_Line);
    bar.resize(300, 40);
    bar.show();
    QSignalSpy changes(&bar, &SliderBar::currentItemChanged);
    const QPoint right(295, 38);
    const QPoint left(5, 38);
    QTRY_COMPARE(pixelAt(bar, left), bar.lineColor());
    QTest::mouseClick(&bar, Qt::LeftButton, {}, right - QPoint(0, 20));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last(), (QVariantList{2, "three"}));
    QVERIFY(pixelAt(bar, right) != bar.lineColor()); // still on its way
    QTRY_COMPARE(pixelAt(bar, right), bar.lineColor());
    QTest::mouseClick(&bar, Qt::LeftButton, {}, left);
    QTRY_COMPARE(pixelAt(bar, left), bar.lineColor());
    QCOMPARE(bar.currentItem(), QString("one"));
}

void TestOptionWidgets::barStartsAtItsFirstItem()
{
    SliderBar bar;
    QSignalSpy changes(&bar, &SliderBar::currentItemChanged);
    bar.setItems("first;second;third");
    QCOMPARE(bar.currentIndex(), -1);
    bar.resize(320, 40);
    bar.show();
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.last(), (QVariantList{0, "first"}));
    bar.setCurrentIndex(1);
    bar.resize(400, 40); // stays where it is
    QCOMPARE(changes.count(), 2);
    QCOMPARE(bar.currentIndex(), 1);
    bar.setItems("erster;zweiter;dritter"); // another language
    QCOMPARE(bar.currentIndex(), 1);
    QCOMPARE(bar.currentItem(), QString("zweiter"));
    bar.clearItem();
    QCOMPARE(bar.currentIndex(), -1);
    bar.moveLast();
    QCOMPARE(changes.count(), 2);
}

void TestOptionWidgets::keysMoveOnlyWhenAllowed()
{
    SliderBar bar;
    bar.setItems("a;b;c");
    bar.show();
    QTest::keyClick(&bar, Qt::Key_Right);
    QCOMPARE(bar.currentIndex(), 0);
    bar.setKeyMove(true);
    QTest::keyClick(&bar, Qt::Key_Right);
    QTest::keyClick(&bar, Qt::Key_Down);
    QTest::keyClick(&bar, Qt::Key_Down); // there is no fourth
    QCOMPARE(bar.currentIndex(), 2);
    QTest::keyClick(&bar, Qt::Key_Up);
    QTest::keyClick(&bar, Qt::Key_Left);
    QTest::keyClick(&bar, Qt::Key_Left);
    QCOMPARE(bar.currentIndex(), 0);
}

void TestOptionWidgets::namesAndBordersFindTheirItem()
{
    SliderBar bar;
    bar.setHorizontal(false);
    bar.setItems("a;b;c;d");
    bar.resize(80, 200);
    bar.show();
    for (int i = 0; i < 4; ++i) {
        bar.moveTo(i);
        QCOMPARE(bar.currentIndex(), i);
    }
    bar.setCurrentItem("b");
    QCOMPARE(bar.currentIndex(), 1);
    bar.moveTo("nowhere");
    bar.setCurrentIndex(4);
    bar.moveTo(-1);
    bar.moveTo(QPointF(10, 900));
    QCOMPARE(bar.currentIndex(), 1);
    bar.moveTo(QPointF(10, 125)); // the third quarter of the height
    QCOMPARE(bar.currentItem(), QString("c"));
}

QTEST_MAIN(TestOptionWidgets)
#include "tst_option_widgets.moc"
