// From samples to spectra and peaks, without any sound system.
#include "support/audio/AudioAnalyser.h"
#include "support/audio/AudioCapturer.h"
#include "support/audio/RetryPause.h"
#include "support/audio/SampleRing.h"

#include <QtTest>
#include <cmath>
#include <limits>
#include <numeric>

namespace {
constexpr int kRate = 48000;
using Samples = std::vector<float>;

Samples silence(int count)
{
    return Samples(size_t(count));
}

Samples sine(double hertz, double amplitude, int rate, int count)
{
    Samples samples = silence(count);
    for (int i = 0; i < count; ++i)
        samples[size_t(i)] = float(amplitude * std::sin(2 * M_PI * hertz * i / rate));
    return samples;
}

/// Until the window holds nothing else.
void feed(AudioAnalyser& analyser, const Samples& left, const Samples& right)
{
    for (size_t at = 0; at + size_t(analyser.hop()) <= left.size(); at += size_t(analyser.hop()))
        analyser.feed(left.data() + at, right.data() + at);
}

float levelAt(const SoundChannel& channel, double hertz, double within = 30)
{
    float loudest = -1;
    for (const Spectrum& point : channel.spectrums)
        if (std::abs(double(point.frequency) - hertz) < within)
            loudest = std::max(loudest, point.level);
    return loudest;
}

bool isSane(AudioAnalyser& analyser)
{
    bool isSane = true;
    for (const SoundChannel& channel : analyser.spectrum())
        for (const Spectrum& point : channel.spectrums)
            isSane &= point.level >= 0 && point.level <= 80 && std::isfinite(point.amplitude);
    for (const QVector<QString>& peaks : analyser.peaks())
        isSane &= QRegularExpression("^(0\\.\\d{4}|1\\.0000)$").match(peaks.at(0)).hasMatch();
    return isSane;
}

using Peaks = QVector<QVector<QString>>;
} // namespace

class TestAudioAnalysis : public QObject
{
    Q_OBJECT

private slots:
    void measuresAToneAndCoversWhatIsHeard()
    {
        const std::tuple<int, double, double> tones[] = {
            {16000, 440, -20}, {192000, 440, -20},  {kRate, 1000, 0}, {kRate, 85.5 * kRate / 4096, -20},
            {kRate, 50, -10},  {44100, 15000, -50}, {kRate, 440, -70}};
        for (const auto& [rate, hertz, decibels] : tones) {
            AudioAnalyser analyser(rate);
            const Samples tone = sine(hertz, std::pow(10, decibels / 20), rate, rate / 2);
            feed(analyser, tone, silence(rate / 2));
            const QVector<SoundChannel> channels = analyser.spectrum();
            QCOMPARE(channels.size(), 2);
            qInfo("%g Hz at %d", hertz, rate); // is printed before what fails
            QVERIFY(std::abs(levelAt(channels[0], hertz) - (80 + decibels)) < 0.3);
            for (const double other : {hertz / 4, hertz * 4})
                QVERIFY(other < 25 || other > std::min(16000., rate / 2.) || levelAt(channels[0], other) < 5);
            QCOMPARE(levelAt(channels[1], hertz), 0.F); // each side by itself

            const int updates = rate / analyser.hop();
            const QVector<Spectrum>& points = channels[1].spectrums;
            const float last = points.last().frequency;
            QVERIFY(updates >= 30 && updates <= 60 && points.first().frequency < 20);
            QVERIFY(last <= 20000 && last > std::min(20000., rate / 2.) - 2 * points[1].frequency);
        }
    }

    void keepsItsScaleWhateverComes()
    {
        QLocale::setDefault(QLocale(QLocale::German)); // peaks have a point all the same
        AudioAnalyser analyser(kRate);
        QVERIFY(isSane(analyser)); // before the first sample
        QCOMPARE(analyser.peaks(), Peaks({{"0.0000"}, {"0.0000"}}));

        feed(analyser, sine(440, 30, kRate, kRate), Samples(kRate, 0.3F)); // clipped; a constant offset
        QVERIFY(isSane(analyser));
        QCOMPARE(levelAt(analyser.spectrum()[0], 440), 80.F);
        QCOMPARE(analyser.peaks().at(0).at(0), "1.0000");
        QCOMPARE(levelAt(analyser.spectrum()[1], 0, 1e6), 0.F);

        Samples garbage = sine(440, 0.5, kRate, kRate);
        using Limits = std::numeric_limits<float>;
        const float bad[] = {Limits::quiet_NaN(), -Limits::infinity(), Limits::max(), Limits::denorm_min()};
        for (size_t i = 0; i < garbage.size(); i += 7)
            garbage[i] = bad[i % 4];
        feed(analyser, garbage, Samples(kRate, Limits::quiet_NaN()));
        QVERIFY(isSane(analyser));
        QCOMPARE(analyser.peaks().at(1).at(0), "0.0000");

        feed(analyser, sine(440, 0.1, kRate, kRate), silence(kRate)); // it leaves nothing behind
        QVERIFY(std::abs(levelAt(analyser.spectrum()[0], 440) - 60) < 0.3);
        QCOMPARE(levelAt(analyser.spectrum()[0], 1760), 0.F);

        const Samples nothing = silence(analyser.hop());
        Samples loud = nothing;
        loud[3] = -0.5F;
        analyser.feed(loud.data(), nothing.data());
        QCOMPARE(analyser.peaks(), Peaks({{"0.5000"}, {"0.0000"}}));
        analyser.feed(nothing.data(), loud.data());
        QCOMPARE(analyser.peaks(), Peaks({{"0.0000"}, {"0.5000"}})); // of each hop by itself
    }

