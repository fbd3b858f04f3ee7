#include "EngineFixture.h"
#include "effects/ColorStrapManager.h"

#include <QtTest>
#include <tuple>

namespace {

const QByteArray kGood =
    R"({"name": "good", "endsColor": [1, 2, 3], "keyColors": [{"key": 0.25, "color": [4, 5, 6]}]})";

/// The user's settings; each reads the disk anew.
struct Store : ConfigurationManager
{
    Store()
        : ConfigurationManager("user", "user")
    {
    }
    QJsonArray list() const
    {
        return effectJsonValue("id.effect.colorful.colorStraps", "__all__", "colorStrapList").toArray();
    }
    QJsonArray setList(const QByteArray& elements)
    {
        QJsonArray list = QJsonDocument::fromJson('[' + elements + ']').array();
        setEffectJsonValue("id.effect.colorful.colorStraps", "__all__", "colorStrapList", list);
        return list;
    }
};

QStringList names(IColorStrapManager& manager)
{
    QStringList list;
    for (int i = 0; i < manager.strapCount(); ++i)
        list += manager.strap(i).name;
    return list;
}

} // namespace

class TestColorStraps : public QObject
{
    Q_OBJECT

    std::unique_ptr<WorkingFolder> m_folder;

private slots:
    void init() { m_folder = std::make_unique<WorkingFolder>(); }
    void cleanup() { m_folder.reset(); }

    void a_broken_field_costs_its_own_strap_alone()
    {
        const auto strap = [](const QByteArray& ends, const QByteArray& key, const QByteArray& color) {
            return "{\"endsColor\": " + ends +
                   R"(, "keyColors": [{"key": 0.5, "color": [9, 9, 9]}, {"key": )" + key +
                   ", \"color\": " + color + "}]}, ";
        };
        QByteArray straps = // what is no whole number counts as 0, what is too much not at all
            strap(R"([1.5, null, "7", 999])", "0", "[0, 0, 0]") + strap("[0, 255, 0]", "1", "[9, 9, 9, 9]");
        for (const char* color : {"[0, 256, 0]", "[-1, 0, 0]", "[0, 0]", "\"red\""})
            straps += strap(color, "0.6", "[9, 9, 9]") + strap("[1, 2, 3]", "0.6", color);
        for (const char* key : {"-0.001", "1.001", "\"0.5\"", "null"})
            straps += strap("[1, 2, 3]", key, "[9, 9, 9]");
        straps += R"(7, null, [], {}, {"endsColor": [1, 2, 3], "keyColors": []}, )";
        Store config;
        const QJsonArray list = config.setList(straps + kGood);
        QCOMPARE(list.size(), 20);
        ColorStrapManager manager(nullptr, &config);
        QCOMPARE(names(manager), (QStringList{"", "", "good"}));
        QVERIFY(manager.strap(0).endsColor.isValid() && manager.strap(1).keyColors.last().color.isValid());
        QCOMPARE(config.list(), list); // until the user changes something
    }

    void the_first_source_that_has_a_strap_gives_the_list()
    {
        const QByteArray file =
            "{\"colorStrapList\": [" + QByteArray(kGood).replace("good", "shipped") + "]}";
        const std::tuple<QByteArray, QByteArray, QString> cases[] = {
            {"", "", "( 1 )"}, {"{}, 7", file, "shipped"}, {kGood, file, "good"}, {"", "[1]", "( 1 )"}};
        for (const auto& [user, shipped, first] : cases) {
            if (!shipped.isEmpty())
                WorkingFolder::writeFile("colorStraps.json", shipped);
            Store config;
            config.setList(user);
            QCOMPARE(names(*std::make_unique<ColorStrapManager>(nullptr, &config)), QStringList{first});
            QCOMPARE(config.list().first()["name"].toString(), first); // from now on the user's
        }
    }

    void changes_are_stored_and_then_told()
    {
        Store config;
        ColorStrapManager manager(nullptr, &config);
        QStringList told;
        const auto note = [&](int i) { // who is told reads the list
            QCOMPARE(config.list().size(), manager.strapCount());
            told << QStringLiteral("%1: %2").arg(i).arg(names(manager).join(' '));
        };
        for (const auto change : {&IColorStrapManager::strapAdded, &IColorStrapManager::strapChanged,
                                  &IColorStrapManager::strapRemoved})
            connect(&manager, change, note);
        manager.removeStrap(0); // the last one stays
        QCOMPARE(manager.addDefaultStrap(), 1);
        manager.setStrap(0, {"a", {{1.0, Qt::cyan}, {0.125, Qt::cyan}}, Qt::white});
        const ColorStrap set = manager.strap(0);
        QVERIFY(set.endsColor == Qt::white && set.keyColors[1].key == 0.125 &&
                set.keyColors[1].color == Qt::cyan);
        manager.removeStrap(0);
        manager.removeStrap(1);
        manager.setStrap(-1, set);
        QVERIFY(!manager.isValidStrapIndex(1) && !manager.strap(-1).endsColor.isValid());
        QCOMPARE(told, (QStringList{"1: ( 1 ) (1)", "0: a (1)", "0: (1)"}));
    }
};

QTEST_GUILESS_MAIN(TestColorStraps)
#include "tst_color_straps.moc"
