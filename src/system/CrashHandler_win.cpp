#include "system/CrashHandler.h"

#include "controllers/CrashBlackOut.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/crash/CrashStack.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFileInfo>

#include <windows.h>

#include <dbghelp.h>
#include <shellapi.h>

namespace {

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

void writeDump(const QString& path, EXCEPTION_POINTERS* exception)
{
    const HANDLE file = CreateFileW(reinterpret_cast<const wchar_t*>(path.utf16()), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        qWarning().noquote() << "Failed to create dump file" << path;
        return;
    }
    MINIDUMP_EXCEPTION_INFORMATION information = {};
    information.ThreadId = GetCurrentThreadId();
    information.ExceptionPointers = exception;
    MINIDUMP_CALLBACK_INFORMATION callback = {};
    callback.CallbackRoutine = filterDumpContent;
    const auto type = MINIDUMP_TYPE(MiniDumpScanMemory | MiniDumpWithIndirectlyReferencedMemory);
    if (MiniDumpWriteDump(GetCurrentProcess(), GetCurrentProcessId(), file, type, &information, nullptr,
                          &callback))
        qInfo().noquote() << "Sucesseded to write dump file" << path;
    else
        qWarning().noquote() << "Failed to write dump file" << path;
    CloseHandle(file);
}

/// One argument of a command line; a user's folder may well hold a blank, and a value may be empty.
QString quoted(const QString& argument)
{
    const bool isPlain = !argument.isEmpty() && !argument.contains(QLatin1Char(' '));
    return isPlain ? argument : QLatin1Char('"') + argument + QLatin1Char('"');
}

} // namespace

/// The process's filter for exceptions that nobody handles; runs on the thread that crashed.
LONG WINAPI crashHandler(EXCEPTION_POINTERS* exception)
{
    qWarning() << "Appeared An unknown exception occurred.";
    CrashBlackOut::run();
    const ConfigurationManager* config = ConfigurationManager::instance();
    writeDump(config->configPath() + QLatin1String("/dumps/") +
                  QDateTime::currentDateTime().toString(QStringLiteral("yyyy_MM_dd_hh_mm_ss")) +
                  QLatin1String(".dmp"),
              exception);

    const QString args = QStringList{QStringLiteral("--file"),
                                     quoted(QFileInfo(QCoreApplication::applicationFilePath()).fileName()),
                                     QStringLiteral("--path"),
                                     quoted(config->configPath()),
                                     QStringLiteral("--language"),
                                     quoted(config->appConfig(ConfigKeys::kLanguage.key).toString())}
                             .join(QLatin1Char(' '));
    qDebug().noquote() << args;
    ShellExecuteW(nullptr, L"open", L"CrashReporter.exe", reinterpret_cast<const wchar_t*>(args.utf16()),
                  nullptr, SW_SHOW);
    return EXCEPTION_EXECUTE_HANDLER;
}

void installCrashHandler(const QString&)
{
    QDir().mkpath(ConfigurationManager::instance()->configPath() + QLatin1String("/dumps"));
    installCrashStackForThread();
    SetUnhandledExceptionFilter(crashHandler);
}
