#include "LogCapture.h"
#include "effects/ColorStrapManager.h"
#include "support/config/ConfigKeys.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <memory>
#include <thread>

namespace {

const char* const kGood =
    R"({"name": "good", "endsColor": [1, 2, 3], "keyColors": [{"key": 0.25, "color": [4, 5, 6]}]})";

QJsonArray toArray(const QByteArray& elements)
{
    return QJsonDocument::fromJson('[' + elements + ']').array();
}

QStringList names(IColorStrapManager& manager)
{
    QStringList list;
    for (int i = 0; i < manager.strapCount(); ++i)
        list += manager.strap(i).name;
    return list;
}

ColorStrap twoColored(const QString& name, const QColor& ends, const QColor& key)
{
    return {name, {{0.0, key}, {1.0, key}}, ends};
}

} // namespace

class TestColorStraps : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder; // the working directory and the user's folder
    QString m_before = QDir::currentPath();

    std::unique_ptr<ConfigurationManager> store() const
    {
        return std::make_unique<ConfigurationManager>(m_folder->filePath("user"), m_folder->filePath("user"));
    }
    static QJsonArray stored(const ConfigurationManager& config)
    {
        return config.effectJsonValue(ConfigKeys::kColorStrapsEffect, "__all__", "colorStrapList").toArray();
    }
    static void setStored(ConfigurationManager& config, const QJsonValue& list)
    {
        config.setEffectJsonValue(ConfigKeys::kColorStrapsEffect, "__all__", "colorStrapList", list);
    }
    static void writeFile(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_folder->path()).mkdir("effects") && QDir::setCurrent(m_folder->path()));
    }
    void cleanup()
    {
        QDir::setCurrent(m_before);
        m_folder.reset();
    }

    void a_broken_field_costs_its_own_strap_alone_data()
    {
        QTest::addColumn<QByteArray>("strap");
        QTest::addColumn<bool>("isGood");
        const auto add = [](const QByteArray& ends, const QByteArray& keys, bool isGood = false) {
            const QByteArray strap = R"({"endsColor": )" + ends + R"(, "keyColors": )" + keys + '}';
            QTest::addRow("%s %s", ends.constData(), keys.constData()) << strap << isGood;
        };
        const char* const ends = "[0, 255, 0]";
        const char* const keys = R"([{"key": 0.5, "color": [9, 9, 9]}])";
        add(ends, keys, true);
        add("[0, 255, 0, 999]", R"([{"key": 0, "color": [9, 9, 9, "x"]}, {"key": 1, "color": [0, 0, 0]}])",
            true);
        add("[1.5, null, \"7\"]", keys, true); // what is no whole number counts as 0
        for (const char* color : {"[0, 256, 0]", "[-1, 0, 0]", "[0, 0]", "[]", "null", "\"red\"", "{}"}) {
            add(color, keys);
            add(ends,
                QByteArray(R"([{"key": 0.5, "color": [9, 9, 9]}, {"key": 0.6, "color": )").append(color) +
                    "}]");
        }
        for (const char* key : {"1.001", "-0.001", "\"0.5\"", "null", "1e300"})
            add(ends, QByteArray(R"([{"color": [9, 9, 9], "key": )").append(key) + "}]");
        for (const char* list : {"[]", "{}", "null", "[7]", R"([{"color": [9, 9, 9]}])", R"([{"key": 0.5}])"})
            add(ends, list);
        for (const char* strap : {"7", "null", "[]", "{}"})
            QTest::addRow("%s", strap) << QByteArray(strap) << false;
    }
    void a_broken_field_costs_its_own_strap_alone()
    {
        QFETCH(QByteArray, strap);
        QFETCH(bool, isGood);
        const QJsonArray list = toArray(strap + ',' + kGood);
        QCOMPARE(list.size(), 2);
        const auto config = store();
        setStored(*config, list);
        ColorStrapManager manager(nullptr, config.get());
        QCOMPARE(names(manager), isGood ? (QStringList{"", "good"}) : QStringList{"good"});
        QVERIFY(manager.strap(0).endsColor.isValid() && manager.strap(0).keyColors.first().color.isValid());
        QCOMPARE(stored(*config), list); // until the user changes something
    }

    void the_first_source_that_has_a_strap_gives_the_list_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("shipped"); // null: no such file
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("told");
        const QByteArray file =
            QByteArray(R"({"colorStrapList": [{"name": "shipped",)") + (kGood + 17) + "]}";
        const QString path = "effects/colorStraps.json";
        QTest::newRow("user") << QByteArray(kGood) << file << "good"
                              << "load 1 color strap from user data.";
        QTest::newRow("shipped") << QByteArray() << file << "shipped"
                                 << "Failed to load color straps from usr data.";
        QTest::newRow("broken user") << QByteArray("{}, 7") << file << "shipped"
                                     << "1 color strap from application data.";
        QTest::newRow("nothing") << QByteArray() << QByteArray() << "( 1 )"
                                 << "Failed to open " + path + " errStr: ";
        QTest::newRow("cut") << QByteArray() << file.left(60) << "( 1 )"
                             << "Failed to parse " + path;
        QTest::newRow("array") << QByteArray() << QByteArray("[1]") << "( 1 )"
                               << "The JsonObject is empty. " + path;
        QTest::newRow("no list") << QByteArray() << QByteArray(R"({"colorStrapList": {"a": 1}})") << "( 1 )"
                                 << "Succeeded to loaded 1 color strap";
    }
    void the_first_source_that_has_a_strap_gives_the_list()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, shipped);
        QFETCH(QString, first);
        QFETCH(QString, told);
        if (!shipped.isNull())
            writeFile("effects/colorStraps.json", shipped);
        const LogCapture log;
        const auto config = store();
        setStored(*config, toArray(user));
        ColorStrapManager manager(nullptr, config.get());
        QCOMPARE(names(manager), QStringList{first});
        QVERIFY2(log.contains(told), qPrintable(told));
        QCOMPARE(stored(*config).size(), 1); // the fallbacks become the user's list
        QCOMPARE(stored(*config).first()["name"].toString(), first);
    }

    void changes_are_stored_and_then_told()
    {
        const auto config = store();
        ColorStrapManager manager(nullptr, config.get());
        QStringList told;
        const auto note = [&](const char* what, int i) { // the list can be read by who is told
            QCOMPARE(stored(*config).size(), manager.strapCount());
            told << QStringLiteral("%1 %2: %3").arg(what).arg(i).arg(names(manager).join(' '));
        };
        connect(&manager, &IColorStrapManager::strapAdded, [&](int i) { note("added", i); });
        connect(&manager, &IColorStrapManager::strapChanged, [&](int i) { note("changed", i); });
        connect(&manager, &IColorStrapManager::strapRemoved, [&](int i) { note("removed", i); });
        const LogCapture log;
        manager.removeStrap(0);
        QVERIFY(log.contains("The last ribbon cannot be removed"));
        QCOMPARE(manager.addDefaultStrap(), 1);
        const ColorStrap fresh = manager.strap(1);
        QVERIFY(fresh.endsColor == QColor(0, 255, 0) && fresh.keyColors.size() == 1);
        QVERIFY(fresh.keyColors[0].key == 0.5 && fresh.keyColors[0].color == QColor(255, 0, 0));
        manager.setStrap(0, {"a", {{1.0, Qt::blue}, {0.125, Qt::cyan}}, Qt::white});
        const ColorStrap set = manager.strap(0);
        QVERIFY(set.endsColor == QColor(Qt::white) && set.keyColors.size() == 2); // in the caller's order
        QVERIFY(set.keyColors[1].key == 0.125 && set.keyColors[1].color == QColor(Qt::cyan));
        manager.removeStrap(0);
        for (const int i : {-1, 1}) {
            manager.removeStrap(i);
            manager.setStrap(i, set);
            QVERIFY(!manager.isValidStrapIndex(i) && !manager.strap(i).endsColor.isValid());
        }
        QCOMPARE(told, (QStringList{"added 1: ( 1 ) (1)", "changed 0: a (1)", "removed 0: (1)"}));
        QCOMPARE(log.count("Invalied strap index"), 6);
        QCOMPARE(log.count("Not found color strap"), 2);
    }

    void two_processes_in_turn_leave_one_whole_list()
    {
        const QString path = m_folder->filePath("user/effects/id.effect.colorful.colorStraps.json");
        auto one = store();
        ColorStrapManager first(nullptr, one.get());
        first.setStrap(0, twoColored("first", Qt::red, Qt::blue));
        one->save();
        auto two = store();
        ColorStrapManager second(nullptr, two.get());
        QCOMPARE(names(second), QStringList{"first"});
        second.addStrap(twoColored("second", Qt::green, Qt::cyan));
        two->save();
        one->save(); // it changed nothing since, so its list is not put over the newer one
        QCOMPARE(stored(*store()).size(), 2);
        first.addDefaultStrap();
        one->save();
        writeFile(path, "{\"__all__\": {\"colorStr"); // the power fails
        const auto three = store();
        ColorStrapManager third(nullptr, three.get());
        QCOMPARE(names(third), (QStringList{"first", "(1)"}));
        QCOMPARE(third.strap(0).keyColors.size(), 2);
    }

    void readers_in_other_threads_see_whole_straps_of_a_huge_list()
    {
        const auto config = store();
        QJsonArray list;
        for (int i = 0; i < 500; ++i)
            list += toArray(kGood).first();
        setStored(*config, list);
        ColorStrapManager manager(nullptr, config.get());
        QCOMPARE(manager.strapCount(), 500);
        manager.setStrap(7, twoColored("x", Qt::red, Qt::blue));
        std::atomic<bool> isOver{false};
        std::atomic<int> reads{0}, halves{0};
        std::thread reader([&] {
            for (; !isOver; ++reads) {
                const ColorStrap strap = manager.strap(7);
                const bool isRed = strap.endsColor == QColor(Qt::red);
                if (strap.keyColors.size() != 2 ||
                    strap.keyColors[1].color != QColor(isRed ? Qt::blue : Qt::cyan))
                    ++halves;
            }
        });
        for (int i = 0; i < 200 || reads < 200; ++i) {
            manager.setStrap(7, i % 2 ? twoColored("x", Qt::red, Qt::blue)
                                      : twoColored("x", Qt::green, Qt::cyan));
            manager.removeStrap(manager.addDefaultStrap());
        }
        isOver = true;
        reader.join();
        QCOMPARE(halves.load(), 0);
        QCOMPARE(stored(*config).size(), 500);
    }
};

QTEST_GUILESS_MAIN(TestColorStraps)
#include "tst_color_straps.moc"
