#include "support/audio/WasapiStream.h"

#include "support/audio/AudioCapturer.h"

#include <QDebug>
#include <mmreg.h>
#include <utility>

namespace {
constexpr REFERENCE_TIME kBufferTime = 2000000; // 200 ms, in units of 100 ns

/// The shared engine mixes in floats; anything else would be a driver of a kind unknown to us.
bool isFloat(const WAVEFORMATEX& format)
{
    if (format.wBitsPerSample != 32)
        return false;
    if (format.wFormatTag != WAVE_FORMAT_EXTENSIBLE)
        return format.wFormatTag == WAVE_FORMAT_IEEE_FLOAT;
    // The subformat's first number is the plain format's tag.
    return reinterpret_cast<const WAVEFORMATEXTENSIBLE&>(format).SubFormat.Data1 == WAVE_FORMAT_IEEE_FLOAT;
}
} // namespace

WasapiStream::WasapiStream(QSharedPointer<AudioCapturer> capturer)
    : m_capturer(std::move(capturer))
{
}

WasapiStream::~WasapiStream()
{
    close();
}

bool WasapiStream::open(IMMDevice* device, const QString& endpoint, bool isLoudspeaker)
{
    close();
    if (!start(device, isLoudspeaker)) {
        close();
        return false;
    }
    m_endpoint = endpoint;
    return true;
}

void WasapiStream::close()
{
    if (m_client)
        m_client->Stop();
    m_capture.Reset();
    m_client.Reset();
    m_endpoint.clear();
}

bool WasapiStream::takeSamples()
{
    UINT32 waiting = 0;
    while (SUCCEEDED(m_capture->GetNextPacketSize(&waiting))) {
        if (waiting == 0)
            return true;
        BYTE* data = nullptr;
        UINT32 frames = 0;
        DWORD flags = 0;
        if (FAILED(m_capture->GetBuffer(&data, &frames, &flags, nullptr, nullptr)))
            return false;
        const bool isSilent = (flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0;
        m_capturer->write(isSilent ? nullptr : reinterpret_cast<const float*>(data), int(frames), m_channels);
        if (FAILED(m_capture->ReleaseBuffer(frames)))
            return false;
    }
    return false;
}

bool WasapiStream::start(IMMDevice* device, bool isLoudspeaker)
{
    if (FAILED(device->Activate(__uuidof(IAudioClient), CLSCTX_ALL, nullptr,
                                reinterpret_cast<void**>(m_client.GetAddressOf()))))
        return false;
    WAVEFORMATEX* format = nullptr;
    if (FAILED(m_client->GetMixFormat(&format)))
        return false;
    const bool canRead = isFloat(*format);
    const int rate = int(format->nSamplesPerSec);
    m_channels = format->nChannels;
    const DWORD flags = isLoudspeaker ? AUDCLNT_STREAMFLAGS_LOOPBACK : 0;
    const bool isReady = canRead && SUCCEEDED(m_client->Initialize(AUDCLNT_SHAREMODE_SHARED, flags,
                                                                   kBufferTime, 0, format, nullptr));
    CoTaskMemFree(format);
    if (!canRead && !std::exchange(m_saidUnreadable, true))
        qWarning() << "[AudioCapManager]: Cannot read the sample format of" << m_capturer->id();
    if (!isReady || FAILED(m_client->GetService(IID_PPV_ARGS(&m_capture))))
        return false;
    m_capturer->setRate(rate);
    return SUCCEEDED(m_client->Start());
}
