#include "controllers/PortHolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace {

/// They take ports or adapters, and may run as another user.
constexpr const char* kSuspects[] = {"brltty", "ModemManager", "lumivar"};

QString processFolder(qint64 pid)
{
    return QStringLiteral("/proc/%1").arg(pid);
}

bool hasOpen(qint64 pid, const QByteArray& node)
{
    const QString folder = processFolder(pid) + QStringLiteral("/fd");
    const QStringList descriptors =
        QDir(folder).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    return std::any_of(descriptors.begin(), descriptors.end(), [&](const QString& descriptor) {
        char target[PATH_MAX];
        const ssize_t size =
            readlink(QFile::encodeName(folder + u'/' + descriptor).constData(), target, sizeof target);
        return size == node.size() && std::equal(node.begin(), node.end(), target);
    });
}

QList<qint64> otherProcesses()
{
    QList<qint64> pids;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
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
