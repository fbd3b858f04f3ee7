#include "FakeStrapList.h"
#include "LogCapture.h"
#include "MusicTestKit.h"
#include "effects/EffectProperties.h"
#include "effects/colorful/ComboBoxDelegate.h"
#include "effects/colorful/GradientImgComboBox.h"
#include "effects/colorful/GradientWidget.h"
#include "effects/colorful/MoodShadow.h"
#include "effects/colorful/SFrmMoodShadow.h"
#include "effects/colorful/strapColors.h"

#include <QtTest>
#include <QtWidgets>
#include <cmath>

using namespace MusicTestKit;

namespace {

const char* const kMood = "id.effect.colorful.moodShadow";

const ColorStrap kFire{"fire", {{0.5, Qt::red}}, Qt::white};
const ColorStrap kSea{"sea", {{0.7, Qt::blue}, {0.2, Qt::cyan}, {0.0, Qt::red}, {1.0, Qt::red}}, Qt::black};
const ColorStrap kWood{"wood", {{0.3, Qt::green}}, Qt::yellow};
const ColorStrap kSky{"sky", {{0.5, Qt::cyan}}, Qt::blue};
const ColorStrap kBroken{"no keys", {}, Qt::white};

void store(const QJsonObject& configs)
{
    ConfigurationManager::instance()->setEffectJsonValue(kMood, "LVTEST:01", "strapConfigs", configs);
}

struct Mood : Stepped<MoodShadow>
{
    Mood(IColorStrapManager* list, const ControlOptions& options)
        : Stepped(kMood)
    {
        if (list)
            DIColorStrapManager(list);
        update(0.1); // as may happen before load()
        load(options);
    }
};

/// What single LEDs show of the strap at a place that is told in cycles.
Frame drawn(const ColorStrap& strap, int width, int nbLeds, double position)
{
    const Frame cycle = strapColors(strap, width);
    Frame frame(nbLeds);
    for (int i = 0; i < nbLeds; ++i)
        frame[i] = cycle.at(static_cast<int>(std::fmod(std::floor(width * position) + i, width)));
    return frame;
}

/// One device's page: worker and options, joined as the control page does.
struct Page
{
    explicit Page(IColorStrapManager& list, int current)
        : worker(&list, strip(6))
    {
        worker.setCurrentStrap(current);
        options.resize(380, options.height());
        options.show();
        QObject::connect(&options, &AbsWorkerWidget::effectPropertyChanged, &worker,
                         &IEffectWorker::setEffectProperty);
        options.setEffectProperty("", worker.effectProperty(""));
    }

    /// Whether box, worker and editor are at this strap, and the whole list shows as it is.
    bool tells(IColorStrapManager& list, int current)
    {
        const auto* delegate = qobject_cast<ComboBoxDelegate*>(box->itemDelegate());
        bool isWhole = box->count() == list.strapCount();
        for (int i = 0; i < list.strapCount(); ++i)
            isWhole = isWhole && delegate->gradientStops(i) == strapStops(list.strap(i));
        // Colours that the editor has told stand in no certain order.
        QGradientStops stops = strapStops(list.strap(current));
        std::sort(stops.begin(), stops.end(), [](auto& a, auto& b) { return a.first < b.first; });
        return isWhole && box->currentIndex() == current && editor->gradientStops() == stops &&
               worker.effectProperty("currentStrap") == current;
    }

    Mood worker;
    SFrmMoodShadow options{nullptr};
    GradientImgComboBox* box = options.findChild<GradientImgComboBox*>("colorStrapBox");
    GradientWidget* editor = options.findChild<GradientWidget*>("gradientEditor");
    QPushButton* addButton = options.findChild<QPushButton*>("addBtn");
    QPushButton* rmButton = options.findChild<QPushButton*>("rmBtn");
    QSignalSpy echoes{&worker, &MoodShadow::rangeChanged};
    QSignalSpy choices{&options, &AbsWorkerWidget::effectPropertyChanged};
};

} // namespace

