#include "effects/EffectProperties.h"
#include "effects/colorful/ColorMap.h"
#include "effects/colorful/FlowingEffect.h"
#include "effects/colorful/Marquee.h"
#include "effects/colorful/paintUnits.h"
#include "effects/singlecolor/SingleColor.h"
#include "support/config/ConfigurationManager.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <climits>
#include <memory>

namespace {

using Frame = QVector<LV_RGB>;

EffectWorkerOptions entry(const QString& id)
{
    EffectWorkerOptions options;
    options.id = id;
    return options;
}

Frame lastFrame(const QSignalSpy& frames)
{
    return frames.isEmpty() ? Frame() : frames.last().at(0).value<Frame>();
}

/// The clock stands still: the tests make the steps.
template <typename Effect>
class Stepped : public Effect
{
public:
    explicit Stepped(const char* id)
        : Effect(entry(id), nullptr)
    {
        this->stop();
    }
    Frame after(double seconds)
    {
        this->update(seconds);
        return lastFrame(frames);
    }

    QSignalSpy frames{this, &IEffectWorker::updateColors};
};

ControlOptions strip(uint32_t nbLeds, int ledPerUnit = 1)
{
    ControlOptions options;
    options.id = "LV0127:01";
    options.nbLeds = nbLeds;
    options.ledPerUnit = ledPerUnit;
    return options;
}

ConfigurationManager* store()
{
    return ConfigurationManager::instance();
}

QVector<int> litLeds(const Frame& frame)
{
    QVector<int> lit;
    for (int i = 0; i < frame.size(); ++i) {
        if (frame.at(i) == LV_RGB{255, 0, 0})
            lit.append(i);
    }
    return lit;
}

/// Red tells the column, green the row.
QVector<int> columnsOf(const Frame& frame)
{
    QVector<int> columns;
    for (const LV_RGB& led : frame)
        columns.append(led.red / 10);
    return columns;
}

const char* const kFlowing = "id.effect.colorful.flowingEffect";
const char* const kMarquee = "id.effect.marquee.marquee";
const char* const kColorMap = "id.effect.colorful.ColorMap_3";
const char* const kSingle = "id.effect.singleColor.singleColor1";

} // namespace

Q_DECLARE_METATYPE(const QMetaObject*)

