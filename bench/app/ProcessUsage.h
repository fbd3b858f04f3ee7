#pragma once

#include <QFile>
#include <QString>
#include <QStringList>
#include <unistd.h>

/// What a process has used so far, from /proc.
struct ProcessUsage
{
    double cpuSeconds = 0;
    double residentMb = 0;

    static ProcessUsage of(qint64 pid)
    {
        ProcessUsage usage;
        QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
        if (!stat.open(QIODevice::ReadOnly))
            return usage;
        // The name in parentheses may hold blanks; what follows it does not.
        const QStringList fields = QString::fromLatin1(stat.readAll()).section(u')', -1).split(u' ');
        constexpr int kUserTime = 12;
        constexpr int kSystemTime = 13;
        constexpr int kResidentPages = 22;
        usage.cpuSeconds = (fields.value(kUserTime).toDouble() + fields.value(kSystemTime).toDouble()) /
                           static_cast<double>(sysconf(_SC_CLK_TCK));
        usage.residentMb = fields.value(kResidentPages).toDouble() *
                           static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
        return usage;
    }
};
