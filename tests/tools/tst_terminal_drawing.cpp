#include "TerminalCanvas.h"

#include <QTest>

class tst_terminal_drawing : public QObject
{
    Q_OBJECT

private slots:
    void onlyRowsThatChangedAreSent()
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
        canvas.text(-3, 9, "outside", {9, 9, 9});
        QCOMPARE(canvas.render(shown), QByteArray());
    }

    void twoPixelsShareACellAndTextLiesOverThem()
    {
        TerminalCanvas canvas(4, 1);
        canvas.setPixel(0, 0, {10, 20, 30});
        canvas.setPixel(0, 1, {40, 50, 60});
        canvas.text(2, 0, "long", {7, 8, 9});
        QVector<QByteArray> shown;
        QCOMPARE(canvas.render(shown), QByteArray("\x1b[1;1H\x1b[0m"
                                                  "\x1b[48;2;40;50;60;38;2;10;20;30m\u2580"
                                                  "\x1b[48;2;0;0;0m "
                                                  "\x1b[48;2;0;0;0;38;2;7;8;9mlo\x1b[0m"));
    }
};

QTEST_GUILESS_MAIN(tst_terminal_drawing)
#include "tst_terminal_drawing.moc"
