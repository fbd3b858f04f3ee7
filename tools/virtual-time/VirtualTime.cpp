#include "VirtualTime.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/futex.h>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

namespace {

using Ns = std::int64_t;
constexpr Ns kSecond = 1000000000;
constexpr Ns kNever = INT64_MAX;
constexpr Ns kStart = 1000 * kSecond;              ///< the steady clock's at the start
constexpr Ns kStartOfDay = 1767225600LL * kSecond; ///< the wall clock's at the steady clock's zero
constexpr Ns kLook = 100; ///< looking at the clock takes that long: who loops until a time ends
constexpr int kMostThreads = 256;
constexpr int kEndRounds = 4;       ///< of destructors that a system promises
constexpr int kMostTurns = 3000000; ///< without the clock getting on by a millisecond: somebody never rests

struct Thread
{
    enum State { Free, Ready, Waiting };
    State state = Free;
    std::atomic<int> turn{0}; ///< 1: it is this thread's
    Ns deadline = kNever;
    const void* awaited = nullptr; ///< what will wake it
    pollfd* polled = nullptr;      ///< or the descriptors
    nfds_t polledCount = 0;
    int lookedAt = 0; ///< s_written when they were looked at last, and nothing had come
    pthread_t id{};
    void* (*run)(void*) = nullptr;
    void* argument = nullptr;
    int endings = 0;     ///< rounds of the destructors of its own variables
    bool isLate = false; ///< the deadline ended the wait
};

Thread s_threads[kMostThreads]; // all of it belongs to the thread whose turn it is
int s_used = 0;
Ns s_now = kStart;
Ns s_turnsSince = 0;
int s_turns = 0;
std::uint64_t s_order = 0;
int s_lockWaiters = 0;
int s_written = 1; ///< how often something was written that others may wait for
bool s_diskFull = false;
thread_local Thread* t_self = nullptr;
pthread_key_t s_end;

template <typename Function>
Function* real(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
// Each asked for once, at its first use.
#define REAL(name)                                                                                           \
    static const auto original = real<decltype(::name)>(#name);                                              \
    return original

long realSyscall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0)
{
    static const auto original = real<long(long, ...)>("syscall");
    return original(number, a, b, c, d, e, f);
}

int pollNow(pollfd* fds, nfds_t count)
{
    timespec none{};
    return int(realSyscall(SYS_ppoll, long(fds), long(count), long(&none)));
}

Thread& newThread()
{
    for (Thread& each : s_threads) {
        if (each.state != Thread::Free)
            continue;
        s_used = std::max(s_used, int(&each - s_threads) + 1);
        each.state = Thread::Ready;
        each.deadline = kNever;
        each.awaited = nullptr;
        each.polled = nullptr;
        each.turn = 0;
        each.endings = 0;
        return each;
    }
    fputs("VirtualTime: too many threads\n", stderr);
    abort();
}

Thread& self()
{
    if (!t_self) { // the main thread's first call
        t_self = &newThread();
        t_self->id = pthread_self();
    }
    return *t_self;
}

void takeTurn(Thread& me)
{
    while (me.turn.exchange(0) == 0)
        realSyscall(SYS_futex, long(&me.turn), FUTEX_WAIT_PRIVATE, 0);
}

void giveTurn(Thread& next)
{
    next.turn = 1;
    realSyscall(SYS_futex, long(&next.turn), FUTEX_WAKE_PRIVATE, 1);
}

bool hasNews(Thread& thread)
{
    if (!thread.polled || thread.lookedAt == s_written)
        return false;
    if (pollNow(thread.polled, thread.polledCount) != 0)
        return true;
    thread.lookedAt = s_written;
    return false;
}

bool canGoOn(Thread& thread)
{
    if (thread.state == Thread::Waiting && hasNews(thread))
        thread.isLate = false;
    else if (thread.state == Thread::Waiting && thread.deadline <= s_now)
        thread.isLate = true;
    else
        return thread.state == Thread::Ready;
    return true;
}

void awaitDescriptors()
{
    pollfd all[64];
    nfds_t count = 0;
    for (int i = 0; i < s_used; ++i) {
        for (nfds_t k = 0; s_threads[i].state == Thread::Waiting && k < s_threads[i].polledCount; ++k) {
            if (count < 64)
                all[count++] = s_threads[i].polled[k];
        }
    }
    ++s_written;
    timespec limit{20, 0};
    if (realSyscall(SYS_ppoll, long(all), long(count), long(&limit)) != 0)
        return;
    fputs("VirtualTime: every thread waits for ever\n", stderr);
    abort();
}

Thread& choose()
{
    if (s_now - s_turnsSince > kSecond / 1000) {
        s_turnsSince = s_now;
        s_turns = 0;
    }
    if (++s_turns > kMostTurns) {
        fputs("VirtualTime: somebody never rests\n", stderr);
        abort();
    }
    for (;;) {
        Thread* able[kMostThreads];
        int count = 0;
        Ns earliest = kNever;
        for (int i = 0; i < s_used; ++i) {
            if (s_threads[i].state == Thread::Free)
                continue;
            if (canGoOn(s_threads[i]))
                able[count++] = &s_threads[i];
            else
                earliest = std::min(earliest, s_threads[i].deadline);
        }
        if (count > 0) {
            if (s_order != 0) {
                s_order ^= s_order << 13;
                s_order ^= s_order >> 7;
                s_order ^= s_order << 17;
            }
            Thread& chosen = *able[s_order % std::uint64_t(count)];
            chosen.state = Thread::Ready;
            return chosen;
        }
        if (earliest == kNever)
            awaitDescriptors();
        else
            s_now = earliest;
    }
}

void pass()
{
    Thread& me = self();
    Thread& next = choose();
    if (&next == &me)
        return;
    giveTurn(next);
    takeTurn(me);
}

/// False when the deadline came first.
bool wait(const void* awaited, Ns deadline, pollfd* polled = nullptr, nfds_t polledCount = 0)
{
    Thread& me = self();
    me.awaited = awaited;
    me.deadline = deadline;
    me.polled = polled;
    me.polledCount = polledCount;
    me.lookedAt = 0;
    me.isLate = false;
    me.state = Thread::Waiting;
    pass();
    me.awaited = nullptr;
    me.polled = nullptr;
    return !me.isLate;
}

int wake(const void* awaited, int most)
{
    int woken = 0;
    for (int i = 0; i < s_used && woken < most; ++i) {
        Thread& each = s_threads[i];
        if (each.state != Thread::Waiting || each.awaited != awaited)
            continue;
        each.state = Thread::Ready;
        each.isLate = false;
        ++woken;
    }
    return woken;
}

Ns toNs(const timespec& time)
{
    return time.tv_sec * kSecond + time.tv_nsec;
}

Ns after(Ns ns)
{
    return ns > kNever - s_now ? kNever : s_now + ns;
}

/// Of either clock: their values are far apart.
Ns deadlineOf(const timespec* time)
{
    if (!time)
        return kNever;
    const Ns ns = toNs(*time);
    return ns > kStartOfDay / 2 ? ns - kStartOfDay : ns;
}

int pollUntil(pollfd* fds, nfds_t count, Ns deadline)
{
    if (deadline <= s_now)
        pass(); // others have their turn as well
    else if (!wait(nullptr, deadline, fds, count)) {
        std::for_each(fds, fds + count, [](pollfd& each) { each.revents = 0; });
        return 0;
    }
    return pollNow(fds, count);
}

int waitOn(pthread_cond_t* condition, pthread_mutex_t* mutex, Ns deadline)
{
    pthread_mutex_unlock(mutex);
    const bool inTime = wait(condition, deadline);
    pthread_mutex_lock(mutex);
    return inTime ? 0 : ETIMEDOUT;
}

/// The last that happens on a thread, after the destructors of its other variables.
void end(void* self)
{
    auto* me = static_cast<Thread*>(self);
    if (++me->endings < kEndRounds) {
        pthread_setspecific(s_end, self);
        return;
    }
    me->state = Thread::Free;
    wake(me, kMostThreads);
    giveTurn(choose());
}

void* runThread(void* self)
{
    auto* me = static_cast<Thread*>(self);
    takeTurn(*me);
    t_self = me;
    pthread_setspecific(s_end, me);
    return me->run(me->argument);
}

long futex(int* word, int operation, int value, const timespec* timeout, int* second, int third)
{
    switch (operation & FUTEX_CMD_MASK) {
    case FUTEX_WAIT:
    case FUTEX_WAIT_BITSET: {
        if (__atomic_load_n(word, __ATOMIC_SEQ_CST) != value) {
            errno = EAGAIN;
            return -1;
        }
        const bool isSpan = (operation & FUTEX_CMD_MASK) == FUTEX_WAIT;
        if (wait(word, timeout && isSpan ? after(toNs(*timeout)) : deadlineOf(timeout)))
            return 0;
        errno = ETIMEDOUT;
        return -1;
    }
    case FUTEX_WAKE:
    case FUTEX_WAKE_BITSET:
        return wake(word, value);
    default: // changes the second word and may wake those that wait for it
        const long result = realSyscall(SYS_futex, long(word), operation, 0, 0, long(second), third);
        return result + wake(word, value) + wake(second, kMostThreads);
    }
}

} // namespace

std::int64_t VirtualTime::nowNs()
{
    return s_now - kStart;
}

void VirtualTime::setOrder(std::uint64_t seed)
{
    s_order = seed;
}

int VirtualTime::threadCount()
{
    return int(std::count_if(s_threads, s_threads + s_used,
                             [](const Thread& each) { return each.state != Thread::Free; }));
}

void VirtualTime::setDiskFull(bool full)
{
    s_diskFull = full;
}

// What the program and its libraries ask of the system.
#pragma GCC visibility push(default)
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    if (clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID)
        return int(realSyscall(SYS_clock_gettime, clock, long(time)));
    s_now += kLook;
    const bool isWall = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
    const Ns ns = s_now + (isWall ? kStartOfDay : 0);
    *time = {ns / kSecond, ns % kSecond};
    return 0;
}

