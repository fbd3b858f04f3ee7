#pragma once

#include "support/capture/IDeskDuplManager.h"

#include <QHash>
#include <opencv2/core.hpp>

/// Hands out one known frame and takes every size.
class FakeCapture : public IDeskCapture
{
public:
    QSize outputSize() override { return output; }
    QSize sourceSize() override { return source; }
    cv::Mat grabFrame() override { return frame.clone(); }
    quint64 frameCount() override { return number; }
    cv::Mat pullFrame(const void*, int, int periodMs) override
    {
        periods += periodMs;
        return grabFrame();
    }
    bool awaitChange(const void*, quint64, int) override { return tellsOfChange; }
    /// Another frame, of which who rests is told.
    void become(const cv::Mat& next)
    {
        frame = next;
        ++number;
        emit changed();
    }
    void setOutputSize(int width, int height) override { output = QSize(width, height); }

    cv::Mat frame;
    quint64 number = 0;
    bool tellsOfChange = false;
    QList<int> periods; ///< ms, as told with each pull
    QSize source{1920, 1080};
    QSize output{640, 360};
};

/// Lists `order`, hands out `captures` and counts in `held` what is acquired and not yet given back.
class FakeDeskDuplManager : public IDeskDuplManager
{
public:
    using IDeskDuplManager::IDeskDuplManager;

    QList<QString> allCapturer() override { return order; }
    QString defaultCapturer() override { return order.value(0); }
    QSharedPointer<IDeskCapture> acquireCapturer(QString id) override
    {
        held[id] += captures.contains(id) ? 1 : 0;
        return captures.value(id);
    }
    void releaseCapturer(QString id) override { --held[id]; }
    QString capturerDesc(QString id) override { return "Monitor " + id; }
    void requestSources(SourceRequest request) override { requests += request; }
    SourceTrouble sourceTrouble() override { return order.isEmpty() ? trouble : SourceTrouble::None; }
    bool isOfPresentMode(const QString& id) override { return !id.startsWith("other:"); }

    QList<QString> order{"A", "B"};
    QHash<QString, QSharedPointer<FakeCapture>> captures{{"A", QSharedPointer<FakeCapture>::create()},
                                                         {"B", QSharedPointer<FakeCapture>::create()}};
    QHash<QString, int> held;
    SourceTrouble trouble = SourceTrouble::None;
    QList<SourceRequest> requests;
};
