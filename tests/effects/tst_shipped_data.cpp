#include "LightGrid.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

namespace {

QJsonObject readObject(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

QJsonObject models()
{
    return readObject("controler_config/LVController.json");
}

int difference(QRgb a, QRgb b)
{
    return qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b));
}

} // namespace

/// What stands beside the program fits together. Runs in the program's folder.
class TestShippedData : public QObject
{
    Q_OBJECT

private slots:
    void everyModelIsComplete_data() { addModels(); }
    void everyModelIsComplete();
    void everyLedHasItsPlace_data() { addModels(); }
    void everyLedHasItsPlace();
    void matrixIsMappedAsItIsWired();
    void colorMapsHaveNoSeam_data();
    void colorMapsHaveNoSeam();
    void picturesAreCompiledIn();

private:
    static void addModels();
};

void TestShippedData::addModels()
{
    QTest::addColumn<QString>("model");
    const QJsonObject table = models();
    QVERIFY(table.size() >= 5 && table.contains("LV0127") && table.contains("LV0N03"));
    for (const QString& model : table.keys())
        QTest::newRow(qPrintable(model)) << model;
}

void TestShippedData::everyModelIsComplete()
{
    QFETCH(QString, model);
    const QJsonObject entry = models().value(model).toObject();
    QVERIFY(QRegularExpression("^LV[0-9A-Z]{4}$").match(model).hasMatch());
    QCOMPARE(entry.value("icon").toString(), "images/productIcons/" + model + ".jpg");
    QCOMPARE(entry.value("image").toString(), "images/products/" + model + ".jpg");
    QVERIFY(entry.value("nbLeds").toInt() > 0);
    QVERIFY(entry.value("ledPerUnit").toInt() > 0);
    QVERIFY(entry.value("brightness").toDouble() > 0.0 && entry.value("brightness").toDouble() <= 1.0);
    QVERIFY(entry.value("adjustableLength").isBool() && entry.value("unavailable_modes").isArray());
    for (const QString& name : {model, model.left(4)}) {
        const QImage icon("images/productIcons/" + name + ".jpg");
        const QImage image("images/products/" + name + ".jpg");
        QVERIFY2(!icon.isNull() && !image.isNull() && image.width() > icon.width(), qPrintable(name));
    }
}

void TestShippedData::everyLedHasItsPlace()
{
    QFETCH(QString, model);
    const QJsonObject entry = models().value(model).toObject();
    const QJsonObject map = readObject("controler_config/" + model + ".json");
    const int nbLeds = entry.value("nbLeds").toInt();
    const QSize canvas(map.value("key_len").toInt(), map.value("key_wid").toInt());
    QVERIFY(!canvas.isEmpty() && canvas.width() <= 300 && canvas.height() <= 200);
    QCOMPARE(QSize(map.value("screenWidth").toInt(), map.value("screenHeight").toInt()), canvas);
    // The music modes take this for the length of the strip; 0 leaves the length to the user.
    QCOMPARE(map.value("key_num").toInt(-1), entry.value("adjustableLength").toBool() ? 0 : nbLeds);

    QSet<int> ids;
    QSet<QPair<int, int>> places;
    const QJsonArray leds = map.value("key_array").toArray();
    for (const QJsonValue& led : leds) {
        const QPoint at(led["x"].toInt(-1), led["y"].toInt(-1));
        QVERIFY2(QRect(QPoint(0, 0), canvas).contains(at), qPrintable(QString::number(led["id"].toInt())));
        ids.insert(led["id"].toInt());
        places.insert({at.x(), at.y()});
    }
    QCOMPARE(leds.size(), nbLeds);
    QCOMPARE(places.size(), nbLeds); // no two LEDs in one place
    for (int id = 1; id <= nbLeds; ++id)
        QVERIFY2(ids.contains(id), qPrintable(QString::number(id)));
    const QJsonArray segments = map.value("key_music").toArray();
    for (const QJsonValue& segment : segments)
        QVERIFY(segment["start"].toInt() >= 1 && segment["stop"].toInt() <= map.value("key_num").toInt());
}

void TestShippedData::matrixIsMappedAsItIsWired()
{
    const QJsonArray leds = readObject("controler_config/LV0N03.json").value("key_array").toArray();
    QCOMPARE(leds.size(), 23 * 11);
    const auto at = [&leds](int id) {
        return QPoint(leds.at(id - 1)["x"].toInt(), leds.at(id - 1)["y"].toInt());
    };
    QVERIFY(at(1).x() < at(23).x() && at(1).y() == at(23).y()); // the first row runs to the right,
    QCOMPARE(at(24).x(), at(23).x());                           // the next starts above its end
    QVERIFY(at(24).y() < at(23).y());
    QCOMPARE(at(46).x(), at(1).x()); // and runs back
    QVERIFY(at(253).y() < at(1).y() && at(253).x() == at(23).x());
    // The light viewer draws the same order.
    const LightGrid grid = LightGrid::of(leds.size());
    for (int id = 1; id <= leds.size(); ++id)
        QCOMPARE(grid.cellOf(id - 1), QPoint(at(id).x() * 23 / 120, at(id).y() * 11 / 67));
}

void TestShippedData::colorMapsHaveNoSeam_data()
{
    QTest::addColumn<QString>("path");
    for (int i = 3; i <= 8; ++i)
        QTest::newRow(qPrintable(QString::number(i))) << QString("effects/colorful/ColorMap_%1.png").arg(i);
}

void TestShippedData::colorMapsHaveNoSeam()
{
    QFETCH(QString, path);
    const QImage map(path);
    QVERIFY(map.width() >= 300 && map.height() >= 300);
    // A step across the border is no greater than the greatest step inside.
    int inside = 0;
    int across = 0;
    int saturated = 0;
    for (int y = 0; y < map.height(); ++y) {
        for (int x = 0; x < map.width(); ++x) {
            const QRgb here = map.pixel(x, y);
            const int right = difference(here, map.pixel((x + 1) % map.width(), y));
            const int down = difference(here, map.pixel(x, (y + 1) % map.height()));
            int& horizontal = x + 1 == map.width() ? across : inside;
            int& vertical = y + 1 == map.height() ? across : inside;
            horizontal = qMax(horizontal, right);
            vertical = qMax(vertical, down);
            saturated += QColor(here).hsvSaturation() > 150 ? 1 : 0;
        }
    }
    QVERIFY2(across <= inside, qPrintable(QString("%1 > %2").arg(across).arg(inside)));
    QVERIFY2(saturated > map.width() * map.height() * 0.9, "pale colours look dull on a strip");
}

void TestShippedData::picturesAreCompiledIn()
{
    QVERIFY(!QImage(":/images/Lv0127Icon.jpg").isNull());
    QVERIFY(!QImage("://images/Lv0127Icon.jpg").isNull()); // the virtual devices spell it so
    QFile sheet(":/styles/default.qss");
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(sheet.readAll());
    auto urls = QRegularExpression("url\\(\"(:[^\"]+)\\.png\"\\)").globalMatch(text);
    QVERIFY(urls.hasNext());
    while (urls.hasNext()) {
        const QString name = urls.next().captured(1);
        for (const char* density : {"", "@2x", "@3x"})
            QVERIFY2(!QImage(name + density + ".png").isNull(), qPrintable(name + density));
    }
}

QTEST_GUILESS_MAIN(TestShippedData)
#include "tst_shipped_data.moc"
