#include "EngineFixture.h"
#include "LogCapture.h"
#include "effects/EffectCatalogue.h"
#include "effects/InternalEffectFactory.h"
#include "support/config/ConfigurationManager.h"

#include <QtTest>

namespace {

using Controller = QSharedPointer<FakeController>;

const QString kSync = "id.probe.sync";
const QString kAsync = "id.probe.async";
const QByteArray kOneGroup =
    R"({"groups": [{"id": "id.probe", "order": 7, "defaultEffect": "id.probe.sync"}]})";

QJsonArray storedJournal(const QString& effectId, const FakeController& controller)
{
    return ConfigurationManager::instance()->effectJsonValue(effectId, controller.id(), "journal").toArray();
}

} // namespace

class TestEffectEngine : public QObject
{
    Q_OBJECT

    std::unique_ptr<WorkingFolder> m_folder;

private slots:
    void init()
    {
        m_folder = std::make_unique<WorkingFolder>();
        WorkingFolder::writeFile("a.json", kOneGroup);
        WorkingFolder::addPlugin(PROBE_PLUGIN);
    }
    void cleanup() { m_folder.reset(); }

    void the_catalogue_is_consistent_and_fits_the_shipped_groups()
    {
        QVERIFY(QFile::remove("effects/a.json"));
        QVERIFY(QFile::remove("effects/" + QFileInfo(PROBE_PLUGIN).fileName()));
        QVERIFY(QFile::copy(SHIPPED_GROUPS, "effects/groups.json"));
        WorkingFolder::writeFile("colorStraps.json", "{}"); // stands there, but is no group file
        const LogCapture log;
        QSet<QString> rows;
        QSet<QPair<QString, int>> places;
        for (const EffectRow& row : effectCatalogue()) {
            rows += row.id;
            places += {EffectWorkerOptions::groupOf(row.id), row.order};
        }
        QVERIFY(rows.size() == effectCatalogue().size() && places.size() == rows.size());
        auto* config = ConfigurationManager::instance();
        for (const QJsonValue& extra : {QJsonValue(true), QJsonValue("true"), QJsonValue()}) {
            config->setAppConfig("effects.extra", extra);
            EffectsManager manager(nullptr);
            for (const QString& groupId : manager.groupIds())
                QVERIFY2(rows.contains(manager.groupInfo(groupId).defaultEffect), qPrintable(groupId));
            // What is offered can be created, and knows which entry it is of.
            InternalEffectFactory factory(nullptr);
            const QList<EffectWorkerOptions> offered = factory.workerOptionsList();
            for (const EffectWorkerOptions& effect : offered) {
                const std::unique_ptr<IEffectWorker> worker(factory.createWorker(effect.id));
                QVERIFY2(worker && worker->options().id == effect.id, qPrintable(effect.id));
            }
            QCOMPARE(offered.size(), extra.toBool() ? 25 + 4 : 25);
        }
        QVERIFY(!log.contains("Group order conflict") && !log.contains("Not found groups in file"));
    }

    void no_update_interval_makes_timers_run_flat_out()
    {
        auto* config = ConfigurationManager::instance();
        for (const QJsonValue& stored :
             {QJsonValue("fast"), QJsonValue(0), QJsonValue(8001), QJsonValue(40)}) {
            const LogCapture log;
            config->setAppConfig("devUpdateInterval", stored);
            const bool isGood = stored.toInt() == 40;
            EffectsManager manager(nullptr);
            for (const char* effect : {"id.effect.colorful.flowingEffect", "id.effect.marquee.marquee"}) {
                const std::unique_ptr<IEffectWorker> worker(
                    InternalEffectFactory(nullptr).createWorker(effect));
                worker->load(ControlOptions());
                QCOMPARE(worker->findChild<QTimer*>()->interval(), isGood ? 40 : 80);
                worker->unload();
            }
            QCOMPARE(log.count("does not count"), isGood ? 0 : 1);    // told of once
            QCOMPARE(config->appConfig("devUpdateInterval"), stored); // and left as the user wrote it
        }
        config->setAppConfig("devUpdateInterval", QJsonValue());
    }

