#include "effects/screenSync/ScreenshotTask.h"

#include "support/config/ConfigurationManager.h"

#include <QDateTime>
#include <QDebug>

ScreenshotTask::ScreenshotTask(const QImage& image, const QString& effectId)
    : m_image(image)
    , m_effectId(effectId)
{
}

void ScreenshotTask::run()
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("MM_dd_hh_mm_ss"));
    const QString file = folder() + QLatin1Char('/') + m_effectId + time + QStringLiteral(".png");
    if (!m_image.save(file))
        qWarning().noquote() << "[AbsScreenSync]: Failed to write the screenshot" << file;
}

QString ScreenshotTask::folder()
{
    return ConfigurationManager::instance()->configPath() + QStringLiteral("/capturerScreenshot");
}
