#pragma once

#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QVector>
#include <unistd.h>

/// What a process or one of its threads has used so far, from /proc.
struct ProcessUsage
{
    double cpuSeconds = 0;
    double residentMb = 0;

    static ProcessUsage of(qint64 pid) { return read(QStringLiteral("/proc/%1/stat").arg(pid)); }

    static ProcessUsage read(const QString& statFile)
    {
        ProcessUsage usage;
        QFile stat(statFile);
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

/// What one thread has used so far.
struct ThreadUsage
{
    qint64 id = 0;
    QString name;
    double cpuSeconds = 0;
    qint64 switches = 0; ///< the waits it went into and the times it was put aside

    static QVector<ThreadUsage> allOf(qint64 pid)
    {
        QVector<ThreadUsage> threads;
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
        for (const QString& id : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile status(tasks.filePath(id + QStringLiteral("/status")));
            if (!status.open(QIODevice::ReadOnly))
                continue; // has ended
            ThreadUsage thread;
            thread.id = id.toLongLong();
            thread.cpuSeconds = ProcessUsage::read(tasks.filePath(id + QStringLiteral("/stat"))).cpuSeconds;
            for (const QByteArray& line : status.readAll().split('\n')) {
                if (line.startsWith("Name:"))
                    thread.name = QString::fromUtf8(line.mid(5).trimmed());
                else if (line.contains("voluntary_ctxt_switches:")) // and those that are not
                    thread.switches += line.mid(line.indexOf(':') + 1).trimmed().toLongLong();
            }
            threads.append(thread);
        }
        return threads;
    }
};
