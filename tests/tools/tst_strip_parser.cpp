#include "StripParser.h"

#include <QTest>

namespace {

/// A frame whose LED i has the colour (i, seed, 255 - i).
QByteArray frameOf(int leds, uchar seed = 7)
{
    QByteArray bytes("Ada\0", 4);
    bytes += static_cast<char>(leds >> 8);
    bytes += static_cast<char>(leds & 0xff);
    for (int i = 0; i < leds; ++i) {
        bytes += static_cast<char>(i);
        bytes += static_cast<char>(seed);
        bytes += static_cast<char>(255 - i);
    }
    return bytes;
}

} // namespace

class tst_strip_parser : public QObject
{
    Q_OBJECT

private slots:
    void framesAreFoundHoweverTheStreamIsCut()
    {
        const QByteArray stream =
            "Moni-A" + frameOf(1) + frameOf(256, 1) + frameOf(0) + "AAdMoMoni-A" + frameOf(120, 2);
        for (const int chunk : {1, 2, 3, 5, 7, 64, 100000}) {
            StripParser parser;
            QVector<StripFrame> frames;
            int probes = 0;
            for (int i = 0; i < stream.size(); i += chunk) {
                const StripParser::Events events = parser.feed(stream.mid(i, chunk), i);
                frames += events.frames;
                probes += events.probes;
            }
            QVERIFY(probes == 2 && parser.garbageBytes() == 5 && frames.size() == 4);
            QVERIFY(frames[1].colors.size() == 256 && frames[2].colors.isEmpty());
            QVERIFY(frames[3].colors[119] == (LV_RGB{119, 2, 136}));
            QCOMPARE(frames[3].totalBytes, stream.size());
        }
    }

    void garbageIsSkippedAndCounted()
    {
        const QByteArray noZero("Ada\x55\0\x01rgb", 9);
        const QByteArray marksInside("Ada\0\0\x04Moni-AAda\0\0\x01", 18);
        StripParser parser;
        const auto events = parser.feed(frameOf(2) + QByteArray(30, 'A') + noZero + "AdAda" + marksInside, 0);
        QCOMPARE(events.frames.size(), 2);
        QCOMPARE(parser.garbageBytes(), 30 + 9 + 5);
        QCOMPARE(events.probes, 0);
    }
};

QTEST_GUILESS_MAIN(tst_strip_parser)
#include "tst_strip_parser.moc"
