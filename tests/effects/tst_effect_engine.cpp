#include "EngineFixture.h"
#include "LogCapture.h"
#include "controllers/IDeviceEnumerator.h"
#include "effects/InternalEffectFactory.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPluginLoader>
#include <QTest>
#include <memory>

namespace {

const QString kSync = QStringLiteral("id.probe.sync");
const QString kAsync = QStringLiteral("id.probe.async");
const QByteArray kOneGroup =
    R"({"groups": [{"id": "id.probe", "order": 7, "defaultEffect": "id.probe.sync"}]})";

int s_strangersAlive = 0;

/// Base of the workers of the creation test.
class BareWorker : public IEffectWorker
{
    Q_OBJECT

public:
    using IEffectWorker::IEffectWorker;

    int load(const ControlOptions&) override { return 0; }
    EffectWorkerOptions options() override { return m_options; }
    QJsonValue effectProperty(const QString&) override { return {}; }
    void setEffectProperty(const QString&, const QJsonValue&) override {}
    void unload() override {}
    void onCtlDirChanged(uint32_t) override {}
    void onCtlBrightnessChanged(float) override {}
    void onCtlKindNameChanged(QString) override {}
    void onCtlEnableChanged(bool) override {}

protected:
    EffectWorkerOptions m_options;
};

class OptionsWorker : public BareWorker
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit OptionsWorker(QObject* parent)
        : BareWorker(parent)
    {
    }
    Q_INVOKABLE OptionsWorker(const EffectWorkerOptions& options, QObject* parent)
        : BareWorker(parent)
    {
        m_options = options;
    }
};

class ParentWorker : public BareWorker
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ParentWorker(QObject* parent)
        : BareWorker(parent)
    {
        m_options.id = "made by parent";
    }
};

class SecretWorker : public BareWorker
{
    Q_OBJECT

public:
    explicit SecretWorker(QObject* parent)
        : BareWorker(parent)
    {
    }
};

class Stranger : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit Stranger(QObject* parent)
        : QObject(parent)
    {
        ++s_strangersAlive;
    }
    ~Stranger() override { --s_strangersAlive; }
};

QJsonArray journalOf(EffectsManager& manager, const FakeController& controller)
{
    return manager.effectProperty(controller.id(), "journal").toArray();
}

QJsonArray storedJournal(const QString& effectId, const FakeController& controller)
{
    return ConfigurationManager::instance()->effectJsonValue(effectId, controller.id(), "journal").toArray();
}

QJsonValue lastBinding(const FakeController& controller, const QString& groupId)
{
    return ConfigurationManager::instance()->globalValue(
        ConfigKeys::lastBindingKey(controller.id(), groupId));
}

} // namespace

class TestEffectEngine : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<WorkingFolder>();
        WorkingFolder::writeFile("a.json", kOneGroup);
        m_log = std::make_unique<LogCapture>();
    }
    void cleanup()
    {
        m_log.reset();
        m_folder.reset();
    }

    void the_catalogue_is_consistent_and_fits_the_shipped_groups();
    void a_worker_is_created_by_the_constructor_it_has_data();
    void a_worker_is_created_by_the_constructor_it_has();
    void the_update_interval_gets_its_default_once();
    void a_worker_lives_from_bind_to_unbind_data();
    void a_worker_lives_from_bind_to_unbind();
    void binding_the_same_effect_again_changes_nothing();
    void a_failed_bind_leaves_the_controller_unbound_data();
    void a_failed_bind_leaves_the_controller_unbound();
    void calls_without_a_binding_are_only_logged();
    void an_async_worker_ends_cleanly_at_any_moment();
    void the_manager_unloads_what_is_bound_when_it_goes();
    void a_broken_group_file_stops_nothing_data();
    void a_broken_group_file_stops_nothing();
    void the_first_group_wins_its_id_and_its_order();
    void groups_are_walked_in_order_and_wrap();
    void without_the_folder_the_builtin_effects_remain();
    void the_example_effect_breathes();
    void the_example_enumerator_offers_a_strip();
    void a_bad_plugin_stops_nothing(); // last: it loads the example enumerator, which offers its strip once

private:
    std::unique_ptr<WorkingFolder> m_folder;
    std::unique_ptr<LogCapture> m_log;
};