    void a_worker_lives_from_bind_to_unbind()
    {
        for (const auto& [effectId, place] : {std::pair(kSync, "main"), {kAsync, "own"}}) { // in whose thread
            const bool isMain = effectId == kSync;
            TestManager manager;
            const auto controller = Controller::create();
            const QString id = controller->id();
            const IEffectWorker* const worker = manager.bindController(controller, effectId).data();
            QThread *const workerThread = worker->thread(), *deletedIn = nullptr;
            connect(worker, &QObject::destroyed, [&] { deletedIn = QThread::currentThread(); });
            QCOMPARE(workerThread == QThread::currentThread(), isMain);
            QCOMPARE(manager.boundEffectId(id), effectId);
            QCOMPARE(manager.lastBindingEffect(id, "id.probe"), effectId);
            QTRY_COMPARE(controller->pictures.value(0), QVector<LV_RGB>(3, LV_RGB{1, 2, 3}));

            controller->setInstallDirection(1);
            controller->setBrightness(0.25F);
            controller->setKindName("desk lamp");
            controller->setEnable(false);
            QCoreApplication::sendPostedEvents(); // the changes are queued also within one thread
            manager.setEffectProperty(id, "value", 42);
            QCOMPARE(manager.effectProperty(id, "value").toInt(), 42);
            manager.setEffectProperty(id, "throw", 1);

            QJsonArray expected{"desk main"};
            for (const char* call : {"load", "dir 1", "brightness 0.25", "name desk lamp", "enable 0",
                                     "set value", "set throw", "read"})
                expected += QString("%1 %2").arg(call, place);
            QCOMPARE(manager.effectProperty(id, "journal").toArray(), expected);

            manager.unbindController(id);
            expected += "unload main";
            QCOMPARE(storedJournal(effectId, *controller), expected);
            QVERIFY(isMain || deletedIn); // before unbind returned
            QTRY_COMPARE(deletedIn, workerThread);
            QVERIFY(manager.boundEffectId(id).isEmpty());
        }
    }

    void workers_rest_while_their_devices_are_dark()
    {
        for (const char* effect : {"id.effect.marquee.marquee", "id.effect.colorful.flowingEffect"}) {
            TestManager manager;
            auto lit = Controller::create(), dark = Controller::create();
            dark->setDark(true); // before it is bound, and the other one afterwards
            QVERIFY(manager.bindController(lit, effect) && manager.bindController(dark, effect));
            for (int i = 0; i < 2; ++i, lit.swap(dark)) {
                dark->setDark(true);
                lit->setDark(false);
                QCoreApplication::sendPostedEvents();
                dark->pictures.clear();
                QTRY_VERIFY(lit->pictures.size() > 2);
                QVERIFY(dark->pictures.isEmpty());
            }
        }
    }

    void only_another_effect_takes_the_place_of_the_bound_one()
    {
        TestManager manager;
        const auto controller = Controller::create();
        const QString id = controller->id();
        const auto worker = manager.bindController(controller, kSync);
        QVERIFY(worker != manager.bindController(Controller::create(), kSync));
        QCOMPARE(manager.deskManagersMade, 1);                       // shared by both
        QCOMPARE(manager.bindController(controller, kSync), worker); // again: changes nothing
        QCOMPARE(worker->effectProperty("journal").toArray(),
                 (QJsonArray{"desk main", "load main", "read main"}));

        QVERIFY(manager.bindController(controller, "id.probe.throwing")); // counts as running
        QCOMPARE(storedJournal(kSync, *controller).last().toString(), "unload main");
        QCOMPARE(manager.lastBindingEffect(id, "id.probe"), "id.probe.throwing");
        emit worker->updateColors({LV_RGB{}}); // still held here, but no longer connected
        QCoreApplication::sendPostedEvents();
        QVERIFY(!controller->pictures.contains({LV_RGB{}}));

        for (const char* refused : {"id.probe.nothing", "id.probe.none", "id.probe.throws"}) {
            QVERIFY(manager.bindController(controller, kSync));
            QVERIFY(!manager.bindController(controller, refused));
            QVERIFY(manager.boundEffectId(id).isNull());
        }
        QCOMPARE(manager.lastBindingEffect(id, "id.probe"), kSync);
    }

