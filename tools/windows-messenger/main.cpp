#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include <windows.h>
// behind windows.h
#include <dbt.h>
#include <tlhelp32.h>
#include <wtsapi32.h>

// Finds the top-level windows of a program and sends them what the system would send.
// Usage: windows-messenger PROGRAM.exe MESSAGE [PORT]
// Exit code: 0 done, 1 a window refused or did not answer, 2 nonsense, 3 no such program or no window.

namespace {

constexpr UINT kPatienceMs = 10000; ///< for one window's answer

struct Program
{
    std::vector<DWORD> processes;
    std::vector<HWND> windows;
};

std::vector<DWORD> processesOf(const wchar_t* program)
{
    std::vector<DWORD> found;
    const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(all, &entry); more; more = Process32NextW(all, &entry)) {
        if (_wcsicmp(entry.szExeFile, program) == 0)
            found.push_back(entry.th32ProcessID);
    }
    CloseHandle(all);
    return found;
}

BOOL CALLBACK takeWindow(HWND window, LPARAM data)
{
    auto* program = reinterpret_cast<Program*>(data);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    for (const DWORD process : program->processes) {
        if (process == owner)
            program->windows.push_back(window);
    }
    return TRUE;
}

/// Whether all windows answered, and none with no.
bool send(const Program& program, UINT message, WPARAM wParam, LPARAM lParam)
{
    bool isWell = true;
    for (const HWND window : program.windows) {
        DWORD_PTR answer = 0;
        const bool isAnswered =
            SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatienceMs, &answer) != 0;
        if (IsWindow(window) && (!isAnswered || (message == WM_QUERYENDSESSION && answer == FALSE)))
            isWell = false;
    }
    return isWell;
}

bool endSession(const Program& program)
{
    return send(program, WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF) &&
           send(program, WM_ENDSESSION, TRUE, ENDSESSION_LOGOFF);
}

bool tellOfPort(const Program& program, WPARAM event, const wchar_t* name)
{
    std::vector<BYTE> bytes(sizeof(DEV_BROADCAST_PORT_W) + sizeof(wchar_t) * std::wcslen(name));
    auto* port = reinterpret_cast<DEV_BROADCAST_PORT_W*>(bytes.data());
    port->dbcp_size = static_cast<DWORD>(bytes.size());
    port->dbcp_devicetype = DBT_DEVTYP_PORT;
    std::wcscpy(port->dbcp_name, name);
    return send(program, WM_DEVICECHANGE, event, reinterpret_cast<LPARAM>(port));
}

/// A line a window: visible or not, minimised or not, rectangle, title.
bool list(const Program& program)
{
    for (const HWND window : program.windows) {
        wchar_t title[128] = {};
        RECT place = {};
        GetWindowTextW(window, title, 127);
        GetWindowRect(window, &place);
        char text[512] = {};
        WideCharToMultiByte(CP_UTF8, 0, title, -1, text, sizeof text - 1, nullptr, nullptr);
        std::printf("%s %s %ld %ld %ld %ld %s\n", IsWindowVisible(window) ? "visible" : "hidden",
                    IsIconic(window) ? "minimised" : "open", place.left, place.top, place.right - place.left,
                    place.bottom - place.top, text);
    }
    return true;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc < 3)
        return 2;
    Program program;
    program.processes = processesOf(argv[1]);
    EnumWindows(takeWindow, reinterpret_cast<LPARAM>(&program));
    if (program.windows.empty())
        return 3;

    const std::wstring message = argv[2];
    bool isWell = false;
    if (message == L"list")
        isWell = list(program);
    else if (message == L"end-session")
        isWell = endSession(program);
    else if (message == L"suspend")
        isWell = send(program, WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
    else if (message == L"resume")
        isWell = send(program, WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0);
    else if (message == L"lock")
        isWell = send(program, WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK, 0);
    else if (message == L"unlock")
        isWell = send(program, WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK, 0);
    else if (message == L"arrival" && argc == 4)
        isWell = tellOfPort(program, DBT_DEVICEARRIVAL, argv[3]);
    else
        return 2;
    return isWell ? 0 : 1;
}
