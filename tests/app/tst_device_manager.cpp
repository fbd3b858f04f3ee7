#include "FakeController.h"
#include "StripSimulator.h"
#include "app/DeviceManager.h"
#include "app/DisconnectionHistory.h"
#include "controllers/LVController.h"
#include "controllers/LVSerialPort.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControllerConfigDialog.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSerialPort>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

namespace {

const QString kId = "LV0127:01";

/// The one that is open; null when none is.
ControllerConfigDialog* countDialog()
{
    return qobject_cast<ControllerConfigDialog*>(QApplication::activeModalWidget());
}

int storedCount()
{
    return ConfigurationManager::instance()->controllerJsonObj(kId)[ConfigKeys::kNbLeds.key].toInt(-1);
}

QJsonArray timesAgo(const QVector<double>& secondsAgo, const QDateTime& now)
{
    QJsonArray history;
    for (double seconds : secondsAgo)
        history = DisconnectionHistory::withFailure(history, now.addMSecs(qRound64(-seconds * 1000)));
    return history;
}

} // namespace

class DeviceManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ConfigurationManager::instance()->reset();
        qputenv("LUMIVAR_SERIAL_PORTS", "no-such-file.json");
        m_manager = std::make_unique<DeviceManager>(nullptr, nullptr);
    }
    void cleanup() { m_manager.reset(); }

    void refusesWhatItCannotKeep()
    {
        QSignalSpy added(m_manager.get(), &DeviceManager::newController);
        add({});
        add(QSharedPointer<FakeController>::create(QString(), 10));
        QVERIFY(m_manager->controllerIds().isEmpty());

        const auto first = QSharedPointer<FakeController>::create(kId, 10);
        add(first);
        add(QSharedPointer<FakeController>::create(kId, 20));
        QCOMPARE(m_manager->controllerIds(), QList<QString>{kId});
        QCOMPARE(m_manager->controller(kId), AbsRGBControllerPtr(first));
        QCOMPARE(added.size(), 1);
    }

    void bindsTheStoredEffectOrTheDefault_data()
    {
        QTest::addColumn<QString>("workMode");
        QTest::addColumn<QString>("subMode");
        QTest::addColumn<bool>("kept");
        QTest::newRow("stored") << "id.effect.screenSync"
                                << "id.effect.screenSync.topHalfScreen" << true;
        QTest::newRow("group missing") << ""
                                       << "id.effect.screenSync.topHalfScreen" << false;
        QTest::newRow("plug-in gone") << "id.gone"
                                      << "id.gone.effect" << false;
    }
    void bindsTheStoredEffectOrTheDefault()
    {
        QFETCH(QString, workMode);
        QFETCH(QString, subMode);
        QFETCH(bool, kept);
        const auto device = QSharedPointer<FakeController>::create(kId, 10);
        device->setWorkMode(workMode);
        device->setSubMode(subMode);
        add(device);
        const QString expected = kept ? subMode : m_manager->effects().defaultEffect("id.effect.colorful");
        QVERIFY(!expected.isEmpty());
        QCOMPARE(m_manager->effects().boundEffectId(kId), expected);
        QCOMPARE(device->options().subMode, expected);
        const QJsonObject stored = ConfigurationManager::instance()->controllerJsonObj(kId);
        QCOMPARE(stored["subMode"].toString(), subMode); // a stand-in is no choice
        QCOMPARE(stored["workMode"].toString(), workMode);
    }

    void countDialogShowsTheNumberLiveAndKeepsIt_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::addColumn<uint32_t>("kept");
        QTest::newRow("accepted") << true << 30U;
        QTest::newRow("rejected") << false << 1U;
    }
    void countDialogShowsTheNumberLiveAndKeepsIt()
    {
        QFETCH(bool, accept);
        QFETCH(uint32_t, kept);
        const auto device = QSharedPointer<FakeController>::create(kId, 0);
        QSignalSpy added(m_manager.get(), &DeviceManager::newController);
        add(device);
        QVERIFY(countDialog());
        QCOMPARE(device->shown, QVector<LV_RGB>(1, LV_RGB{255, 0, 0}));
        auto* box = countDialog()->findChild<QSpinBox*>("nbLEDBox");
        box->setValue(250);
        QCOMPARE(device->options().nbLeds, 250U);
        box->setValue(30);
        QCOMPARE(device->options().nbLeds, 250U); // the dark rest must stay addressed
        QCOMPARE(device->shown, QVector<LV_RGB>(30, LV_RGB{255, 0, 0}));
        QCOMPARE(storedCount(), 0); // a try is no choice
        QVERIFY(added.isEmpty());
        countDialog()->findChild<QPushButton*>(accept ? "okBtn" : "rejectBtn")->click();
        QVERIFY(!countDialog());
        QCOMPARE(device->shown.size(), accept ? 30 : 0); // a rejected pattern does not stay lit
        QCOMPARE(storedCount(), static_cast<int>(kept));
        QCOMPARE(added.size(), 1);
        QCOMPARE(device->options().nbLeds, kept);
        QVERIFY(!m_manager->effects().boundEffectId(kId).isEmpty());
    }

    void aFrameThatWasOnItsWayDoesNotCoverThePattern()
    {
        const auto device = QSharedPointer<FakeController>::create(kId, 60);
        add(device);
        bool arrived = false;
        const auto frame = [&] {
            device->update(QVector<LV_RGB>(60, LV_RGB{0, 0, 255}));
            arrived = true;
        };
        QMetaObject::invokeMethod(device.data(), frame, Qt::QueuedConnection); // as the effects' frames come
        QVERIFY(m_manager->setControllerLayout(kId));
        QTRY_VERIFY(arrived);
        QTRY_COMPARE(device->shown, QVector<LV_RGB>(60, LV_RGB{255, 0, 0}));
    }

    void aShorterStripIsDarkBehindItsEnd()
    {
        constexpr int kThere = 300;
        const QTemporaryDir folder;
        StripSimulator::Options simulated;
        simulated.portsFile = folder.filePath("ports.json");
        simulated.ledCount = kThere;
        StripSimulator simulator(simulated);
        QVERIFY(simulator.plugIn());
        auto* port = new LVSerialPort;
        QVERIFY(port->init({"ttySIM0", simulator.location(), {}}));
        ControlOptions options;
        options.id = kId;
        options.model = options.kindName = "LV0127";
        options.serial = "01";
        options.brightness = 1.0F;
        options.nbLeds = kThere;
        const auto device = QSharedPointer<LVController>::create(options, port, nullptr);
        device->rebuildHeader();
        add(device);
        QTRY_VERIFY(simulator.shownColors() != QVector<LV_RGB>(kThere)); // an effect

        const auto reds = [&](int count) {
            return QVector<LV_RGB>(count, LV_RGB{255, 0, 0}) + QVector<LV_RGB>(kThere - count);
        };
        QVERIFY(m_manager->setControllerLayout(kId));
        QTRY_COMPARE(simulator.shownColors(), reds(kThere)); // before anything is touched
        countDialog()->findChild<QSpinBox*>("nbLEDBox")->setValue(250);
        countDialog()->findChild<QPushButton*>("okBtn")->click();
        QCOMPARE(device->options().nbLeds, 250U);
        QVERIFY(!m_manager->effects().boundEffectId(kId).isEmpty()); // the effect is back
        m_manager->effects().unbindController(kId);
        device->update(QVector<LV_RGB>(250, LV_RGB{0, 0, 255})); // before the line could take the pattern
        QTRY_COMPARE(simulator.shownColors().mid(240),
                     QVector<LV_RGB>(10, LV_RGB{0, 0, 255}) + reds(0).mid(250));
    }

    void anEndWithoutAnAnswerKeepsTheOldCount_data()
    {
        QTest::addColumn<bool>("isNew");
        QTest::addColumn<int>("end");
        for (const bool isNew : {true, false}) {
            QTest::addRow("the device fails, new: %d", isNew) << isNew << 0;
            QTest::addRow("the program quits, new: %d", isNew) << isNew << 1;
            QTest::addRow("the program is left, new: %d", isNew) << isNew << 2;
        }
    }
    void anEndWithoutAnAnswerKeepsTheOldCount()
    {
        QFETCH(bool, isNew);
        QFETCH(int, end);
        const auto device = QSharedPointer<FakeController>::create(kId, isNew ? 0 : 60);
        device->saveConfig();
        connect(m_manager.get(), &DeviceManager::controllerFailed, m_manager.get(),
                [this](const QString& id) { m_manager->removeController(id); });
        QSignalSpy added(m_manager.get(), &DeviceManager::newController);
        add(device);
        QVERIFY(m_manager->setControllerLayout(kId)); // a new device's question is open already
        const QPointer<ControllerConfigDialog> dialog = countDialog();
        QVERIFY(dialog);
        dialog->findChild<QSpinBox*>("nbLEDBox")->setValue(270);
        if (end == 0)
            emit device->statusChanged(2, "pulled out");
        else if (end == 1)
            m_manager.reset();
        else
            m_manager->releaseAll();
        QCOMPARE(device->counts, (QVector<uint32_t>{200, 270, isNew ? 1U : 60U}));
        QCOMPARE(storedCount(), isNew ? 0 : 60); // an open question stays one
        QVERIFY(device->shown.isEmpty());
        QTRY_VERIFY(!dialog);
        QVERIFY(!countDialog());
        QCOMPARE(added.size(), isNew ? 0 : 1);
        if (m_manager && end == 0)
            QVERIFY(m_manager->controllerIds().isEmpty() && !m_manager->setControllerLayout(kId));
    }

    void severalNewDevicesAreAskedAboutAtOnce_data()
    {
        QTest::addColumn<QStringList>("answered");
        QTest::newRow("in their order") << QStringList{"first", "second"};
        QTest::newRow("the later one first") << QStringList{"second", "first"};
    }
    void severalNewDevicesAreAskedAboutAtOnce()
    {
        QFETCH(QStringList, answered);
        QSignalSpy added(m_manager.get(), &DeviceManager::newController);
        for (const QString name : {"first", "second"})
            add(QSharedPointer<FakeController>::create("LV0127:" + name, 0, name));
        QHash<QString, ControllerConfigDialog*> dialogs;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* dialog = qobject_cast<ControllerConfigDialog*>(widget))
                dialogs.insert(dialog->findChild<QLabel*>("deviceNameLabel")->text(), dialog);
        }
        QCOMPARE(dialogs.size(), 2);
        int count = 10;
        for (const QString& which : answered) {
            dialogs.value(which)->setNbLed(++count);
            dialogs.value(which)->accept();
            const QString id = "LV0127:" + which;
            QCOMPARE(added.takeFirst().at(0).toString(), id);
            QCOMPARE(m_manager->controlOptions(id).nbLeds, static_cast<uint32_t>(count));
            QVERIFY(!m_manager->effects().boundEffectId(id).isEmpty());
        }
        QVERIFY(added.isEmpty());
    }

    void threeFailuresInUnderTwentySecondsWarnOnce()
    {
        const auto device = QSharedPointer<FakeController>::create(kId, 10);
        add(device);
        QSignalSpy failed(m_manager.get(), &DeviceManager::controllerFailed);
        auto* config = ConfigurationManager::instance();
        const QString key = ConfigKeys::disconnectionScheduleKey(kId);

        const auto fail = [&device](uint32_t status) { emit device->statusChanged(status, "pulled out"); };
        fail(0);
        QCOMPARE(failed.size(), 0);
        fail(2);
        fail(3);
        QCOMPARE(config->appConfig(key).toArray().size(), 2);
        QVERIFY(messageBoxes().isEmpty());
        fail(2);
        QCOMPARE(failed.size(), 3);
        QVERIFY(config->appConfig(key).isNull());
        QCOMPARE(messageBoxes().size(), 1);
        for (int i = 0; i < 4; ++i)
            fail(2);
        QCOMPARE(messageBoxes().size(), 1); // still open
        QCOMPARE(config->appConfig(key).toArray().size(), 1);
        delete messageBoxes().first();
    }

    void historyKeepsTheNewestThreeAndJudgesThem()
    {
        using namespace DisconnectionHistory;
        const QDateTime now = QDateTime::currentDateTime();
        QCOMPARE(timesAgo({90, 60, 40, 20}, now), timesAgo({60, 40, 20}, now));
        QCOMPARE(judge(timesAgo({10, 5}, now)), Verdict::Fine);
        QCOMPARE(judge(timesAgo({19.999, 5, 0}, now)), Verdict::TooOften);
        QCOMPARE(judge(timesAgo({20.0, 5, 0}, now)), Verdict::Fine);
        QCOMPARE(judge(QJsonArray{"rubbish", "x", "y"}), Verdict::FirstUnreadable);
        QJsonArray broken = timesAgo({3, 2, 1}, now);
        broken[2] = 17;
        QCOMPARE(judge(broken), Verdict::LastUnreadable);
    }

    void aPortThatMayNotBeOpenedGivesANotice()
    {
        const QTemporaryDir folder;
        qputenv("LUMIVAR_SERIAL_PORTS", QFile::encodeName(folder.filePath("ports.json")));
        StripSimulator simulator({});
        QVERIFY(simulator.plugIn());
        auto other = std::make_unique<QSerialPort>(simulator.location());
        QVERIFY(other->open(QIODevice::ReadWrite));
        m_manager = std::make_unique<DeviceManager>(nullptr, nullptr);
        QSignalSpy changed(m_manager.get(), &DeviceManager::noticeChanged);
        QTRY_VERIFY(m_manager->notice().contains("ttySIM0"));
        QCOMPARE(changed.count(), 1);
        other.reset();
        QTRY_VERIFY_WITH_TIMEOUT(m_manager->notice().isEmpty(), 20000);
        QCOMPARE(changed.count(), 2);
    }

private:
    void add(const AbsRGBControllerPtr& controller)
    {
        QVERIFY(QMetaObject::invokeMethod(m_manager.get(), "addController",
                                          Q_ARG(AbsRGBControllerPtr, controller)));
    }
    static QList<QMessageBox*> messageBoxes()
    {
        QList<QMessageBox*> boxes;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<QMessageBox*>(widget))
                boxes.append(box);
        }
        return boxes;
    }

    std::unique_ptr<DeviceManager> m_manager;
};

QTEST_MAIN(DeviceManagerTest)
#include "tst_device_manager.moc"