void TestEffectEngine::the_catalogue_is_consistent_and_fits_the_shipped_groups()
{
    QFile::remove("effects/a.json");
    QVERIFY(QFile::copy(SHIPPED_GROUPS, "effects/groups.json"));
    for (const bool advanced : {false, true}) {
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, advanced);
        EffectsManager manager(nullptr);
        QCOMPARE(manager.groupIds().size(), 6);
        QSet<QString> all;
        for (const QString& groupId : manager.groupIds()) {
            const EffectGroupInfo group = manager.groupInfo(groupId);
            QVERIFY2(group.workers.contains(group.defaultEffect), qPrintable(group.defaultEffect));
            QSet<int> orders;
            for (const QString& id : group.workers) {
                const EffectWorkerOptions effect = manager.effectOptions(id);
                QCOMPARE(effect.id, id);
                QVERIFY(!effect.name.isEmpty() && effect.name == effect.desc && !effect.async);
                QCOMPARE(effect.lOptWidget.isEmpty(), !(advanced && id.endsWith("fullScreen")));
                orders += effect.order;
            }
            QCOMPARE(orders.size(), group.workers.size());
            all += group.workers;
        }
        QCOMPARE(all.size(), 25);
    }
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, false);
    QVERIFY(!m_log->contains("Group order conflict"));

    // What is registered can be created, and knows which entry it is of.
    InternalEffectFactory factory(nullptr);
    int created = 0;
    for (const EffectWorkerOptions& effect : factory.workerOptionsList()) {
        const std::unique_ptr<IEffectWorker> worker(factory.createWorker(effect.id));
        if (!worker)
            continue;
        ++created;
        QCOMPARE(worker->options().id, effect.id);
        QVERIFY2(QMetaType::type(effect.sOptWidget.toLatin1() + '*') != QMetaType::UnknownType ||
                     effect.sOptWidget == "ScreenSyncSOptWidget",
                 qPrintable(effect.sOptWidget));
    }
    QVERIFY2(created >= 15, qPrintable(QString::number(created)));
}

void TestEffectEngine::a_worker_is_created_by_the_constructor_it_has_data()
{
    QTest::addColumn<QString>("typeName");
    QTest::addColumn<QString>("idOfWorker");
    QTest::newRow("options and parent come first") << "OptionsWorker*"
                                                   << "id.of.entry";
    QTest::newRow("parent alone") << "ParentWorker*"
                                  << "made by parent";
    QTest::newRow("no invokable constructor") << "SecretWorker*"
                                              << "";
    QTest::newRow("not a worker") << "Stranger*"
                                  << "";
    QTest::newRow("not registered") << "Nobody*"
                                    << "";
    QTest::newRow("not a pointer to an object") << "int"
                                                << "";
}

void TestEffectEngine::a_worker_is_created_by_the_constructor_it_has()
{
    qRegisterMetaType<OptionsWorker*>("OptionsWorker*");
    qRegisterMetaType<ParentWorker*>("ParentWorker*");
    qRegisterMetaType<SecretWorker*>("SecretWorker*");
    qRegisterMetaType<Stranger*>("Stranger*");
    QFETCH(QString, typeName);
    QFETCH(QString, idOfWorker);
    EffectWorkerOptions options;
    options.id = "id.of.entry";
    const std::unique_ptr<IEffectWorker> worker(InternalEffectFactory::createByTypeName(typeName, options));
    QCOMPARE(worker ? worker->options().id : QString(), idOfWorker);
    QCOMPARE(s_strangersAlive, 0);
}

void TestEffectEngine::the_update_interval_gets_its_default_once()
{
    auto* config = ConfigurationManager::instance();
    config->setAppConfig("devUpdateInterval", QJsonValue::Null);
    EffectsManager first(nullptr);
    QCOMPARE(config->appConfig("devUpdateInterval").toInt(), 80);
    config->setAppConfig("devUpdateInterval", 40);
    EffectsManager second(nullptr);
    QCOMPARE(config->appConfig("devUpdateInterval").toInt(), 40);
    QCOMPARE(m_log->count("Devcie update interval: 80"), 1);
    QCOMPARE(m_log->count("Devcie update interval: 40"), 1);
}

void TestEffectEngine::a_worker_lives_from_bind_to_unbind_data()
{
    QTest::addColumn<QString>("effectId");
    QTest::addColumn<QString>("place");
    QTest::newRow("main thread") << kSync << "main";
    QTest::newRow("thread of its own") << kAsync << "own";
}

