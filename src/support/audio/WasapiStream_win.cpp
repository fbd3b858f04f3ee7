#include "support/audio/WasapiStream.h"

#include "support/audio/AudioCapturer.h"

#include <QDebug>
#include <mmreg.h>
#include <utility>

namespace {
constexpr REFERENCE_TIME kBufferTime = 2000000; // 200 ms, in units of 100 ns
constexpr int kQuietLooks = 100;

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
    const HRESULT result = start(device, isLoudspeaker);
    if (FAILED(result))
        return fail(result);
    m_endpoint = endpoint;
    m_emptyLooks = 0;
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
    ++m_emptyLooks;
    UINT32 waiting = 0;
    HRESULT result = m_capture->GetNextPacketSize(&waiting);
    for (; SUCCEEDED(result) && waiting > 0; result = m_capture->GetNextPacketSize(&waiting)) {
        BYTE* data = nullptr;
        UINT32 frames = 0;
        DWORD flags = 0;
        result = m_capture->GetBuffer(&data, &frames, &flags, nullptr, nullptr);
        if (FAILED(result))
            break;
        const bool isSilent = (flags & AUDCLNT_BUFFERFLAGS_SILENT) != 0;
        m_capturer->write(isSilent ? nullptr : reinterpret_cast<const float*>(data), int(frames), m_channels);
        result = m_capture->ReleaseBuffer(frames);
        if (FAILED(result))
            break;
        m_emptyLooks = 0;
        m_trouble = S_OK;
    }
    return SUCCEEDED(result) || fail(result);
}

bool WasapiStream::isQuiet() const
{
    return m_emptyLooks > kQuietLooks;
}

bool WasapiStream::fail(HRESULT why)
{
    close();
    if (std::exchange(m_trouble, why) != why) // it may be refused again and again
        qInfo().noquote().nospace() << "[AudioCapManager]: Recording from " << m_capturer->id()
                                    << " has ended: 0x" << QString::number(quint32(why), 16);
    return false;
}

HRESULT WasapiStream::start(IMMDevice* device, bool isLoudspeaker)
{
    HRESULT result = device->Activate(__uuidof(IAudioClient), CLSCTX_ALL, nullptr,
                                      reinterpret_cast<void**>(m_client.GetAddressOf()));
    if (FAILED(result))
        return result;
    WAVEFORMATEX* format = nullptr;
    result = m_client->GetMixFormat(&format);
    if (FAILED(result))
        return result;
    const int rate = int(format->nSamplesPerSec);
    m_channels = format->nChannels;
    const DWORD flags = isLoudspeaker ? AUDCLNT_STREAMFLAGS_LOOPBACK : 0;
    result = isFloat(*format)
                 ? m_client->Initialize(AUDCLNT_SHAREMODE_SHARED, flags, kBufferTime, 0, format, nullptr)
                 : AUDCLNT_E_UNSUPPORTED_FORMAT;
    CoTaskMemFree(format);
    if (SUCCEEDED(result))
        result = m_client->GetService(IID_PPV_ARGS(&m_capture));
    if (FAILED(result))
        return result;
    m_capturer->setRate(rate);
    return m_client->Start();
}
