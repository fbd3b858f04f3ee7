#include "GlowPicture.h"
#include "TerminalCanvas.h"

#include <QTest>

class tst_terminal_drawing : public QObject
{
    Q_OBJECT

private slots:
    void onlyRowsThatChangedAreSent();
    void twoPixelsShareACellAndTextLiesOverThem();
    void lightIsStrongestAtItsLedAndEndsAtTheShade();
};

void tst_terminal_drawing::onlyRowsThatChangedAreSent()
{
    TerminalCanvas canvas(10, 4);
    canvas.fill({1, 2, 3});
    QVector<QByteArray> shown;
    QVERIFY(canvas.render(shown).contains("\x1b[4;1H"));
    QCOMPARE(canvas.render(shown), QByteArray());
    canvas.setPixel(3, 5, {200, 0, 0}); // the third row's lower half
    const QByteArray update = canvas.render(shown);
    QVERIFY(update.startsWith("\x1b[3;1H"));
    QCOMPARE(update.count('H'), 1);
    canvas.setPixel(-1, 0, {9, 9, 9});
    canvas.setPixel(10, 8, {9, 9, 9});
    canvas.text(-3, 9, QStringLiteral("outside"), {9, 9, 9});
    QCOMPARE(canvas.render(shown), QByteArray());
}

void tst_terminal_drawing::twoPixelsShareACellAndTextLiesOverThem()
{
    TerminalCanvas canvas(4, 1);
    canvas.setPixel(0, 0, {10, 20, 30});
    canvas.setPixel(0, 1, {40, 50, 60});
    canvas.text(2, 0, QStringLiteral("long"), {7, 8, 9});
    QVector<QByteArray> shown;
    QCOMPARE(canvas.render(shown), QByteArray("\x1b[1;1H\x1b[0m"
                                              "\x1b[48;2;40;50;60;38;2;10;20;30m\u2580"
                                              "\x1b[48;2;0;0;0m "
                                              "\x1b[48;2;0;0;0;38;2;7;8;9mlo\x1b[0m"));
}

void tst_terminal_drawing::lightIsStrongestAtItsLedAndEndsAtTheShade()
{
    const auto cellOf = [](const TerminalCanvas& canvas) {
        QVector<QByteArray> shown;
        return canvas.render(shown);
    };
    // One LED in the middle of the upper row, the lower row in the shade.
    const GlowPicture glow(5, 2, {QPointF(2.5, 0.5)}, 1.0, QRectF(0, 1, 5, 1));
    TerminalCanvas canvas(5, 1);
    glow.paint({{100, 200, 0}}, {5, 5, 5}, canvas);
    const QByteArray lit = cellOf(canvas);
    QVERIFY2(lit.contains("38;2;125;245;5m"), lit.constData()); // a fifth overexposed, on the ground
    QVERIFY(!lit.contains("48;2;1"));

    canvas.fill({});
    glow.paint({}, {5, 5, 5}, canvas); // no frame yet
    QCOMPARE(cellOf(canvas).count("38;2;5;5;5"), 1);
}

QTEST_GUILESS_MAIN(tst_terminal_drawing)
#include "tst_terminal_drawing.moc"
