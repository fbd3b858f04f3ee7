#include "system/CrashDump_linux.h"

#include "system/BuildInfo.h"
#include "system/CrashText_linux.h"

#include <csetjmp>
#include <cstring>
#include <ctime>
#include <elf.h>
#include <execinfo.h>
#include <fcntl.h>
#include <link.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr int kMaxFrames = 128;
constexpr size_t kStackBytes = 4096;
constexpr size_t kRowBytes = 16;

CrashText s_text; // too large for a signal stack that other code shares
sigjmp_buf s_recovery;
volatile sig_atomic_t s_canRecover = 0;

/// Runs a part that may itself crash, for instance because the stack is destroyed; false if it did.
template <typename Part>
bool runGuarded(Part part)
{
    if (sigsetjmp(s_recovery, 0) != 0) {
        s_canRecover = 0;
        return false;
    }
    s_canRecover = 1;
    part();
    s_canRecover = 0;
    return true;
}

uintptr_t programCounter(const ucontext_t& context)
{
#if defined(__x86_64__)
    return uintptr_t(context.uc_mcontext.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return context.uc_mcontext.pc;
#else
    return 0;
#endif
}

uintptr_t stackPointer(const ucontext_t& context)
{
#if defined(__x86_64__)
    return uintptr_t(context.uc_mcontext.gregs[REG_RSP]);
#elif defined(__aarch64__)
    return context.uc_mcontext.sp;
#else
    return reinterpret_cast<uintptr_t>(&context);
#endif
}

bool writeHeader(int fd, const CrashFacts& facts, const Crash& crash)
{
    const CrashTime now = crashTime(facts.utcOffsetSeconds);
    char threadName[17] = {};
    prctl(PR_GET_NAME, threadName);
    s_text.put("Crash dump of ").put(facts.program.c_str()).put(" ").put(facts.version.c_str());
    s_text.put("\nCommit: ").put(facts.commit.c_str());
    s_text.put("\nBuild id: ").put(facts.buildId.c_str());
    s_text.put("\nTime: ").putDecimal(now.year, 4).put("-").putDecimal(now.month, 2).put("-");
    s_text.putDecimal(now.day, 2).put(" ").putDecimal(now.hour, 2).put(":").putDecimal(now.minute, 2);
    s_text.put(":").putDecimal(now.second, 2);
    s_text.put("\nSignal: ").putDecimal(crash.signal).put(" (").put(crashSignalName(crash.signal));
    s_text.put("), code ").putDecimal(crash.info->si_code);
    if (crash.info->si_code > 0)
        s_text.put(", address 0x").putHex(reinterpret_cast<uintptr_t>(crash.info->si_addr));
    else
        s_text.put(", sent by process ").putDecimal(crash.info->si_pid);
    s_text.put("\nProcess: ").putDecimal(getpid()).put(", thread ").putDecimal(gettid());
    s_text.put(" \"").put(threadName).put("\"\n");
    return s_text.flush(fd);
}

bool writeRegisters(int fd, const ucontext_t& context)
{
    s_text.put("\nRegisters:\n");
#if defined(__x86_64__)
    static constexpr const char* kNames[] = {"r8",  "r9",  "r10", "r11", "r12", "r13",
                                             "r14", "r15", "rdi", "rsi", "rbp", "rbx",
                                             "rdx", "rax", "rcx", "rsp", "rip", "eflags"};
    int i = 0;
    for (const char* name : kNames) { // in the order of the context's array
        s_text.put(name).put(" 0x").putHex(uint64_t(context.uc_mcontext.gregs[i]), 16);
        s_text.put(++i % 3 == 0 ? "\n" : "  ");
    }
#elif defined(__aarch64__)
    for (int i = 0; i < 31; ++i) {
        s_text.put("x").putDecimal(i).put(" 0x").putHex(context.uc_mcontext.regs[i], 16);
        s_text.put(i % 3 == 2 ? "\n" : "  ");
    }
    s_text.put("\nsp 0x").putHex(context.uc_mcontext.sp, 16).put("  pc 0x");
    s_text.putHex(context.uc_mcontext.pc, 16).put("\n");
#else
    static_cast<void>(context);
    s_text.put("not known on this processor\n");
#endif
    return s_text.flush(fd);
}

/// Copies memory that may be unmapped: the kernel refuses to write from there, which is no crash. The bare
/// system call, because a sanitizer's write() would object to memory that is no object of ours.
bool copyMemory(const CrashFacts& facts, uintptr_t address, unsigned char* copy, size_t size)
{
    return syscall(SYS_write, facts.probePipe[1], address, size) == long(size) &&
           read(facts.probePipe[0], copy, size) == ssize_t(size);
}

/// Where a call into nowhere came from, which unwinding cannot tell; 0 if unknown.
uintptr_t callerOfNowhere(const CrashFacts& facts, const ucontext_t& context)
{
#if defined(__aarch64__)
    static_cast<void>(facts);
    return context.uc_mcontext.regs[30];
#else
    unsigned char bytes[sizeof(uintptr_t)];
    uintptr_t address = 0;
    if (copyMemory(facts, stackPointer(context), bytes, sizeof bytes))
        std::memcpy(&address, bytes, sizeof bytes);
    return address;
#endif
}

/// The frames from the crashed one up; without a usable stack, the crashed one and its caller.
int collectFrames(void** frames, const CrashFacts& facts, const ucontext_t& context)
{
    volatile int count = 0; // survives the jump out of a crashed part
    volatile int first = 0;
    runGuarded([&] {
        count = backtrace(frames, kMaxFrames);
        // Above the crashed frame are the handler's own.
        while (first < count && reinterpret_cast<uintptr_t>(frames[first]) != programCounter(context))
            first = first + 1;
    });
    if (count - first > 1) {
        std::memmove(frames, frames + first, size_t(count - first) * sizeof *frames);
        return count - first;
    }
    frames[0] = reinterpret_cast<void*>(programCounter(context));
    frames[1] = reinterpret_cast<void*>(callerOfNowhere(facts, context));
    return 2;
}

bool writeBacktrace(int fd, const CrashFacts& facts, const ucontext_t& context)
{
    s_text.put("\nBacktrace:\n");
    const bool isComplete = s_text.flush(fd);
    void* frames[kMaxFrames];
    const int count = collectFrames(frames, facts, context);
    if (!runGuarded([&] { backtrace_symbols_fd(frames, count, fd); }))
        s_text.put("(no names for the rest)\n");
    return s_text.flush(fd) && isComplete;
}

bool writeModules(int fd)
{
    s_text.put("\nModules:\n");
    bool isComplete = s_text.flush(fd);
    const int maps = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    char piece[1024];
    ssize_t size = 0;
    while (maps >= 0 && (size = read(maps, piece, sizeof piece - 1)) > 0) {
        piece[size] = '\0';
        isComplete = s_text.put(piece).flush(fd) && isComplete;
    }
    close(maps);
    return isComplete;
}

bool writeStack(int fd, const CrashFacts& facts, uintptr_t address)
{
    s_text.put("\nStack:\n");
    bool isComplete = s_text.flush(fd);
    unsigned char row[kRowBytes];
    for (size_t offset = 0; offset < kStackBytes; offset += kRowBytes) {
        if (!copyMemory(facts, address + offset, row, kRowBytes))
            break;
        s_text.put("0x").putHex(address + offset, 16).put(" ");
        for (const unsigned char byte : row)
            s_text.put(" ").putHex(byte, 2);
        isComplete = s_text.put("\n").flush(fd) && isComplete;
    }
    return isComplete;
}

/// Reads the build id of the first object in the list, which is the executable.
int findBuildId(dl_phdr_info* info, size_t, void* result)
{
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const ElfW(Phdr)& header = info->dlpi_phdr[i];
        if (header.p_type != PT_NOTE)
            continue;
        const auto* note = reinterpret_cast<const unsigned char*>(info->dlpi_addr + header.p_vaddr);
        const unsigned char* end = note + header.p_memsz;
        while (note + sizeof(ElfW(Nhdr)) <= end) {
            const auto* head = reinterpret_cast<const ElfW(Nhdr)*>(note);
            const unsigned char* name = note + sizeof *head;
            const unsigned char* id = name + (head->n_namesz + 3U) / 4 * 4;
            if (head->n_type == NT_GNU_BUILD_ID && std::memcmp(name, "GNU", 4) == 0) {
                CrashText text;
                for (unsigned k = 0; k < head->n_descsz; ++k)
                    text.putHex(id[k], 2);
                *static_cast<std::string*>(result) = text.text();
                return 1;
            }
            note = id + (head->n_descsz + 3U) / 4 * 4;
        }
    }
    return 1;
}

} // namespace