void TestEffectEngine::a_worker_lives_from_bind_to_unbind()
{
    QFETCH(QString, effectId);
    QFETCH(QString, place);
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    TestManager manager;
    const auto controller = QSharedPointer<FakeController>::create();
    QThread* deletedIn = nullptr;
    QThread* workerThread = nullptr;
    {
        const auto worker = manager.bindController(controller, effectId);
        QVERIFY(worker && worker == manager.boundWorker(controller->id()));
        workerThread = worker->thread();
        QCOMPARE(workerThread == QThread::currentThread(), place == "main");
        connect(worker.data(), &QObject::destroyed, [&] { deletedIn = QThread::currentThread(); });
    }
    QCOMPARE(manager.boundEffectId(controller->id()), effectId);
    QCOMPARE(lastBinding(*controller, "id.probe").toString(), effectId);
    QCOMPARE(manager.deskManagersMade, 1);
    QVERIFY(m_log->contains("The DeskDuplManager has injected to ProbeWorker"));
    QTRY_COMPARE(controller->pictures.size(), 1);
    QCOMPARE(controller->pictures.first(), QVector<LV_RGB>(3, LV_RGB{1, 2, 3}));

    controller->setInstallDirection(1);
    controller->setBrightness(0.25F);
    controller->setKindName("desk lamp");
    controller->setEnable(false);
    QCoreApplication::sendPostedEvents(); // the changes are queued also within one thread
    manager.setEffectProperty(controller->id(), "value", 42);
    QCOMPARE(manager.effectProperty(controller->id(), "value").toInt(), 42);
    QVERIFY(manager.effectProperty(controller->id(), "other").isNull());
    manager.setEffectProperty(controller->id(), "throw", 1);

    QJsonArray expected{"desk main", "straps main"};
    for (const char* call :
         {"load", "dir 1", "brightness 0.25", "name desk lamp", "enable 0", "set value", "set throw", "read"})
        expected += QString("%1 %2").arg(call, place);
    QCOMPARE(journalOf(manager, *controller), expected);

    manager.unbindController(controller->id());
    expected += "unload main";
    QCOMPARE(storedJournal(effectId, *controller), expected);
    if (place == "own")
        QCOMPARE(deletedIn, workerThread); // before unbind returned
    else
        QTRY_COMPARE(deletedIn, workerThread);
    QVERIFY(manager.boundEffectId(controller->id()).isEmpty());
    QVERIFY(m_log->contains(controller->id() + " has disconected to " + effectId));
    QVERIFY(m_log->contains("An unknown exception left setEffectProperty"));
}

void TestEffectEngine::binding_the_same_effect_again_changes_nothing()
{
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    TestManager manager;
    manager.hasStraps = false;
    const auto controller = QSharedPointer<FakeController>::create();
    const auto other = QSharedPointer<FakeController>::create();
    const auto worker = manager.bindController(controller, kSync);
    QVERIFY(worker != manager.bindController(other, kSync));
    QCOMPARE(manager.deskManagersMade, 1); // shared by both
    QCOMPARE(m_log->count("[EffectsManager]: There is no ColorStrapManager for ProbeWorker"), 2);

    ConfigurationManager::instance()->setGlobalValue(ConfigKeys::lastBindingKey(controller->id(), "id.probe"),
                                                     "untouched");
    QCOMPARE(manager.bindController(controller, kSync), worker);
    QCOMPARE(lastBinding(*controller, "id.probe").toString(), "untouched");
    QCOMPARE(journalOf(manager, *controller), (QJsonArray{"desk main", "load main", "read main"}));

    QVERIFY(manager.bindController(controller, "id.probe.throwing")); // counts as running
    QVERIFY(m_log->contains("An exception left load: load of the probe"));
    QCOMPARE(storedJournal(kSync, *controller).last().toString(), "unload main");
    QCOMPARE(manager.lastBindingEffect(controller->id(), "id.probe"), "id.probe.throwing");
    controller->pictures.clear();
    emit worker->updateColors({LV_RGB{}}); // still held here, but no longer connected
    QCoreApplication::sendPostedEvents();
    QVERIFY(!controller->pictures.contains({LV_RGB{}}));
}

