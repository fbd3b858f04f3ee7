#include "system/RuntimeFile.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A link is none of it, whoever owns what it leads to.
bool isOwn(const struct stat& info)
{
    return info.st_uid == getuid() && (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool isPrivateFolder(const QString& path)
{
    struct stat info = {};
    if (lstat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    if (S_ISDIR(info.st_mode) && isOwn(info))
        return true;
    qWarning().noquote() << "[RuntimeFile]:" << path
                         << "is not a folder that only this user can write to, so it is not used";
    return false;
}

/// Empty if none.
QString privateFolder()
{
    QString runtime = QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
    if (!runtime.isEmpty() && isPrivateFolder(runtime))
        return runtime;
    QString path = QDir::temp().filePath(QStringLiteral("lumivar-%1").arg(getuid()));
    mkdir(QFile::encodeName(path).constData(), S_IRWXU);
    return isPrivateFolder(path) ? path : QString();
}

} // namespace

QString runtimeFile(const QString& name)
{
    const QString folder = privateFolder();
    if (folder.isEmpty()) {
        qWarning() << "[RuntimeFile]: no place for" << name << "so a second start is not noticed";
        return QString();
    }
    QString path = folder + QLatin1Char('/') + name;
    struct stat info = {};
    if (lstat(QFile::encodeName(path).constData(), &info) != 0)
        return path; // there is none yet
    const bool isFile = S_ISREG(info.st_mode) || S_ISSOCK(info.st_mode);
    if (isFile && info.st_uid == getuid())
        return path;
    qWarning().noquote() << "[RuntimeFile]:" << path
                         << "is not this user's, so a second start is not noticed";
    return QString();
}
