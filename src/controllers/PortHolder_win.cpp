#include "controllers/PortHolder.h"

#include <QFileInfo>

#include <windows.h>

// The system tells nobody which process has a port open.

PortHolder certainHolderOf(const QString&, const PortHolder&)
{
    return {};
}

PortHolder holderOf(const QString&, const PortHolder&)
{
    return {};
}

QString groupInNeed(const QString&)
{
    return {}; // every user may open every port
}

bool hasThread(qint64, const QString&)
{
    return false;
}

QString processName(qint64 pid)
{
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(pid));
    if (!process)
        return {};
    wchar_t path[MAX_PATH] = {};
    DWORD size = MAX_PATH;
    const bool isKnown = QueryFullProcessImageNameW(process, 0, path, &size) != 0;
    CloseHandle(process);
    return isKnown ? QFileInfo(QString::fromWCharArray(path, int(size))).completeBaseName() : QString();
}
