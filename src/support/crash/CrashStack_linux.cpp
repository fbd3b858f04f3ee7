#include "support/crash/CrashStack.h"

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr long kMinBytes = 64L * 1024; // room for unwinding, whatever the registers need

/// A mapping with an unreadable page below it, in use as the signal stack of the thread that made it.
class CrashStack
{
public:
    CrashStack()
        : m_guardBytes(size_t(sysconf(_SC_PAGESIZE)))
        , m_stackBytes(size_t(std::max(kMinBytes, 4 * sysconf(_SC_SIGSTKSZ))))
    {
        void* memory = mmap(nullptr, m_guardBytes + m_stackBytes, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
        if (memory == MAP_FAILED)
            return;
        m_memory = static_cast<std::byte*>(memory);
        mprotect(m_memory, m_guardBytes, PROT_NONE);
        stack_t stack = {};
        stack.ss_sp = m_memory + m_guardBytes;
        stack.ss_size = m_stackBytes;
        sigaltstack(&stack, nullptr);
    }

    ~CrashStack()
    {
        if (m_memory != nullptr) {
            stack_t none = {};
            none.ss_flags = SS_DISABLE;
            sigaltstack(&none, nullptr);
            munmap(m_memory, m_guardBytes + m_stackBytes);
        }
    }

    CrashStack(const CrashStack&) = delete;
    CrashStack& operator=(const CrashStack&) = delete;

private:
    size_t m_guardBytes;
    size_t m_stackBytes;
    std::byte* m_memory = nullptr;
};

} // namespace

void installCrashStackForThread()
{
    thread_local CrashStack stack;
    static_cast<void>(stack);
}
