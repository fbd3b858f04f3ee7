#include "controllers/PortSnapshot.h"
#include "controllers/SerialArrival.h"

#include <QDebug>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>
#include <dirent.h>
#include <libudev.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

const QString kDeviceFolder = QStringLiteral("/dev");
constexpr int kDebounceMs = 50;
constexpr int kPollMs = 3000; ///< for what neither trigger reports
constexpr int kMaxSysfsDepth = 8;

/// Consoles come and go with logins and are no serial ports.
bool mayBeSerial(const QString& node)
{
    if (node.startsWith(QLatin1String("rfcomm")))
        return true;
    return node.startsWith(QLatin1String("tty")) && node.size() > 3 && node.at(3).isLetter();
}

bool readHex(const QString& path, quint16& value)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bool ok = false;
    value = file.readAll().trimmed().toUShort(&ok, 16);
    return ok;
}

} // namespace

/// Two triggers, because either may be silent: the device monitor reports nothing without its daemon on some
/// systems, and a container may have no events for its /dev. Neither is believed: they only cause a look.
struct SerialArrival::Private
{
    explicit Private(SerialArrival* owner)
        : q(owner)
    {
        snapshot.reset(present(kDeviceFolder)->keys());
        debounce.setSingleShot(true);
        debounce.setInterval(kDebounceMs);
        QObject::connect(&debounce, &QTimer::timeout, q, [this] { look(); });
        QObject::connect(&poll, &QTimer::timeout, q, [this] { look(); });
        poll.start(kPollMs);
        startInotify();
        udevContext = udev_new();
        startMonitor("kernel");
        startMonitor("udev");
    }

    ~Private()
    {
        qDeleteAll(notifiers); // before the descriptors go
        for (udev_monitor* monitor : qAsConst(monitors))
            udev_monitor_unref(monitor);
        if (udevContext != nullptr)
            udev_unref(udevContext);
        if (inotifyFd >= 0)
            close(inotifyFd);
    }

    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    void startInotify()
    {
        inotifyFd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        // Rights may come after the node, hence the attributes.
        if (inotifyFd < 0 ||
            inotify_add_watch(inotifyFd, "/dev", IN_CREATE | IN_MOVED_TO | IN_DELETE | IN_ATTRIB) < 0) {
            qWarning() << "[SerialPort]: Cannot watch /dev, new ports are found by polling";
            return;
        }
        watch(inotifyFd, [this] { readInotify(); });
    }

    void startMonitor(const char* kind)
    {
        if (udevContext == nullptr)
            return;
        udev_monitor* monitor = udev_monitor_new_from_netlink(udevContext, kind);
        if (monitor == nullptr)
            return;
        monitors.append(monitor);
        udev_monitor_filter_add_match_subsystem_devtype(monitor, "tty", nullptr);
        if (udev_monitor_enable_receiving(monitor) >= 0)
            watch(udev_monitor_get_fd(monitor), [this, monitor] { readMonitor(monitor); });
    }

    template <typename Handler>
    void watch(int fd, Handler handler)
    {
        auto* notifier = new QSocketNotifier(fd, QSocketNotifier::Read);
        notifiers.append(notifier);
        QObject::connect(notifier, &QSocketNotifier::activated, q, handler);
    }

    void readInotify()
    {
        alignas(inotify_event) char buffer[4096];
        for (;;) {
            const ssize_t size = read(inotifyFd, buffer, sizeof buffer);
            if (size <= 0)
                return;
            for (ssize_t at = 0; at < size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
                const QString node = event->len > 0 ? QFile::decodeName(event->name) : QString();
                if (!mayBeSerial(node))
                    continue;
                if ((event->mask & (IN_CREATE | IN_MOVED_TO)) != 0)
                    recreated.insert(node);
                debounce.start();
            }
        }
    }

    void readMonitor(udev_monitor* monitor)
    {
        udev_device* device = udev_monitor_receive_device(monitor);
        if (device == nullptr)
            return;
        udev_device_unref(device);
        debounce.start();
    }

    void look()
    {
        const QSet<QString> made = std::exchange(recreated, {});
        const QStringList fresh = snapshot.update(present(kDeviceFolder)->keys(), made);
        for (const QString& name : fresh)
            emit q->arrived(name);
    }

    SerialArrival* q;
    PortSnapshot snapshot;
    QSet<QString> recreated;
    QTimer debounce;
    QTimer poll;
    QList<QSocketNotifier*> notifiers;
    QList<udev_monitor*> monitors;
    udev* udevContext = nullptr;
    int inotifyFd = -1;
};

SerialArrival::SerialArrival(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
}

SerialArrival::~SerialArrival() = default;

std::optional<PortNames> SerialArrival::present(const QString& deviceFolder)
{
    // The toolkit's list opens every port of the old kind, which can raise its modem lines.
    PortNames names;
    DIR* folder = opendir(QFile::encodeName(deviceFolder).constData());
    if (folder == nullptr)
        return names;
    while (const dirent* entry = readdir(folder)) {
        const QString name = QFile::decodeName(entry->d_name);
        if (mayBeSerial(name))
            names.insert(name, entry->d_ino);
    }
    closedir(folder);
    return names;
}

UsbIds SerialArrival::usbIds(const QString& portName)
{
    // The tty's device is an interface of the adapter; the identity stands at the adapter itself.
    QString path = QFileInfo(QStringLiteral("/sys/class/tty/%1/device").arg(portName)).canonicalFilePath();
    for (int depth = 0; depth < kMaxSysfsDepth && path.startsWith(QLatin1String("/sys/")); ++depth) {
        UsbIds ids;
        if (readHex(path + QStringLiteral("/idVendor"), ids.vendor) &&
            readHex(path + QStringLiteral("/idProduct"), ids.product))
            return ids;
        path = QFileInfo(path).path();
    }
    return {};
}
