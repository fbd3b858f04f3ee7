#include "ScreenTestKit.h"
#include "effects/screenSync/ScreenSyncSOptWidget.h"
#include "effects/screenSync/subModes/HalfScreens.h"
#include "support/config/ConfigKeys.h"

#include <QtTest>
#include <QtWidgets>

using namespace ScreenTestKit;

namespace {

QJsonArray captures(const QStringList& ids)
{
    QJsonArray list;
    for (const QString& id : ids)
        list.append(QJsonObject{{"index", id}, {"desc", "Monitor " + id}});
    return list;
}

} // namespace

/// The options of the screen effects as the user and the worker see them.
class ScreenOptionsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QWidget> m_page;
    ScreenSyncSOptWidget* m_options = nullptr;

    template <typename T = QWidget>
    T* part(const char* name) const
    {
        return m_options->findChild<T*>(name);
    }
    QComboBox* box() const { return part<QComboBox>("comboBox"); }
    void join(AbsScreenSync* worker) const
    {
        connect(m_options, &AbsWorkerWidget::effectPropertyChanged, worker,
                &IEffectWorker::setEffectProperty);
        connect(worker, &IEffectWorker::effectPropertyChanged, m_options,
                &AbsWorkerWidget::setEffectProperty);
        m_options->setEffectProperty("", worker->effectProperty(""));
    }

