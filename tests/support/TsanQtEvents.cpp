// Linked into the tests of thread sanitizer builds, like TsanQMutex.cpp: the sanitizer does not see Qt's
// event queues either. Whoever posts or starts something releases, whoever handles an event or has waited for
// a thread acquires. One place for all of them is coarse, and may hide a race between two that only share the
// queues.
#include <QDeadlineTimer>
#include <QObject>
#include <QThread>
#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

char s_queues;

template <typename Function>
Function next(const char* symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

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
