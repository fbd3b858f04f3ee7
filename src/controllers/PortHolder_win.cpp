#include "controllers/PortHolder.h"

#include <QFileInfo>

#include <windows.h>
// behind windows.h
#include <tlhelp32.h>

// Missing in the compiler's headers.
extern "C" {
WINBASEAPI HRESULT WINAPI SetThreadDescription(HANDLE thread, PCWSTR name);
WINBASEAPI HRESULT WINAPI GetThreadDescription(HANDLE thread, PWSTR* name);
}

namespace {

QString threadName(DWORD id)
{
    const HANDLE thread = OpenThread(THREAD_QUERY_LIMITED_INFORMATION, FALSE, id);
    if (!thread)
        return {};
    PWSTR text = nullptr;
    QString name;
    if (SUCCEEDED(GetThreadDescription(thread, &text))) {
        name = QString::fromWCharArray(text);
        LocalFree(text);
    }
    CloseHandle(thread);
    return name;
}

} // namespace

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

bool hasThread(qint64 pid, const QString& name)
{
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    bool isFound = false;
    for (BOOL more = Thread32First(all, &entry); more && !isFound; more = Thread32Next(all, &entry))
        isFound = entry.th32OwnerProcessID == DWORD(pid) && threadName(entry.th32ThreadID) == name;
    CloseHandle(all);
    return isFound;
}

void nameThread(const QString& name)
{
    SetThreadDescription(GetCurrentThread(), reinterpret_cast<const wchar_t*>(name.utf16()));
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
