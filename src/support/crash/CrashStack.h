#pragma once

/// Gives the calling thread a stack of its own for the crash handler; without one, a stack overflow in that
/// thread leaves no dump. Call it first thing in every thread of the program, for a QThread with
///     connect(thread, &QThread::started, thread, installCrashStackForThread, Qt::DirectConnection);
/// Released when the thread ends; a second call does nothing. Does nothing where the system needs none.
void installCrashStackForThread();
