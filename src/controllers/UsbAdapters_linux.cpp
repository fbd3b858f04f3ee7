#include "controllers/UsbAdapters.h"
#include "controllers/UsbIds_linux.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

} // namespace

UsbIds usbIdsIn(const QString& folder)
{
    bool areHex[2] = {};
    const UsbIds ids{content(folder + QStringLiteral("/idVendor")).toUShort(&areHex[0], 16),
                     content(folder + QStringLiteral("/idProduct")).toUShort(&areHex[1], 16)};
    return areHex[0] && areHex[1] ? ids : UsbIds{};
}

QList<PortlessAdapter> portlessAdapters(const QString& root)
{
    QList<PortlessAdapter> found;
    const QDir devices(root + QStringLiteral("/bus/usb/devices"));
    // Devices such as "1-2.3" and their interfaces such as "1-2.3:1.0" stand side by side.
    const QStringList names = devices.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& name : names) {
        if (name.contains(u':') || !isStripAdapter(usbIdsIn(devices.filePath(name))))
            continue;
        PortlessAdapter adapter{name};
        bool hasPort = false;
        for (const QString& interface : names.filter(name + u':')) {
            const QDir folder(devices.filePath(interface));
            hasPort = hasPort || !folder.entryList({QStringLiteral("tty*")}, QDir::Dirs).isEmpty();
            adapter.isTaken = adapter.isTaken || QFileInfo(folder.filePath(QStringLiteral("driver")))
                                                     .canonicalFilePath()
                                                     .endsWith(QLatin1String("/usbfs"));
        }
        if (hasPort)
            continue;
        const auto number = [&](const char* file) {
            return content(devices.filePath(name + u'/' + QLatin1String(file))).toInt();
        };
        adapter.location = QStringLiteral("/dev/bus/usb/%1/%2")
                               .arg(number("busnum"), 3, 10, QLatin1Char('0'))
                               .arg(number("devnum"), 3, 10, QLatin1Char('0'));
        found.append(adapter);
    }
    return found;
}