void TestEffectEngine::a_failed_bind_leaves_the_controller_unbound_data()
{
    QTest::addColumn<QString>("effectId");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown")
        << "id.probe.nothing"
        << "[EffectsManager]: Not found worker factory for this effect, id: id.probe.nothing";
    for (const QString id : {"id.probe.none", "id.probe.throws"})
        QTest::newRow(qPrintable(id)) << id << "[EffectsManager]: Failed to create effect worker, id: " + id;
}

void TestEffectEngine::a_failed_bind_leaves_the_controller_unbound()
{
    QFETCH(QString, effectId);
    QFETCH(QString, message);
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    TestManager manager;
    const auto controller = QSharedPointer<FakeController>::create();
    QVERIFY(manager.bindController(controller, kSync));
    QVERIFY(!manager.bindController(controller, effectId));
    QVERIFY(manager.boundEffectId(controller->id()).isNull());
    QCOMPARE(m_log->count(message), 1);
    QCOMPARE(lastBinding(*controller, "id.probe").toString(), kSync);
}

void TestEffectEngine::calls_without_a_binding_are_only_logged()
{
    TestManager manager;
    QVERIFY(manager.effectProperty("ghost", "value").isNull());
    manager.setEffectProperty("ghost", "value", 1);
    QCOMPARE(m_log->count("Not found bingding of controller: ghost"), 2);
    manager.unbindController("ghost");
    QCOMPARE(m_log->count("Not found controller in EffectsManager::unbindController ghost"), 1);
    QVERIFY(!manager.bindController({}, kSync));
}

void TestEffectEngine::an_async_worker_ends_cleanly_at_any_moment()
{
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    TestManager manager;
    const auto controller = QSharedPointer<FakeController>::create();
    constexpr int kRounds = 200;
    std::atomic<int> deleted{0};
    for (int i = 0; i < kRounds; ++i) {
        const auto* worker = manager.bindController(controller, kAsync).data();
        connect(worker, &QObject::destroyed, [&] { ++deleted; });
        if (i % 2 == 1)
            manager.effectProperty(controller->id(), "value"); // lets the load run first
        manager.unbindController(controller->id());
        QCOMPARE(deleted.load(), i + 1);
    }

    // A worker that somebody keeps is deleted later, though its thread is gone.
    auto kept = manager.bindController(controller, kAsync);
    connect(kept.data(), &QObject::destroyed, [&] { ++deleted; });
    manager.unbindController(controller->id());
    QCOMPARE(kept->thread(), QThread::currentThread());
    kept.reset();
    QTRY_COMPARE(deleted.load(), kRounds + 1);
}

void TestEffectEngine::the_manager_unloads_what_is_bound_when_it_goes()
{
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    auto manager = std::make_unique<TestManager>();
    QVERIFY(!manager->deskManager); // made only when the first worker asks
    const auto one = QSharedPointer<FakeController>::create();
    const auto two = QSharedPointer<FakeController>::create();
    manager->bindController(one, kSync);
    manager->bindController(two, kAsync);
    const QPointer<IDeskDuplManager> desk = manager->deskManager;
    bool deleted = false;
    connect(manager->boundWorker(two->id()).data(), &QObject::destroyed, [&] { deleted = true; });
    manager->effectProperty(two->id(), "value"); // loaded now
    manager.reset();
    QVERIFY(deleted && !desk);
    QCOMPARE(storedJournal(kSync, *one).last().toString(), "unload main");
    QCOMPARE(storedJournal(kAsync, *two).last().toString(), "unload main");
}

void TestEffectEngine::a_broken_group_file_stops_nothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");
    const QString unparsable =
        "Failed to parse group information file in EffectsManager::loadGroupInfoFromJson, reason: ";
    QTest::newRow("empty") << QByteArray() << unparsable;
    QTest::newRow("cut") << kOneGroup.left(40) << unparsable;
    QTest::newRow("deep") << QByteArray(100000, '[') << unparsable;
    QTest::newRow("huge") << kOneGroup + QByteArray(8 << 20, ' ') << unparsable + "the file is too large";
    QTest::newRow("no object") << QByteArray("[1]") << "Not found groups in file: ";
    QTest::newRow("no array") << QByteArray(R"({"groups": {"id": "id.x"}})") << "Not found groups in file: ";
    QTest::newRow("no group") << QByteArray(R"({"groups": []})") << "Not found groups in file: ";
    QTest::newRow("wrong types") << QByteArray(R"({"groups": [7, null, {"id": 7}, {"name": "x"}]})")
                                 << "Incorrect group information format";
}

