// The targets behind the fuzzer's engine: fuzz TARGET [options of the engine] FOLDER...; without a target it
// lists them.
#include "Fuzz.h"

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
    beginFuzzing();
    std::exit(LLVMFuzzerRunDriver(&argc, &argv, runChosen));
}
