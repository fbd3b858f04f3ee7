// Linked into the tests of thread sanitizer builds. Qt's library is not built with the sanitizer, which
// therefore sees neither that a QMutex orders what two threads do, nor Qt's event queues, and reports every
// value that one guards. These definitions come before the library's, call them and tell the sanitizer.
// Whoever posts or starts something releases, whoever handles an event or has waited for a thread acquires.
// One place for all queues is coarse, and may hide a race between two that only share the queues.
#include <QDeadlineTimer>
#include <QMutex>
#include <QObject>
#include <QThread>
#include <QThreadPool>
#include <dlfcn.h>
#include <functional>
#include <sanitizer/tsan_interface.h>
#include <utility>

namespace {

char s_queues;

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

bool QObject::event(QEvent* e)
{
    static const auto real = next<bool (*)(QObject*, QEvent*)>("_ZN7QObject5eventEP6QEvent");
    __tsan_acquire(&s_queues);
    const bool handled = real(this, e);
    __tsan_release(&s_queues);
    return handled;
}

void QObject::deleteLater()
{
    static const auto real = next<void (*)(QObject*)>("_ZN7QObject11deleteLaterEv");
    __tsan_release(&s_queues);
    real(this);
}

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot, Qt::ConnectionType type,
                                   void* ret)
{
    static const auto real = next<decltype(&QMetaObject::invokeMethodImpl)>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    slot->ref(); // else a call that waited for its end frees the slot before the acquire
    __tsan_release(&s_queues);
    const bool done = real(object, slot, type, ret);
    __tsan_acquire(&s_queues);
    slot->destroyIfLastRef();
    return done;
}

bool QMetaObject::invokeMethod(QObject* object, const char* member, Qt::ConnectionType type,
                               QGenericReturnArgument ret, QGenericArgument a0, QGenericArgument a1,
                               QGenericArgument a2, QGenericArgument a3, QGenericArgument a4,
                               QGenericArgument a5, QGenericArgument a6, QGenericArgument a7,
                               QGenericArgument a8, QGenericArgument a9)
{
    using Invoke =
        bool (*)(QObject*, const char*, Qt::ConnectionType, QGenericReturnArgument, QGenericArgument,
                 QGenericArgument, QGenericArgument, QGenericArgument, QGenericArgument, QGenericArgument,
                 QGenericArgument, QGenericArgument, QGenericArgument, QGenericArgument);
    static const auto real = next<Invoke>(
        "_ZN11QMetaObject12invokeMethodEP7QObjectPKcN2Qt14ConnectionTypeE22QGenericReturnArgument"
        "16QGenericArgumentS7_S7_S7_S7_S7_S7_S7_S7_S7_");
    __tsan_release(&s_queues);
    const bool done = real(object, member, type, ret, a0, a1, a2, a3, a4, a5, a6, a7, a8, a9);
    __tsan_acquire(&s_queues);
    __tsan_release(&s_queues); // it may be the last that a thread does before somebody waits for its end
    return done;
}

void QMetaObject::activate(QObject* sender, const QMetaObject* meta, int signal, void** arguments)
{
    static const auto real = next<void (*)(QObject*, const QMetaObject*, int, void**)>(
        "_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    __tsan_release(&s_queues);
    real(sender, meta, signal, arguments);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto real = next<bool (*)(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = real(this, deadline);
    __tsan_acquire(&s_queues);
    return ended;
}

void QThreadPool::start(std::function<void()> task, int priority)
{
    static const auto real =
        next<void (*)(QThreadPool*, std::function<void()>, int)>("_ZN11QThreadPool5startESt8functionIFvvEEi");
    std::function<void()> seen = [task = std::move(task)] {
        __tsan_acquire(&s_queues);
        task();
        __tsan_release(&s_queues);
    };
    __tsan_release(&s_queues);
    real(this, std::move(seen), priority);
}