class TestMoodShadow : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigurationManager::instance()->reset(); }

    void everyFrameIsTheGradientDrawnAnew()
    {
        store({{"speed", 0.9}});
        FakeStrapList list({kFire, kSea});
        Mood effect(&list, strip(30));
        effect.setCurrentStrap(1);
        QCOMPARE(effect.after(0.3), drawn(kSea, 60, 30, 0.5 * 0.9 * 0.3)); // a cycle is two strips
        QVERIFY(strapColors(kSea, 60).first().red == 0 && strapColors(kSea, 60).last().red == 0);
        list.setStrap(1, kWood); // changed by anybody: seen in the next frame
        list.setStrap(0, kSea);  // not the one that shows
        effect.setEffectProperty("range", 0.001);
        // Room for the key and the ends, years later.
        QCOMPARE(effect.after(1e8), drawn(kWood, 3, 30, 0.5 * 0.9 * 0.3 + 10 * 0.9 * 1e8));
    }

    void aStripRunsByItsDirection()
    {
        store({{"speed", 1.0}, {"range", 0.5}});
        FakeStrapList list({kSea});
        Mood effect(&list, strip(20, 1));                        // mirrored
        QCOMPARE(effect.after(7.75), drawn(kSea, 20, 20, 0.25)); // many cycles back
        effect.onCtlDirChanged(0);
        QCOMPARE(effect.after(1.5), drawn(kSea, 20, 20, 0.75));
        QVERIFY(Mood(&list, strip(0)).after(0.5).isEmpty());
        QVERIFY(Mood(nullptr, strip(3)).after(0.5).isEmpty()); // nobody gave it a list
    }

    void onlyWhatChangesIsStored()
    {
        store({{"speed", "fast"}, {"range", -4}, {"more", 1}});
        FakeStrapList list({kFire, kSea});
        Mood effect(&list, strip(3));
        QCOMPARE(stored(kMood, "strapConfigs").toObject(),
                 (QJsonObject{{"speed", 0.5}, {"range", 1.0}, {"more", 1}}));

        effect.setSpeed(0.5009); // too close
        effect.setSpeed(1.1);
        effect.setRange(0.813);
        effect.setRange(0.812); // a step of the slider, rounded to less than that
        effect.setCurrentStrap(1);
        effect.setEffectProperty("currentStrap", 2); // there is none
        QCOMPARE(Mood(&list, strip(3)).effectProperty(EffectProperties::kLook).toObject(),
                 (QJsonObject{{"currentStrap", 1}, {"speed", 0.5}, {"range", 0.812}}));
    }

    void aBrokenStrapIsToldOfOnceAndLeft()
    {
        FakeStrapList list({kFire, kSea, kBroken});
        Mood effect(&list, strip(6));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        const LogCapture log;
        effect.setCurrentStrap(2);
        effect.after(0);
        QCOMPARE(effect.after(0), drawn(kFire, 12, 6, 0));
        QCOMPARE(changes.count(), 1); // so that the options show what is shown
        list.setStrap(0, kBroken);
        QVERIFY(effect.after(0).isEmpty() && effect.after(0).isEmpty());
        QCOMPARE(log.count("Current strap has invalied"), 2);
        list.setStrap(0, kSea);
        QCOMPARE(effect.after(0), drawn(kSea, 12, 6, 0));
    }

    void optionsShowTheWorkerAndSetIt()
    {
        store({{"speed", 0.29}, {"range", 0.57}}); // neither has an exact double
        auto list = std::make_unique<FakeStrapList>(QVector<ColorStrap>{kFire, kWood, kSky});
        Page page(*list, 1);
        QVERIFY(page.tells(*list, 1));
        QCOMPARE(page.options.effectProperty("").toObject(),
                 (QJsonObject{{"currentStrap", 1}, {"speed", 0.29}, {"range", 0.57}}));
        QTest::keyClick(page.box, Qt::Key_Down);
        page.options.findChild<QSlider*>("speedSlider")->setValue(30);
        page.options.findChild<QSlider*>("rangeSlider")->setValue(1);
        QCOMPARE(page.worker.effectProperty(EffectProperties::kLook).toObject(),
                 (QJsonObject{{"currentStrap", 2}, {"speed", 0.3}, {"range", 0.001}}));
        QVERIFY(page.tells(*list, 2) && page.choices.count() == 3);
        QCOMPARE(page.echoes.count(), 0); // what the options set is not told back

        list.reset(); // at the end of the program
        page.addButton->click();
        page.editor->addKeyColor(Qt::blue, 0.9);
        page.options.setEffectProperty("", page.worker.effectProperty(""));
        QCOMPARE(page.options.effectProperty("currentStrap"), QJsonValue(QJsonValue::Null));
    }

    void anAddedOrRemovedStrapReachesEveryPage()
    {
        FakeStrapList list({kFire, kWood, kSky});
        Page page(list, 1), other(list, 1);
        page.rmButton->click(); // the next takes its place, wherever it was shown
        QVERIFY(page.tells(list, 1) && other.tells(list, 1));
        QCOMPARE(other.worker.after(0), drawn(kSky, 12, 6, 0));
        page.addButton->click();
        QVERIFY(page.tells(list, 2) && other.tells(list, 1));
        page.rmButton->click(); // the last: there is no next
        QVERIFY(page.tells(list, 1) && other.tells(list, 1));
        other.box->setCurrentIndex(0);
        page.choices.clear();
        other.rmButton->click();
        QCOMPARE(page.choices.count(), 0);       // followed, not chosen
        page.editor->addKeyColor(Qt::blue, 0.9); // goes to the strap that moved up
        QVERIFY(page.tells(list, 0) && other.tells(list, 0) && !page.rmButton->isEnabled()); // the last one
        QCOMPARE(list.strap(0).keyColors.size(), 2);
    }
};

QTEST_MAIN(TestMoodShadow)
#include "tst_mood_shadow.moc"
