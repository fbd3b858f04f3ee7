#pragma once

#include <QImage>
#include <QRunnable>
#include <QString>

/// Writes one diagnostic picture of what an effect sees; runs on a pool thread.
class ScreenshotTask : public QRunnable
{
public:
    /// `image` must own its pixels: the frame that it shows is gone by the time the task runs.
    ScreenshotTask(const QImage& image, const QString& effectId);

    void run() override;

    /// The folder of the pictures; does not create it.
    static QString folder();

private:
    const QImage m_image;
    const QString m_effectId;
};
