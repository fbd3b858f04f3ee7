#include "Seams.h"

#include "support/audio/AudioBackend.h"
#include "support/capture/CaptureModes.h"
#include "support/capture/ScreenGrabber.h"
#include "system/SessionWatch.h"

#include <condition_variable>
#include <mutex>
#include <opencv2/core.hpp>

namespace {

SessionWatch* s_session = nullptr;
bool s_isScreenOff = false;
bool s_isDisplayThere = true;
int s_grabs = 0;

/// A display of one screen that never changes.
class Display : public ScreenGrabber
{
public:
    bool open() override { return m_isOpen = s_isDisplayThere; }
    void close() override { m_isOpen = false; }
    bool isOpen() const override { return m_isOpen && s_isDisplayThere; }
    CaptureSources sources() override
    {
        if (!isOpen())
            return {};
        return {{QStringLiteral("screen"), QStringLiteral("Screen"), QRect(0, 0, 640, 360), true}};
    }
    bool takeSourcesChanged() override { return false; }
    Result grab(const CaptureSource&, QSize size, bool, cv::Mat& frame) override
    {
        ++s_grabs;
        if (!isOpen())
            return Result::Failed;
        frame = cv::Mat(size.height(), size.width(), CV_8UC4, cv::Scalar(90, 60, 30, 255));
        return Result::Frame;
    }
    void wait(std::chrono::microseconds time) override
    {
        std::unique_lock lock(m_mutex);
        m_woken.wait_for(lock, time, [this] { return m_isWoken; });
        m_isWoken = false;
    }
    void wake() override
    {
        const std::lock_guard lock(m_mutex);
        m_isWoken = true;
        m_woken.notify_all();
    }
    void abort() override {}

private:
    bool m_isOpen = false;
    std::mutex m_mutex;
    std::condition_variable m_woken;
    bool m_isWoken = false;
};

} // namespace

struct SessionWatch::Private
{
};

SessionWatch::SessionWatch(QObject* parent)
    : QObject(parent)
{
    s_session = this;
}

SessionWatch::~SessionWatch()
{
    s_session = nullptr;
}

void SessionWatch::readyForSleep() {}

bool SessionWatch::isScreenOff() const
{
    return s_isScreenOff;
}

void Seams::sleep()
{
    emit s_session->aboutToSleep();
}

void Seams::resume()
{
    emit s_session->resumed();
}

void Seams::setScreenOff(bool off)
{
    s_isScreenOff = off;
    emit s_session->screenOffChanged(off);
}

void Seams::setDisplay(bool isThere)
{
    s_isDisplayThere = isThere;
}

int Seams::grabs()
{
    return s_grabs;
}

QList<CaptureMode> captureModes()
{
    return {{QStringLiteral("test"), [] { return std::make_shared<Display>(); }, true}};
}

std::unique_ptr<AudioBackend> createAudioBackend()
{
    return nullptr;
}
