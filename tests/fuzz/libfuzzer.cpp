// The targets behind the fuzzer's engine: fuzz TARGET [options of the engine] FOLDER...; without a target it
// lists them.
#include "Fuzz.h"

#include <QFileInfo>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerRunDriver(int* argc, char*** argv, int (*run)(const uint8_t* data, size_t size));

namespace {

const FuzzTarget* chosen = nullptr;

int runChosen(const uint8_t* data, size_t size)
{
    chosen->run(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    // In the environment for the processes that the engine starts, with the arguments that it knows.
    constexpr char kTarget[] = "LUMIVAR_FUZZ_TARGET";
    if (argc > 1 && !qEnvironmentVariableIsSet(kTarget)) {
        qputenv(kTarget, argv[1]);
        argv[1] = argv[0];
        ++argv;
        --argc;
    }
    for (const FuzzTarget& target : qAsConst(fuzzTargets())) {
        if (!qEnvironmentVariableIsSet(kTarget))
            std::printf("%s\n", target.name);
        else if (qgetenv(kTarget) == target.name)
            chosen = &target;
    }
    if (!chosen)
        return qEnvironmentVariableIsSet(kTarget) ? 2 : 0;
    static QVector<QByteArray> arguments; // a relative path leads elsewhere from now on
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        const bool isPath = !argument.startsWith('-') && QFileInfo::exists(argument);
        arguments.append(isPath ? QFileInfo(argument).absoluteFilePath().toLocal8Bit() : QByteArray(argv[i]));
    }
    for (int i = 1; i < argc; ++i)
        argv[i] = arguments[i - 1].data();
    beginFuzzing();
    std::exit(LLVMFuzzerRunDriver(&argc, &argv, runChosen));
}
