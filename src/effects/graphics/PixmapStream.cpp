#include "effects/graphics/PixmapStream.h"

#include "effects/graphics/PixmapSequence.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QThreadPool>

namespace {

constexpr char kMatrixModel[] = "LV0N03";
constexpr QSize kMatrix(23, 11);

/// Any other value than a usable one is replaced for good.
int readIntervalMs()
{
    const auto& setting = ConfigKeys::kPixmapStreamReadIntervalMs;
    auto* config = ConfigurationManager::instance();
    const int stored = config->appConfig(setting.key).toInt(0);
    if (stored >= setting.least && stored <= setting.most)
        return stored;
    config->setAppConfig(setting.key, setting.fallback);
    return setting.fallback;
}

} // namespace

PixmapStream::PixmapStream(const EffectWorkerOptions& options, QObject* parent)
    : AbsAnimatedEffect(options, parent, true)
{
}

PixmapStream::~PixmapStream() = default;

int PixmapStream::load(const ControlOptions& ctlOptions)
{
    const bool isMatrix = ctlOptions.model == QLatin1String(kMatrixModel);
    m_frameWidth = isMatrix ? kMatrix.width() : static_cast<int>(ctlOptions.nbLeds);
    m_frameHeight = isMatrix ? kMatrix.height() : 1;
    m_ctlOptions = ctlOptions;
    m_sequence = std::make_shared<PixmapSequence>(ConfigurationManager::instance()->configPath() +
                                                      QStringLiteral("/pixel_source"),
                                                  QSize(m_frameWidth, m_frameHeight));

    m_readTimer = new QTimer(this);
    m_readTimer->setInterval(readIntervalMs());
    m_readTimer->setTimerType(Qt::PreciseTimer);
    connect(m_readTimer, &QTimer::timeout, this, &PixmapStream::onReadTimeout);
    m_readTimer->start();
    return 0;
}

void PixmapStream::onCtlDarkChanged(bool dark)
{
    AbsAnimatedEffect::onCtlDarkChanged(dark);
    dark ? m_readTimer->stop() : m_readTimer->start();
}

void PixmapStream::onReadTimeout()
{
    // A read that takes longer than the interval must not fill the pool with others behind it.
    if (m_sequence->beginRead())
        QThreadPool::globalInstance()->start([sequence = m_sequence] { sequence->readNext(); });
}

cv::Mat PixmapStream::currentFrame(double)
{
    return m_sequence ? m_sequence->frame() : cv::Mat(); // there is none before load()
}

void PixmapStream::update(double seconds)
{
    const cv::Mat picture = currentFrame(seconds);
    const QSize size(m_frameWidth, m_frameHeight);
    if (picture.empty() || picture.type() != CV_8UC3 || size.isEmpty())
        return;
    const QVector<LV_RGB> colors = serpentineColors(scaledTo(picture, size));
    if (colors.size() == static_cast<int>(m_ctlOptions.nbLeds))
        emit updateColors(colors);
}

QVector<LV_RGB> serpentineColors(const cv::Mat& picture)
{
    QVector<LV_RGB> colors;
    colors.reserve(picture.rows * picture.cols);
    for (int i = 0; i < picture.rows; ++i) {
        const auto* row = picture.ptr<cv::Vec3b>(picture.rows - 1 - i);
        for (int along = 0; along < picture.cols; ++along) {
            const cv::Vec3b& bgr = row[i % 2 == 0 ? along : picture.cols - 1 - along];
            colors.append({bgr[2], bgr[1], bgr[0]});
        }
    }
    return colors;
}
