#include "effects/colorful/ColorMap.h"

#include "effects/colorful/paintUnits.h"
#include "effects/rgb.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QHash>
#include <cmath>
#include <memory>

namespace {

constexpr int kMaxSpeed = 200;
constexpr double kRowsPerSecond = 30.0; // at factor 1.0
constexpr const char* kSpeedKey = ConfigKeys::kColorMapSpeed.key;

/// 0.5 at 0, 1.0 at 100, 4.0 at 200.
double speedFactor(int speed)
{
    return speed < 100 ? speed * 0.005 + 0.5 : speed * 0.03 - 2.0;
}

/// Devices that show the same file share one decoding of it, which takes milliseconds. Null where there is no
/// picture.
std::shared_ptr<const QImage> sharedPicture(const QString& path)
{
    struct Picture
    {
        QDateTime written;
        std::weak_ptr<const QImage> image;
    };
    static QHash<QString, Picture> pictures;
    const QFileInfo file(path);
    Picture& known = pictures[file.absoluteFilePath()];
    const QDateTime written = file.lastModified();
    std::shared_ptr<const QImage> image = known.image.lock();
    if (!image || known.written != written) {
        image = std::make_shared<const QImage>(path);
        known = {written, image};
    }
    return image->isNull() ? nullptr : image;
}

} // namespace

ColorMap::ColorMap(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(parent)
{
    m_properties.add({{kSpeedKey, [this] { return m_speed; },
                       [this](const QJsonValue& speed) { setSpeed(speed.toInt(0)); }, EffectProperty::Look}});
    m_effectOptions = options;
    start();
}

int ColorMap::load(const ControlOptions& ctlOptions)
{
    const QString path = QStringLiteral("effects/colorful/%1.png").arg(m_effectOptions.id.section(u'.', -1));
    m_colorMap = sharedPicture(path);
    if (!m_colorMap) {
        qCritical().nospace().noquote() << "[ColorMap]: Not found file:" << path;
        QImage dark(300, 300, QImage::Format_RGB888);
        dark.fill(Qt::black); // rather than whatever the memory held
        m_colorMap = std::make_shared<const QImage>(dark);
    }
    m_speed = qBound(0,
                     ConfigurationManager::instance()
                         ->effectJsonValue(m_effectOptions.id, ctlOptions.id, kSpeedKey)
                         .toInt(ConfigKeys::kColorMapSpeed.fallback),
                     kMaxSpeed);
    m_ctlOptions = ctlOptions;
    return 0;
}

void ColorMap::unload()
{
    storeSpeed();
}

void ColorMap::setSpeed(int speed)
{
    m_speed = speed;
    storeSpeed();
}

void ColorMap::storeSpeed()
{
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectJsonValue(m_effectOptions.id, m_ctlOptions.id, kSpeedKey, m_speed);
    config->saveEffectJsonObj(m_effectOptions.id);
}

void ColorMap::advance(double seconds)
{
    m_row += 1.0 / m_colorMap->height() * seconds * kRowsPerSecond * speedFactor(m_speed);
    m_row -= std::floor(m_row); // floor, so that a negative speed goes backwards
}

void ColorMap::update(double seconds)
{
    QVector<LV_RGB> colors(static_cast<int>(m_ctlOptions.nbLeds));
    if (m_colorMap) { // there is no picture before load()
        advance(seconds);
        // Just below zero, floor rounds up to a whole 1.0.
        const int y = qMin(static_cast<int>(m_colorMap->height() * m_row), m_colorMap->height() - 1);
        const double nbLeds = m_ctlOptions.nbLeds;
        paintUnits(colors, m_ctlOptions.ledPerUnit, [this, y, nbLeds](int i) {
            return toLedColor(m_colorMap->pixel(static_cast<int>(m_colorMap->width() * (i / nbLeds)), y));
        });
    }
    emit updateColors(colors);
}
