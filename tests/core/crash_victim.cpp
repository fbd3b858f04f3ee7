// Crashes in the way its argument names, with the program's crash handler in place.
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/crash/CrashStack.h"
#include "system/CrashHandler.h"

#include <QCoreApplication>
#include <QHash>
#include <cstdio>
#include <thread>

__attribute__((noinline)) void writeToNowhere()
{
    const volatile uintptr_t nowhere = 0x10; // volatile hides it from the compiler's warnings
    *reinterpret_cast<volatile int*>(nowhere) = 1;
}

__attribute__((noinline)) int overflowTheStack(int depth)
{
    volatile char room[4096] = {};
    room[depth % 4096] = char(depth);
    if (depth < 0) // never, but the compiler must not know that this has no end
        return 0;
    return overflowTheStack(depth + 1) + room[(depth + 1) % 4096];
}

__attribute__((noinline)) void jumpToNowhere()
{
    void (*volatile nowhere)() = nullptr;
    nowhere();        // NOLINT(clang-analyzer-core.CallAndMessage): the crash that is wanted
    asm volatile(""); // keeps the call from becoming a jump
}

static void overflowInAThread()
{
    std::thread([] {
        installCrashStackForThread();
        overflowTheStack(0);
    }).join();
}

static void crashInManyThreads()
{
    std::thread threads[8];
    for (std::thread& thread : threads)
        thread = std::thread([] { writeToNowhere(); });
    for (std::thread& thread : threads)
        thread.join();
}

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName("Lumivar");
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setAppConfig(ConfigKeys::kLanguage.key, "de_DE");
    installCrashHandler(config->configPath() + "/victim.log");
    config->AppConfigJsonObj()[ConfigKeys::kLanguage.key] = "fr_FR"; // the way a switch of the language goes
    config->saveAppConfigJsonObj();

    const char* kind = argc > 1 ? argv[1] : "";
    const QHash<QByteArray, void (*)()> crashes{
        {"stack overflow", [] { overflowTheStack(0); }},
        {"stack overflow in a thread", overflowInAThread},
        {"wild jump", jumpToNowhere},
        {"fatal message", [] { qFatal("the end"); }},
        {"many threads", crashInManyThreads},
    };
    if (const auto crash = crashes.value(kind))
        crash();
    std::puts("still alive");
    return 0;
}