void TestEffectEngine::a_broken_group_file_stops_nothing()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    WorkingFolder::writeFile("0.json", bytes); // listed before the good file
    QVERIFY(QDir().mkdir("effects/1.json"));
    EffectsManager manager(nullptr);
    QVERIFY(m_log->contains(message));
    QVERIFY(m_log->contains("Failed to open file " + QDir::currentPath() + "/effects/1.json"));
    QVERIFY(m_log->contains("1 group informations were successfully loaded."));
    QCOMPARE(manager.defaultEffect("id.probe"), kSync);
}

void TestEffectEngine::the_first_group_wins_its_id_and_its_order()
{
    WorkingFolder::writeFile("b.json", R"({"groups": [
        {"id": "id.probe", "order": 1, "name": "thief"},
        {"id": "id.late", "order": 7, "name": "Late", "icon": "no such picture", "defaultEffect": 5},
        {"id": "id.odd", "order": "first"}]})");
    EffectsManager manager(nullptr);
    QCOMPARE(manager.groupInfo("id.probe").name, "id.probe");
    QVERIFY(m_log->contains("Skip existing group information id.probe"));
    const EffectGroupInfo late = manager.groupInfo("id.late");
    QCOMPARE(late.order, static_cast<int>(qHash(QString("id.late"), 0)));
    QCOMPARE(late.desc, "Late");
    QVERIFY(late.icon.isNull() && late.defaultEffect.isEmpty());
    QVERIFY(m_log->contains(
        "[EffectManager]: Group order conflict: id.late. The order already exists: id.probe"));
    QCOMPARE(manager.groupInfo("id.odd").order, 0);
    QVERIFY(manager.groupIds().contains("id.odd")); // without any effect
}

void TestEffectEngine::groups_are_walked_in_order_and_wrap()
{
    WorkingFolder::writeFile("b.json", R"({"groups": [{"id": "id.zero", "order": 9, "defaultEffect": "z"},
        {"id": "id.effect.colorful", "order": -3, "defaultEffect": "c"}]})");
    EffectsManager manager(nullptr);
    QStringList forwards, backwards;
    for (const char* id : {"id.effect.colorful", "id.probe", "id.zero"}) {
        forwards += manager.nextGroupByOrder(id);
        backwards += manager.previousGroupByOrder(id);
    }
    QCOMPARE(forwards, (QStringList{"id.probe", "id.zero", "id.effect.colorful"}));
    QCOMPARE(backwards, (QStringList{"id.zero", "id.effect.colorful", "id.probe"}));

    // A group without a file has no place: forwards to the first by order, backwards to the first by id.
    QCOMPARE(manager.groupIds().first(), "id.effect.colorful");
    WorkingFolder::writeFile("c.json", R"({"groups": [{"id": "a.first", "order": 100}]})");
    EffectsManager more(nullptr);
    for (const QString id : {"id.effect.marquee", "nobody"}) {
        QCOMPARE(more.nextGroupByOrder(id), "id.effect.colorful");
        QCOMPARE(more.previousGroupByOrder(id), "a.first");
    }
    QCOMPARE(m_log->count("[EffectManager]: Not found group order: id.effect.marquee"), 2);
    QCOMPARE(m_log->count("[EffectManager]: Not found group info: nobody"), 2);

    QCOMPARE(more.lastBindingEffect("", ""), "c");
    QCOMPARE(more.lastBindingEffect("never seen", "id.zero"), "z");
    QCOMPARE(more.lastBindingEffect("", "id.zero"), "z");
}

void TestEffectEngine::without_the_folder_the_builtin_effects_remain()
{
    QVERIFY(QDir("effects").removeRecursively());
    EffectsManager manager(nullptr);
    QVERIFY(m_log->contains("Not found path ./effects, cannot load group informations"));
    QVERIFY(m_log->contains("Not found path ./effects, Cannot load external effects"));
    QCOMPARE(manager.groupIds().size(), 6);
    const EffectGroupInfo group = manager.groupInfo("id.effect.graphics");
    QCOMPARE(group.name + group.desc, group.id + group.id);
    QVERIFY(manager.effectOptions("id.effect.graphics.graphics").name == "图像模式");
    QVERIFY(manager.nextGroupByOrder("id.effect.graphics").isEmpty());
    QCOMPARE(manager.previousGroupByOrder("id.effect.graphics"), "id.effect.colorful");
}

