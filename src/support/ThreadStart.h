#pragma once

#include "support/SharedLibrary.h"

#include <QThread>

/// Starts the thread. False, with a warning, when the system has none to spare: nobody may wait for it then.
LUMIVAR_SUPPORT_EXPORT bool startThread(QThread& thread,
                                        QThread::Priority priority = QThread::InheritPriority);

/// Whether the calling thread is in startThread(): a failure that the toolkit tells of now is one that
/// somebody takes care of.
LUMIVAR_SUPPORT_EXPORT bool isThreadStartChecked();
