#include "ui/Autostart.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

const QString kFileName = QStringLiteral("lumivar.desktop");
constexpr qint64 kMostBytes = 65536; ///< more is no entry of ours

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/autostart");
}

} // namespace

bool Autostart::isEnabled()
{
    QFile file(QDir(folder()).filePath(kFileName));
    return file.open(QIODevice::ReadOnly) &&
           isStartedBy(file.read(kMostBytes), QCoreApplication::applicationFilePath());
}

void Autostart::setEnabled(bool isEnabled)
{
    const QString path = QDir(folder()).filePath(kFileName);
    if (!isEnabled) {
        QFile file(path);
        if (file.exists() && !file.remove())
            qWarning().noquote() << "[Autostart]: Cannot remove" << path << file.errorString();
        return;
    }
    QDir().mkpath(folder());
    QSaveFile file(path);
    const QByteArray entry = desktopEntry(QCoreApplication::applicationFilePath());
    if (!file.open(QIODevice::WriteOnly) || file.write(entry) != entry.size() || !file.commit())
        qWarning().noquote() << "[Autostart]: Cannot write" << path << file.errorString();
}
