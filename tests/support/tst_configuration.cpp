#include "LogCapture.h"
#include "ProgramUnderTest.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/DataFile.h"

#include <QtTest>
#include <csignal>
#include <future>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

const QString kEffect = "id.effect.colorful.Flowing";
const QString kDevice = "Moni-A:0001";

const auto& bytesOf = ProgramUnderTest::readFile;
const auto& put = ProgramUnderTest::writeFile;
const auto& onDisk = ProgramUnderTest::readObject;

} // namespace

class ConfigurationTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        m_config = std::make_unique<ConfigurationManager>(path(), m_home->filePath("resources"));
        m_log = std::make_unique<LogCapture>();
    }
    void cleanup()
    {
        m_config.reset();
        m_log.reset();
    }

    void effect_ids_become_safe_file_names()
    {
        const QStringList ids{kEffect, "",           "..",    "../../app",        "a\\b",
                              "con",   "%",          "%2e",   "光.效果",          "a:b*?\"<>",
                              "a\nb ", "a.json.bak", "Nul.x", QString(5000, 'x'), QString(5000, 'x') + 'y'};
        for (const QString& id : ids)
            m_config->setEffectJsonValue(id, kDevice, "key", id);
        restart();
        for (const QString& id : ids)
            QCOMPARE(m_config->effectJsonValue(id, kDevice, "key"), QJsonValue(id));
        const QStringList names = QDir(path("effects")).entryList({"*.json"}, QDir::Files | QDir::Hidden);
        QCOMPARE(names.size(), ids.size());
        QVERIFY(names.contains(kEffect + ".json"));
        const QRegularExpression unsafe("^\\.|^(con|nul)\\.|[\\\\:*?\"<>|\\s]",
                                        QRegularExpression::CaseInsensitiveOption);
        QCOMPARE(names.filter(unsafe), QStringList());
    }

    void the_timer_writes_what_changed_and_nothing_else()
    {
        const auto change = [this](int speed) {
            m_config->setEffectJsonValue(kEffect, kDevice, "speed", speed);
            m_config->saveEffectJsonObj(kEffect);
        };
        change(3);
        QTRY_VERIFY(QFile::exists(effectFile()));
        const QDateTime written = QFileInfo(effectFile()).lastModified();
        change(4);
        change(3); // and back
        m_config->AppConfigJsonObj()["language"] = "ko";
        m_config->saveAppConfigJsonObj();
        m_config->controllerJsonObj(kDevice)["nbLeds"] = 3;
        m_config->saveControllerJsonObj(kDevice);
        QTRY_COMPARE(onDisk(path("app.json")).value("language").toString(), QString("ko"));
        QTRY_VERIFY(QFile::exists(path("controllers.json"))); // the last file of a turn
        QCOMPARE(QFileInfo(effectFile()).lastModified(), written);
    }

    void save_writes_what_came_through_the_references()
    {
        put(path("controllers.json"), R"({"format": 2, "Moni-A:0001": {"fromTheFuture": 1}})");
        QJsonObject& app = m_config->AppConfigJsonObj();
        QJsonObject& device = m_config->controllerJsonObj(kDevice);
        device["nbLeds"] = 31;
        m_config->save();
        QVERIFY(QFile::remove(path("controllers.json"))); // somebody tidied up while the program ran
        m_config->save();
        const QJsonObject all{{"format", 2}, {kDevice, QJsonObject{{"fromTheFuture", 1}, {"nbLeds", 31}}}};
        QCOMPARE(onDisk(path("controllers.json")), all); // what is unknown is kept

        for (int i = 0; i < 1000; ++i)
            m_config->controllerJsonObj(QString::number(i))["nbLeds"] = i;
        m_config->reset();
        app["language"] = "en";
        device["nbLeds"] = 31;
        m_config->save();
        QCOMPARE(onDisk(path("app.json")), (QJsonObject{{"language", "en"}}));
        QCOMPARE(onDisk(path("controllers.json")), (QJsonObject{{kDevice, QJsonObject{{"nbLeds", 31}}}}));
    }

    void what_cannot_be_read_is_replaced_by_its_backup()
    {
        for (const char* row : {"pipe app", "folder app", "huge app", "empty app", "rubbish app", "cut app",
                                "cut controllers", "cut effects/id.effect.a"}) {
            const QString damage = QString(row).section(' ', 0, 0),
                          name = QString(row).section(' ', 1) + ".json";
            cleanup();
            init();
            store("de", 60, 5);
            const QByteArray good = bytesOf(path(name));
            const QMap<QString, QByteArray> damaged{{"huge", QByteArray(kMaxDataFileBytes + 1, ' ')},
                                                    {"cut", good.left(good.size() / 2)},
                                                    {"rubbish", R"({"language": "xx"}})"}};
            const auto spoil = [&](const QString& file) {
                QFile::remove(file);
                if (damage == "pipe")
                    QCOMPARE(::mkfifo(qPrintable(file), 0600), 0);
                else if (damage == "folder")
                    QVERIFY(QDir().mkpath(file));
                else
                    put(file, damaged.value(damage));
            };
            const QFileInfo info(path(name));
            const auto aside = [&info] {
                return info.dir().entryList({info.fileName() + "*.corrupt-*"},
                                            QDir::AllEntries | QDir::System);
            };
            spoil(path(name));
            spoil(path("Moni.json"));
            QVERIFY2(isStored("de", 60, 5), row);
            QCOMPARE(aside().size(), 1);
            if (damaged.contains(damage))
                QCOMPARE(bytesOf(info.dir().filePath(aside().first())), damaged[damage]);
            m_config->save();
            QCOMPARE(bytesOf(path(name)), good);
            QCOMPARE(bytesOf(path(name + ".bak")), good);

            restart(); // without a backup it is a first run
            spoil(path(name));
            spoil(path(name + ".bak"));
            QCOMPARE(m_config->appConfig("language").isUndefined(), name == "app.json");
            store("ja", 31, 6);
            QCOMPARE(aside().size(), 3);
            spoil(path(name + ".bak")); // while the program runs
            restart();
            QVERIFY2(isStored("ja", 31, 6), row);
        }
    }

    void what_the_system_does_not_let_be_read_is_left_alone()
    {
        store("de", 60, 5);
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit none = {0, limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
        const bool isSeen = m_config->appConfig("language") == "de" ||
                            !m_config->controllerJsonObj(kDevice).isEmpty() ||
                            !m_config->effectJsonValue("id.effect.a", kDevice, "speed").isUndefined();
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        QVERIFY(!isSeen);
        m_config->setAppConfig("language", "ja"); // over what nobody knows
        m_config->controllerJsonObj(kDevice)["nbLeds"] = 31;
        m_config->setEffectJsonValue("id.effect.a", kDevice, "speed", 6);
        m_config->save();
        QVERIFY(m_config->isSavingTroubled() && m_log->count("it is left as it is") > 2);
        restart();
        QVERIFY(isStored("de", 60, 5));
    }

    void a_kill_at_any_instant_leaves_whole_files()
    {
        int pipe[2];
        QCOMPARE(::pipe(pipe), 0);
        for (int round = 1; round <= 15; ++round) {
            const pid_t test = ::getpid();
            const pid_t child = ::fork();
            QVERIFY(child >= 0);
            if (child == 0) {
                ConfigurationManager config(path(), path());
                for (int i = 0; ::getppid() == test; ++i) {
                    config.setAppConfig("value", QString(i % 50, 'x'));
                    config.save();
                    if (i == 1 && ::write(pipe[1], "", 1) != 1)
                        break;
                }
                ::_exit(1);
            }
            char saved = 1;
            QCOMPARE(::read(pipe[0], &saved, 1), ssize_t(1));
            QTest::qSleep(round); // somewhere within a turn
            ::kill(child, SIGKILL);
            QCOMPARE(::waitpid(child, nullptr, 0), child);
            for (const char* file : {"app.json", "app.json.bak"})
                QVERIFY(onDisk(path(file)).contains("value"));
        }
        ::close(pipe[0]);
        ::close(pipe[1]);
    }

    void a_refused_write_is_made_up_for_when_the_fault_is_gone()
    {
        m_config->setAppConfig("language", "de");
        m_config->save();
        const QByteArray before = bytesOf(path("app.json"));
        m_config->setAppConfig("long", QString(5000, 'x'));
        m_config->setEffectJsonValue(kEffect, kDevice, "speed", 7);
        put(path("effects"), "a file where the folder should be");
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &limit), 0);
        const rlimit tiny = {1000, limit.rlim_max}; // the disk fills up in the middle of a file
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
        QSignalSpy trouble(m_config.get(), &ConfigurationManager::savingTroubleChanged);
        m_config->save();
        m_config->save();
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        QCOMPARE(m_log->count("[ConfigurationManager]: cannot write"), 2); // each failure is told once
        QCOMPARE(bytesOf(path("app.json")), before);
        QCOMPARE(bytesOf(path("app.json.bak")), before);
        QCOMPARE(QDir(path()).entryList(QDir::Files), (QStringList{"app.json", "app.json.bak", "effects"}));

        m_config->EnableCleanStartup(); // writes everything, and not all of it fails now
        QVERIFY(onDisk(path("app.json")).contains("long"));
        QVERIFY(m_config->isSavingTroubled());
        QVERIFY(QFile::remove(path("effects")));
        QTRY_VERIFY_WITH_TIMEOUT(onDisk(effectFile()).contains(kDevice), 20000);
        QTRY_VERIFY(!m_config->isSavingTroubled());
        QCOMPARE(trouble, (QList<QVariantList>{{true}, {false}})); // told once, and when it was over
        const QByteArray replaced = bytesOf(path("app.json"));
        m_config->setAppConfig("language", "ja");
        m_config->EnableCleanStartup();
        QCOMPARE(bytesOf(path("app.json.bak")), replaced);

        ConfigurationManager never(path("app.json/config"), path()); // a folder that cannot be had
        never.setAppConfig("language", "de");
        QTRY_VERIFY(never.isSavingTroubled());
    }

    void effects_are_stored_from_several_threads()
    {
        constexpr int kKeys = 200;
        const QStringList devices{"0", "1", "2", "3"}; // a thread each
        const auto store = [this](const QString& id, const QString& device, int key) {
            m_config->setEffectJsonValue(id, device, QString::number(key), key);
            m_config->saveEffectJsonObj(id);
        };
        std::vector<std::future<void>> stores;
        for (const QString& device : devices)
            stores.push_back(std::async(std::launch::async, [&, device] {
                for (int i = 0; i < 2 * kKeys; ++i)
                    store(i % 2 == 0 ? kEffect : device, device, i);
            }));
        for (const auto& each : stores)
            while (each.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
                m_config->save(); // writing while they change
        m_config->save();
        std::thread([&] { store(kEffect, "late", 1); }).join(); // the timer alone, which is the main thread's
        QTRY_VERIFY(onDisk(effectFile()).contains("late"));
        for (const QString& device : devices)
            for (const QString& id : {kEffect, device})
                QCOMPARE(onDisk(effectFile(id)).value(device).toObject().size(), kKeys);
    }

    void stored_values_go_over_the_defaults_of_a_file()
    {
        put(path("Moni.json"), R"({"strength": 2, "dir": 1, "fragments": {"left": {}}})");
        put(path("broken.json"), R"({"strength": )");
        const QJsonObject own{{"strength", 9}, {"fragments", QJsonObject{{"right", QJsonObject()}}}};
        m_config->setEffectJsonValue(kEffect, kDevice, "", own);
        QJsonObject expected = own;
        expected["dir"] = 1;
        for (const char* file : {"Moni.json", "missing.json", "broken.json"}) {
            QCOMPARE(m_config->effectJsonValue(kEffect, kDevice, "", path(file)), QJsonValue(expected));
            expected = own; // so the defaults are not stored
        }
    }

    void what_the_product_ships_stands_in_until_the_user_chooses()
    {
        const auto ship = [this](const QByteArray& values) {
            put(path("shipped.json"), values);
            m_config.reset(); // saves
            m_config = std::make_unique<ConfigurationManager>(path(), path(), path("shipped.json"));
        };
        const auto gama = [this] { return m_config->appConfig("runtime.gama").toDouble(); };
        ship(R"({"effects.extra": true, "runtime.gama": 2.0})");
        QVERIFY(gama() == 2.0 && m_config->appConfig("runtime.gam").isUndefined());
        m_config->setAppConfig("runtime.gama", 2.0); // the user's, though it is what ships
        m_config->setAppConfig("effects.extra", false);

        ship(R"({"effects.extra": true, "runtime.gama": 1.5, "devUpdateInterval": 50})"); // an update
        QCOMPARE(onDisk(path("app.json")), (QJsonObject{{"runtime.gama", 2.0}, {"effects.extra", false}}));
        QVERIFY(gama() == 2.0 && m_config->appConfig("devUpdateInterval") == 50);
        QCOMPARE(m_config->appConfig("effects.extra"), QJsonValue(false));
        m_config->setAppConfig("effects.extra", QJsonValue::Null); // the choice is gone
        QCOMPARE(m_config->appConfig("effects.extra"), QJsonValue(true));
        m_config->reset();
        QCOMPARE(gama(), 1.5);
        for (const char* broken : {"", "[true]", "{\"effects.extra\": true}}", "{\"effects.extra\": true"}) {
            ship(broken);
            QVERIFY2(m_config->appConfig("effects.extra").isUndefined(), broken);
        }
    }

    void a_clean_start_leaves_only_the_global_store()
    {
        m_config->setEffectJsonValue(kEffect, kDevice, "speed", 5);
        restart(); // effects that a run has not touched go as well
        m_config->EnableCleanStartup();
        m_config->reset();
        restart();
        QCOMPARE(QDir(path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"global.json", "global.json.bak"}));
        QVERIFY(QDir(path("effects")).isEmpty());
    }

private:
    void store(const char* language, int nbLeds, int speed)
    {
        m_config->setAppConfig("language", language);
        m_config->controllerJsonObj(kDevice)["nbLeds"] = nbLeds;
        m_config->setEffectJsonValue("id.effect.a", kDevice, "speed", speed);
        restart();
    }
    bool isStored(const char* language, int nbLeds, int speed)
    {
        return m_config->appConfig("language") == language &&
               m_config->controllerJsonObj(kDevice)["nbLeds"] == nbLeds &&
               m_config->effectJsonValue("id.effect.a", kDevice, "speed", path("Moni.json")) == speed;
    }
    QString path(const QString& name = QString()) const
    {
        return m_home->filePath(name.isEmpty() ? QString("config") : "config/" + name);
    }
    QString effectFile(const QString& id = kEffect) const { return path("effects/" + id + ".json"); }
    void restart()
    {
        m_config->save();
        m_config = std::make_unique<ConfigurationManager>(path(), m_home->filePath("resources"));
    }

    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<ConfigurationManager> m_config;
};

QTEST_GUILESS_MAIN(ConfigurationTest)
#include "tst_configuration.moc"
