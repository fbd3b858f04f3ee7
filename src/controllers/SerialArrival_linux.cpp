#include "controllers/SerialArrival.h"

#include "controllers/UsbIds_linux.h"

#include <QDebug>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QTimer>
#include <dirent.h>

namespace {

constexpr int kDebounceMs = 50;
constexpr int kPollMs = 3000; ///< for a folder that reports nothing, as some containers have
constexpr int kMaxSysfsDepth = 8;

/// Consoles come and go with logins and are no serial ports.
bool mayBeSerial(const QString& node)
{
    if (node.startsWith(QLatin1String("rfcomm")))
        return true;
    return node.startsWith(QLatin1String("tty")) && node.size() > 3 && node.at(3).isLetter();
}

} // namespace

struct SerialArrival::Private
{
    Private(SerialArrival* owner, const QString& deviceFolder)
        : q(owner)
        , folder(deviceFolder)
        , known(*present(folder))
    {
        look.setSingleShot(true);
        QObject::connect(&look, &QTimer::timeout, q, [this] { compare(); });
        look.start(kPollMs);
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, q, [this] {
            if (look.remainingTime() > kDebounceMs)
                look.start(kDebounceMs);
        });
        if (!watcher.addPath(folder))
            qWarning().noquote() << "[SerialPort]: Cannot watch" << folder
                                 << "new ports are found by polling";
    }

    void compare()
    {
        look.start(kPollMs);
        const PortNames before = std::exchange(known, *present(folder));
        const PortNames now = known; // a receiver may cause the next look
        for (auto port = now.begin(); port != now.end(); ++port) {
            if (before.value(port.key()) != port.value())
                emit q->arrived(port.key());
        }
    }

    SerialArrival* q;
    QString folder;
    PortNames known;
    QTimer look;
    QFileSystemWatcher watcher;
};

SerialArrival::SerialArrival(const QString& deviceFolder, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this, deviceFolder))
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
        const UsbIds ids = usbIdsIn(path);
        if (ids.vendor != 0)
            return ids;
        path = QFileInfo(path).path();
    }
    return {};
}