    void mixesAnyChannelsToTwo()
    {
        const float side = 0.7071F;
        const std::pair<Samples, std::pair<float, float>> frames[] = {
            {{0.5F}, {0.5F, 0.5F}},
            {{0.5F, -0.25F}, {0.5F, -0.25F}},
            {{0, 0, 0, 1}, {0, side}},             // four, rear right
            {{0, 0, 0, 1, 0, 0}, {side, side}},    // six, low frequencies
            {{0, 0, 0, 0, 0, 0, 1, 0}, {side, 0}}, // eight, side left
        };
        for (const auto& [frame, expected] : frames) {
            SampleRing ring;
            ring.write(frame.data(), 1, int(frame.size()));
            std::pair<float, float> sides;
            ring.read(&sides.first, &sides.second, 1);
            QCOMPARE(sides, expected);
        }
    }

    void keepsSamplesInOrderAndDropsWhatDoesNotFit()
    {
        SampleRing ring;
        Samples block = silence(1000), left = silence(SampleRing::kFrames), right = left;
        for (int turn = 0; turn < 100; ++turn) { // several times round
            std::iota(block.begin(), block.end(), float(turn) * 1000);
            ring.write(block.data(), 1000, 1);
            ring.read(left.data(), right.data(), ring.available());
            QVERIFY(std::equal(block.begin(), block.end(), left.begin()));
        }
        for (int turn = 0; turn < 100; ++turn)
            ring.write(block.data(), 1000, 1);
        QCOMPARE(ring.available(), SampleRing::kFrames);
        ring.skip(SampleRing::kFrames);
        ring.write(nullptr, 10, 2); // a hole
        ring.read(left.data(), right.data(), 10);
        QCOMPARE(left[9], 0.F);
        QCOMPARE(ring.available(), 0);
    }

    void endsASourceThatCeasesWithASecondOfSilence()
    {
        AudioCapturer capturer("source");
        QCOMPARE(capturer.analyse(0), qint64(-1)); // nothing has come yet
        QSignalSpy spectra(&capturer, &AudioCapturer::spectrumsChanged);
        QSignalSpy peaks(&capturer, &AudioCapturer::channelsPeakValuesChanged);
        capturer.setRate(kRate);
        const Samples tone = sine(440, 0.5, kRate, 4096);
        capturer.write(tone.data(), int(tone.size()), 1);
        qint64 now = 0;
        qint64 wait = capturer.analyse(now);
        QCOMPARE(spectra.size(), 4);
        QVERIFY(wait >= 100); // a little jitter is no end
        QCoreApplication::processEvents();
        for (spectra.clear(); wait > 0 && now < 5000; QCoreApplication::processEvents()) {
            now += wait;
            wait = capturer.analyse(now);
        }
        QCOMPARE(wait, qint64(-1));
        QVERIFY(now > 900 && now < 2000);
        QVERIFY(spectra.size() > 25); // for whoever smooths over several
        QCOMPARE(levelAt(spectra.last().at(0).value<QVector<SoundChannel>>().at(0), 440), 0.F);
        QCOMPARE(peaks.last().at(0).value<Peaks>(), Peaks({{"0.0000"}, {"0.0000"}}));
    }

    void doesNotPileUpWhileTheMainThreadIsStuck()
    {
        AudioCapturer capturer("source");
        QSignalSpy spectra(&capturer, &AudioCapturer::spectrumsChanged);
        capturer.setRate(kRate);
        for (int turn = 0; turn < 2; ++turn, QCoreApplication::processEvents()) {
            spectra.clear();
            for (int i = 0; i < 100; ++i) {
                capturer.write(nullptr, 1024, 2);
                capturer.analyse(0);
            }
            QVERIFY(!spectra.isEmpty() && spectra.size() <= 10);
        }
    }

    void whatFailsForLongIsTriedSeldom()
    {
        RetryPause pause;
        qint64 now = 5000;
        const auto triesIn = [&](qint64 ms) {
            int tries = 0;
            for (const qint64 end = now + ms; now < end; ++tries)
                now += pause.next(now);
            return tries;
        };
        QCOMPARE(triesIn(3000), 10); // a server that restarts is found at once
        QCOMPARE(triesIn(240000), 100);
        pause.reset(); // the sources are others
        QCOMPARE(pause.next(now), 300);
        triesIn(60000);
        now += 3600000; // it has worked since
        QCOMPARE(pause.next(now), 300);
    }
};

QTEST_GUILESS_MAIN(TestAudioAnalysis)
#include "tst_audio_analysis.moc"