CrashFacts collectCrashFacts()
{
    CrashFacts facts;
    facts.version = BuildInfo::kAppVersion;
    facts.commit = BuildInfo::kGitCommit;
    dl_iterate_phdr(findBuildId, &facts.buildId);

    const time_t now = time(nullptr);
    tm local = {};
    localtime_r(&now, &local);
    facts.utcOffsetSeconds = local.tm_gmtoff;
    if (pipe2(facts.probePipe, O_CLOEXEC | O_NONBLOCK) != 0)
        facts.probePipe[0] = facts.probePipe[1] = -1;
    // The first call loads the unwinder, which a signal handler must not do.
    void* frame = nullptr;
    backtrace(&frame, 1);
    return facts;
}

bool writeCrashDump(int fd, const CrashFacts& facts, const Crash& crash)
{
    bool isComplete = writeHeader(fd, facts, crash);
    isComplete = writeRegisters(fd, *crash.context) && isComplete;
    isComplete = writeBacktrace(fd, facts, *crash.context) && isComplete;
    isComplete = writeModules(fd) && isComplete;
    isComplete = writeStack(fd, facts, stackPointer(*crash.context)) && isComplete;
    return fsync(fd) == 0 && isComplete;
}

void recoverCrashDump()
{
    if (s_canRecover != 0)
        siglongjmp(s_recovery, 1);
}

const char* crashSignalName(int signal)
{
    switch (signal) {
    case SIGSEGV:
        return "SIGSEGV";
    case SIGABRT:
        return "SIGABRT";
    case SIGBUS:
        return "SIGBUS";
    case SIGFPE:
        return "SIGFPE";
    case SIGILL:
        return "SIGILL";
    case SIGQUIT:
        return "SIGQUIT";
    default:
        return "another signal";
    }
}
