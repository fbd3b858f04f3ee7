#include "FakeController.h"
#include "app/DeviceManager.h"
#include "app/DisconnectionHistory.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControllerConfigDialog.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString kId = "LV0127:01";

/// The open ones of a class.
template <typename Window>
QList<Window*> windows()
{
    QList<Window*> found;
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->isVisible() && qobject_cast<Window*>(each))
            found += qobject_cast<Window*>(each);
    }
    return found;
}

QJsonObject stored(const QString& id = kId)
{
    return ConfigurationManager::instance()->controllerJsonObj(id);
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
        add({});
        add(QSharedPointer<FakeController>::create(QString(), 10));
        const auto first = addDevice(10);
        addDevice(20);
        QCOMPARE(m_manager->controllerIds(), QList<QString>{kId});
        QCOMPARE(m_manager->controller(kId), AbsRGBControllerPtr(first));
    }

    void bindsTheStoredEffectOrTheDefault()
    {
        const QString screen = "id.effect.screenSync.topHalfScreen";
        const QString music = "id.effect.dynamicMusic";
        const QString standIn = m_manager->effects().defaultEffect("id.effect.colorful");
        QVERIFY(!standIn.isEmpty());
        const QStringList rows[] = {{"id.effect.screenSync", screen, screen},
                                    {"", screen, standIn},
                                    {music, music + ".musicMode_1", standIn}, // an extra one, not asked for
                                    {"id.gone", "id.gone.effect", standIn}};
        for (const QStringList& row : rows) {
            const QString id = "LV0127:" + row.at(0);
            const auto device = QSharedPointer<FakeController>::create(id, 10);
            device->setWorkMode(row.at(0));
            device->setSubMode(row.at(1));
            add(device);
            QCOMPARE(m_manager->effects().boundEffectId(id), row.at(2));
            QCOMPARE(device->options().subMode, row.at(2));
            QCOMPARE(stored(id)["subMode"].toString(), row.at(1)); // a stand-in is no choice
            QCOMPARE(stored(id)["workMode"].toString(), row.at(0));
        }
    }

    void countDialogShowsTheNumberLiveAndKeepsIt()
    {
        for (const bool accept : {true, false}) {
            init();
            QSignalSpy added(m_manager.get(), &DeviceManager::newController);
            const auto device = addDevice(0);
            QCOMPARE(device->shown, QVector<LV_RGB>(1, LV_RGB{255, 0, 0}));
            auto* dialog = windows<ControllerConfigDialog>().value(0);
            for (const int count : {250, 30})
                dialog->findChild<QSpinBox*>("nbLEDBox")->setValue(count);
            QCOMPARE(device->options().nbLeds, 250U); // the dark rest must stay addressed
            QCOMPARE(device->shown, QVector<LV_RGB>(30, LV_RGB{255, 0, 0}));
            QVERIFY(stored()["nbLeds"] == 0 && added.isEmpty()); // a try is no choice
            dialog->findChild<QPushButton*>(accept ? "okBtn" : "rejectBtn")->click();
            QCOMPARE(device->shown.size(), accept ? 30 : 0); // a rejected pattern does not stay lit
            QCOMPARE(stored()["nbLeds"], accept ? 30 : 1);
            QVERIFY(added.size() == 1 && device->options().nbLeds == (accept ? 30U : 1U));
            QVERIFY(!m_manager->effects().boundEffectId(kId).isEmpty());
        }
    }

    void aFrameThatWasOnItsWayDoesNotCoverThePattern()
    {
        const auto device = addDevice(60);
        const auto frame = [&] { device->update(QVector<LV_RGB>(60, LV_RGB{0, 0, 255})); };
        QMetaObject::invokeMethod(device.data(), frame, Qt::QueuedConnection); // as the effects' frames come
        QVERIFY(m_manager->setControllerLayout(kId));
        QTRY_VERIFY(device->pictures.contains(QVector<LV_RGB>(60, LV_RGB{0, 0, 255})));
        QTRY_COMPARE(device->shown, QVector<LV_RGB>(60, LV_RGB{255, 0, 0}));
    }

    void anEndWithoutAnAnswerKeepsTheOldCount()
    {
        for (const QString end :
             {"failure", "quit", "failure, new", "quit, new", "release", "release, new"}) {
            init();
            const bool isNew = end.endsWith("new");
            const auto device = QSharedPointer<FakeController>::create(kId, isNew ? 0 : 60);
            device->saveConfig();
            connect(m_manager.get(), &DeviceManager::controllerFailed, m_manager.get(),
                    [this](const QString& id) { m_manager->removeController(id); });
            add(device);
            QVERIFY(m_manager->setControllerLayout(kId)); // a new device's question is open already
            const QPointer<ControllerConfigDialog> dialog = windows<ControllerConfigDialog>().value(0);
            QVERIFY(dialog);
            dialog->setNbLed(270);
            if (end.startsWith("failure"))
                emit device->statusChanged(2, "pulled out");
            else if (end.startsWith("quit"))
                m_manager.reset();
            else
                m_manager->releaseAll();
            QCOMPARE(device->counts, (QVector<uint32_t>{200, 270, isNew ? 1U : 60U}));
            QCOMPARE(stored()["nbLeds"], isNew ? 0 : 60); // an open question stays one
            QVERIFY(device->shown.isEmpty());
            QTRY_VERIFY(!dialog);
        }
    }

    void severalNewDevicesAreAskedAboutAtOnce()
    {
        for (const QStringList& answered : {QStringList{"first", "second"}, QStringList{"second", "first"}}) {
            init();
            QSignalSpy added(m_manager.get(), &DeviceManager::newController);
            for (const QString name : {"first", "second"})
                add(QSharedPointer<FakeController>::create("LV0127:" + name, 0, name));
            QHash<QString, ControllerConfigDialog*> dialogs;
            for (auto* dialog : windows<ControllerConfigDialog>())
                dialogs[dialog->findChild<QLabel*>("deviceNameLabel")->text()] = dialog;
            QCOMPARE(dialogs.size(), 2);
            for (const QString& which : answered) {
                dialogs.value(which)->setNbLed(which.size() * 2);
                dialogs.value(which)->accept();
                QCOMPARE(added.takeLast().at(0).toString(), "LV0127:" + which);
                QVERIFY(added.isEmpty());
                QCOMPARE(m_manager->controlOptions("LV0127:" + which).nbLeds, uint32_t(which.size() * 2));
            }
        }
    }

    void threeFailuresInUnderTwentySecondsWarnOnce()
    {
        const auto device = addDevice(10);
        QSignalSpy failed(m_manager.get(), &DeviceManager::controllerFailed);
        const QString key = ConfigKeys::disconnectionScheduleKey(kId);
        for (int i = 0; i < 7; ++i) {
            QCOMPARE(windows<QMessageBox>().size(), i < 3 ? 0 : 1); // the first stays open
            emit device->statusChanged(i == 1 ? 3 : 2, "pulled out");
        }
        QCOMPARE(failed.size(), 7);
        QCOMPARE(ConfigurationManager::instance()->appConfig(key).toArray().size(), 1);
        delete windows<QMessageBox>().first();
    }

    void historyKeepsTheNewestThreeAndJudgesThem()
    {
        using namespace DisconnectionHistory;
        const QDateTime now = QDateTime::currentDateTime();
        const auto timesAgo = [&now](const QVector<double>& secondsAgo) {
            QJsonArray history;
            for (double seconds : secondsAgo)
                history = withFailure(history, now.addMSecs(qRound64(-seconds * 1000)));
            return history;
        };
        QCOMPARE(timesAgo({90, 60, 40, 20}), timesAgo({60, 40, 20}));
        QCOMPARE(judge(timesAgo({10, 5})), Verdict::Fine);
        QCOMPARE(judge(timesAgo({19.999, 5, 0})), Verdict::TooOften);
        QCOMPARE(judge(timesAgo({20.0, 5, 0})), Verdict::Fine);
        QCOMPARE(judge(QJsonArray{"rubbish", "x", "y"}), Verdict::FirstUnreadable);
    }

private:
    QSharedPointer<FakeController> addDevice(uint32_t nbLeds)
    {
        auto device = QSharedPointer<FakeController>::create(kId, nbLeds);
        add(device);
        return device;
    }
    void add(const AbsRGBControllerPtr& controller)
    {
        QVERIFY(QMetaObject::invokeMethod(m_manager.get(), "addController",
                                          Q_ARG(AbsRGBControllerPtr, controller)));
    }

    std::unique_ptr<DeviceManager> m_manager;
};

QTEST_MAIN(DeviceManagerTest)
#include "tst_device_manager.moc"
