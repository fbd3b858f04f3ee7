#include "online/InstallerHandOver.h"

#include <QDebug>
#include <QProcess>

bool handOverInstaller(const QString& path)
{
    if (QProcess::startDetached(path, {}))
        return true;
    qWarning().noquote() << "[InstallerHandOver]: Does not start:" << path;
    return false;
}
