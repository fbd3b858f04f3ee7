#include "FakeStrapList.h"
#include "effects/dynamicMusic/MMSOptWidget.h"
#include "effects/dynamicMusic/MediaSourceOptWidget.h"
#include "effects/dynamicMusic/Mode2/MM2SOptWid.h"
#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"
#include "effects/dynamicMusic/strengthSlider.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QVBoxLayout>
#include <QtTest>

namespace {

QJsonArray capturers(const QStringList& ids)
{
    QJsonArray list;
    for (const QString& id : ids)
        list.append(QJsonObject{{"id", id}, {"desc", "The " + id}});
    return list;
}

} // namespace

class TestMusicWidgets : public QObject
{
    Q_OBJECT

private slots:
    void sliderFindsItsPlaceAgain()
    {
        QCOMPARE(StrengthSlider::valueOf(-1e300) + StrengthSlider::valueOf(1e300), 1 + 200);
        for (int value = 1; value <= 200; ++value)
            QCOMPARE(StrengthSlider::valueOf(StrengthSlider::strengthOf(value)), value);
    }

    void choiceStaysOnItsSource()
    {
        SFrmAudioPeakValues options(nullptr);
        auto* box = options.findChild<QComboBox*>("devicesComboBox");
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonObject{{"captureId", "b"}, {"capturers", capturers({"a", "b"})}});
        QCOMPARE(box->currentText(), QString("The b"));
        options.setEffectProperty("capturers", capturers({"new", "a", "b"}));
        QCOMPARE(options.effectProperty("").toObject(), (QJsonObject{{"captureId", "b"}}));
        options.setEffectProperty("capturers", capturers({"new", "a"}));
        QCOMPARE(box->currentIndex(), -1); // not the first, which nobody has chosen
        options.setEffectProperty("captureId", "a");
        QCOMPARE(box->currentIndex(), 1);
        QCOMPARE(changes.count(), 0);
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(1).toJsonValue(), QJsonValue("new"));

        options.setEffectProperty("captureId", "a"); // of the next device that the page shows
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(changes.count(), 2);

        options.setEffectProperty("captureId", "a"); // stands in for another one
        options.show();
        box->showPopup();
        QTest::keyClick(box->view(), Qt::Key_Return);
        QCOMPARE(changes.count(), 3);
        QCOMPARE(changes.at(2).at(1).toJsonValue(), QJsonValue("a"));
    }

    void moodAndSoundAreOneWidget()
    {
        FakeStrapList straps({{"a", {{0.5, Qt::red}}, Qt::white}, {"b", {{0.5, Qt::blue}}, Qt::white}});
        const IColorStrapManager* manager = &straps;
        MM2SOptWid options(nullptr);
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        QJsonObject all{
            {"strength", 0.75}, {"captureId", "b"}, {"currentStrap", 1}, {"speed", 0.25}, {"range", 0.5}};
        QJsonObject given = all;
        given["capturers"] = capturers({"a", "b"});
        given["colorStrapManager"] = QString::number(reinterpret_cast<quintptr>(manager));
        options.setEffectProperty("", given);
        options.setEffectProperty("strength", QJsonValue());
        QCOMPARE(options.effectProperty("").toObject(), all);
        QCOMPARE(changes.count(), 0); // being told is no change of the user's

        auto* strength = options.findChild<QSlider*>("strengthSlider");
        auto* speed = options.findChild<QSlider*>("speedSlider");
        QTest::keyClick(strength, Qt::Key_Home);
        QTest::keyClick(options.findChild<QComboBox*>("devicesComboBox"), Qt::Key_Up);
        QTest::keyClick(speed, Qt::Key_End);
        QStringList changed;
        for (const QVariantList& change : qAsConst(changes))
            changed += change.first().toString();
        QCOMPARE(changed, (QStringList{"strength", "captureId", "speed"}));

        const int height = options.minimumHeight();
        options.resize(380, height);
        options.show();
        for (const char* text : {"Sound source that has a name:", "x"}) { // another language
            options.findChild<QLabel*>("strengthLabel")->setText(text);
            QTRY_COMPARE(strength->mapTo(&options, QPoint()).x(), speed->mapTo(&options, QPoint()).x());
        }
        QCOMPARE(options.height(), height);
        QVERIFY(options.childrenRect().bottom() < height);
    }

    void longTextsKeepThePageInShape()
    {
        QFile sheet(":/styles/default.qss");
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        QWidget page;
        page.setStyleSheet(QString::fromUtf8(sheet.readAll()));
        auto* meters = new MMSOptWidget(&page);
        (new QVBoxLayout(&page))->addWidget(meters);
        page.resize(320, 140);
        page.show();
        const int narrow = page.minimumSizeHint().width();
        meters->setEffectProperty("capturers", capturers({QString(300, 'x')}));
        QCoreApplication::processEvents();
        QCOMPARE(page.minimumSizeHint().width(), narrow);
        QCOMPARE(page.width(), 320);
    }
};

QTEST_MAIN(TestMusicWidgets)
#include "tst_music_widgets.moc"
