#include <QtTest>
class TestAudioAnalysis : public QObject
{
    Q_OBJECT
};
QTEST_GUILESS_MAIN(TestAudioAnalysis)
#include "tst_audio_analysis.moc"
