#include "system/ConsoleText.h"

#include <windows.h>

void printText(const QString& text)
{
    DWORD done = 0;
    DWORD mode = 0;
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (GetFileType(output) != FILE_TYPE_UNKNOWN && GetConsoleMode(output, &mode) == 0) {
        const QByteArray bytes = text.toUtf8();
        WriteFile(output, bytes.constData(), DWORD(bytes.size()), &done, nullptr);
        return;
    }
    // A program with windows is not given the console that it is started in.
    if (AttachConsole(ATTACH_PARENT_PROCESS) == 0 && GetLastError() != ERROR_ACCESS_DENIED) // has one already
        return;
    const HANDLE console = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                                       OPEN_EXISTING, 0, nullptr);
    if (console == INVALID_HANDLE_VALUE)
        return;
    WriteConsoleW(console, text.utf16(), DWORD(text.size()), &done, nullptr);
    CloseHandle(console);
}
