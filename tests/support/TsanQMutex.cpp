// Linked into the tests of thread sanitizer builds. Qt's library is not built with the sanitizer, which
// therefore does not see that a QMutex orders what two threads do, and reports every value that one guards.
// These definitions come before the library's, call them and tell the sanitizer.
#include <QMutex>
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template <typename Function>
Function next(const char* symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

void QMutex::lock()
{
    static const auto real = next<void (*)(QMutex*)>("_ZN6QMutex4lockEv");
    real(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout)
{
    static const auto real = next<bool (*)(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    const bool locked = real(this, timeout);
    if (locked)
        __tsan_acquire(this);
    return locked;
}

void QMutex::unlock() noexcept
{
    static const auto real = next<void (*)(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    real(this);
}