    void an_async_worker_ends_cleanly_at_any_moment()
    {
        const auto controller = Controller::create();
        const QStringList keys{"value", "throw", "value"};
        for (int i = 0; i < 32; ++i) {
            auto manager = std::make_unique<TestManager>();
            auto worker = manager->bindController(controller, kAsync);
            bool isDeleted = false;
            connect(worker.data(), &QObject::destroyed, [&] { isDeleted = true; });
            if (i & 1)
                manager->effectProperty(controller->id(), "value"); // lets the load run first
            QJsonArray expected{"desk main", "load own"};
            for (const QString& key : i & 2 ? keys : QStringList()) { // what waits comes before the unload
                manager->setEffectProperty(controller->id(), key, 1);
                expected += "set " + key + " own";
            }
            expected += "unload main";
            const bool isKept = i & 4;
            if (!isKept)
                worker.reset();
            i & 8 ? manager.reset() : manager->unbindController(controller->id());
            QCOMPARE(storedJournal(kAsync, *controller), expected);
            QCOMPARE(isDeleted, !isKept);
            if (isKept)
                QCOMPARE(worker->thread(), QThread::currentThread()); // its own one is gone
            worker.reset();
            QTRY_VERIFY(isDeleted);
        }
    }

    void the_manager_unloads_what_is_bound_when_it_goes()
    {
        auto manager = std::make_unique<TestManager>();
        const auto one = Controller::create(), two = Controller::create();
        const auto* sync = manager->bindController(one, kSync).data();
        const auto* async = manager->bindController(two, kAsync).data();
        const QPointer<IDeskDuplManager> desk = manager->deskManager;
        // Who is told of an unload may want to unbind: once is enough for each of them.
        for (const auto* worker : {sync, async}) {
            connect(worker, &IEffectWorker::effectPropertyChanged, [&engine = *manager, &one, &two] {
                engine.unbindController(one->id());
                engine.unbindController(two->id());
            });
        }
        bool hadServices = false;
        connect(async, &QObject::destroyed, [&] { hadServices = desk; });
        manager->effectProperty(two->id(), "value"); // loaded now
        manager.reset();
        QVERIFY(hadServices && !desk); // a worker in its own thread has them to its end
        QCOMPARE(storedJournal(kSync, *one), (QJsonArray{"desk main", "load main", "unload main"}));
        QCOMPARE(storedJournal(kAsync, *two), (QJsonArray{"desk main", "load own", "unload main"}));
    }

    void bad_plugins_and_group_files_stop_nothing()
    {
        QFile good(PROBE_PLUGIN);
        QVERIFY(good.open(QIODevice::ReadOnly));
        const QString suffix = QFileInfo(good).suffix();
        WorkingFolder::writeFile("0-cut." + suffix, good.read(good.size() / 2));
        WorkingFolder::writeFile("0-empty." + suffix, {});
        WorkingFolder::writeFile("0-text." + suffix, QByteArray(5000, 'x'));
        QVERIFY(QDir().mkdir("effects/0-folder." + suffix) && QDir().mkdir("effects/1.json"));
        WorkingFolder::addPlugin(EXAMPLE_ENUMERATOR);
        WorkingFolder::addPlugin(THROWING_PLUGIN);
        for (const QByteArray& bytes : {QByteArray(), kOneGroup.left(40), QByteArray(100000, '['),
                                        QByteArray(R"({"groups": {"id": "x"}})"),
                                        QByteArray(R"({"groups": [7, null, {"id": 7}, {"name": "x"}]})")}) {
            WorkingFolder::writeFile("0.json", bytes); // listed before the good file
            const LogCapture log;
            EffectsManager manager(nullptr);
            QCOMPARE(log.count("Failed to load IEffectFactory instance by path: "), 5);
            QCOMPARE(manager.groupInfo("id.probe").order, 7);
            // Of the probe the sound entries are there, those without a group not, and a built-in effect
            // keeps its id.
            QCOMPARE(manager.groupInfo("id.probe").workers.size(), 5);
            QVERIFY(!manager.groupIds().contains("") && manager.effectOptions("nodot").id.isEmpty());
            QCOMPARE(manager.effectOptions("id.effect.singleColor.singleColor1").name, "单色模式");
        }
    }
};

QTEST_MAIN(TestEffectEngine)
#include "tst_effect_engine.moc"
