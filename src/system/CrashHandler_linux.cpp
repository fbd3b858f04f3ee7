#include "system/CrashHandler.h"

#include "controllers/CrashBlackOut.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/crash/CrashStack.h"
#include "system/CrashDump_linux.h"
#include "system/CrashText_linux.h"
#include "system/Exhaustion.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

/// The last one is that of the sound server's library, when it has no memory.
constexpr int kCrashSignals[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGQUIT};
constexpr unsigned kMaxHandlerSeconds = 10;

using ReporterArguments = std::array<const char*, 8>;

/// One state of what the reporter is told. Two of them take turns, because a crash in another thread may read
/// the one in use while the main thread prepares the next.
struct ReporterCall
{
    std::string language;
    ReporterArguments arguments = {};
};

/// Everything the handler needs, as it may neither allocate nor lock.
struct Preparation
{
    CrashFacts facts;
    std::string dumpFolder; ///< with a slash at the end
    std::string reporter;
    std::string configPath;
    ReporterCall calls[2];
    std::atomic<const ReporterCall*> call{&calls[0]};
    std::vector<std::string> environment;
    std::vector<char*> environmentPointers; ///< ends with a null pointer
    std::string logFile;
};

Preparation* s_preparation = nullptr; // never freed: static destructors may crash as well
std::atomic<pid_t> s_crashedThread{0};
CrashText s_dumpPath;
CrashText s_logLine;

void setDefaultAction(int signal)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
}

