#include "controllers/PortPlace.h"

#include <QFileInfo>
#include <QRegularExpression>

QString portPlace(const QString& portName, const QString& root)
{
    const QString device =
        QFileInfo(QStringLiteral("%1/class/tty/%2/device").arg(root, portName)).canonicalFilePath();
    // Such as .../0000:00:14.0/usb1/1-2/1-2.3/1-2.3:1.0/ttyUSB0. The bus is numbered anew at every start, so
    // the controller stands for it; the last link of the chain names all sockets on the way, and the
    // interface.
    static const QRegularExpression usb(
        QStringLiteral("/([^/]+)/usb\\d+/(?:[^/]+/)*\\d+-([\\d.]+:[\\d.]+)(?:/|$)"));
    const QRegularExpressionMatch match = usb.match(device);
    if (!match.hasMatch())
        return {};
    return QStringLiteral("%1-usb-%2").arg(match.captured(1), match.captured(2)).replace(u':', u'-');
}
