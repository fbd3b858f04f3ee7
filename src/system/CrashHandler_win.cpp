#include "system/CrashHandler.h"

#include "controllers/CrashBlackOut.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/crash/CrashStack.h"
#include "system/Exhaustion.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

#include <windows.h>

#include <dbghelp.h>
#include <shellapi.h>

namespace {

constexpr DWORD kMaxHandlerMs = 60000; ///< writing the dump may take long on a busy machine
constexpr DWORD kMaxEndMs = 2000;      ///< of the process by itself, after that
constexpr size_t kMaxPath = 1024;

/// Everything the handler needs: the crashed thread may hold the locks of the heap and of the log.
struct Preparation
{
    std::wstring dumpFolder; ///< with a slash at the end
    std::wstring logFile;
    std::wstring reporterArguments[2]; ///< by turns: a crash may read one while the next is prepared
    std::atomic<const std::wstring*> arguments{&reporterArguments[0]};
    HANDLE crashed = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE done = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    DWORD handlerThread = 0;
    QtMessageHandler messageHandler = nullptr;
    EXCEPTION_POINTERS* exception = nullptr; ///< of the crashed thread, which waits
};

Preparation* s_preparation = nullptr; // never freed: static destructors may crash as well
std::atomic<DWORD> s_crashedThread{0};

void write(HANDLE file, const char* text)
{
    DWORD written = 0;
    WriteFile(file, text, DWORD(strlen(text)), &written, nullptr);
}

/// A line in the form of the log's pattern, to the log file, to a debugger and to standard error.
void logLine(const char* level, const char* message, const wchar_t* detail = L"")
{
    static char text[4 * kMaxPath];
    static char line[5 * kMaxPath];
    if (WideCharToMultiByte(CP_UTF8, 0, detail, -1, text, sizeof text, nullptr, nullptr) == 0)
        text[0] = 0;
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    std::snprintf(line, sizeof line, "%02d/%02d/%02d %02d:%02d:%02d %03d.000 [%lu] %s app 0 - %s%s \r\n",
                  now.wMonth, now.wDay, now.wYear % 100, now.wHour, now.wMinute, now.wSecond,
                  now.wMilliseconds, GetCurrentThreadId(), level, message, text);
    // Opened now, because the log rolls over.
    const HANDLE file = CreateFileW(s_preparation->logFile.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        write(file, line);
        CloseHandle(file);
    }
    OutputDebugStringA(line);
    write(GetStdHandle(STD_ERROR_HANDLE), line);
}

/// Keeps modules out of the dump that its memory does not refer to.
BOOL CALLBACK filterDumpContent(void*, PMINIDUMP_CALLBACK_INPUT input, PMINIDUMP_CALLBACK_OUTPUT output)
{
    if (input == nullptr || output == nullptr)
        return FALSE;
    switch (input->CallbackType) {
    case ModuleCallback:
        if ((output->ModuleWriteFlags & ModuleReferencedByMemory) == 0)
            output->ModuleWriteFlags &= ~ULONG(ModuleWriteModule);
        return TRUE;
    case ThreadCallback:
    case ThreadExCallback:
    case IncludeThreadCallback:
    case IncludeModuleCallback:
        return TRUE;
    default:
        return FALSE;
    }
}

void writeDump()
{
    static wchar_t path[kMaxPath];
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    std::swprintf(path, kMaxPath, L"%ls%04d_%02d_%02d_%02d_%02d_%02d.dmp", s_preparation->dumpFolder.c_str(),
                  now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond);
    const HANDLE file =
        CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return logLine("WARN ", "Failed to create dump file ", path);
    MINIDUMP_EXCEPTION_INFORMATION information = {};
    information.ThreadId = s_crashedThread;
    information.ExceptionPointers = s_preparation->exception;
    MINIDUMP_CALLBACK_INFORMATION callback = {};
    callback.CallbackRoutine = filterDumpContent;
    const auto type = MINIDUMP_TYPE(MiniDumpScanMemory | MiniDumpWithIndirectlyReferencedMemory);
    if (MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, type, &information, nullptr,
                          &callback))
        logLine("INFO ", "Sucesseded to write dump file ", path);
    else
        logLine("WARN ", "Failed to write dump file ", path);
    CloseHandle(file);
}

void startReporter()
{
    const wchar_t* arguments = s_preparation->arguments.load()->c_str();
    logLine("DEBUG", "", arguments);
    ShellExecuteW(nullptr, L"open", L"CrashReporter.exe", arguments, nullptr, SW_SHOW);
}

