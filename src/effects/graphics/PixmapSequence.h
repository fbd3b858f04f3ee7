#pragma once

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QSize>
#include <QString>
#include <atomic>
#include <opencv2/core.hpp>

/// The picture in exactly this size, in pixels; neither may be empty.
cv::Mat scaledTo(const cv::Mat& picture, const QSize& size);

/// The pictures 1.png, 2.png and so on of a folder, read one after the other and round again. The first one
/// that is missing or cannot be read ends the round; what is wrong with a file is told of with one log line,
/// and it is not decoded again until it changes. Any thread.
class PixmapSequence
{
public:
    /// `size` is what the pictures are scaled to, in pixels; nothing is read for an empty one.
    PixmapSequence(const QString& folder, const QSize& size);

    /// False while another read is under way; else the caller has to call readNext().
    bool beginRead() { return !m_isReading.exchange(true); }
    /// Reads one file. At the end of the round the last picture stays for one more read.
    void readNext();
    /// The newest picture, CV_8UC3 in blue, green and red; empty before the first one. Not to be written to.
    cv::Mat frame() const;

private:
    cv::Mat read(int number);

    const QString m_folder;
    const QSize m_size;
    std::atomic<bool> m_isReading{false}; ///< who has set it owns what follows
    int m_frameIndex = 1;                 ///< number of the next file
    QHash<int, QString> m_refused;        ///< which state of a file could not be read
    QSet<QString> m_told;                 ///< what the log has been told

    mutable QMutex m_frameMutex;
    cv::Mat m_frame; ///< guarded by the mutex
};
