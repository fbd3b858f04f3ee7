#include "system/WakeUp.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QDebug>
#include <windows.h>

namespace {

constexpr wchar_t kMainWindowTitle[] = L"Lumivar";
constexpr UINT kPatienceMs = 1000;

} // namespace

bool sendWakeUp(WakeUp request)
{
    COPYDATASTRUCT data = {};
    data.dwData = static_cast<ULONG_PTR>(request);
    HWND window = nullptr;
    // Others may bear the title, such as the window of a folder of that name. The program says that it is it.
    while ((window = FindWindowExW(nullptr, window, nullptr, kMainWindowTitle)) != nullptr) {
        DWORD_PTR answer = 0;
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        AllowSetForegroundWindow(owner); // or its window would only blink in the task bar
        SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                            kPatienceMs, &answer);
        if (answer == data.dwData)
            return true;
    }
    return false;
}

struct WakeUpServer::Private : public QAbstractNativeEventFilter
{
    explicit Private(WakeUpServer* owner)
        : m_owner(owner)
    {
    }

    bool nativeEventFilter(const QByteArray&, void* message, long* result) override
    {
        const auto* msg = static_cast<const MSG*>(message);
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(msg->lParam);
        if (msg->message != WM_COPYDATA || data == nullptr)
            return false;
        if (data->dwData == static_cast<ULONG_PTR>(WakeUp::Show)) {
            qInfo() << "[WakeUp]: a second process was started";
            tell(&WakeUpServer::wakeUpRequested);
        } else if (data->dwData == static_cast<ULONG_PTR>(WakeUp::Quit)) {
            qInfo() << "[WakeUp]: a second process asks the program to end";
            tell(&WakeUpServer::quitRequested);
        } else {
            return false;
        }
        if (result != nullptr)
            *result = static_cast<long>(data->dwData);
        return true;
    }

private:
    /// From the event loop: the message also comes while the program starts or ends, whenever something
    /// waits for the system, and its sender need not wait for the window.
    void tell(void (WakeUpServer::*request)())
    {
        QMetaObject::invokeMethod(m_owner, request, Qt::QueuedConnection);
    }

    WakeUpServer* m_owner;
};

WakeUpServer::WakeUpServer(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
}

WakeUpServer::~WakeUpServer()
{
    QCoreApplication::instance()->removeNativeEventFilter(d.get());
}

bool WakeUpServer::listen()
{
    QCoreApplication::instance()->installNativeEventFilter(d.get());
    return true;
}
