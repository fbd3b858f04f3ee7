#pragma once

#include "controllers/ControlOptions.h"
#include "effects/EffectWorkerOptions.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QHash>
#include <QMutex>
#include <QStringList>
#include <opencv2/core.hpp>

/// Hands out one known frame and remembers the sizes it was asked for.
class FakeCapture : public IDeskCapture
{
public:
    QSize outputSize() override { return output; }
    QSize sourceSize() override { return source; }
    cv::Mat grabFrame() override { return frame.clone(); }
    quint64 frameCount() override { return 0; }
    void setOutputSize(int width, int height) override { output = QSize(width, height); }

    cv::Mat frame;
    QSize source{1920, 1080};
    QSize output{640, 360};
};

/// Knows the capturers in `captures` and counts what is acquired and given back.
class FakeDeskDuplManager : public IDeskDuplManager
{
public:
    QList<QString> allCapturer() override { return order; }
    QString defaultCapturer() override { return order.value(0); }
    QSharedPointer<IDeskCapture> acquireCapturer(QString id) override
    {
        if (captures.contains(id))
            ++held[id];
        return captures.value(id);
    }
    void releaseCapturer(QString id) override { --held[id]; }
    QString capturerDesc(QString id) override { return QStringLiteral("Monitor ") + id; }

    QSharedPointer<FakeCapture> add(const QString& id)
    {
        order.append(id);
        return captures[id] = QSharedPointer<FakeCapture>::create();
    }

    QList<QString> order;
    QHash<QString, QSharedPointer<FakeCapture>> captures;
    QHash<QString, int> held; ///< acquired and not yet given back
};

/// Collects the log lines while it lives.
class LogCatcher
{
public:
    LogCatcher()
    {
        s_lines.clear();
        m_previous = qInstallMessageHandler(&LogCatcher::take);
    }
    ~LogCatcher() { qInstallMessageHandler(m_previous); }
    static int count(const QString& text)
    {
        const QMutexLocker lock(&s_mutex);
        return s_lines.filter(text).size();
    }

private:
    static void take(QtMsgType, const QMessageLogContext&, const QString& line)
    {
        const QMutexLocker lock(&s_mutex);
        s_lines.append(line);
    }

    QtMessageHandler m_previous;
    static inline QMutex s_mutex;
    static inline QStringList s_lines;
};

namespace ScreenTestKit {

inline ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

/// A first-run configuration; the effect timer is too slow to interfere unless a test wants it.
inline void resetConfig(int updateIntervalMs = 60000)
{
    config()->reset();
    config()->setAppConfig("devUpdateInterval", updateIntervalMs);
}

inline EffectWorkerOptions effect(const QString& id)
{
    EffectWorkerOptions options;
    options.id = id;
    return options;
}

inline ControlOptions controller(unsigned nbLeds, unsigned direction = 0)
{
    ControlOptions options;
    options.model = QStringLiteral("LVTEST");
    options.id = QStringLiteral("LVTEST:01");
    options.nbLeds = nbLeds;
    options.installDirection = direction;
    return options;
}

/// Every pixel (2 * column, 3 * row, 7, 255): a colour tells where it was read.
inline cv::Mat positionFrame(int cols = 120, int rows = 67)
{
    cv::Mat frame(rows, cols, CV_8UC4);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < cols; ++x)
            frame.at<cv::Vec4b>(y, x) =
                cv::Vec4b(static_cast<uchar>(2 * x), static_cast<uchar>(3 * y), 7, 255);
    return frame;
}

/// Neither blurred nor saturated: what the mode reads is what comes out.
template <typename Worker>
void passThrough(Worker& worker)
{
    worker.setBlurStrength(0.0F);
    worker.setSaturationStrength(0.0F);
}

} // namespace ScreenTestKit
