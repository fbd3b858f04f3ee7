#include "effects/graphics/PixmapSequence.h"

#include "effects/graphics/readColorPicture.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <opencv2/imgproc.hpp>

namespace {

/// Differs when the file has changed, be it only in who may read it.
QString stateOf(const QFileInfo& file)
{
    return QStringLiteral("%1 %2 %3")
        .arg(file.size())
        .arg(file.lastModified().toMSecsSinceEpoch())
        .arg(file.metadataChangeTime().toMSecsSinceEpoch());
}

} // namespace

cv::Mat scaledTo(const cv::Mat& picture, const QSize& size)
{
    if (picture.cols == size.width() && picture.rows == size.height())
        return picture;
    cv::Mat scaled;
    cv::resize(picture, scaled, cv::Size(size.width(), size.height()), 0, 0, cv::INTER_LINEAR);
    return scaled;
}

PixmapSequence::PixmapSequence(const QString& folder, const QSize& size)
    : m_folder(folder)
    , m_size(size)
{
}

void PixmapSequence::readNext()
{
    const cv::Mat picture = m_size.isEmpty() ? cv::Mat() : read(m_frameIndex);
    m_frameIndex = picture.empty() ? 1 : m_frameIndex + 1;
    if (!picture.empty()) {
        const cv::Mat scaled = scaledTo(picture, m_size);
        const QMutexLocker lock(&m_frameMutex);
        m_frame = scaled;
    }
    m_isReading = false;
}

cv::Mat PixmapSequence::read(int number)
{
    const QString path = m_folder + QStringLiteral("/%1.png").arg(number);
    const QString state = stateOf(QFileInfo(path));
    if (m_refused.value(number) == state)
        return {};
    QString problem;
    cv::Mat picture = readColorPicture(path, &problem);
    if (problem.isEmpty()) {
        m_refused.remove(number);
        return picture;
    }
    m_refused.insert(number, state);
    const QString line = path + QLatin1Char(' ') + problem;
    if (!m_told.contains(line))
        qWarning().noquote() << "[PixmapStream]: The picture" << line;
    m_told.insert(line);
    return {};
}

cv::Mat PixmapSequence::frame() const
{
    const QMutexLocker lock(&m_frameMutex);
    return m_frame;
}