/// A line in the form of the log's pattern, to the log file and to standard error.
void logLine(const char* level, const char* message, const char* detail = "")
{
    const CrashTime now = crashTime(s_preparation->facts.utcOffsetSeconds);
    // Opened now, because the log rolls over.
    const int logFile = open(s_preparation->logFile.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    for (const int fd : {logFile, STDERR_FILENO}) {
        s_logLine.putDecimal(now.month, 2).put("/").putDecimal(now.day, 2).put("/");
        s_logLine.putDecimal(now.year % 100, 2).put(" ").putDecimal(now.hour, 2).put(":");
        s_logLine.putDecimal(now.minute, 2).put(":").putDecimal(now.second, 2).put(" ");
        s_logLine.putDecimal(now.microsecond / 1000, 3).put(".").putDecimal(now.microsecond % 1000, 3);
        s_logLine.put(" [").putDecimal(int64_t(pthread_self())).put("] ").put(level).put(" app 0 - ");
        s_logLine.put(message).put(detail).put(" \n").flush(fd);
    }
    close(logFile);
}

void writeDump(const Crash& crash)
{
    const CrashTime now = crashTime(s_preparation->facts.utcOffsetSeconds);
    s_dumpPath.put(s_preparation->dumpFolder.c_str()).putDecimal(now.year, 4).put("_");
    s_dumpPath.putDecimal(now.month, 2).put("_").putDecimal(now.day, 2).put("_").putDecimal(now.hour, 2);
    s_dumpPath.put("_").putDecimal(now.minute, 2).put("_").putDecimal(now.second, 2).put(".dmp");
    const int fd = open(s_dumpPath.text(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0) {
        logLine("WARN ", "Failed to create dump file ", s_dumpPath.text());
        return;
    }
    if (writeCrashDump(fd, s_preparation->facts, crash))
        logLine("INFO ", "Sucesseded to write dump file ", s_dumpPath.text());
    else
        logLine("WARN ", "Failed to write dump file ", s_dumpPath.text());
    close(fd);
}

/// The child's part: a clean process of its own that outlives this one.
[[noreturn]] void becomeReporter(const ReporterCall& call)
{
    for (int signal = 1; signal < NSIG; ++signal)
        setDefaultAction(signal);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    setsid();
    close_range(STDERR_FILENO + 1, ~0U, 0);
    execve(s_preparation->reporter.c_str(), const_cast<char* const*>(call.arguments.data()),
           s_preparation->environmentPointers.data());
    _exit(127);
}

void startReporter()
{
    const ReporterCall& call = *s_preparation->call.load();
    CrashText& line = s_dumpPath;
    line.clear();
    for (size_t i = 1; call.arguments[i] != nullptr; ++i)
        line.put(i > 1 ? " " : "").put(call.arguments[i]);
    logLine("DEBUG", line.text());
    if (_Fork() == 0) // unlike fork(), runs no handlers that may wait for a lock
        becomeReporter(call);
}

void die(int signal)
{
    CrashBlackOut::run(); // once more: other threads may have sent pictures meanwhile
    setDefaultAction(signal);
    raise(signal);
}

void handleCrash(int signal, siginfo_t* info, void* context)
{
    pid_t crashedThread = 0;
    if (!s_crashedThread.compare_exchange_strong(crashedThread, gettid())) {
        if (crashedThread == gettid()) {
            recoverCrashDump();
            die(signal);
        }
        for (;;) // another thread already speaks for the process and ends it
            pause();
    }
    // The dump may still wait for a lock of the dynamic linker: the process must end all the same.
    setDefaultAction(SIGALRM);
    alarm(kMaxHandlerSeconds);

    logLine("WARN ", "Appeared An unknown exception occurred.");
    if (*crashReason())
        logLine("WARN ", crashReason());
    CrashBlackOut::run();
    writeDump({signal, info, static_cast<const ucontext_t*>(context)});
    startReporter();
    die(signal);
}

std::vector<std::string> currentEnvironment()
{
    std::vector<std::string> result;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry)
        result.emplace_back(*entry);
    return result;
}

std::string toPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

Preparation* prepare(const QString& logFilePath)
{
    const QString configPath = ConfigurationManager::instance()->configPath();
    const QString dumpFolder = configPath + QLatin1String("/dumps/");
    QDir().mkpath(dumpFolder);

    auto* preparation = new Preparation;
    preparation->facts = collectCrashFacts();
    preparation->facts.program = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toStdString();
    preparation->dumpFolder = toPath(dumpFolder);
    preparation->reporter = toPath(QCoreApplication::applicationDirPath() + QLatin1String("/CrashReporter"));
    preparation->configPath = toPath(configPath);
    preparation->environment = currentEnvironment();
    for (std::string& entry : preparation->environment)
        preparation->environmentPointers.push_back(entry.data());
    preparation->environmentPointers.push_back(nullptr);
    preparation->logFile = toPath(logFilePath);
    return preparation;
}

/// The language may change at any time, and reading it in the handler would need locks.
void prepareReporterArguments()
{
    ReporterCall* calls = s_preparation->calls;
    ReporterCall& next = s_preparation->call == &calls[0] ? calls[1] : calls[0];
    const QJsonValue language = ConfigurationManager::instance()->appConfig(ConfigKeys::kLanguage.key);
    next.language = language.toString(ConfigKeys::kLanguage.fallback).toStdString();
    next.arguments = {s_preparation->reporter.c_str(),
                      "--file",
                      s_preparation->facts.program.c_str(),
                      "--path",
                      s_preparation->configPath.c_str(),
                      "--language",
                      next.language.c_str(),
                      nullptr};
    s_preparation->call = &next;
}

} // namespace

void installCrashHandler(const QString& logFilePath)
{
    s_preparation = prepare(logFilePath);
    prepareReporterArguments();
    QObject::connect(ConfigurationManager::instance(), &ConfigurationManager::appConfigObjSaved,
                     QCoreApplication::instance(), prepareReporterArguments);
    QObject::connect(ConfigurationManager::instance(), &ConfigurationManager::appConfigChanged,
                     QCoreApplication::instance(), [](const QString& key) {
                         if (key == QLatin1String(ConfigKeys::kLanguage.key)) {
                             prepareReporterArguments();
                         }
                     });

    installCrashStackForThread();
    struct sigaction action = {};
    action.sa_sigaction = handleCrash;
    // A crash while dumping has to come through to be recovered from.
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    for (const int signal : kCrashSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) // as a shell starts programs behind it
            sigaction(signal, &action, nullptr);
    }
    qDebug() << "[CrashHandler]: dumps go to" << s_preparation->dumpFolder.c_str();
}