void TestEffectEngine::the_example_effect_breathes()
{
    WorkingFolder::addPlugin(EXAMPLE_EFFECT);
    EffectsManager manager(nullptr);
    const auto controller = QSharedPointer<FakeController>::create(4);
    const QString id = "id.effect.colorful.breathing";
    QVERIFY(manager.bindController(controller, id));
    QVERIFY(manager.boundWorker(controller->id())->thread() != QThread::currentThread());
    manager.setEffectProperty(controller->id(), "", QJsonObject{{"color", "#0000ff"}, {"period", 1e9}});
    manager.setEffectProperty(controller->id(), "color", "not a colour");
    const QJsonObject all = manager.effectProperty(controller->id(), "").toObject();
    QCOMPARE(all, (QJsonObject{{"color", "#0000ff"}, {"period", 60.0}}));
    manager.setEffectProperty(controller->id(), "period", 0.5);
    const auto brightBlue = [](const QVector<LV_RGB>& c) {
        return c.size() == 4 && c.count(c[0]) == 4 && c[0].red == 0 && c[0].blue > 128;
    };
    const auto& seen = controller->pictures;
    QTRY_VERIFY(std::any_of(seen.begin(), seen.end(), brightBlue));

    manager.unbindController(controller->id());
    QVERIFY(manager.bindController(controller, id)); // finds what was stored
    QCOMPARE(manager.effectProperty(controller->id(), "period").toDouble(), 0.5);
}

void TestEffectEngine::the_example_enumerator_offers_a_strip()
{
    QPluginLoader loader(EXAMPLE_ENUMERATOR);
    auto* enumerator = qobject_cast<IDeviceEnumerator*>(loader.instance());
    QVERIFY2(enumerator, qPrintable(loader.errorString()));
    AbsRGBControllerPtr strip;
    const auto connection = connect(enumerator, &IDeviceEnumerator::deviceEnabled,
                                    [&](AbsRGBControllerPtr offered) { strip = offered; });
    QTRY_VERIFY(strip);
    QVERIFY(strip->options().isValid() && strip->options().nbLeds > 0);
    strip->update(QVector<LV_RGB>(2, LV_RGB{255, 0, 0}));
    QVERIFY(m_log->contains("[[loop]][ExampleStrip]: picture 1"));
    disconnect(connection);
}

void TestEffectEngine::a_bad_plugin_stops_nothing()
{
    QFile good(PROBE_PLUGIN);
    QVERIFY(good.open(QIODevice::ReadOnly));
    WorkingFolder::writeFile("0-cut.so", good.read(good.size() / 2));
    WorkingFolder::writeFile("0-empty.so", {});
    WorkingFolder::writeFile("0-text.so", "this is no library");
    QVERIFY(QDir().mkdir("effects/0-folder.so"));
    WorkingFolder::addPlugin(EXAMPLE_ENUMERATOR);
    WorkingFolder::addPlugin(THROWING_PLUGIN);
    WorkingFolder::addPlugin(PROBE_PLUGIN);
    EffectsManager manager(nullptr);
    const QString path = QDir::currentPath() + "/effects/";
    for (const char* name : {"0-cut.so", "0-empty.so", "0-text.so", "0-folder.so", "example-enumerator.so"})
        QCOMPARE(m_log->count("Failed to load IEffectFactory instance by path: " + path + name + " reason: "),
                 1);
    QVERIFY(m_log->contains("An exception left workerOptionsList: no list today"));
    // Of the probe the sound entries are there, those without a group are not, and a built-in effect keeps
    // its id.
    QCOMPARE(manager.groupInfo("id.probe").workers.size(), 5);
    QVERIFY(manager.groupInfo("").id.isEmpty() && manager.effectOptions("nodot").id.isEmpty());
    QCOMPARE(manager.effectOptions("id.effect.singleColor.singleColor1").name, "单色模式");
}

QTEST_MAIN(TestEffectEngine)
#include "tst_effect_engine.moc"
