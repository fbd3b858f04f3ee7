#include "support/capture/NullCaptureBackend.h"

#include <QDebug>
#include <atomic>

NullCaptureBackend::NullCaptureBackend(QObject* parent)
    : CaptureBackend(parent)
{
    static std::atomic<bool> said{false};
    if (!said.exchange(true))
        qWarning() << "[DeskDuplManager]: There is no display to capture from";
}
