#include "system/WakeUp.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <windows.h>

namespace {

constexpr wchar_t kMainWindowTitle[] = L"Lumivar";
constexpr ULONG_PTR kWakeUpData = 13137;

} // namespace

bool sendWakeUp()
{
    const HWND window = FindWindowW(nullptr, kMainWindowTitle);
    COPYDATASTRUCT data = {};
    data.dwData = kWakeUpData;
    SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    return window != nullptr;
}

struct WakeUpServer::Private : public QAbstractNativeEventFilter
{
    explicit Private(WakeUpServer* owner)
        : m_owner(owner)
    {
    }

    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        const auto* msg = static_cast<const MSG*>(message);
        if (msg->message == WM_COPYDATA) {
            const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(msg->lParam);
            if (data != nullptr && data->dwData == kWakeUpData)
                emit m_owner->wakeUpRequested();
        }
        return false;
    }

private:
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
