#include "effects/screenSync/subModes/FullScreenMode.h"

#include "effects/screenSync/LedMap.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/DataFile.h"

#include <QDebug>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QMutexLocker>
#include <opencv2/core.hpp>

namespace {

constexpr QSize kLargestCanvas{300, 200};

QJsonValue storedMap(const QString& effectId, const QString& controllerId)
{
    return ConfigurationManager::instance()->effectJsonValue(effectId, controllerId, ConfigKeys::kLedMap);
}

/// What a stored map holds for LEDs that a strip of `nbLeds` does not have.
QJsonArray ledsBeyond(const QJsonObject& map, int nbLeds)
{
    QJsonArray beyond;
    const QJsonArray leds = map["ledMap"].toArray();
    for (const QJsonValue& led : leds) {
        if (led["id"].toInt() > nbLeds)
            beyond.append(led);
    }
    return beyond;
}

QString addressOf(const FullScreenMode* worker)
{
    return QString::number(reinterpret_cast<quintptr>(worker), 16);
}

/// Those that live, under their addresses as they tell them.
struct LivingWorkers
{
    QMutex mutex;
    QHash<QString, FullScreenMode*> byAddress;
};

LivingWorkers& livingWorkers()
{
    static LivingWorkers workers;
    return workers;
}

} // namespace

FullScreenMode::FullScreenMode(const EffectWorkerOptions& options, QObject* parent)
    : AbsScreenSync(options, parent)
{
    m_properties.add({
        {"screenSize",
         [this] {
             const QSize size = screenSize();
             return QJsonObject{{"w", size.width()}, {"h", size.height()}};
         },
         [this](const QJsonValue& val) { setScreenSize(QSize(val["w"].toInt(), val["h"].toInt())); },
         EffectProperty::Place},
        {"LEDMap", [this] { return layout(); }, [this](const QJsonValue& val) { setLayout(val.toArray()); },
         EffectProperty::Place},
        {"LEDPos", {}, [this](const QJsonValue& val) { setLayout({val}); }, EffectProperty::Apart},
        {"resetCmd", {}, [this](const QJsonValue&) { restoreDefaultLayout(); }, EffectProperty::Apart},
        {"deviceDir", [this] { return static_cast<int>(m_direction); }, {}, EffectProperty::Place},
        // How the layout editor finds the worker whose frames it shows; valid while the worker lives.
        {"effectObject", [this] { return addressOf(this); }, {}, EffectProperty::Place},
    });
    const QMutexLocker lock(&livingWorkers().mutex);
    livingWorkers().byAddress.insert(addressOf(this), this);
}

FullScreenMode::~FullScreenMode()
{
    const QMutexLocker lock(&livingWorkers().mutex);
    livingWorkers().byAddress.remove(addressOf(this));
}

FullScreenMode* FullScreenMode::atAddress(const QString& address)
{
    // Looked up, never cast: the text may be stale or anything.
    bool isNumber = false;
    const QString text = QString::number(address.toULongLong(&isNumber, 16), 16);
    const QMutexLocker lock(&livingWorkers().mutex);
    return isNumber ? livingWorkers().byAddress.value(text) : nullptr;
}

int FullScreenMode::load(const ControlOptions& ctlOptions)
{
    const int result = AbsScreenSync::load(ctlOptions);
    const QMutexLocker sizeLock(&m_sizeMutex);
    const QMutexLocker mapLock(&m_ledMapMutex);
    const QJsonObject config = LEDMapConfigJsonObj(ctlOptions);
    const bool users = storedMap(effectId(), ctlOptions.id).isObject();
    // The strip may be longer than when its map was stored: the rest comes from the file.
    takeLedMap(users ? LEDMapConfigDefJsonObj(ctlOptions) : QJsonObject(), config);
    m_beyondStrip = users ? ledsBeyond(config, m_ledMap.size()) : QJsonArray();
    return result;
}

void FullScreenMode::unload()
{
    {
        const QMutexLocker sizeLock(&m_sizeMutex);
        const QMutexLocker mapLock(&m_ledMapMutex);
        storeLedMap({m_screenSize, m_ledMap});
    }
    AbsScreenSync::unload();
}

QJsonObject FullScreenMode::LEDMapConfigDefJsonObj(const ControlOptions& ctlOptions)
{
    const QString path = QStringLiteral("controler_config/%1.json").arg(ctlOptions.model);
    QString reason;
    const std::optional<QByteArray> bytes = readDataFile(path, &reason);
    if (!bytes) {
        qInfo().noquote() << "[FullScreenMode]: Not found default LED configuration file" << reason;
        return {};
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        qWarning().noquote() << "[FullScreenMode]: Failed to parser default LED configuration json file"
                             << error.errorString();
        return {};
    }
    return document.object();
}

QJsonObject FullScreenMode::LEDMapConfigJsonObj(const ControlOptions& ctlOptions)
{
    const QJsonValue stored = storedMap(effectId(), ctlOptions.id);
    if (!stored.isObject())
        return LEDMapConfigDefJsonObj(ctlOptions);
    qDebug().noquote() << "[FullScreenMode]: The LED configuration has loaded from user configuration file"
                       << ctlOptions.id;
    return stored.toObject();
}

