#include "controllers/PortHolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <climits>
#include <dirent.h>
#include <memory>
#include <unistd.h>

namespace {

/// They take ports or adapters, and may run as another user.
constexpr const char* kSuspects[] = {"brltty", "ModemManager", "lumivar"};

constexpr int kThreadNameBytes = 15;

QString processFolder(qint64 pid)
{
    return QStringLiteral("/proc/%1").arg(pid);
}

/// Without the toolkit's folders, which take ten times as long where there are thousands of descriptors.
bool hasOpen(qint64 pid, const QByteArray& node)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(
        opendir((processFolder(pid) + QStringLiteral("/fd")).toLatin1().constData()), &closedir);
    if (!folder)
        return false;
    char target[PATH_MAX];
    while (const dirent* entry = readdir(folder.get())) {
        const ssize_t size = readlinkat(dirfd(folder.get()), entry->d_name, target, sizeof target);
        if (size == node.size() && std::equal(node.begin(), node.end(), target))
            return true;
    }
    return false;
}

QList<qint64> otherProcesses()
{
    QList<qint64> pids;
    const QStringList names =
        QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& name : names) {
        const qint64 pid = name.toLongLong();
        if (pid > 0 && pid != QCoreApplication::applicationPid())
            pids.append(pid);
    }
    return pids;
}

} // namespace

QString processName(qint64 pid)
{
    QFile file(processFolder(pid) + QStringLiteral("/comm"));
    return pid > 0 && file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll().trimmed())
                                                     : QString();
}

bool hasThread(qint64 pid, const QString& name)
{
    const QByteArray kept = name.toUtf8().left(kThreadNameBytes);
    const QDir threads(processFolder(pid) + QStringLiteral("/task"));
    const QStringList ids = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(ids.begin(), ids.end(), [&](const QString& id) {
        QFile file(threads.filePath(id + QStringLiteral("/comm")));
        return file.open(QIODevice::ReadOnly) && file.readAll().trimmed() == kept;
    });
}

void nameThread(const QString&) {}

PortHolder certainHolderOf(const QString& location, const PortHolder& before)
{
    const QByteArray node = QFile::encodeName(QFileInfo(location).canonicalFilePath());
    if (node.isEmpty())
        return {};
    if (before.isCertain() && hasOpen(before.pid, node))
        return before;
    for (const qint64 pid : otherProcesses()) {
        if (hasOpen(pid, node))
            return {processName(pid), pid};
    }
    return {};
}

PortHolder holderOf(const QString& location, const PortHolder& before)
{
    PortHolder holder = certainHolderOf(location, before);
    if (holder.isCertain())
        return holder;
    for (const qint64 pid : otherProcesses()) {
        const QString name = processName(pid);
        const auto isIt = [&](const char* suspect) { return name == QLatin1String(suspect); };
        if (std::any_of(std::begin(kSuspects), std::end(kSuspects), isIt))
            return {name};
    }
    return {};
}

QString groupInNeed(const QString& location)
{
    const QFileInfo node(location);
    if (node.isReadable() && node.isWritable())
        return {};
    const QString group = node.group();
    const bool isUsable = !group.isEmpty() && group != QLatin1String("root"); // nobody should join that one
    return isUsable ? group : QStringLiteral("dialout");
}