/// Waits all the time for a crash, and handles it with a whole stack of its own.
DWORD WINAPI handleCrash(void*)
{
    WaitForSingleObject(s_preparation->crashed, INFINITE);
    CrashBlackOut::run(); // while all else may wait for a lock that the crashed thread holds
    logLine("WARN ", "Appeared An unknown exception occurred.");
    if (*crashReason())
        logLine("WARN ", crashReason());
    writeDump();
    startReporter();
    CrashBlackOut::run(); // once more: other threads may have sent pictures meanwhile
    SetEvent(s_preparation->done);
    Sleep(kMaxEndMs);
    TerminateProcess(GetCurrentProcess(), EXCEPTION_NONCONTINUABLE_EXCEPTION); // it may hang
    return 0;
}

/// The process's filter for exceptions that nobody handles; runs on the thread that crashed.
LONG WINAPI crashHandler(EXCEPTION_POINTERS* exception)
{
    const DWORD thread = GetCurrentThreadId();
    DWORD crashedThread = 0;
    if (thread == s_preparation->handlerThread)
        TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    if (s_crashedThread.compare_exchange_strong(crashedThread, thread)) {
        s_preparation->exception = exception;
        SetEvent(s_preparation->crashed);
        WaitForSingleObject(s_preparation->done, kMaxHandlerMs);
    } else if (crashedThread != thread) {
        Sleep(INFINITE); // another thread already speaks for the process and ends it
    }
    return EXCEPTION_EXECUTE_HANDLER;
}

/// What ends a process by the language's own means is a crash as well.
[[noreturn]] void crash()
{
    RaiseException(STATUS_FATAL_APP_EXIT, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::_Exit(EXIT_FAILURE);
}

/// The toolkit would end the process past all handlers.
void handleFatalMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    s_preparation->messageHandler(type, context, text);
    if (type == QtFatalMsg)
        crash();
}

/// One argument of a command line; a user's folder may well hold a blank, and a value may be empty.
QString quoted(const QString& argument)
{
    const bool isPlain = !argument.isEmpty() && !argument.contains(QLatin1Char(' '));
    return isPlain ? argument : QLatin1Char('"') + argument + QLatin1Char('"');
}

/// The language may change at any time, and reading it in the handler would need locks.
void prepareReporterArguments()
{
    const auto* config = ConfigurationManager::instance();
    std::wstring* arguments = s_preparation->reporterArguments;
    std::wstring& next = s_preparation->arguments == &arguments[0] ? arguments[1] : arguments[0];
    next = QStringList{QStringLiteral("--file"),
                       quoted(QFileInfo(QCoreApplication::applicationFilePath()).fileName()),
                       QStringLiteral("--path"),
                       quoted(config->configPath()),
                       QStringLiteral("--language"),
                       quoted(config->appConfig(ConfigKeys::kLanguage.key).toString())}
               .join(QLatin1Char(' '))
               .toStdWString();
    s_preparation->arguments = &next;
}

} // namespace

void installCrashHandler(const QString& logFilePath)
{
    const auto* config = ConfigurationManager::instance();
    const QString dumpFolder = config->configPath() + QLatin1String("/dumps/");
    QDir().mkpath(dumpFolder);
    s_preparation = new Preparation;
    s_preparation->dumpFolder = dumpFolder.toStdWString();
    s_preparation->logFile = logFilePath.toStdWString();
    prepareReporterArguments();
    QObject::connect(config, &ConfigurationManager::appConfigObjSaved, QCoreApplication::instance(),
                     prepareReporterArguments);
    QObject::connect(config, &ConfigurationManager::appConfigChanged, QCoreApplication::instance(),
                     [](const QString& key) {
                         if (key == QLatin1String(ConfigKeys::kLanguage.key))
                             prepareReporterArguments();
                     });

    CloseHandle(CreateThread(nullptr, 0, handleCrash, nullptr, 0, &s_preparation->handlerThread));
    installCrashStackForThread();
    SetUnhandledExceptionFilter(crashHandler);
    _set_error_mode(_OUT_TO_STDERR); // or a message box would wait for the user
    std::signal(SIGABRT, [](int) { crash(); });
    s_preparation->messageHandler = qInstallMessageHandler(handleFatalMessage);
    qDebug() << "[CrashHandler]: dumps go to" << dumpFolder;
}