int gettimeofday(timeval* time, void*) noexcept
{
    timespec precise{};
    clock_gettime(CLOCK_REALTIME, &precise);
    *time = {precise.tv_sec, precise.tv_nsec / 1000};
    return 0;
}

time_t time(time_t* result) noexcept
{
    const time_t now = (s_now + kStartOfDay) / kSecond;
    if (result)
        *result = now;
    return now;
}

int nanosleep(const timespec* span, timespec*)
{
    wait(nullptr, after(toNs(*span)));
    return 0;
}

int usleep(useconds_t us)
{
    wait(nullptr, after(Ns(us) * 1000));
    return 0;
}

int ppoll(pollfd* fds, nfds_t count, const timespec* span, const sigset_t*)
{
    return pollUntil(fds, count, span ? after(toNs(*span)) : kNever);
}

int poll(pollfd* fds, nfds_t count, int ms)
{
    return pollUntil(fds, count, ms < 0 ? kNever : after(Ns(ms) * 1000000));
}

int pthread_create(pthread_t* id, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept
{
    static const int once = pthread_key_create(&s_end, end);
    (void)once;
    self();
    Thread& created = newThread();
    created.run = run;
    created.argument = argument;
    static const auto original = real<decltype(::pthread_create)>("pthread_create");
    const int error = original(id, attributes, runThread, &created);
    created.id = *id;
    if (error != 0)
        created.state = Thread::Free;
    return error;
}

int pthread_join(pthread_t id, void** result)
{
    for (int i = 0; i < s_used; ++i) {
        Thread& each = s_threads[i];
        while (each.state != Thread::Free && pthread_equal(each.id, id))
            wait(&each, kNever);
    }
    REAL(pthread_join)(id, result);
}

int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept
{
    int error = 0;
    while ((error = pthread_mutex_trylock(mutex)) == EBUSY) {
        ++s_lockWaiters;
        wait(mutex, kNever);
        --s_lockWaiters;
    }
    return error;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) noexcept
{
    if (s_lockWaiters > 0)
        wake(mutex, kMostThreads);
    REAL(pthread_mutex_unlock)(mutex);
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex)
{
    return waitOn(condition, mutex, kNever);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* deadline)
{
    return waitOn(condition, mutex, deadlineOf(deadline));
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t,
                           const timespec* deadline)
{
    return waitOn(condition, mutex, deadlineOf(deadline));
}

int pthread_cond_signal(pthread_cond_t* condition) noexcept
{
    wake(condition, 1);
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) noexcept
{
    wake(condition, kMostThreads);
    return 0;
}

long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    long a[6];
    for (long& each : a)
        each = va_arg(list, long);
    va_end(list);
    if (number == SYS_futex)
        return futex(reinterpret_cast<int*>(a[0]), int(a[1]), int(a[2]), reinterpret_cast<timespec*>(a[3]),
                     reinterpret_cast<int*>(a[4]), int(a[5]));
    return realSyscall(number, a[0], a[1], a[2], a[3], a[4], a[5]);
}

int eventfd_write(int fd, eventfd_t value)
{
    ++s_written;
    return int(realSyscall(SYS_write, fd, long(&value), sizeof value)) == sizeof value ? 0 : -1;
}

int open64(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start stands above
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(list, mode_t) : 0;
    va_end(list);
    if (s_diskFull && (flags & O_ACCMODE) != O_RDONLY && strncmp(path, "/dev/", 5) != 0) {
        errno = ENOSPC;
        return -1;
    }
    return int(realSyscall(SYS_openat, AT_FDCWD, long(path), flags, mode));
}

// Nobody pulls the plug of this machine meanwhile.
int fsync(int)
{
    return 0;
}
int fdatasync(int)
{
    return 0;
}

} // extern "C"
#pragma GCC visibility pop
