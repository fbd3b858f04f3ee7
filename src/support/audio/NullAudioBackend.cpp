#include "support/audio/NullAudioBackend.h"

#include <QDebug>
#include <atomic>

NullAudioBackend::NullAudioBackend(QObject* parent)
    : AudioBackend(parent)
{
    static std::atomic<bool> said{false};
    if (!said.exchange(true))
        qWarning() << "[AudioCapManager]: There is no sound system to listen to";
}