private slots:
    void init()
    {
        config()->reset();
        m_page = std::make_unique<QWidget>();
        m_options = new ScreenSyncSOptWidget(m_page.get());
        (new QVBoxLayout(m_page.get()))->addWidget(m_options);
        m_page->resize(400, 200);
        m_page->show();
    }

    void rowsShowWhatCanBeSet()
    {
        QSignalSpy heights(m_options, &AbsWorkerWidget::miniHeightChanged);
        QSignalSpy visible(m_options, &AbsWorkerWidget::visibleStatusChanged);
        const QJsonObject look{
            {"borderMode", "stable"}, {"smoothing", "calm"}, {"saturationGate", 0}, {"frameInterval", -1}};
        for (const int bits : {0, 1, 2, 4, 0, 7, 5, 15, 10, 12, 14, 7, 8}) {
            m_options->setEffectProperty("", bits & 8 ? look : QJsonObject()); // an older worker has none
            m_options->setEffectProperty("captures", captures(QStringList{"A", "B"}.mid(bits & 1 ? 0 : 1)));
            m_options->setEffectProperty("enbBlurAndSaturationAdjust", bool(bits & 2));
            m_options->setEffectProperty("enbWipeDarkSizeFunc", bool(bits & 4));
            for (int i = 0; i < 5; ++i) // a layout in a layout
                QCoreApplication::processEvents();
            const bool shown = bits & 7;
            QVERIFY(m_options->isHidden() != shown && visible.last().at(0).toBool() == shown);
            QVERIFY(!shown || heights.last().at(0).toInt() == m_options->height());
            int bottom = 0;
            int rows = 0;
            for (const auto& [label, control, needs] :
                 {std::tuple("inputSourcesLabel", "comboBox", 1),
                  std::tuple("blurLabel", "blurStrengthSlider", 2),
                  std::tuple("saturationLabel", "saturationStrengthSlider", 2),
                  std::tuple("wipeDarkSideCBX", "wipeDarkSideCBX", 4),
                  std::tuple("borderModeLabel", "borderModeComboBox", 14),
                  std::tuple("smoothingLabel", "smoothingComboBox", 10),
                  std::tuple("saturationGateLabel", "saturationGateSlider", 10),
                  std::tuple("frameRateLabel", "frameRateComboBox", 10)}) {
                const bool shows = (bits & needs) == needs;
                rows += shows;
                QVERIFY2(part(label)->isVisible() == shows && part(control)->isVisible() == shows, control);
                const QRect place(part(control)->mapTo(m_options, QPoint()), part(control)->size());
                QVERIFY2(!shows || (place.top() > bottom && place.height() >= 28), control);
                QVERIFY2(!shows || part(label)->mapTo(m_options, QPoint()).y() == place.top(), control);
                bottom = shows ? place.bottom() : bottom;
            }
            QVERIFY(bottom < m_options->height());
            QVERIFY(!shown || m_options->height() == 10 + rows * 34);
        }
    }

    void everyStepOfASliderFindsItsPlaceAgainAndValuesOfNoUseChangeNothing()
    {
        config()->setAppConfig(ConfigKeys::kSmoothing.key, "calm");
        const auto worker = loaded<TopHalfScreen>(3);
        join(worker.get());
        ScreenSyncSOptWidget next(nullptr); // as the page makes it when it is opened again
        QSignalSpy echo(&next, &AbsWorkerWidget::effectPropertyChanged);
        for (int value = 0; value <= 100; ++value) {
            for (auto* slider : m_options->findChildren<QSlider*>())
                slider->setValue(value);
            next.setEffectProperty("", worker->effectProperty(""));
            QCOMPARE(next.effectProperty("blur").toDouble(), value / 100.0);
            QCOMPARE(next.effectProperty("saturation").toDouble(), value / 100.0);
            QCOMPARE(next.effectProperty("saturationGate").toInt(), qMin(value, 64));
        }
        QVERIFY(echo.isEmpty());

        next.setEffectProperty("",
                               QJsonObject{{"blur", 0.299}, {"saturation", -1e300}, {"smoothing", "calm"}});
        QCOMPARE(next.effectProperty("blur").toDouble(), 0.29); // the rest is cut off
        QCOMPARE(next.effectProperty("saturation").toDouble(), 0.0);
        const QJsonValue before = next.effectProperty("");
        for (const QJsonValue& bad : {QJsonValue(), QJsonValue("x"), QJsonValue(QJsonArray{1})}) {
            for (const char* key : {"blur", "saturation", "wipeDarkSide", "enbWipeDarkSizeFunc", "none", "",
                                    "borderMode", "smoothing", "saturationGate", "frameInterval"})
                next.setEffectProperty(key, bad);
            QCOMPARE(next.effectProperty(""), before);
        }
    }

    void everyChoiceReachesTheWorkerAndIsThereAgain()
    {
        config()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, true);
        config()->setAppConfig(ConfigKeys::kScreenSyncAutoWipeDarkSide.key, true);
        config()->setAppConfig(ConfigKeys::kFrameIntervalMs, 60);
        const auto worker = loaded<TopHalfScreen>(3);
        join(worker.get());
        auto* rate = part<QComboBox>("frameRateComboBox");
        QVERIFY(rate->currentIndex() == 2 && rate->currentText().contains("16.7")); // between its neighbours
        QVERIFY(!part("borderModeComboBox")->isEnabled() && !part("borderModeLabel")->isEnabled());
        part<QCheckBox>("wipeDarkSideCBX")->click();

        for (const auto& [name, key, values] :
             {std::tuple("borderModeComboBox", "borderMode", QJsonArray{"stable", "classic"}),
              std::tuple("smoothingComboBox", "smoothing", QJsonArray{"off", "responsive", "calm"}),
              std::tuple("frameRateComboBox", "frameInterval", QJsonArray{-1, 80, 60, 50, 33, 20})}) {
            QCOMPARE(part<QComboBox>(name)->count(), values.size());
            for (int i = values.size() - 1; i >= 0; --i) {
                QTest::keyClick(part(name), i + 1 == values.size() ? Qt::Key_End : Qt::Key_Up);
                QCOMPARE(worker->effectProperty(key), values.at(i));
            }
            const auto again = loaded<TopHalfScreen>(3); // stored
            QCOMPARE(again->effectProperty(key), values.at(0));
        }
        // What only the setting of all effects can be is shown, and cannot be chosen.
        m_options->setEffectProperty("frameInterval", 1000);
        QTest::keyClick(rate, Qt::Key_Home);
        QTest::keyClick(rate, Qt::Key_Down);
        QCOMPARE(worker->effectProperty("frameInterval"), QJsonValue(80));
        m_options->setEffectProperty("", QJsonObject{{"wipeDarkSide", false}});
        QVERIFY(!part("borderModeComboBox")->isEnabled());
    }

    void sourcesComeAndGoWithTheirMonitors()
    {
        FakeDeskDuplManager manager;
        manager.order = QStringList{"A"};
        manager.captures["C"] = QSharedPointer<FakeCapture>::create();
        const auto worker = loaded<TopHalfScreen>(3, 0, &manager);
        join(worker.get());
        QSignalSpy told(m_options, &AbsWorkerWidget::effectPropertyChanged);
        const auto shows = [&](const QStringList& ids, const char* current, const char* stored, int choices) {
            const QList<QString> before = std::exchange(manager.order, ids);
            for (const QString& id : QStringList(before) + ids) {
                if (!ids.contains(id))
                    emit manager.capturerFailed(id);
                else if (!before.contains(id))
                    emit manager.capturerReady(id);
            }
            const QString key = ConfigKeys::sourceIndexKey(kController);
            return m_options->isVisible() == (ids.size() > 1) && box()->currentText() == current &&
                   config()->appConfig(key).toString() == stored && told.size() == choices;
        };
        QVERIFY(m_options->isHidden());
        QVERIFY(shows({"A", "B"}, "Monitor A", "", 0)); // a second one is plugged in: there is a choice now
        QTest::keyClick(box(), Qt::Key_Down);
        QVERIFY(shows({"A", "C"}, "Monitor A", "B", 1)); // stands in, which is no choice
        QVERIFY(shows({"C", "A", "B"}, "Monitor B", "B", 1) && shows({"A", "C"}, "Monitor A", "B", 1));
        box()->showPopup();
        QTest::keyClick(box()->view(), Qt::Key_Return); // the user wants the one that stands in
        QVERIFY(shows({}, "", "A", 2) && shows({"B", "A"}, "Monitor A", "A", 2));

        // The next devices: one follows nothing at present, for another the first has another meaning.
        m_options->setEffectProperty("inputSource", "gone");
        QCOMPARE(m_options->effectProperty("inputSource"), QJsonValue("A"));
        for (const char* other : {"", "A"}) {
            m_options->setEffectProperty("inputSource", other);
            QTest::keyClick(box(), Qt::Key_Home);
            QCOMPARE(told.takeLast().at(1).toJsonValue(), QJsonValue("B"));
        }
    }

    void advancedModeIsFollowedWhileTheOptionsAreOpen()
    {
        const char* const key = ConfigKeys::kScreenSyncAdvancedMode.key;
        const auto* slider = part("blurStrengthSlider");
        config()->setAppConfig(key, true);
        QTRY_VERIFY(slider->isVisible());
        m_options->setEffectProperty("", QJsonObject{{"enbBlurAndSaturationAdjust", false}});
        QVERIFY(slider->isVisible()); // the page is opened again; the worker is older than the setting
        config()->AppConfigJsonObj()[key] = false;
        config()->saveAppConfigJsonObj();
        QTRY_VERIFY(m_options->isHidden());
    }
};

QTEST_MAIN(ScreenOptionsTest)
#include "tst_screen_options.moc"
