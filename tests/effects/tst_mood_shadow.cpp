#include "FakeStrapList.h"
#include "MusicTestKit.h"
#include "effects/EffectProperties.h"
#include "effects/colorful/MoodShadow.h"

#include <QImage>
#include <QJsonObject>
#include <QPainter>
#include <QtTest>
#include <cmath>
#include <limits>

using namespace MusicTestKit;

namespace {

const char* const kMood = "id.effect.colorful.moodShadow";
constexpr uint32_t kMirrored = 1;

const ColorStrap kFire{"fire", {{0.5, Qt::red}}, Qt::white};
const ColorStrap kSea{"sea", {{0.7, Qt::blue}, {0.2, Qt::cyan}, {0.0, Qt::red}, {1.0, Qt::red}}, Qt::black};
const ColorStrap kWood{"wood", {{0.3, Qt::green}}, Qt::yellow};
const ColorStrap kNoKeys{"no keys", {}, Qt::white};
const ColorStrap kNoEnds{"no ends", {{0.5, Qt::red}}, {}};

void storeConfig(const QJsonObject& configs)
{
    ConfigurationManager::instance()->setEffectJsonValue(kMood, "LVTEST:01", "strapConfigs", configs);
}

QJsonObject storedConfig()
{
    return stored(kMood, "strapConfigs").toObject();
}

/// The clock stands still: the tests make the steps. Loaded only where there are options.
struct Stepped : MoodShadow
{
    explicit Stepped(IColorStrapManager* list)
        : MoodShadow(entry(kMood), nullptr)
    {
        stop();
        if (list)
            DIColorStrapManager(list);
    }
    Stepped(IColorStrapManager* list, const ControlOptions& options)
        : Stepped(list)
    {
        load(options);
    }
    Frame after(double seconds)
    {
        frames.clear();
        update(seconds);
        return frames.isEmpty() ? Frame() : frames.last().at(0).value<Frame>();
    }
    int currentStrap() { return effectProperty("currentStrap").toInt(-1); }

    QSignalSpy frames{this, &IEffectWorker::updateColors};
};

/// The strap drawn from the beginning, as a picture of one cycle.
QImage drawn(const ColorStrap& strap, int width)
{
    QImage image(width, 1, QImage::Format_RGB888);
    QLinearGradient gradient(0, 0, width, 0);
    for (const KeyColor& key : strap.keyColors)
        gradient.setColorAt(key.key, key.color);
    gradient.setColorAt(0.0, strap.endsColor);
    gradient.setColorAt(1.0, strap.endsColor);
    QPainter painter(&image);
    painter.fillRect(image.rect(), gradient);
    return image;
}

/// What `nbLeds` single LEDs show of it at a place that is told in cycles.
Frame shown(const QImage& cycle, int nbLeds, double position)
{
    Frame frame(nbLeds);
    for (int i = 0; i < nbLeds; ++i) {
        const double place = std::fmod(std::floor(cycle.width() * position) + i, cycle.width());
        const QRgb pixel = cycle.pixel(static_cast<int>(place), 0);
        frame[i] = {uint8_t(qRed(pixel)), uint8_t(qGreen(pixel)), uint8_t(qBlue(pixel))};
    }
    return frame;
}

} // namespace

