#include "ui/WallColorDialog.h"
#include "widgets/SliderBar.h"

#include <QtTest>
#include <QtWidgets>
#include <functional>

using Pipeline = ColorCorrection::Pipeline;

struct OpenDialog : WallColorDialog
{
    explicit OpenDialog(const ColorCorrection& stored = {}, QWidget* window = nullptr)
        : WallColorDialog(window)
    {
        setDevice("Desk", 60);
        setCorrection(stored);
        connect(this, &WallColorDialog::correctionChanged, [this](const ColorCorrection& to) { told += to; });
        connect(this, &WallColorDialog::whiteWanted, [this](bool white) { whites += white; });
    }
    void slide(const char* name, int value) { findChild<QSlider*>(name)->setValue(value); }
    void limit(double amps) { findChild<QDoubleSpinBox*>()->setValue(amps); }
    void click(const char* name) { findChild<QAbstractButton*>(name)->click(); }

    QVector<ColorCorrection> told;
    QVector<bool> whites;
};

class TestWallDialog : public QObject
{
    Q_OBJECT

private slots:
    void eachControlTellsItsOwnPartAndLeavesTheOthers()
    {
        // Values that no control stands at exactly, as somebody may have written them.
        const ColorCorrection stored{Pipeline::Linear, 0.705, 0.333, 0.999, 3, 2345, 60};
        const QVector<QPair<std::function<void(OpenDialog&)>, std::function<void(ColorCorrection&)>>> rows{
            {[](auto& d) { d.slide("redSlider", 20); }, [](auto& c) { c.whiteRed = 0.2; }},
            {[](auto& d) { d.slide("greenSlider", 0); }, [](auto& c) { c.whiteGreen = 0.0; }},
            {[](auto& d) { d.slide("blueSlider", 57); }, [](auto& c) { c.whiteBlue = 0.57; }},
            {[](auto& d) { d.click("classicButton"); }, [](auto& c) { c.pipeline = Pipeline::Classic; }},
            {[](auto& d) { d.slide("minLightSlider", 20); }, [](auto& c) { c.minLight = 20; }},
            {[](auto& d) { d.limit(4.1); }, [](auto& c) { c.powerLimitMa = 4100; }},
            {[](auto& d) { d.click("limitBox"); }, [](auto& c) { c.powerLimitMa = 0; }},
            {[](auto& d) { d.template findChild<QSpinBox*>()->setValue(20); },
             [](auto& c) { c.ledMilliAmps = 20; }},
            {[](auto& d) { d.click("resetButton"); },
             [](auto& c) { c.whiteRed = c.whiteGreen = c.whiteBlue = 1.0; }},
            {[](auto& d) {
                 d.template findChild<SliderBar*>()->moveLast();
                 d.click("resetButton");
             },
             [](auto& c) { c = {Pipeline::Classic, c.whiteRed, c.whiteGreen, c.whiteBlue, 0, 0, 55}; }}};
        for (const auto& [act, change] : rows) {
            OpenDialog dialog(stored);
            const QSignalSpy settled(&dialog, &WallColorDialog::settled);
            ColorCorrection wanted = stored;
            change(wanted);
            act(dialog);
            QVERIFY(dialog.told == QVector<ColorCorrection>{wanted} && dialog.correction() == wanted);
            dialog.reject();
            QCOMPARE(settled.count(), 1);
        }
    }

    void wallsAndTheLimitComeBack()
    {
        OpenDialog dialog;
        auto* walls = dialog.findChild<QComboBox*>();
        QTest::keyClick(walls, Qt::Key_Down);
        const ColorCorrection warm = dialog.correction();
        QVERIFY(dialog.told.size() == 1 && warm.whiteRed < warm.whiteGreen && warm.whiteBlue == 1.0);
        dialog.slide("blueSlider", 90);
        QCOMPARE(walls->currentIndex(), walls->count() - 1); // the user's own
        dialog.slide("blueSlider", 100);
        QVERIFY(walls->currentIndex() == 1 && dialog.correction() == warm);
        // The limit begins where it does not bite, and is remembered while it is off.
        dialog.click("limitBox");
        QVERIFY(dialog.correction().powerLimitMa >= 60 * 56);
        dialog.limit(2.0);
        dialog.click("limitBox");
        dialog.click("limitBox");
        QCOMPARE(dialog.correction().powerLimitMa, 2000);
    }

    void whiteIsWantedWhileTheWallsPageIsSeen()
    {
        QWidget window;
        window.show();
        OpenDialog dialog({}, &window);
        auto* pages = dialog.findChild<SliderBar*>();
        dialog.show();
        pages->moveNext();
        pages->movePrevious();
        dialog.click("whiteBox");
        dialog.hide();
        dialog.click("whiteBox"); // nobody sees it
        dialog.show();
        window.hide(); // which takes the dialog along, on some systems without a word
        window.show();
        window.showMinimized();
        window.showNormal();
        QEvent other(QEvent::None); // what is the window's own goes on to it
        QVERIFY(!QCoreApplication::sendEvent(&window, &other));
        dialog.reject();
        QCOMPARE(dialog.whites,
                 (QVector<bool>{true, false, true, false, true, false, true, false, true, false}));
    }
};

QTEST_MAIN(TestWallDialog)
#include "tst_wall_dialog.moc"
