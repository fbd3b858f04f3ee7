#pragma once

#include <QMetaType>
#include <QString>

/// The program that keeps others from a port. No name: unknown. Without a process id it is only suspected,
/// because it runs and is known for taking such ports.
struct PortHolder
{
    QString name{};
    qint64 pid = 0;

    bool isCertain() const { return pid > 0; }
    bool operator==(const PortHolder& other) const { return name == other.name && pid == other.pid; }
};

/// The other process that has this device node open. One of another user does not show what it has open, so
/// then a known one that runs is suspected. `before` is looked at first: it is mostly still the one. Costs
/// milliseconds on a busy desktop.
PortHolder holderOf(const QString& location, const PortHolder& before = {});

/// Like holderOf(), without suspicions.
PortHolder certainHolderOf(const QString& location, const PortHolder& before = {});

/// The user group that may open the device node that this user may not; empty where rights are not the
/// matter.
QString groupInNeed(const QString& location);

/// Empty when there is no such process.
QString processName(qint64 pid);

/// Whether the process has a thread of this name, of which the system keeps the beginning.
bool hasThread(qint64 pid, const QString& name);
/// Gives the calling thread its name where the toolkit does not.
void nameThread(const QString& name);
