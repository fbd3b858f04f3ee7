#include "ScreenTestKit.h"
#include "effects/screenSync/FrameFilters.h"

#include <QtTest>
#include <functional>
#include <limits>
#include <opencv2/imgproc.hpp>
#include <utility>

using namespace ScreenTestKit;

namespace {

const QString kSavedKey = "runtime.screenSync.sourceIndex." + kController;

using Frame = QVector<LV_RGB>;
const Frame kShown{{0, 0, 7}}; // of positionFrame()

Frame frameOf(const QVariantList& emitted)
{
    return emitted.at(0).value<Frame>();
}

bool same(const cv::Mat& a, const cv::Mat& b)
{
    return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0.0;
}

void lose(FakeDeskDuplManager& manager, const QString& id)
{
    manager.order.removeAll(id);
    emit manager.capturerFailed(id);
}

void bring(FakeDeskDuplManager& manager, const QString& id)
{
    manager.order += id;
    emit manager.capturerReady(id);
}

/// Keeps the frame that reaches the mode; every LED shows its first pixel.
class ProbeMode : public AbsScreenSync
{
public:
    using AbsScreenSync::AbsScreenSync;
    using AbsScreenSync::nextStepMs;
    using AbsScreenSync::period;
    using AbsScreenSync::update;

    cv::Mat seen, given; ///< a copy, and itself
    std::vector<cv::Rect> places;
    qint64 us = 0;
    int worked = 0;

protected:
    std::vector<cv::Rect> lookedAt(const cv::Size&) override { return places; }
    qint64 nowUs() const override { return us; }
    QVector<LV_RGB> frameToColors(cv::Mat frame) override
    {
        given = frame;
        seen = frame.clone();
        ++worked;
        const auto pixel = frame.at<cv::Vec4b>(0, 0);
        m_colors.fill({pixel[0], pixel[1], pixel[2]});
        return m_colors;
    }
};

/// Has a frame of a new size only at the pull after the first.
class SlowCapture : public FakeCapture
{
public:
    cv::Mat grabFrame() override
    {
        return std::exchange(m_begun, true) ? FakeCapture::grabFrame() : cv::Mat();
    }
    void setOutputSize(int width, int height) override
    {
        FakeCapture::setOutputSize(width, height);
        m_begun = false;
    }

private:
    bool m_begun = false;
};

} // namespace

