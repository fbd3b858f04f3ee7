#include "system/SessionWatch.h"

#include <QDebug>
#include <utility>

#include <windows.h>

#include <wtsapi32.h>

namespace {

constexpr wchar_t kClassName[] = L"LumivarSessionWatch";
/// Of the console's display: 0 off, 1 on, 2 dimmed.
constexpr GUID kDisplayState = {0x6fe69556, 0x704a, 0x47a0, {0x8f, 0x24, 0xc2, 0x8d, 0x93, 0x6f, 0xda, 0x47}};
constexpr DWORD kDisplayOff = 0;

} // namespace

/// A window of its own that is never shown: what the system tells, it broadcasts to top-level windows.
struct SessionWatch::Private
{
    explicit Private(SessionWatch* owner)
        : q(owner)
    {
        WNDCLASSW description = {};
        description.lpfnWndProc = &Private::receive;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = kClassName;
        RegisterClassW(&description);
        window = CreateWindowExW(0, kClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                 description.hInstance, nullptr);
        if (window == nullptr) {
            qWarning("[SessionWatch]: no window, sleep and lock go unnoticed");
            return;
        }
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        WTSRegisterSessionNotification(window, NOTIFY_FOR_THIS_SESSION);
        display = RegisterPowerSettingNotification(window, &kDisplayState, DEVICE_NOTIFY_WINDOW_HANDLE);
    }

    ~Private()
    {
        if (window == nullptr)
            return;
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (display != nullptr)
            UnregisterPowerSettingNotification(display);
        WTSUnRegisterSessionNotification(window);
        DestroyWindow(window);
    }

    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* self = reinterpret_cast<Private*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr)
            self->handle(message, wParam, lParam);
        return DefWindowProcW(window, message, wParam, lParam); // agrees to everything
    }

    /// Sleep and the end wait until this returns, for seconds at most.
    void handle(UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message == WM_POWERBROADCAST && wParam == PBT_APMSUSPEND) {
            if (!std::exchange(isAsleep, true))
                emit q->aboutToSleep();
        } else if (message == WM_POWERBROADCAST && wParam == PBT_APMRESUMEAUTOMATIC) {
            if (std::exchange(isAsleep, false))
                emit q->resumed();
        } else if (message == WM_POWERBROADCAST && wParam == PBT_POWERSETTINGCHANGE && lParam != 0) {
            const auto* setting = reinterpret_cast<const POWERBROADCAST_SETTING*>(lParam);
            if (IsEqualGUID(setting->PowerSetting, kDisplayState))
                isDisplayOff = *reinterpret_cast<const DWORD*>(setting->Data) == kDisplayOff;
        } else if (message == WM_WTSSESSION_CHANGE && wParam == WTS_SESSION_LOCK) {
            isLocked = true;
        } else if (message == WM_WTSSESSION_CHANGE && wParam == WTS_SESSION_UNLOCK) {
            isLocked = false;
        } else if (message == WM_ENDSESSION && wParam != FALSE) {
            emit q->aboutToShutDown();
        }
        const bool off = isLocked || isDisplayOff;
        if (std::exchange(isScreenOff, off) != off)
            emit q->screenOffChanged(off);
    }

    SessionWatch* q;
    HWND window = nullptr;
    HPOWERNOTIFY display = nullptr;
    bool isAsleep = false;
    bool isLocked = false;
    bool isDisplayOff = false;
    bool isScreenOff = false;
};

SessionWatch::SessionWatch(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
}

SessionWatch::~SessionWatch() = default;

void SessionWatch::readyForSleep() {} // the system goes on when aboutToSleep has been handled

bool SessionWatch::isScreenOff() const
{
    return d->isScreenOff;
}
