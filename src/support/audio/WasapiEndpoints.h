#pragma once

#include "support/audio/AudioSource.h"

#include <functional>
#include <memory>
#include <mmdeviceapi.h>
#include <wrl/client.h>

class EndpointWatch;

/// The system's loudspeakers and microphones in use. Belongs to one thread with a multithreaded apartment.
class WasapiEndpoints
{
public:
    struct Endpoint
    {
        AudioSource source;
        bool isLoudspeaker = false;
        Microsoft::WRL::ComPtr<IMMDevice> device;
    };

    /// `onNews` is called from a thread of the system when another look is worth while.
    explicit WasapiEndpoints(std::function<void()> onNews);
    ~WasapiEndpoints();
    WasapiEndpoints(const WasapiEndpoints&) = delete;
    WasapiEndpoints& operator=(const WasapiEndpoints&) = delete;

    /// False while the system has no sound service; to be tried again then.
    bool open();
    void close();
    bool isOpen() const { return m_enumerator != nullptr; }

    /// The default loudspeaker first.
    QList<Endpoint> list() const;

private:
    QString defaultId() const;

    const std::function<void()> m_onNews;
    Microsoft::WRL::ComPtr<IMMDeviceEnumerator> m_enumerator;
    Microsoft::WRL::ComPtr<EndpointWatch> m_watch;
};
