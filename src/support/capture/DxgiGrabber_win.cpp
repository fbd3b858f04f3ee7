#include "support/capture/DxgiGrabber.h"

#include "support/capture/DxgiMonitor.h"

#include <QDebug>
#include <map>

using Microsoft::WRL::ComPtr;

namespace {
#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
constexpr DWORD CREATE_WAITABLE_TIMER_HIGH_RESOLUTION = 2;
#endif

HANDLE createTimer()
{
    const HANDLE timer =
        CreateWaitableTimerExW(nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, TIMER_ALL_ACCESS);
    return timer ? timer : CreateWaitableTimerExW(nullptr, nullptr, 0, TIMER_ALL_ACCESS);
}

/// The path stays with the monitor; the display's own name counts in the order of arrival.
CaptureSource describe(const DXGI_OUTPUT_DESC& desc)
{
    CaptureSource source;
    DISPLAY_DEVICEW monitor{};
    monitor.cb = sizeof monitor;
    if (EnumDisplayDevicesW(desc.DeviceName, 0, &monitor, EDD_GET_DEVICE_INTERFACE_NAME))
        source.id = QString::fromWCharArray(monitor.DeviceID);
    const QString display = QString::fromWCharArray(desc.DeviceName).remove(QStringLiteral("\\\\.\\"));
    if (source.id.isEmpty())
        source.id = display;
    source.name = display;
    const RECT& rect = desc.DesktopCoordinates;
    source.geometry = QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
    source.primary = rect.left == 0 && rect.top == 0;
    return source;
}
} // namespace

struct DxgiGrabber::Private
{
    HANDLE wakeEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE timer = createTimer();
    ComPtr<IDXGIFactory1> factory;
    std::map<QString, std::unique_ptr<DxgiMonitor>> monitors;
    bool sourcesChanged = false;
};

DxgiGrabber::DxgiGrabber()
    : d(std::make_unique<Private>())
{
}

DxgiGrabber::~DxgiGrabber()
{
    CloseHandle(d->wakeEvent);
    CloseHandle(d->timer);
}

bool DxgiGrabber::open()
{
    return SUCCEEDED(CreateDXGIFactory1(IID_PPV_ARGS(&d->factory)));
}

void DxgiGrabber::close()
{
    d->monitors.clear();
    d->factory.Reset();
}

bool DxgiGrabber::isOpen() const
{
    return d->factory != nullptr;
}

CaptureSources DxgiGrabber::sources()
{
    d->sourcesChanged = false;
    // A factory shows the monitors of the time when it was made.
    const bool isOutdated = !d->factory->IsCurrent();
    if (isOutdated && !open()) {
        close();
        return {};
    }
    std::map<QString, std::unique_ptr<DxgiMonitor>> monitors;
    CaptureSources sources;
    ComPtr<IDXGIAdapter1> adapter;
    for (UINT a = 0; SUCCEEDED(d->factory->EnumAdapters1(a, &adapter)); ++a) {
        ComPtr<IDXGIOutput> output;
        for (UINT o = 0; SUCCEEDED(adapter->EnumOutputs(o, &output)); ++o) {
            DXGI_OUTPUT_DESC desc{};
            ComPtr<IDXGIOutput1> duplicable;
            if (FAILED(output->GetDesc(&desc)) || !desc.AttachedToDesktop ||
                FAILED(output->QueryInterface(IID_PPV_ARGS(&duplicable))))
                continue;
            const CaptureSource source = describe(desc);
            if (source.primary)
                sources.prepend(source);
            else
                sources.append(source);
            std::unique_ptr<DxgiMonitor>& monitor = monitors[source.id];
            if (!monitor)
                monitor = std::move(d->monitors[source.id]);
            const bool isNew = !monitor;
            if (isNew)
                monitor = std::make_unique<DxgiMonitor>();
            if (isNew || isOutdated)
                monitor->setOutput(adapter, duplicable);
        }
    }
    d->monitors = std::move(monitors);
    return sources;
}

bool DxgiGrabber::takeSourcesChanged()
{
    for (const auto& [id, monitor] : d->monitors)
        monitor->rest();
    const bool changed = d->sourcesChanged || (d->factory && !d->factory->IsCurrent());
    d->sourcesChanged = false;
    return changed;
}

ScreenGrabber::Result DxgiGrabber::grab(const CaptureSource& source, QSize outputSize, bool force,
                                        cv::Mat& frame)
{
    const auto it = d->monitors.find(source.id);
    if (it == d->monitors.end()) {
        d->sourcesChanged = true;
        return Result::Failed;
    }
    const Result result = it->second->grab(outputSize, force, frame);
    d->sourcesChanged = it->second->takeFailed() || d->sourcesChanged;
    return result;
}

void DxgiGrabber::wait(std::chrono::microseconds time)
{
    LARGE_INTEGER due{};
    due.QuadPart = -time.count() * 10; // in units of 100 ns, negative for from now on
    SetWaitableTimer(d->timer, &due, 0, nullptr, nullptr, FALSE);
    const HANDLE handles[] = {d->wakeEvent, d->timer};
    WaitForMultipleObjects(2, handles, FALSE, INFINITE);
}

void DxgiGrabber::wake()
{
    SetEvent(d->wakeEvent);
}
