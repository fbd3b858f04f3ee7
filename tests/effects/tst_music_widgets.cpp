#include "effects/dynamicMusic/MMSOptWidget.h"
#include "effects/dynamicMusic/MediaSourceOptWidget.h"
#include "effects/dynamicMusic/Mode2/MM2SOptWid.h"
#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"
#include "effects/dynamicMusic/strengthSlider.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
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
        QCOMPARE(changes.count(), 0);
        for (int device = 1; device <= 2; ++device) { // the page shows one after the other
            options.setEffectProperty("captureId", "a");
            QTest::keyClick(box, Qt::Key_Up);
            QCOMPARE(changes.count(), device);
            QCOMPARE(changes.last().at(1).toJsonValue(), QJsonValue("new"));
        }
        options.setEffectProperty("captureId", "a"); // stands in for another one
        options.show();
        box->showPopup();
        QTest::keyClick(box->view(), Qt::Key_Return);
        QVERIFY(changes.count() == 3 && changes.last().at(1).toJsonValue() == "a");
    }

    void moodAndSoundAreOneWidget()
    {
        MM2SOptWid options(nullptr);
        QSignalSpy changes(&options, &AbsWorkerWidget::effectPropertyChanged);
        options.setEffectProperty("", QJsonObject{{"strength", 0.75}, {"speed", 0.25}});
        options.setEffectProperty("strength", QJsonValue());
        const QJsonValue told = options.effectProperty("");
        QVERIFY(told["strength"] == 0.75 && told["speed"] == 0.25);
        QCOMPARE(changes.count(), 0); // being told is no change of the user's

        auto* strength = options.findChild<QSlider*>("strengthSlider");
        auto* speed = options.findChild<QSlider*>("speedSlider");
        QTest::keyClick(strength, Qt::Key_Home);
        QTest::keyClick(speed, Qt::Key_End);
        QCOMPARE(changes.count(), 2);
        QVERIFY(changes.first().first() == "strength" && changes.last().first() == "speed");

        const int height = options.minimumHeight();
        options.resize(380, height);
        options.show();
        for (const char* text : {"Sound source that has a name:", "x"}) { // another language
            options.findChild<QLabel*>("strengthLabel")->setText(text);
            QTRY_COMPARE(strength->mapTo(&options, QPoint()).x(), speed->mapTo(&options, QPoint()).x());
        }
        QVERIFY(options.height() == height && options.childrenRect().bottom() < height);
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
