#include "online/InstallerHandOver.h"

#include <QDebug>
#include <QProcess>

bool handOverInstaller(const QString& path)
{
    if (!path.endsWith(QLatin1String(".deb"))) {
        qWarning().noquote() << "[InstallerHandOver]: Not a package that the desktop installs:" << path;
        return false;
    }
    if (QProcess::startDetached(QStringLiteral("xdg-open"), {path}))
        return true;
    qWarning().noquote() << "[InstallerHandOver]: xdg-open does not start for" << path;
    return false;
}
