#pragma once

#include <csignal>
#include <string>
#include <ucontext.h>

/// What a dump says about the program, put together before any crash.
struct CrashFacts
{
    std::string program;
    std::string version;
    std::string commit;
    std::string buildId; ///< of the executable, to match it with its debug symbols; hexadecimal
    long utcOffsetSeconds = 0;
    int probePipe[2] = {-1, -1}; ///< non-blocking, for reading memory that may not be there
};

/// One crash as the signal handler got it.
struct Crash
{
    int signal;
    const siginfo_t* info;
    const ucontext_t* context;
};

/// The parts of CrashFacts that can be found out without the application object.
CrashFacts collectCrashFacts();

/// Writes the dump to an open file: signal, registers, backtrace, modules and a piece of the stack. Only for
/// use in a signal handler of the crashed thread; a part that crashes itself is left out. False if the file
/// did not take everything.
bool writeCrashDump(int fd, const CrashFacts& facts, const Crash& crash);

/// To be called when the dumping thread crashes again: does not return if the dump can go on without the part
/// that failed.
void recoverCrashDump();

/// "SIGSEGV" and the like.
const char* crashSignalName(int signal);