class TestMoodShadow : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        qRegisterMetaType<QVector<LV_RGB>>("QVector<LV_RGB>");
        ConfigurationManager::instance()->reset();
    }

    void everyFrameIsTheGradientDrawnAnew()
    {
        storeConfig({{"speed", 1.0}});
        FakeStrapList list({kFire, kSea});
        Stepped effect(&list, strip(30));
        double position = 0.0;
        const auto isShown = [&](const ColorStrap& strap, int width, double seconds) {
            position += 30.0 / width * seconds;
            return effect.after(seconds) == shown(drawn(strap, width), 30, position);
        };
        QVERIFY(isShown(kFire, 60, 0.0)); // a cycle is two strips
        QVERIFY(isShown(kFire, 60, 0.3));
        effect.setCurrentStrap(1);
        QVERIFY(isShown(kSea, 60, 0.3)); // keys at 0 and 1 yield to the ends
        effect.setEffectProperty("range", 0.5);
        QVERIFY(isShown(kSea, 30, 0.3));
        list.setStrap(1, kWood); // changed by anybody: seen in the next frame
        QVERIFY(isShown(kWood, 30, 0.3));
        list.setStrap(0, kSea); // not the one that shows
        QVERIFY(isShown(kWood, 30, 0.3));
        effect.setEffectProperty("range", 0.001);
        QVERIFY(isShown(kWood, 3, 0.3)); // room for the key and the ends
        QVERIFY(isShown(kWood, 3, 1e8)); // years later
    }

    void speedIsInStripsASecondWhateverTheRange()
    {
        FakeStrapList list({kSea});
        for (const double range : {1.0, 0.5, 0.25}) {
            storeConfig({{"speed", 0.5}, {"range", range}});
            Stepped effect(&list, strip(40));
            const Frame before = effect.after(0.0);
            QCOMPARE(effect.after(1.0).mid(0, 20), before.mid(20, 20));
        }
        Stepped still(&list, strip(40));
        still.setEffectProperty("speed", 0.0);
        const Frame frame = still.after(9.0);
        QCOMPARE(still.after(9.0), frame); // sent all the same
        QCOMPARE(frame.size(), 40);
    }

    void aMirroredStripRunsTheOtherWay()
    {
        storeConfig({{"speed", 1.0}, {"range", 0.5}});
        FakeStrapList list({kSea});
        const QImage cycle = drawn(kSea, 20);
        Stepped effect(&list, strip(20, kMirrored));
        QCOMPARE(effect.after(0.25), shown(cycle, 20, 0.75));
        QCOMPARE(effect.after(7.5), shown(cycle, 20, 0.25)); // a pause of many cycles
        effect.onCtlDirChanged(0);
        QCOMPARE(effect.after(1.5), shown(cycle, 20, 0.75));
    }

    void unitsShareAColorAndAnEmptyStripGetsAnEmptyFrame()
    {
        FakeStrapList list({kSea});
        ControlOptions options = strip(8);
        options.ledPerUnit = 4;
        const Frame single = Stepped(&list, strip(8)).after(0.5);
        const Frame units = Stepped(&list, options).after(0.5);
        for (int i = 0; i < 8; ++i)
            QCOMPARE(units.at(i), single.at(QVector<int>{0, 0, 0, 3, 3, 3, 6, 7}.at(i)));

        Stepped none(&list, strip(0));
        QCOMPARE(none.after(0.5), Frame());
        QCOMPARE(none.frames.count(), 1);
    }

    void nothingHappensBeforeLoadOrWithoutAList()
    {
        FakeStrapList list({kFire});
        Stepped early(&list);
        early.after(0.1);
        QCOMPARE(early.frames.count(), 0);
        QTest::ignoreMessage(QtCriticalMsg, "Invalied color strap 0");
        Stepped alone(nullptr, strip(3));
        QCOMPARE(alone.effectProperty("colorStrapManager").toString(), QString("0"));
        QTest::ignoreMessage(QtWarningMsg, "Current strap has invalied 0");
        QTest::ignoreMessage(QtCriticalMsg, "Invalied color strap 0");
        for (int step = 0; step < 3; ++step)
            QCOMPARE(alone.after(0.1), Frame());
        alone.unload();
        QVERIFY(ConfigurationManager::instance()->effectJsonValue(kMood, "", "currentStrap").isUndefined());
    }

    void onlyWhatChangesIsStored()
    {
        FakeStrapList list({kFire, kSea});
        Stepped effect(&list, strip(3));
        QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 0);
        QCOMPARE(storedConfig(), (QJsonObject{{"speed", 0.5}, {"range", 1.0}})); // the first use

        QSignalSpy speeds(&effect, &MoodShadow::speedChanged);
        QSignalSpy ranges(&effect, &MoodShadow::rangeChanged);
        effect.setSpeed(0.5009); // too close
        for (const double bad : {-0.1, 1.1, std::numeric_limits<double>::quiet_NaN()}) {
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("Invalied speed "));
            effect.setSpeed(bad);
            QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("Invalied range "));
            effect.setRange(bad);
        }
        QCOMPARE(storedConfig().value("speed").toDouble(), 0.5);
        QCOMPARE(speeds.count() + ranges.count(), 0);
        effect.setSpeed(0.25);
        QCOMPARE(speeds.count(), 1);
        for (int value = 999; value > 0; --value) { // each step of a slider
            effect.setRange(value / 1000.0);
            QCOMPARE(storedConfig().value("range").toDouble(), value / 1000.0);
        }
        QCOMPARE(ranges.count(), 999);
        effect.setEffectProperty("range", 0.7); // what the options set is not told back
        QCOMPARE(ranges.count(), 999);
        QCOMPARE(storedConfig(), (QJsonObject{{"speed", 0.25}, {"range", 0.7}}));

        effect.setCurrentStrap(1);
        QTest::ignoreMessage(QtCriticalMsg, "Invalied color strap 2");
        effect.setEffectProperty("currentStrap", 2);
        QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 1);
        Stepped next(&list, strip(3));
        QCOMPARE(next.effectProperty(EffectProperties::kLook).toObject(),
                 (QJsonObject{{"currentStrap", 1}, {"speed", 0.25}, {"range", 0.7}}));
        QCOMPARE(next.effectProperty("").toObject().value("colorStrapManager").toString().toULongLong(),
                 qulonglong(reinterpret_cast<quintptr>(&list)));
    }

    void brokenStoresFallBack()
    {
        FakeStrapList list({kFire, kSea});
        const QVector<QJsonValue> wrong{9, -1, "1", QJsonObject()};
        for (const QJsonValue& index : wrong) {
            ConfigurationManager::instance()->setEffectJsonValue(kMood, "LVTEST:01", "currentStrap", index);
            storeConfig({{"speed", "fast"}, {"range", -4}, {"more", 1}});
            Stepped effect(&list, strip(3));
            QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 0);
            QCOMPARE(storedConfig(), (QJsonObject{{"speed", 0.5}, {"range", 1.0}, {"more", 1}}));
        }
    }

    void theStrapIsKeptWhenOthersGo()
    {
        FakeStrapList list({kFire, kSea, kWood, kFire});
        Stepped effect(&list, strip(6));
        effect.setCurrentStrap(2);
        list.removeStrap(3); // above
        list.removeStrap(0); // below: moves down
        QCOMPARE(effect.currentStrap(), 1);
        QCOMPARE(effect.after(0), shown(drawn(kWood, 12), 6, 0));
        list.removeStrap(1); // itself, the last
        QCOMPARE(effect.currentStrap(), 0);
        QCOMPARE(effect.after(0), shown(drawn(kSea, 12), 6, 0));
        list.addStrap(kWood);
        list.removeStrap(0); // itself, and another takes its place
        QCOMPARE(effect.after(0), shown(drawn(kWood, 12), 6, 0));
        QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 0);
    }

    void aBrokenStrapIsToldOfOnceAndLeft()
    {
        FakeStrapList list({kFire, kSea, kWood});
        Stepped effect(&list, strip(6));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        effect.setCurrentStrap(2);
        QTest::ignoreMessage(QtCriticalMsg, "Invalied endsColor of strap 2");
        list.setStrap(2, kNoEnds);
        QCOMPARE(effect.after(0), shown(drawn(kWood, 12), 6, 0)); // the copy is kept

        QStringList warnings;
        static QStringList* heard = nullptr;
        heard = &warnings;
        const QtMessageHandler before =
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
                if (type == QtWarningMsg)
                    heard->append(text);
            });
        list.setStrap(2, kNoKeys);
        const Frame skipped = effect.after(0);
        const Frame first = effect.after(0);
        list.setStrap(0, kNoKeys);
        for (int step = 0; step < 5; ++step)
            effect.after(0);
        const int silent = effect.frames.count();
        list.setStrap(0, kSea);
        const Frame mended = effect.after(0);
        list.setStrap(0, kNoKeys);
        effect.after(0);
        qInstallMessageHandler(before);

        QCOMPARE(skipped, Frame());
        QCOMPARE(first, shown(drawn(kFire, 12), 6, 0));
        QCOMPARE(changes.count(), 1); // so that the options show what is shown
        QCOMPARE(changes.at(0).at(1).toJsonValue(), QJsonValue(0));
        QCOMPARE(silent, 0);
        QCOMPARE(mended, shown(drawn(kSea, 12), 6, 0));
        QCOMPARE(warnings, (QStringList{"Current strap has invalied 2", "Current strap has invalied 0",
                                        "Current strap has invalied 0"}));
    }
};

QTEST_MAIN(TestMoodShadow)
#include "tst_mood_shadow.moc"