class TestFirstEffects : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        qRegisterMetaType<QVector<LV_RGB>>("QVector<LV_RGB>");
        store()->reset();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        QVERIFY(QDir().mkpath("effects/colorful"));
        QImage picture(4, 3, QImage::Format_RGB888);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 4; ++x)
                picture.setPixel(x, y, qRgb(10 * x, 10 * y, 7));
        }
        QVERIFY(picture.save("effects/colorful/ColorMap_3.png"));
    }

    void cleanup() { QDir::setCurrent(QDir::rootPath()); }

    void unitsOverlapByOneLed()
    {
        const QVector<int> single{0, 1, 2, 3, 4, 5, 6}; // which unit each of seven LEDs shows
        const QVector<QPair<int, QVector<int>>> units{
            {3, {0, 0, 1, 1, 2, 2, 3}},       {2, single}, {0, single}, {INT_MIN, single},
            {INT_MAX, {0, 0, 0, 0, 0, 0, 1}},
        };
        for (const auto& [ledPerUnit, shown] : units) {
            Frame colors(7);
            uint8_t unit = 0;
            paintUnits(colors, ledPerUnit, [&unit](int) {
                return LV_RGB{static_cast<uint8_t>(10 * unit++), 0, 0};
            });
            QCOMPARE(columnsOf(colors), shown);
        }
    }

    void aRainbowRunsAlongTheStrip()
    {
        FlowingEffect effect(entry(kFlowing), nullptr);
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        const auto step = [&] {
            QMetaObject::invokeMethod(&effect, "update", Qt::DirectConnection);
            return lastFrame(frames);
        };
        QCOMPARE(step(), Frame()); // nothing is sent before there are LEDs
        QCOMPARE(frames.count(), 0);

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
    }

    void flowingSpeedIsClampedWhenRead()
    {
        FlowingEffect effect(entry(kFlowing), nullptr);
        const QVector<QPair<QJsonValue, int>> speeds{{0.9, 200}, {-1.0, 0}, {"fast", 0}, {0.025, 100}};
        for (const auto& [stored, speed] : speeds) {
            store()->setEffectJsonValue(kFlowing, "LV0127:01", "speed", stored);
            effect.load(strip(3));
            QCOMPARE(effect.effectProperty("speed").toInt(-1), speed);
        }
        effect.setEffectProperty("speed", 50);
        QCOMPARE(store()->effectJsonValue(kFlowing, "LV0127:01", "speed").toDouble(), 0.0125);
        for (int value = 1; value <= 200; ++value) {
            effect.setSpeed(value);
            QCOMPARE(effect.effectProperty("speed").toInt(), value); // or it would creep at each report
        }
    }

    void marqueeMovesByTimeAndUnit_data()
    {
        QTest::addColumn<int>("ledPerUnit");
        QTest::addColumn<int>("speed");
        QTest::addColumn<double>("seconds");
        QTest::addColumn<QVector<int>>("lit"); // of ten LEDs
        QTest::newRow("70 steps a second at 200") << 1 << 200 << 0.5 << QVector<int>{5};
        QTest::newRow("15.75 steps at the default") << 1 << 45 << 1.0 << QVector<int>{5};
        QTest::newRow("a step is a unit") << 3 << 200 << 0.15 << QVector<int>{0, 1, 2}; // step 10
        QTest::newRow("cut at the end") << 3 << 200 << 0.05 << QVector<int>{9};         // step 3
        QTest::newRow("unit of none stands") << 0 << 200 << 0.5 << QVector<int>{0};
        QTest::newRow("huge unit") << INT_MAX << 200 << 0.0 << QVector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    }
    void marqueeMovesByTimeAndUnit()
    {
        QFETCH(int, ledPerUnit);
        QFETCH(int, speed);
        QFETCH(double, seconds);
        QFETCH(QVector<int>, lit);
        Stepped<Marquee> effect(kMarquee);
        effect.load(strip(10, ledPerUnit));
        QCOMPARE(effect.effectProperty("speed").toInt(), 45);
        effect.setEffectProperty("speed", speed);
        QCOMPARE(litLeds(effect.after(seconds)), lit);
        for (const int hostile : {INT_MIN, INT_MAX}) {
            effect.setEffectProperty("speed", hostile);
            QVERIFY(!litLeds(effect.after(1.0)).isEmpty());
        }
    }

    void colorMapSpreadsOneRow_data()
    {
        QTest::addColumn<uint32_t>("nbLeds");
        QTest::addColumn<int>("ledPerUnit");
        QTest::addColumn<QVector<int>>("columns");
        QTest::newRow("longer") << 8U << 1 << QVector<int>{0, 0, 1, 1, 2, 2, 3, 3};
        QTest::newRow("shorter") << 3U << 1 << QVector<int>{0, 1, 2};
        // From LED 0, 3 and 6; the last has its one LED twice.
        QTest::newRow("units of four") << 8U << 4 << QVector<int>{0, 0, 0, 1, 1, 1, 3, 3};
        QTest::newRow("none") << 0U << 1 << QVector<int>();
    }
    void colorMapSpreadsOneRow()
    {
        QFETCH(uint32_t, nbLeds);
        QFETCH(int, ledPerUnit);
        Stepped<ColorMap> effect(kColorMap);
        effect.load(strip(nbLeds, ledPerUnit));
        QTEST(columnsOf(effect.after(0)), "columns");
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

    void colorMapSurvivesAnySpeedAndTheTimeBeforeLoad()
    {
        store()->setEffectJsonValue(kColorMap, "LV0127:01", "speed", 1000);
        Stepped<ColorMap> effect(kColorMap);
        effect.after(0.5);
        effect.load(strip(4));
        QCOMPARE(effect.effectProperty("speed").toInt(), 200);
        for (const int speed : {INT_MIN, -150, INT_MAX}) {
            effect.setEffectProperty("speed", speed);
            for (int i = 0; i < 20; ++i)
                QCOMPARE(columnsOf(effect.after(0.033)), (QVector<int>{0, 1, 2, 3}));
        }
    }

    void firstUseShowsTheDefaultColor()
    {
        SingleColor effect(entry(kSingle), nullptr);
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.load(strip(2));
        QCOMPARE(lastFrame(frames), Frame(2, LV_RGB{79, 36, 211}));
        QTRY_COMPARE(store()->effectVariant(kSingle, "LV0127:01", "color").toUInt(), 0xFF4F24D3u);
    }

    void storedColorIsShownAndRefreshed()
    {
        store()->setEffectVariant(kSingle, "LV0127:01", "color", 0xFF010203u);
        SingleColor effect(entry(kSingle), nullptr);
        QSignalSpy frames(&effect, &IEffectWorker::updateColors);
        effect.load(strip(1));
        QCOMPARE(frames.count(), 1);
        QCOMPARE(lastFrame(frames), (Frame{{1, 2, 3}}));
        effect.setEffectProperty("color", QJsonArray{250, 20, 30});
        QCOMPARE(frames.count(), 1); // not at once
        QTRY_COMPARE(lastFrame(frames), (Frame{{250, 20, 30}}));
        effect.setEffectProperty("color", QJsonArray{-5, 999, "x"});
        QCOMPARE(effect.effectProperty("color").toArray(), (QJsonArray{0, 255, 0}));
        effect.setEffectProperty("", QJsonObject{{"color", QJsonArray{9, 8, 7}}});
        effect.unload();
        QCOMPARE(store()->effectVariant(kSingle, "LV0127:01", "color").toUInt(), 0xFF090807u);
    }

    void propertiesAreAnsweredByTheirKind()
    {
        QStringList written;
        const auto setter = [&written](const char* name) {
            return [&written, name](const QJsonValue& val) { written += name + val.toVariant().toString(); };
        };
        EffectProperties properties{
            {"list", [] { return 1; }, setter("list "), EffectProperty::Place},
            {"sources", [] { return 2; }, {}, EffectProperty::Place}, // to be read only
            {"notice", [] { return 3; }, {}, EffectProperty::Apart},
            {"reset", {}, setter("reset "), EffectProperty::Apart},
        };
        properties.add({{"choice", [] { return 4; }, setter("choice ")},
                        {"colour", [] { return 5; }, setter("colour "), EffectProperty::Look}});
        const QJsonObject all{{"list", 1}, {"sources", 2}, {"choice", 4}, {"colour", 5}};
        QCOMPARE(properties.read("").toObject(), all);
        QCOMPARE(properties.read(EffectProperties::kLook).toObject(), (QJsonObject{{"colour", 5}}));
        QCOMPARE(properties.read("notice").toInt(), 3);
        for (const char* unknown : {"reset", "Colour", " "})
            QCOMPARE(properties.read(unknown), QJsonValue(QJsonValue::Null));

        QJsonObject more = all;
        for (const char* key : {"notice", "reset", "unknown", "", EffectProperties::kLook})
            more[key] = 9;
        properties.write("", more);
        QCOMPARE(written,
                 (QStringList{"list 1", "choice 4", "colour 5"})); // a list comes before what is in it
        for (const char* key : {"sources", "notice", "unknown", EffectProperties::kLook})
            properties.write(key, 6);
        properties.write("", 6);
        properties.write("", QJsonObject{{"colour", QJsonValue::Null}});
        properties.write("reset", 7);
        QCOMPARE(written.mid(3), (QStringList{"colour ", "reset 7"}));
    }

    void propertiesFollowTheProtocol_data()
    {
        QTest::addColumn<const QMetaObject*>("type");
        QTest::addColumn<QJsonValue>("value");
        QTest::newRow("single") << &SingleColor::staticMetaObject << QJsonValue(QJsonArray{1, 2, 3});
        QTest::newRow("flowing") << &FlowingEffect::staticMetaObject << QJsonValue(100);
        QTest::newRow("marquee") << &Marquee::staticMetaObject << QJsonValue(77);
        QTest::newRow("map") << &ColorMap::staticMetaObject << QJsonValue(77);
    }
    void propertiesFollowTheProtocol()
    {
        QFETCH(const QMetaObject*, type);
        QFETCH(QJsonValue, value);
        const QString key = value.isArray() ? "color" : "speed";
        // As the factory makes them.
        const EffectWorkerOptions options = entry(kColorMap);
        const std::unique_ptr<IEffectWorker> worker(qobject_cast<IEffectWorker*>(
            type->newInstance(Q_ARG(const EffectWorkerOptions&, options), Q_ARG(QObject*, nullptr))));
        QVERIFY(worker);
        QCOMPARE(worker->load(strip(4)), 0);
        worker->setEffectProperty("", QJsonObject{{key, value}});
        QCOMPARE(worker->effectProperty(key), value);
        for (const char* several : {"", EffectProperties::kLook})
            QCOMPARE(worker->effectProperty(several).toObject(), (QJsonObject{{key, value}}));
        worker->setEffectProperty("other", 3);
        worker->setEffectProperty("", 3);
        QCOMPARE(worker->effectProperty(key), value);
        QCOMPARE(worker->effectProperty("other"), QJsonValue(QJsonValue::Null));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(TestFirstEffects)
#include "tst_first_effects.moc"
