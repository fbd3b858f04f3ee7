#include "LightGrid.h"
#include "ProgramUnderTest.h"
#include "effects/ColorStrapManager.h"
#include "effects/EffectCatalogue.h"
#include "effects/dynamicMusic/Mode1/Fragment.h"

#include <QImage>
#include <QtTest>

namespace {

const auto& readObject = ProgramUnderTest::readObject;

/// The icon of an effect as the control page finds it: from the catalogue, or by the effect's id.
QString iconOf(const EffectRow& row)
{
    const QString id = QString::fromLatin1(row.id);
    return *row.icon != '\0' ? QString::fromLatin1(row.icon)
                             : QStringLiteral("images/icons/%1.png").arg(QString(id).replace('.', '_'));
}

} // namespace

/// What stands beside the program fits together. Runs in the program's folder.
class TestShippedData : public QObject
{
    Q_OBJECT

private slots:
    void everyModelIsCompleteAndEveryLedHasItsPlace()
    {
        const QJsonObject table = readObject("controler_config/LVController.json");
        QVERIFY(table.size() >= 5 && table.contains("LV0127") && table.contains("LV0N03"));
        for (const QString& model : table.keys()) {
            qInfo() << model;
            const QJsonValue entry = table[model];
            QCOMPARE(entry["icon"].toString(), "images/productIcons/" + model + ".jpg");
            QCOMPARE(entry["image"].toString(), "images/products/" + model + ".jpg");
            const int nbLeds = entry["nbLeds"].toInt();
            QVERIFY(nbLeds > 0 && entry["ledPerUnit"].toInt() > 0);
            for (const QString& name : {model, model.left(4)}) {
                const QImage icon("images/productIcons/" + name + ".jpg");
                const QImage image("images/products/" + name + ".jpg");
                QVERIFY2(!icon.isNull() && !image.isNull() && image.width() > icon.width(), qPrintable(name));
            }

            const QJsonObject map = readObject("controler_config/" + model + ".json");
            const QSize canvas(map.value("key_len").toInt(), map.value("key_wid").toInt());
            QVERIFY(!canvas.isEmpty() && canvas.width() <= 300 && canvas.height() <= 200);
            QCOMPARE(QSize(map.value("screenWidth").toInt(), map.value("screenHeight").toInt()), canvas);
            // The music modes take this for the length of the strip; 0 leaves the length to the user.
            const int stripLength = entry["adjustableLength"].toBool() ? 0 : nbLeds;
            QCOMPARE(map.value("key_num").toInt(-1), stripLength);

            const QJsonArray leds = map.value("key_array").toArray();
            QMap<int, QPoint> ids;
            QSet<QPair<int, int>> places; // no two LEDs in one
            for (const QJsonValue& led : leds) {
                const QPoint at(led["x"].toInt(-1), led["y"].toInt(-1));
                QVERIFY(QRect(QPoint(0, 0), canvas).contains(at));
                ids.insert(led["id"].toInt(), at);
                places.insert({at.x(), at.y()});
            }
            QVERIFY(leds.size() == nbLeds && places.size() == nbLeds && ids.size() == nbLeds);
            QVERIFY(ids.firstKey() == 1 && ids.lastKey() == nbLeds);

            // The meters lie on their strip in the order of their names.
            const QJsonObject fragments =
                readObject("effects/dynamicMusic/" + model + ".json").value("fragments").toObject();
            int end = 0;
            for (const QJsonValue& part : fragments) {
                const auto fragment = Fragment::fromJson(model, part);
                QVERIFY(fragment && fragment->beginIndex == end);
                end = fragment->endIndex;
            }
            QCOMPARE(end, stripLength);
        }
    }

    void matrixIsMappedAsItIsWired()
    {
        const QJsonArray leds = readObject("controler_config/LV0N03.json").value("key_array").toArray();
        QCOMPARE(leds.size(), 23 * 11);
        const LightGrid grid = LightGrid::of(leds.size()); // the light viewer draws the same order
        for (int i = 0; i < leds.size(); ++i)
            QCOMPARE(grid.cellOf(i), QPoint(leds[i]["x"].toInt() * 23 / 120, leds[i]["y"].toInt() * 11 / 67));
    }

    void colorStrapsAreAllUsed()
    {
        const QTemporaryDir user;
        ConfigurationManager config(user.path(), user.path());
        ColorStrapManager straps(nullptr, &config);
        QSet<QString> names;
        for (int i = 0; i < straps.strapCount(); ++i)
            names += straps.strap(i).name;
        QVERIFY(names.size() >= 12);
        QCOMPARE(names.size(), readObject("effects/colorStraps.json")["colorStrapList"].toArray().size());
    }

    void effectsGroupsWindowAndStartPageHaveTheirPictures()
    {
        QHash<QString, QImage> icons;
        for (const EffectRow& row : effectCatalogue())
            icons.insert(iconOf(row), QImage(iconOf(row)));
        for (auto it = icons.cbegin(); it != icons.cend(); ++it) {
            QVERIFY2(it->width() >= 200 && it->width() == it->height(), qPrintable(it.key()));
            QVERIFY2(icons.keys(*it).size() == 1, qPrintable(icons.keys(*it).join(' '))); // its own
        }
        QStringList names{"images/icon.png", "images/logo.png", "images/product00_h.png",
                          "images/product01_h.png"};
        const QJsonArray groups = readObject("effects/groups.json").value("groups").toArray();
        for (const QJsonValue& group : groups)
            names += group["icon"].toString();
        for (const QString& name : names)
            QVERIFY2(!QImage(name).isNull(), qPrintable(name));
        QCOMPARE(qAlpha(QImage("images/icon.png").pixel(0, 0)), 0); // it stands on light and dark panels
        for (int number = 1; number <= 40; ++number)                // the loop of the matrix
            QCOMPARE(QImage(QString("effects/graphics/%1.png").arg(number)).size(), QSize(23, 11));
    }

    void signsOfStyleAndButtonsAreCompiledIn()
    {
        const QByteArray sheet = ProgramUnderTest::readFile(":/styles/default.qss");
        QStringList names{":/images/settings", ":/images/minimise", ":/images/quit"}; // of buttons
        auto urls = QRegularExpression("url\\(\"(:[^\"]+)\\.png\"\\)").globalMatch(sheet);
        QVERIFY(urls.hasNext());
        while (urls.hasNext())
            names.append(urls.next().captured(1));
        for (const QString& name : names) {
            for (const char* density : {"", "@2x", "@3x"})
                QVERIFY2(!QImage(name + density + ".png").isNull(), qPrintable(name + density));
        }
    }
};

QTEST_GUILESS_MAIN(TestShippedData)
#include "tst_shipped_data.moc"