class TestFramePipeline : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        config()->reset();
        config()->setAppConfig("devUpdateInterval", 5);
    }

    void theBlurIsGaussianToTheBit()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const QVector<QPair<double, int>> sizes{{0.0, 1},  {0.02, 1}, {0.03, 3},    {0.5, 37},
                                                {1.0, 75}, {-3.0, 1}, {1e300, 751}, {nan, 1}};
        for (const auto& [strength, size] : sizes)
            QCOMPARE(FrameFilters::blurKernelSize(strength), size);
        cv::Mat picture(250, 150, CV_8UC4);
        cv::randu(picture, 0, 256);
        for (const cv::Size size : {cv::Size(120, 67), cv::Size(120, 213), cv::Size(3, 2)}) {
            const cv::Mat frame = picture(cv::Rect({20, 30}, size)); // what lies around it does not count
            for (int kernel = 1; kernel <= 75; kernel += 2) {
                cv::Mat expected;
                cv::GaussianBlur(frame.clone(), expected, cv::Size(kernel, kernel), 0);
                QVERIFY2(same(FrameFilters::blur(frame, (kernel + 0.5) / 75.0), expected),
                         qPrintable(QString::number(kernel)));
            }
        }
    }

    void saturationIsAddedToTheColor()
    {
        QCOMPARE(FrameFilters::adjustSaturation({200, 100, 100}, 0.25), (LV_RGB{200, 50, 50}));
        QCOMPARE(FrameFilters::adjustSaturation({200, 100, 100}, -1.0), (LV_RGB{200, 200, 200}));
        QCOMPARE(FrameFilters::adjustSaturation({90, 90, 90}, 1.0), (LV_RGB{90, 90, 90}));
    }

    void whatStripsHaveInCommonIsMadeOnce()
    {
        struct SharedCapture : FakeCapture
        {
            cv::Mat sharedFrame(const void*, int, int) override { return frame; }
        };
        FakeDeskDuplManager manager;
        const auto capture = manager.captures["A"] = QSharedPointer<SharedCapture>::create();
        const auto one = loaded<ProbeMode>(1, 0, &manager), two = loaded<ProbeMode>(1, 0, &manager);
        const auto alone = loaded<ProbeMode>(1);
        // Whether both get the same pixels; there must be no others in them than each would make alone.
        const auto isShared = [&](bool isNew, float blur, bool wipes, uint32_t direction) {
            if (isNew)
                capture->frame = cv::Mat(positionFrame() + cv::Scalar::all(alone->worked));
            const cv::Mat before = capture->frame.clone();
            bool isRight = true;
            for (ProbeMode* worker : {one.get(), two.get()}) {
                for (ProbeMode* each : {worker, alone.get()}) {
                    each->setBlurStrength(worker == one.get() ? 0.2F : blur);
                    each->setEffectProperty("wipeDarkSide", worker == two.get() && wipes);
                    each->onCtlDirChanged(worker == one.get() ? 0 : direction);
                }
                alone->frameInput(before.clone());
                worker->update(0.1);
                const cv::Rect place = worker->places.empty() ? cv::Rect(0, 0, 120, 67) : worker->places[0];
                isRight = isRight && same(worker->seen(place), alone->seen(place));
            }
            return isRight && same(capture->frame, before) ? int(one->given.data == two->given.data) : -1;
        };
        for (const bool isNew : {true, false}) {
            QCOMPARE(isShared(isNew, 0.3F, false, 0), 0);
            QCOMPARE(isShared(isNew, 0.2F, true, 0), 0);
            QCOMPARE(isShared(isNew, 0.2F, false, 1), 0);
            QCOMPARE(isShared(isNew, 0.2F, false, 0), 1);
        }
        one->places = {{3, 4, 2, 1}};
        for (const int step : {0, 1, 2, 3}) { // at first the first one does not know where the other looks
            two->places = {{step < 2 ? 90 : 50, 60, 5, 5}};
            QVERIFY(isShared(step % 2 == 0, 0.2F, false, 0) >= 0);
        }
        QCOMPARE(isShared(true, 0.2F, false, 0), 1);
        const cv::Mat picture = std::exchange(capture->frame, {}), made = std::exchange(one->given, {});
        two->given.release();
        QVERIFY(picture.u->refcount > 1 && made.u->refcount > 1); // it may come again
        one->unload();
        two->unload();
        QVERIFY(picture.u->refcount == 1 && made.u->refcount == 1);
    }

    void darkSidesAreCutOffAroundThreeBrightPixels()
    {
        const auto worker = loaded<ProbeMode>(1);
        worker->setEffectProperty("wipeDarkSide", true);
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar(0, 0, 0, 255));
        frame.at<cv::Vec4b>(50, 100) = cv::Vec4b(128, 128, 128, 255); // not bright enough
        frame.at<cv::Vec4b>(60, 110) = cv::Vec4b(110, 180, 0, 255);   // nor this: blue weighs as red does
        frame.at<cv::Vec4b>(10, 20) = frame.at<cv::Vec4b>(19, 39) = cv::Vec4b(0, 180, 110, 255);
        worker->frameInput(frame);
        QVERIFY(same(worker->seen, frame));

        frame.at<cv::Vec4b>(15, 30) = cv::Vec4b(129, 129, 129, 255);
        cv::Mat expected;
        cv::resize(frame(cv::Rect(20, 10, 20, 10)), expected, frame.size(), 0, 0, cv::INTER_LINEAR);
        worker->frameInput(frame);
        QVERIFY(same(worker->seen, expected));
    }

    void unusableFramesAreSkippedAndOnlyDirectionOneFlips()
    {
        const auto worker = loaded<ProbeMode>(1, 1);
        const LogCapture log;
        for (const int type : {CV_8UC3, CV_32FC4, CV_8UC3})
            QVERIFY(colorsOf(*worker, cv::Mat(67, 120, type, cv::Scalar(1, 2, 3, 4))).isEmpty());
        QVERIFY(colorsOf(*worker, cv::Mat()).isEmpty());
        QCOMPARE(log.count("[AbsScreenSync]: The frame is skipped"), 1);

        const cv::Mat frame = positionFrame();
        QCOMPARE(colorsOf(*worker, frame), Frame(1, {238, 0, 7}));
        worker->onCtlDirChanged(2);
        QCOMPARE(colorsOf(*worker, frame), kShown);
        QVERIFY(same(frame, positionFrame())); // others may hold the same frame
    }

    void framesArePulledByTheTimerAtTheSourcesAspect()
    {
        FakeDeskDuplManager manager;
        const auto capture = manager.captures["A"];
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        QCOMPARE(capture->output, QSize(120, 67));
        QSignalSpy spy(worker.get(), &AbsScreenSync::updateColors);
        worker->update(0.1);
        QCOMPARE(spy.count(), 0); // nothing captured yet
        capture->frame = positionFrame();
        QTRY_VERIFY(spy.count() > 2);

        // A size that is unknown for a while, and a turned screen.
        const LogCapture log;
        for (const QSize source : {QSize(), QSize(1080, 1920)}) {
            capture->source = source;
            for (int i = 0; i < 3; ++i)
                worker->update(0.1);
            QCOMPARE(capture->output, source.isEmpty() ? QSize(120, 67) : QSize(120, 213));
        }
        QCOMPARE(log.count("has no size yet"), 1);
    }

    void capturersAreHeldOnceAndGivenBack()
    {
        const auto saved = [] { return config()->appConfig(kSavedKey).toString(); };
        config()->setAppConfig(kSavedKey, "gone");
        FakeDeskDuplManager manager, other;
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        worker->DIDeskDuplication(&other); // comes too late
        worker->update(0.1);               // nothing bound: the saved one is unknown
        emit manager.capturerReady("A");
        QCOMPARE(saved(), QString("gone")); // may be back next time
        for (const char* id : {"A", "gone", ""})
            worker->setInputSourceIdx(id);
        emit manager.capturerFailed("B"); // not ours
        emit manager.capturerReady("B");  // not needed
        QCOMPARE(manager.held, (QHash<QString, int>{{"gone", 0}, {"A", 1}}));
        manager.order.clear();
        emit manager.capturerFailed("A"); // no default left: the old one stays
        QCOMPARE(manager.held["A"], 1);
        bring(manager, "B"); // another comes in the place of the lost one
        QCOMPARE(manager.held, (QHash<QString, int>{{"gone", 0}, {"A", 0}, {"B", 1}}));
        worker->unload();
        emit manager.capturerReady("A"); // unloaded: nobody would give it back
        QCOMPARE(manager.held, (QHash<QString, int>{{"gone", 0}, {"A", 0}, {"B", 0}}));
        QCOMPARE(saved(), QString("A"));
        QVERIFY(other.held.isEmpty());
    }

    void whoNeverChoseGetsBackWhatItBeganWithAndIsToldOfEveryChange()
    {
        FakeDeskDuplManager manager;
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        QSignalSpy told(worker.get(), &AbsScreenSync::effectPropertyChanged);
        const auto tells = [&](const QString& source, int captures) {
            QList<QVariantList> heard;
            heard.swap(told);
            return heard.size() == 2 && heard[0][0] == "captures" &&
                   heard[0][1].toJsonValue().toArray().size() == captures &&
                   heard[1] == QVariantList{"inputSource", QJsonValue(source)} &&
                   worker->effectProperty("inputSource") == source;
        };
        lose(manager, "A");
        QVERIFY(tells("B", 1));
        bring(manager, "A");
        QVERIFY(tells("A", 2));
        emit manager.capturersChanged();
        QVERIFY(tells("A", 2));
        worker->unload();
        emit manager.capturersChanged();
        QVERIFY(told.isEmpty());
        QVERIFY(config()->appConfig(kSavedKey).isUndefined());
    }

    void withoutASourceTheStripGoesDarkAndThePageIsTold()
    {
        config()->setAppConfig(kSavedKey, "gone");
        FakeDeskDuplManager manager;
        const auto capture = manager.captures["A"];
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        QSignalSpy colors(worker.get(), &AbsScreenSync::updateColors);
        QSignalSpy told(worker.get(), &AbsScreenSync::effectPropertyChanged);
        const auto turnsDark = [&](const char* notice) {
            return colors.size() == 1 && frameOf(colors.first()) == Frame(1, {0, 0, 0}) &&
                   worker->effectProperty("notice") == notice &&
                   told.contains({"notice", QJsonValue(notice)});
        };
        QCOMPARE(worker->effectProperty("notice"), QJsonValue(""));
        QTRY_VERIFY(turnsDark("所选的屏幕没有连接。"));
        manager.order.clear();
        capture->frame = positionFrame();
        emit manager.capturerReady("A");
        QTRY_COMPARE(frameOf(colors.last()), kShown);
        QCOMPARE(told.last(), (QVariantList{"notice", QJsonValue("")}));
        QCOMPARE(worker->effectProperty("notice"), QJsonValue(""));

        capture->frame.release();
        colors.clear();
        emit manager.capturerFailed("A"); // and there is no other
        QTRY_VERIFY(turnsDark("没有可以跟随的屏幕画面。"));
        worker->setEffectProperty("notice", "mine");
        QVERIFY(!worker->effectProperty("").toObject().contains("notice"));

        const auto brief = loaded<ProbeMode>(1, 0, &manager);
        QSignalSpy late(brief.get(), &AbsScreenSync::updateColors);
        brief->unload(); // the strip belongs to the next effect
        QTest::qWait(400);
        QVERIFY(late.isEmpty());
    }

    void noticeTellsWhyThereIsNoSourceAndLeadsToOne()
    {
        FakeDeskDuplManager manager;
        const QList<QString> all = std::exchange(manager.order, {});
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        QList<SourceRequest> expected{SourceRequest::Needed};
        QCOMPARE(manager.requests, expected);
        QSet<QString> notices;
        for (int trouble = 0; trouble <= int(SourceTrouble::Lost); ++trouble) {
            manager.trouble = SourceTrouble(trouble);
            emit manager.capturersChanged();
            QTRY_VERIFY(!worker->effectProperty("notice").toString().isEmpty());
            notices += worker->effectProperty("notice").toString();
            for (const bool isClicked : {false, true})
                worker->setEffectProperty("noticeAction", isClicked);
            worker->setEffectProperty("", QJsonObject{{"noticeAction", true}}); // as copied from elsewhere
            if (!worker->effectProperty("noticeAction").toString().isEmpty())
                expected += {SourceRequest::Shown, SourceRequest::Wanted};
            QCOMPARE(manager.requests, expected);
        }
        QCOMPARE(notices.size(), int(SourceTrouble::Lost) + 1);
        QCOMPARE(expected.size(), 1 + 2 * 3); // NotAsked, Refused, Withdrawn
        for (const bool isDark : {true, false})
            worker->onCtlDarkChanged(isDark);
        emit manager.modeChanged();
        expected += {SourceRequest::Pausing, SourceRequest::Again, SourceRequest::Shown};
        QCOMPARE(manager.requests, expected);
        for (const QString& id : all)
            bring(manager, id);
        worker->setEffectProperty("noticeAction", true);
        emit manager.modeChanged();
        QVERIFY(loaded<ProbeMode>(1, 0, &manager) && manager.requests == expected); // nobody lacks anything
    }

    void whatAnotherModeCallsItsScreensIsKeptForIt()
    {
        config()->setAppConfig(kSavedKey, "other:A");
        for (const bool isThere : {true, false}) { // or it comes a moment later
            FakeDeskDuplManager manager;
            const auto change = [&manager](const QString& from, const QString& to) {
                manager.order.clear();
                emit manager.capturerFailed(from);
                bring(manager, to);
            };
            manager.captures["other:A"] = manager.captures["B"];
            manager.order = isThere ? manager.order : QStringList();
            const auto worker = loaded<ProbeMode>(1, 0, &manager);
            for (const QString to : {"A", "other:A", "A"}) {
                if (worker->effectProperty("inputSource") != to)
                    change(worker->effectProperty("inputSource").toString(), to);
                QCOMPARE(worker->effectProperty("inputSource"), QJsonValue(to));
            }
            QCOMPARE(config()->appConfig(kSavedKey), QJsonValue("other:A"));
        }
    }

    void aSourceThatIsThereNeverMakesTheStripBlink()
    {
        FakeDeskDuplManager manager;
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        QSignalSpy colors(worker.get(), &AbsScreenSync::updateColors);
        worker->update(0.1); // nothing grabbed yet
        for (const auto& capture : qAsConst(manager.captures))
            capture->frame = positionFrame();
        QTRY_VERIFY(colors.size() > 3);
        lose(manager, "A");
        manager.captures["B"]->frame.release();
        worker->update(0.1);
        manager.captures["B"]->frame = positionFrame();
        for (const int before = colors.size(); colors.size() < before + 80;)
            QVERIFY(colors.wait());
        for (const QVariantList& each : qAsConst(colors))
            QCOMPARE(frameOf(each), kShown);
        QCOMPARE(worker->effectProperty("notice"), QJsonValue(""));
    }

    void atASlowPaceAChangeOfTheSourceIsNoBlinkEither()
    {
        config()->setAppConfig("devUpdateInterval", 8000);
        for (const bool turns : {true, false}) { // or another one is chosen
            FakeDeskDuplManager manager;
            for (auto& capture : manager.captures) {
                capture = QSharedPointer<SlowCapture>::create();
                capture->frame = positionFrame();
            }
            const auto worker = loaded<ProbeMode>(1, 0, &manager);
            worker->update(8.0);
            QSignalSpy shown(worker.get(), &AbsScreenSync::updateColors);
            if (turns)
                manager.captures["A"]->source = QSize(1080, 1920);
            else
                worker->setInputSourceIdx("B");
            worker->update(8.0);
            QTest::qWait(400); // long enough to go dark
            if (turns)
                worker->update(8.0);
            QCOMPARE(shown.size(), 1);
            QCOMPARE(frameOf(shown.first()), kShown);
        }
    }

    void onAStillScreenItRestsUntilSomethingChanges()
    {
        config()->setAppConfig("screenSync.frameIntervalMs", 20);
        FakeDeskDuplManager manager;
        const auto capture = manager.captures["A"];
        capture->tellsOfChange = true;
        capture->become(positionFrame());
        auto worker = loaded<ProbeMode>(1, 0, &manager);
        QSignalSpy shown(worker.get(), &AbsScreenSync::updateColors);
        const auto rests = [&] { return capture->periods.endsWith(1000); };
        const std::function<void()> changes[] = {
            [&] { worker->setBlurStrength(0.3F); },
            [&] { worker->onCtlDirChanged(1); },
            [&] {
                worker->setEffectProperty("", QJsonObject{{"wipeDarkSide", true}});
            },
            [&] { worker->setInputSourceIdx("A"); },
            [&] { capture->become(cv::Mat(67, 120, CV_8UC4, cv::Scalar::all(200))); },
            [&] {
                worker->onCtlDarkChanged(true);
                capture->become(positionFrame());
                QCoreApplication::processEvents();
                QVERIFY(capture->periods.isEmpty());
                worker->onCtlDarkChanged(false);
                QCOMPARE(capture->periods, QList<int>{20}); // a fresh frame for the first step
            },
        };
        for (const auto& change : changes) {
            QTRY_VERIFY(rests());
            QVERIFY(std::exchange(worker->worked, 0) <= 3); // the first time and a look a second
            capture->periods.clear();
            shown.clear();
            change();
            QCoreApplication::processEvents();
            QCOMPARE(worker->period(), 20); // at once, not at the next look
            QTRY_VERIFY(rests());
            QVERIFY(shown.size() <= 1); // what is equal is not sent again
        }
        capture->become({}); // its source is lost, and comes back
        QTRY_COMPARE(frameOf(shown.last()), Frame(1, {0, 0, 0}));
        capture->become(positionFrame());
        QTRY_VERIFY(frameOf(shown.last()) != Frame(1, {0, 0, 0}) && rests());
        capture->periods.clear();
        for (const bool isThere : {true, false}) { // told too late
            capture->become(positionFrame());
            isThere ? worker->unload() : worker.reset();
            QCoreApplication::processEvents();
            QVERIFY(capture->periods.isEmpty());
        }
    }

    void framesComeAtTheLinesPaceAndWaitForItWhenItIsBusy()
    {
        const std::tuple<QJsonValue, int, int> paces[] = {{QJsonValue::Null, 83000, 5},
                                                          {-1, 30000, 33},
                                                          {-1, 199001, 200},
                                                          {50, 30000, 50},
                                                          {50, 83000, 83}};
        for (const auto& [interval, slotUs, periodMs] : paces) {
            config()->setAppConfig("screenSync.frameIntervalMs", interval);
            FakeDeskDuplManager manager;
            ProbeMode worker({}, nullptr);
            worker.DIDeskDuplication(&manager);
            ControlOptions controller;
            controller.frameSlotUs = slotUs;
            worker.load(controller);
            QCOMPARE(worker.period(), periodMs);
            const auto lateness = [&worker, period = periodMs] { // of the next step after the common one
                return (QDeadlineTimer::current().deadline() + worker.nextStepMs() + 1) % period;
            };
            worker.onCtlLineBusy((slotUs + 5000) / 1000); // the steps have that much to spare, or not
            QVERIFY(interval.isNull() || periodMs == 83 || lateness() <= 2);
            for (int i = 0; i < 9; ++i) // a slider is dragged: frames of ours come all the same
                worker.onCtlLineBusy(periodMs + periodMs / 2);
            QCOMPARE(worker.nextStepMs() > periodMs, !interval.isNull());
            QVERIFY(worker.nextStepMs() <= 2 * periodMs);
            QTRY_VERIFY(manager.captures["A"]->periods.size() > 1 && worker.nextStepMs() <= periodMs);
            QTRY_VERIFY(periodMs != 33 || lateness() <= 4);
        }
    }

    void propertiesFollowTheProtocolAndSurvive()
    {
        FakeDeskDuplManager manager;
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        worker->setEffectProperty("",
                                  QJsonObject{{"inputSource", "B"}, {"blur", 0.1}, {"wipeDarkSide", true}});
        QCOMPARE(worker->effectProperty("inputSource"), QJsonValue("B"));
        worker->unload();

        ProbeMode next(worker->options(), nullptr);
        ControlOptions controller;
        controller.id = kController;
        QCOMPARE(next.load(controller), 0); // without a manager
        QCOMPARE(next.effectProperty("blur"), QJsonValue(static_cast<double>(0.1F)));
        QCOMPARE(next.effectProperty("wipeDarkSide"), QJsonValue(false));         // not permitted
        next.setEffectProperty("", next.effectProperty(EffectProperties::kLook)); // as from another device
        next.unload();                                                            // and yet wished for
        config()->setAppConfig("screenSyncAutoWipeDarkSide", true);
        config()->setEffectVariant(kEffect, kController, "saturationStrength", "much");
        next.load(controller);
        QCOMPARE(next.effectProperty("wipeDarkSide"), QJsonValue(true));
        QCOMPARE(next.effectProperty("saturation"), QJsonValue(1.0));

        // What does not count leaves what is set for all, and stays stored.
        const QVector<std::tuple<QString, QJsonValue, QJsonValue>> looks{
            {"smoothing", "wild", "calm"}, {"saturationGate", 65, 8}, {"borderMode", true, "stable"}};
        for (const auto& [key, bad, good] : looks) {
            config()->setEffectJsonValue(kEffect, kController, key, bad);
            config()->setAppConfig("screenSync." + key, good);
            next.load(controller);
            next.setEffectProperty(key, bad);
            QCOMPARE(next.effectProperty(key), good);
            QCOMPARE(config()->effectJsonValue(kEffect, kController, key), bad);
        }
    }

    void filtersFollowTheClockAndForgetWhatIsOver()
    {
        config()->setAppConfig("screenSync.smoothing", "calm");
        config()->setAppConfig("screenSync.borderMode", "stable");
        FakeDeskDuplManager manager;
        const auto worker = loaded<ProbeMode>(1, 0, &manager);
        const auto shown = [&](int level) {
            worker->us += 75000;
            return int(colorsOf(*worker, cv::Mat(67, 120, CV_8UC4, cv::Scalar::all(level))).value(0).red);
        };
        const std::function<void()> events[]{[&] { worker->onCtlDarkChanged(false); },
                                             [&] { worker->onCtlDirChanged(1); },
                                             [&] { worker->setInputSourceIdx("B"); }, [] {}};
        for (const auto& happens : events) {
            QCOMPARE(shown(100), 100);
            QCOMPARE(shown(142), 114); // a third of the way
            happens();
        }
        worker->setEffectProperty("wipeDarkSide", true);
        cv::Mat frame(67, 120, CV_8UC4, cv::Scalar::all(0));
        frame.rowRange(9, 58).setTo(cv::Scalar::all(90));
        for (const QString mode : {"stable", "classic", "stable"}) {
            worker->setEffectProperty("borderMode", mode);
            for (int i = 0; i < 30; ++i, worker->us += 75000) {
                worker->frameInput(frame);
                QCOMPARE(worker->seen.at<cv::Vec4b>(0, 0)[0] == 90, mode == "stable" && i > 26);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestFramePipeline)
#include "tst_frame_pipeline.moc"
