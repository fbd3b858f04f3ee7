#include "LogCapture.h"
#include "MusicTestKit.h"
#include "effects/ColorStrapManager.h"
#include "effects/EffectProperties.h"
#include "effects/colorful/ComboBoxDelegate.h"
#include "effects/colorful/GradientImgComboBox.h"
#include "effects/colorful/GradientWidget.h"
#include "effects/colorful/MoodShadow.h"
#include "effects/colorful/SFrmMoodShadow.h"
#include "effects/colorful/strapColors.h"

#include <QColorDialog>
#include <QGraphicsView>
#include <QImage>
#include <QJsonObject>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QTranslator>
#include <QtTest>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace MusicTestKit;

namespace {

const char* const kMood = "id.effect.colorful.moodShadow";
constexpr uint32_t kMirrored = 1;

const ColorStrap kFire{"fire", {{0.5, Qt::red}}, Qt::white};
const ColorStrap kSea{"sea", {{0.7, Qt::blue}, {0.2, Qt::cyan}, {0.0, Qt::red}, {1.0, Qt::red}}, Qt::black};
const ColorStrap kWood{"wood", {{0.3, Qt::green}}, Qt::yellow};
const ColorStrap kSky{"sky", {{0.5, Qt::cyan}}, Qt::blue};
const ColorStrap kBroken{"no keys", {}, Qt::white};

/// The list with just these.
struct Straps : ColorStrapManager
{
    explicit Straps(const QVector<ColorStrap>& straps)
        : ColorStrapManager(nullptr)
    {
        for (const ColorStrap& strap : straps)
            addStrap(strap);
        while (strapCount() > straps.size())
            removeStrap(0);
    }
};

void store(const char* key, const QJsonValue& value)
{
    ConfigurationManager::instance()->setEffectJsonValue(kMood, "LVTEST:01", key, value);
}

/// The clock stands still: the tests make the steps.
struct Stepped : MoodShadow
{
    Stepped(IColorStrapManager* list, const ControlOptions& options)
        : MoodShadow(entry(kMood), nullptr)
    {
        stop();
        if (list)
            DIColorStrapManager(list);
        update(0.1); // as may happen before load()
        load(options);
    }
    Frame after(double seconds)
    {
        update(seconds);
        return frames.isEmpty() ? Frame() : frames.takeLast().at(0).value<Frame>();
    }

    QSignalSpy frames{this, &IEffectWorker::updateColors};
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
    explicit Page(Straps& list, int current)
        : worker(&list, strip(6))
    {
        worker.setCurrentStrap(current);
        options.show();
        options.resize(380, options.height());
        QObject::connect(&options, &AbsWorkerWidget::effectPropertyChanged, &worker,
                         [this](const QString& key, const QJsonValue& val) {
                             changes += key + val.toVariant().toString();
                             worker.setEffectProperty(key, val);
                         });
        options.setEffectProperty("", worker.effectProperty(""));
    }

    QColorDialog* askForColor()
    {
        if (!QTest::qWaitForWindowActive(&options))
            return nullptr;
        editor->setFocus();
        for (const auto key : {Qt::Key_Tab, Qt::Key_Return})
            QTest::keyClick(editor, key);
        return editor->findChild<QColorDialog*>();
    }
    QPushButton* button(const char* name) const { return options.findChild<QPushButton*>(name); }
    /// Whether box, worker and editor are at this strap, and the whole list shows as it is.
    bool tells(Straps& list, int current)
    {
        const auto* delegate = qobject_cast<ComboBoxDelegate*>(box->itemDelegate());
        QGradientStops stops = strapStops(list.strap(current));
        std::sort(stops.begin(), stops.end(), [](auto& a, auto& b) { return a.first < b.first; });
        for (int i = 0; i < list.strapCount(); ++i) {
            if (delegate->gradientStops(i) != strapStops(list.strap(i)))
                return false;
        }
        return box->count() == list.strapCount() && box->currentIndex() == current &&
               worker.effectProperty("currentStrap") == current && editor->gradientStops() == stops;
    }

