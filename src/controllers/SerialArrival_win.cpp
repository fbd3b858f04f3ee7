#include "controllers/SerialArrival.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>

#include <windows.h>

#include <dbt.h>

namespace {
constexpr qint64 kDoubleMs = 300; ///< nobody plugs faster
}

/// Windows broadcasts the arrival of ports to every top-level window without being asked.
struct SerialArrival::Private : QAbstractNativeEventFilter
{
    explicit Private(SerialArrival* owner)
        : q(owner)
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~Private() override
    {
        if (QCoreApplication::instance() != nullptr)
            QCoreApplication::instance()->removeNativeEventFilter(this);
    }

    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        const auto* msg = static_cast<const MSG*>(message);
        if (msg == nullptr || msg->message != WM_DEVICECHANGE || msg->wParam != DBT_DEVICEARRIVAL ||
            msg->lParam == 0)
            return false;
        const auto* header = reinterpret_cast<const DEV_BROADCAST_HDR*>(msg->lParam);
        if (header->dbch_devicetype == DBT_DEVTYP_PORT) {
            const auto* port = reinterpret_cast<const DEV_BROADCAST_PORT_W*>(header);
            announce(QString::fromWCharArray(port->dbcp_name));
        }
        return false; // others want the message as well
    }

    /// The same message comes from the dispatcher and from every window procedure, and those of several ports
    /// that arrive together may take turns.
    void announce(const QString& name)
    {
        QElapsedTimer& sinceLast = sinceArrival[name];
        const bool isDouble = sinceLast.isValid() && sinceLast.elapsed() < kDoubleMs;
        sinceLast.start();
        if (!isDouble)
            emit q->arrived(name);
    }

    SerialArrival* q;
    QHash<QString, QElapsedTimer> sinceArrival;
};

SerialArrival::SerialArrival(const QString&, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
}

SerialArrival::~SerialArrival() = default;

std::optional<PortNames> SerialArrival::present(const QString&)
{
    return std::nullopt; // asking for the full list opens nothing
}

UsbIds SerialArrival::usbIds(const QString&)
{
    return {}; // the driver's description says it
}