void FullScreenMode::takeLedMap(const QJsonObject& beneath, const QJsonObject& config)
{
    LedMap map = LedMap::defaultGrid(static_cast<int>(m_ctlOptions.nbLeds));
    map.apply(beneath);
    map.apply(config);
    if (!beneath.isEmpty())
        map.resize(map.screenSize); // its canvas may be larger
    // A file may ask for any canvas, and each frame is scaled to it.
    const QSize canvas = map.screenSize.expandedTo(QSize(0, 0)).boundedTo(kLargestCanvas);
    if (canvas != map.screenSize) {
        qWarning() << "[FullScreenMode]: The canvas" << map.screenSize << "is outside the limits, it becomes"
                   << canvas;
        map.resize(canvas);
    }
    m_screenSize = map.screenSize;
    m_ledMap = map.points;
}

void FullScreenMode::restoreDefaultLayout()
{
    bool resized = false;
    {
        const QMutexLocker sizeLock(&m_sizeMutex);
        const QMutexLocker mapLock(&m_ledMapMutex);
        const QSize before = m_screenSize;
        takeLedMap({}, LEDMapConfigDefJsonObj(m_ctlOptions));
        m_beyondStrip = {};
        resized = m_screenSize != before;
    }
    if (resized)
        emit effectPropertyChanged(QStringLiteral("screenSize"),
                                   effectProperty(QStringLiteral("screenSize")));
    emit effectPropertyChanged(QStringLiteral("LEDMap"), effectProperty(QStringLiteral("LEDMap")));
}

void FullScreenMode::storeLedMap(const LedMap& map)
{
    QJsonObject stored = map.toConfig();
    QJsonArray leds = stored["ledMap"].toArray();
    for (const QJsonValue& led : qAsConst(m_beyondStrip))
        leds.append(led);
    stored["ledMap"] = leds;
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(effectId(), controllerId(), ConfigKeys::kLedMap, stored);
    config->saveEffectJsonObj(effectId());
}

QSize FullScreenMode::screenSize()
{
    const QMutexLocker lock(&m_sizeMutex);
    return m_screenSize;
}

void FullScreenMode::setScreenSize(const QSize& size)
{
    if (size.width() < 0 || size.height() < 0 || size.height() > kLargestCanvas.height() ||
        size.width() > kLargestCanvas.width()) {
        qWarning() << "[FullScreenMode]: The size is invalid";
        return;
    }
    const QMutexLocker sizeLock(&m_sizeMutex);
    const QMutexLocker mapLock(&m_ledMapMutex);
    LedMap map{m_screenSize, m_ledMap};
    map.resize(size);
    m_screenSize = map.screenSize;
    m_ledMap = map.points;
    storeLedMap(map);
    showAtOnce();
}

void FullScreenMode::setLEDPos(int id, QPoint pos)
{
    setLayout(QJsonArray{QJsonObject{{"id", id}, {"x", pos.x()}, {"y", pos.y()}}});
}

QJsonArray FullScreenMode::layout()
{
    const QMutexLocker lock(&m_ledMapMutex);
    return LedMap{{}, m_ledMap}.toProperty();
}

void FullScreenMode::setLayout(const QJsonArray& leds)
{
    const QSize size = screenSize();
    const QMutexLocker lock(&m_ledMapMutex);
    bool changed = false;
    for (const QJsonValue& led : leds)
        changed |= placeLed(size, led["id"].toInt(), QPoint(led["x"].toInt(), led["y"].toInt()));
    if (changed)
        storeLedMap({size, m_ledMap});
    showAtOnce();
}

bool FullScreenMode::placeLed(const QSize& canvas, int id, QPoint pos)
{
    if (!QRect(QPoint(), canvas).contains(pos)) {
        qWarning() << "[FullScreenMode]: The LED position:" << pos << "is out of range";
        return false;
    }
    if (id < 0 || id >= m_ledMap.size()) {
        qWarning() << "[FullScreenMode]: The id" << id << "of LED is out of range";
        return false;
    }
    m_ledMap[id] = pos;
    return true;
}

void FullScreenMode::onCtlDirChanged(uint32_t dir)
{
    AbsScreenSync::onCtlDirChanged(dir);
    emit deviceDirChanged(static_cast<int>(dir));
}

QVector<LV_RGB> FullScreenMode::frameToColors(cv::Mat frame)
{
    const QSize size = screenSize();
    const cv::Size canvas(size.width(), size.height());
    if (frame.size() != canvas)
        frame = zoomed(frame, {{}, frame.size()}, canvas);

    if (isWatched()) {
        const QImage view(frame.data, frame.cols, frame.rows, static_cast<int>(frame.step),
                          QImage::Format_RGBA8888);
        emit frameSnapshot(view.copy());
    }

    const QMutexLocker lock(&m_ledMapMutex);
    readColors(frame, m_ledMap, m_colors);
    return m_colors;
}

std::vector<cv::Rect> FullScreenMode::lookedAt(const cv::Size& frame)
{
    if (isWatched())
        return {};
    const QSize size = screenSize();
    const QMutexLocker lock(&m_ledMapMutex);
    return placesOf(m_ledMap, size, frame);
}

bool FullScreenMode::isWatched() const
{
    static const QMetaMethod snapshot = QMetaMethod::fromSignal(&FullScreenMode::frameSnapshot);
    return isSignalConnected(snapshot);
}

void FullScreenMode::connectNotify(const QMetaMethod& signal)
{
    if (signal == QMetaMethod::fromSignal(&FullScreenMode::frameSnapshot))
        showAtOnce();
}
