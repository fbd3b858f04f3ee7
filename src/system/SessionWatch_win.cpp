#include "system/SessionWatch.h"

#include "system/WindowsSession.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QDebug>

#include <windows.h>

#include <wtsapi32.h>

namespace {

constexpr wchar_t kClassName[] = L"LumivarSessionWatch";
/// GUID_CONSOLE_DISPLAY_STATE, which would need a library of its own.
constexpr GUID kDisplayState = {0x6fe69556, 0x704a, 0x47a0, {0x8f, 0x24, 0xc2, 0x8d, 0x93, 0x6f, 0xda, 0x47}};

/// WTSINFOEXW, which the compiler's kit lacks, up to what is read of it.
struct SessionFacts
{
    DWORD level;
    alignas(8) ULONG sessionId; // times follow further on
    int state;
    LONG flags; ///< 0 locked, 1 not, -1 unknown
};

bool isLockedNow()
{
    constexpr auto kSessionInfoEx = static_cast<WTS_INFO_CLASS>(25);
    wchar_t* answer = nullptr;
    DWORD size = 0;
    if (!WTSQuerySessionInformationW(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION, kSessionInfoEx, &answer,
                                     &size))
        return false;
    const auto* facts = reinterpret_cast<const SessionFacts*>(answer);
    const bool isLocked = size >= sizeof(SessionFacts) && facts->level == 1 && facts->flags == 0;
    WTSFreeMemory(answer);
    return isLocked;
}

} // namespace

/// A window of its own that is never shown: what the system tells, it broadcasts to top-level windows. The
/// end counts from whichever of the process's windows hears of it first, before the toolkit makes its own of
/// it.
struct SessionWatch::Private : QAbstractNativeEventFilter
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
        if (!WTSRegisterSessionNotification(window, NOTIFY_FOR_THIS_SESSION))
            qWarning() << "[SessionWatch]: Locking goes unnoticed, error" << GetLastError();
        display = RegisterPowerSettingNotification(window, &kDisplayState, DEVICE_NOTIFY_WINDOW_HANDLE);
        // Machines that sleep without switching themselves off broadcast nothing.
        sleep = RegisterSuspendResumeNotification(window, DEVICE_NOTIFY_WINDOW_HANDLE);
        session.setLocked(isLockedNow()); // whoever made this asks isScreenOff()
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~Private() override
    {
        if (window == nullptr)
            return;
        QCoreApplication::instance()->removeNativeEventFilter(this);
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        if (display != nullptr)
            UnregisterPowerSettingNotification(display);
        if (sleep != nullptr)
            UnregisterSuspendResumeNotification(sleep);
        WTSUnRegisterSessionNotification(window);
        DestroyWindow(window);
    }

    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        const auto* msg = static_cast<const MSG*>(message);
        if (msg->message == WM_ENDSESSION)
            tell(newsOf(msg->message, msg->wParam, msg->lParam));
        return false;
    }

    static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* self = reinterpret_cast<Private*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr)
            self->tell(self->newsOf(message, wParam, lParam));
        return DefWindowProcW(window, message, wParam, lParam); // agrees to everything
    }

    WindowsSession::News newsOf(UINT message, WPARAM wParam, LPARAM lParam)
    {
        if (message != WM_POWERBROADCAST || wParam != PBT_POWERSETTINGCHANGE || lParam == 0)
            return session.hear(message, wParam);
        const auto* setting = reinterpret_cast<const POWERBROADCAST_SETTING*>(lParam);
        return IsEqualGUID(setting->PowerSetting, kDisplayState)
                   ? session.hearDisplay(*reinterpret_cast<const DWORD*>(setting->Data))
                   : WindowsSession::News::None;
    }

    /// Sleep and the end wait until this returns, for seconds at most.
    void tell(WindowsSession::News news)
    {
        switch (news) {
        case WindowsSession::News::AboutToSleep:
            emit q->aboutToSleep();
            break;
        case WindowsSession::News::Resumed:
            emit q->resumed();
            break;
        case WindowsSession::News::ScreenOff:
        case WindowsSession::News::ScreenOn:
            emit q->screenOffChanged(session.isScreenOff());
            break;
        case WindowsSession::News::Ends:
            emit q->aboutToShutDown();
            break;
        case WindowsSession::News::None:
            break;
        }
    }

    SessionWatch* q;
    WindowsSession session;
    HWND window = nullptr;
    HPOWERNOTIFY display = nullptr;
    HPOWERNOTIFY sleep = nullptr;
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
    return d->session.isScreenOff();
}
