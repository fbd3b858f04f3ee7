#include "MusicTestKit.h"
#include "effects/EffectProperties.h"
#include "effects/colorful/ColorMap.h"
#include "effects/colorful/FlowingEffect.h"
#include "effects/colorful/Marquee.h"
#include "effects/singlecolor/SingleColor.h"

#include <QtTest>
#include <climits>

using namespace MusicTestKit;

namespace {

ConfigurationManager* store()
{
    return ConfigurationManager::instance();
}

const char* const kFlowing = "id.effect.colorful.flowingEffect";
const char* const kMarquee = "id.effect.marquee.marquee";
const char* const kColorMap = "id.effect.colorful.ColorMap_3";
const char* const kSingle = "id.effect.singleColor.singleColor1";

} // namespace

class TestFirstEffects : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

private slots:
    void cleanupTestCase() { QDir::setCurrent(QDir::rootPath()); }
    void init()
    {
        qRegisterMetaType<QVector<LV_RGB>>("QVector<LV_RGB>");
        store()->reset();
        QVERIFY(QDir::setCurrent(m_folder.path()) && QDir().mkpath("effects/colorful"));
        QImage picture(4, 3, QImage::Format_RGB888);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 4; ++x)
                picture.setPixel(x, y, qRgb(10 * x, 10 * y, 7)); // red tells the column, green the row
        }
        QVERIFY(picture.save("effects/colorful/ColorMap_3.png"));
    }

    void aRainbowRunsAlongTheStripAsFastAsIsStored()
    {
        Running<FlowingEffect> effect(kFlowing, strip(0));
        const auto step = [&effect] {
            QMetaObject::invokeMethod(&effect, "update", Qt::DirectConnection);
            return effect.last();
        };
        QCOMPARE(step(), Frame()); // nothing is sent before there are LEDs

        effect.load(strip(6));
        const Frame sixths{{255, 255, 0}, {0, 255, 0},   {0, 255, 255},
                           {0, 0, 255},   {255, 0, 255}, {255, 0, 0}};
        QCOMPARE(step(), sixths);
        QCOMPARE(step(), sixths); // nothing stored: it stands still, but goes on sending
        effect.setSpeed(400);     // 0.1 a step, from the frame after the next
        QCOMPARE(step(), sixths);
        QCOMPARE(step().at(0), (LV_RGB{102, 255, 0})); // hue 0.1 + 1/6
        effect.setSpeed(4000);                         // a whole turn
        step();
        QCOMPARE(step(), sixths); // the phase starts over at exactly zero
        for (const int speed : {INT_MIN, -37, INT_MAX}) {
            effect.setSpeed(speed);
            step();
            for (const LV_RGB& led : step()) // still a rainbow: full in one channel at least
                QCOMPARE(qMax(led.red, qMax(led.green, led.blue)), uint8_t(255));
        }
        const QPair<QJsonValue, int> speeds[] = {{0.9, 200}, {-1.0, 0}, {"fast", 0}, {0.025, 100}};
        for (const auto& [stored, speed] : speeds) {
            store()->setEffectJsonValue(kFlowing, "LVTEST:01", "speed", stored);
            effect.load(strip(3));
            QCOMPARE(effect.effectProperty("speed").toInt(-1), speed);
        }
        effect.setEffectProperty("", QJsonObject{{"speed", 50}});
        QCOMPARE(store()->effectJsonValue(kFlowing, "LVTEST:01", "speed").toDouble(), 0.0125);
        for (int value = 1; value <= 200; ++value) {
            effect.setSpeed(value);
            QCOMPARE(effect.effectProperty("speed").toInt(), value); // or it would creep at each report
        }
    }

    void marqueeMovesByTimeAndUnit()
    {
        const std::tuple<int, int, double, QVector<int>> rows[] = {
            {1, 200, 0.5, {5}},        // 70 steps a second at 200, along ten LEDs
            {1, 45, 1.0, {5}},         // 15.75 at the default
            {3, 200, 0.15, {0, 1, 2}}, // a step is a unit of three: step 10
            {3, 200, 0.05, {9}},       // step 3, cut at the end
        };
        for (const auto& [ledPerUnit, speed, seconds, shown] : rows) {
            store()->reset();
            Stepped<Marquee> effect(kMarquee);
            effect.load(strip(10, 0, ledPerUnit));
            QCOMPARE(effect.effectProperty("").toObject(), (QJsonObject{{"speed", 45}}));
            effect.setEffectProperty("speed", speed);
            QCOMPARE(lit(effect.after(seconds)), shown);
            for (const int hostile : {INT_MIN, INT_MAX}) {
                effect.setEffectProperty("speed", hostile);
                QVERIFY(!lit(effect.after(1.0)).isEmpty());
            }
        }
    }

    void colorMapSpreadsOneRow()
    {
        const auto columns = [](uint32_t nbLeds, int ledPerUnit) {
            Stepped<ColorMap> effect(kColorMap);
            effect.after(0.5); // before it is loaded
            effect.load(strip(nbLeds, 0, ledPerUnit));
            QVector<int> result;
            for (const LV_RGB& led : effect.after(0))
                result += led.red / 10;
            return result;
        };
        QCOMPARE(columns(8, 1), (QVector<int>{0, 0, 1, 1, 2, 2, 3, 3}));
        // Units overlap by one LED: these begin at 0, 3 and 6; the last has its one LED twice.
        QCOMPARE(columns(8, 4), (QVector<int>{0, 0, 0, 1, 1, 1, 3, 3}));
        for (const int single : {2, 0, INT_MIN})
            QCOMPARE(columns(4, single), (QVector<int>{0, 1, 2, 3}));
        QCOMPARE(columns(3, INT_MAX), (QVector<int>{0, 0, 2}));
        QCOMPARE(columns(0, 1), QVector<int>());
        // Another picture in the place of one that a device is showing counts from the next device on.
        Stepped<ColorMap> earlier(kColorMap);
        earlier.load(strip(3));
        QFile file("effects/colorful/ColorMap_3.png");
        QVERIFY(QImage(file.fileName()).mirrored(true, false).save(file.fileName()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(60), QFile::FileModificationTime));
        QCOMPARE(columns(3, 1), (QVector<int>{3, 2, 1}));
        QCOMPARE(earlier.after(0).at(2).red, 20);
    }

    void colorMapSpeedFactors()
    {
        // The seconds until the second row of three shows.
        for (const auto& [speed, seconds] : {std::pair(0, 1 / 15.0), {100, 1 / 30.0}, {200, 1 / 120.0}}) {
            Stepped<ColorMap> effect(kColorMap);
            effect.load(strip(1));
            effect.setEffectProperty("speed", speed);
            const auto rowAfter = [&effect](double step) { return effect.after(step).at(0).green / 10; };
            QCOMPARE(rowAfter(seconds * 0.98), 0);
            QCOMPARE(rowAfter(seconds * 0.04), 1);
            QCOMPARE(rowAfter(seconds), 2);
            QCOMPARE(rowAfter(seconds), 0);
            QCOMPARE(rowAfter(seconds * 301), 1); // a long pause wraps as often as it must
        }
    }

    void singleColorIsStoredShownAndRefreshed()
    {
        const auto color = [] { return store()->effectVariant(kSingle, "LVTEST:01", "color").toUInt(); };
        Running<SingleColor> effect(kSingle, strip(2));
        QCOMPARE(effect.last(), Frame(2, LV_RGB{79, 36, 211})); // the first use
        QTRY_COMPARE(color(), 0xFF4F24D3u);
        effect.unload();
        store()->setEffectVariant(kSingle, "LVTEST:01", "color", 0xFF010203u);
        effect.load(strip(1));
        QCOMPARE(effect.last(), (Frame{{1, 2, 3}}));
        effect.setEffectProperty("color", QJsonArray{250, 20, 30});
        QCOMPARE(effect.last(), (Frame{{1, 2, 3}})); // not at once
        QTRY_COMPARE(effect.last(), (Frame{{250, 20, 30}}));
        effect.setEffectProperty("color", QJsonArray{-5, 999, "x"});
        QCOMPARE(effect.effectProperty("color").toArray(), (QJsonArray{0, 255, 0}));
        effect.setEffectProperty("", QJsonObject{{"color", QJsonArray{9, 8, 7}}});
        QCOMPARE(effect.effectProperty(EffectProperties::kLook).toObject().keys(), QStringList("color"));
        effect.unload();
        QCOMPARE(color(), 0xFF090807u);
    }
};

QTEST_MAIN(TestFirstEffects)
#include "tst_first_effects.moc"