    Stepped worker;
    SFrmMoodShadow options{nullptr};
    GradientImgComboBox* box = options.findChild<GradientImgComboBox*>("colorStrapBox");
    GradientWidget* editor = options.findChild<GradientWidget*>("gradientEditor");
    QStringList changes;
};

struct Marking : QTranslator
{
    QString translate(const char*, const char* source, const char*, int) const override
    {
        return QStringLiteral("> ") + source;
    }
    bool isEmpty() const override { return false; }
};

void moveMouse(QWidget* target, QEvent::Type type, double pos)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const QPoint at(int(pos * (target->width() + 1)), 8);
    QMouseEvent event(type, at, target->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
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
        store("strapConfigs", QJsonObject{{"speed", 0.9}});
        Straps list({kFire, kSea});
        Stepped effect(&list, strip(30));
        double position = 0.0;
        const auto isShown = [&](const ColorStrap& strap, int width, double seconds) {
            position += 30.0 / width * 0.9 * seconds; // nine tenths of the strip a second
            return effect.after(seconds) == drawn(strap, width, 30, position);
        };
        QVERIFY(isShown(kFire, 60, 0.3)); // a cycle is two strips
        effect.setCurrentStrap(1);
        QVERIFY(isShown(kSea, 60, 0.3));
        QVERIFY(strapColors(kSea, 60).first().red == 0 && strapColors(kSea, 60).last().red == 0);
        effect.setEffectProperty("range", 0.5);
        list.setStrap(1, kWood); // changed by anybody: seen in the next frame
        list.setStrap(0, kSea);  // not the one that shows
        QVERIFY(isShown(kWood, 30, 0.3));
        effect.setEffectProperty("range", 0.001);
        QVERIFY(isShown(kWood, 3, 0.3)); // room for the key and the ends
        QVERIFY(isShown(kWood, 3, 1e8)); // years later
        effect.setEffectProperty("speed", 0.0);
        const Frame still = effect.after(0.0);
        QCOMPARE(effect.after(9.0), still);
    }

    void aStripRunsByItsDirectionAndUnits()
    {
        store("strapConfigs", QJsonObject{{"speed", 1.0}, {"range", 0.5}});
        Straps list({kSea});
        ControlOptions options = strip(20, kMirrored);
        Stepped effect(&list, options);
        QCOMPARE(effect.after(0.25), drawn(kSea, 20, 20, 0.75));
        QCOMPARE(effect.after(7.5), drawn(kSea, 20, 20, 0.25)); // a pause of many cycles
        effect.onCtlDirChanged(0);
        const Frame frame = drawn(kSea, 20, 20, 0.75);
        QCOMPARE(effect.after(1.5), frame);
        options.ledPerUnit = 4;
        const Frame units = Stepped(&list, options).after(0.25);
        QVERIFY(units[2] == frame[0] && units[3] == frame[3] && units[5] == frame[3]);
        QVERIFY(Stepped(&list, strip(0)).after(0.5).isEmpty());
        Stepped alone(nullptr, strip(3)); // nobody gave it a list
        alone.after(0.1);
        QCOMPARE(alone.frames.count(), 0);
    }

    void onlyWhatChangesIsStored()
    {
        store("strapConfigs", QJsonObject{{"speed", "fast"}, {"range", -4}, {"more", 1}});
        store("currentStrap", 9);
        Straps list({kFire, kSea});
        Stepped effect(&list, strip(3));
        QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 0);
        QCOMPARE(stored(kMood, "strapConfigs").toObject(),
                 (QJsonObject{{"speed", 0.5}, {"range", 1.0}, {"more", 1}}));

        for (const double bad : {0.5009 /* too close */, -0.1, 1.1, std::numeric_limits<double>::quiet_NaN()})
            effect.setSpeed(bad);
        for (int value = 999; value > 700; --value) { // each step of a slider
            effect.setRange(value / 1000.0);
            QCOMPARE(stored(kMood, "strapConfigs")["range"].toDouble(), value / 1000.0);
        }
        QSignalSpy ranges(&effect, &MoodShadow::rangeChanged);
        effect.setEffectProperty("range", 0.7);
        QCOMPARE(ranges.count(), 0); // what the options set is not told back
        effect.setCurrentStrap(1);
        effect.setEffectProperty("currentStrap", 2); // there is none
        QCOMPARE(Stepped(&list, strip(3)).effectProperty(EffectProperties::kLook).toObject(),
                 (QJsonObject{{"currentStrap", 1}, {"speed", 0.5}, {"range", 0.7}}));
    }

    void aBrokenStrapIsToldOfOnceAndLeft()
    {
        Straps list({kFire, kSea, kWood});
        Stepped effect(&list, strip(6));
        QSignalSpy changes(&effect, &IEffectWorker::effectPropertyChanged);
        effect.setCurrentStrap(2);
        LogCapture log;
        list.setStrap(2, kBroken);
        effect.after(0);
        QCOMPARE(effect.after(0), drawn(kFire, 12, 6, 0));
        QCOMPARE(changes.count(), 1); // so that the options show what is shown
        list.setStrap(0, kBroken);
        for (int step = 0; step < 5; ++step)
            QCOMPARE(effect.after(0), Frame());
        QCOMPARE(log.count("Current strap has invalied"), 2);
        list.setStrap(0, kSea);
        QCOMPARE(effect.after(0), drawn(kSea, 12, 6, 0));
    }

    void optionsShowTheWorkerAndSetIt()
    {
        store("strapConfigs", QJsonObject{{"speed", 0.29}, {"range", 0.57}}); // neither has an exact double
        auto list = std::make_unique<Straps>(QVector<ColorStrap>{kFire, kWood, kSky});
        Page page(*list, 1);
        QVERIFY(page.tells(*list, 1));
        QCOMPARE(page.options.effectProperty("").toObject(),
                 (QJsonObject{{"currentStrap", 1}, {"speed", 0.29}, {"range", 0.57}}));
        QTest::keyClick(page.box, Qt::Key_Down);
        page.options.findChild<QSlider*>("speedSlider")->setValue(30);
        page.options.findChild<QSlider*>("rangeSlider")->setValue(1);
        QCOMPARE(page.changes, (QStringList{"currentStrap2", "speed0.3", "range0.001"}));
        QCOMPARE(stored(kMood, "strapConfigs").toObject(), (QJsonObject{{"speed", 0.3}, {"range", 0.001}}));
        page.options.setEffectProperty("currentStrap", 3); // there is none
        QVERIFY(page.tells(*list, 2));

        list.reset(); // at the end of the program
        for (const char* name : {"addBtn", "rmBtn"})
            page.button(name)->click();
        page.editor->addKeyColor(Qt::blue, 0.9);
        page.box->setCurrentIndex(1);
        page.options.setEffectProperty("", page.worker.effectProperty(""));
        QCOMPARE(page.options.effectProperty("currentStrap"), QJsonValue(QJsonValue::Null));
    }

    void straightAndMirroredTheClosedBoxShowsTheGradient()
    {
        Straps list({{"half", {{0.5, Qt::red}, {0.51, Qt::blue}}, Qt::red}});
        Page page(list, 0);
        for (const bool isMirrored : {false, true}) {
            page.options.setLayoutDirection(isMirrored ? Qt::RightToLeft : Qt::LeftToRight);
            const QImage shot = page.box->grab().toImage().mirrored(isMirrored, false);
            QVERIFY(shot.pixelColor(20, 17).red() > 230);
            QVERIFY(shot.pixelColor(shot.width() / 2, 17).blue() > 200); // the arrow has its own place
        }
    }

    void anAddedOrRemovedStrapReachesEveryPage()
    {
        Straps list({kFire, kWood, kSky});
        Page page(list, 1);
        Page other(list, 1);
        page.button("rmBtn")->click(); // the next takes its place, wherever it was shown
        QVERIFY(page.tells(list, 1) && other.tells(list, 1));
        QCOMPARE(page.worker.after(0), drawn(kSky, 12, 6, 0));
        page.button("addBtn")->click();
        QVERIFY(page.tells(list, 2) && other.tells(list, 1));
        page.button("rmBtn")->click(); // the last: there is no next
        QVERIFY(page.tells(list, 1) && other.tells(list, 1));
        other.box->setCurrentIndex(0);
        page.changes.clear();
        other.button("rmBtn")->click();
        QVERIFY(page.tells(list, 0) && other.tells(list, 0));
        QCOMPARE(page.changes, QStringList()); // followed, not chosen
        QCOMPARE(stored(kMood, "currentStrap").toInt(-1), 0);
        QVERIFY(!page.button("rmBtn")->isEnabled()); // the last one
        list.addStrap(kSky);
        QVERIFY(page.button("rmBtn")->isEnabled());
    }

    void aDragOutlastsWhatOthersDoToOtherStraps()
    {
        Straps list({kFire, kWood, kSky});
        Page page(list, 1);
        Page other(list, 1);
        QWidget* target = page.editor->findChild<QGraphicsView*>()->viewport();
        moveMouse(target, QEvent::MouseButtonPress, 0.3);
        moveMouse(target, QEvent::MouseMove, 0.4);
        list.setStrap(2, kFire);
        list.addStrap(kSea);
        list.removeStrap(0);
        moveMouse(target, QEvent::MouseMove, 0.6);
        QVERIFY(page.tells(list, 0) && other.tells(list, 0));
        QVERIFY(list.strap(0).name == kWood.name && qAbs(list.strap(0).keyColors.at(0).key - 0.6) < 0.02);
        other.button("rmBtn")->click(); // what is dragged
        moveMouse(target, QEvent::MouseMove, 0.7);
        moveMouse(target, QEvent::MouseButtonRelease, 0.7);
        QVERIFY(page.tells(list, 0) && other.tells(list, 0));
        QCOMPARE(list.strap(0).keyColors.at(0).key, 0.5); // untouched
    }

    void aColorDialogAnswersForItsStrapAlone()
    {
        for (const int removed : {0, 1}) {
            Straps list({kFire, kWood, kSky});
            Page page(list, 1);
            const QPointer<QColorDialog> dialog = page.askForColor();
            QVERIFY(dialog);
            dialog->setCurrentColor(Qt::magenta);
            list.removeStrap(removed);
            dialog->accept();
            QCOMPARE(list.strap(0).keyColors.at(0).color, QColor(removed == 1 ? Qt::red : Qt::magenta));
            QCOMPARE(list.strap(1).keyColors.at(0).color, QColor(Qt::cyan));
            QVERIFY(page.tells(list, removed));
        }
    }

    void languageReachesWhatIsOpen()
    {
        Straps list({kFire, kWood});
        Page page(list, 1);
        const QColorDialog* dialog = page.askForColor();
        QVERIFY(dialog);
        const auto texts = [&page, dialog] {
            QStringList all{dialog->windowTitle(), page.editor->toolTip(), page.button("addBtn")->text(),
                            page.button("rmBtn")->toolTip()};
            for (auto* label : page.options.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
                all << label->text();
            return all;
        };
        QStringList expected;
        for (const QString& text : texts())
            expected << text.split('\n').join("\n> ").prepend("> ");
        Marking marking;
        QCoreApplication::installTranslator(&marking);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(texts(), expected);
        QVERIFY(page.tells(list, 1));
    }
};

QTEST_MAIN(TestMoodShadow)
#include "tst_mood_shadow.moc"
