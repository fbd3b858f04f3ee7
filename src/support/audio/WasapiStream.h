#pragma once

#include <QSharedPointer>
#include <QString>
#include <audioclient.h>
#include <mmdeviceapi.h>
#include <wrl/client.h>

class AudioCapturer;

/// Records one endpoint for a capturer: what a loudspeaker plays, or a microphone. Belongs to the back end's
/// thread.
class WasapiStream
{
public:
    explicit WasapiStream(QSharedPointer<AudioCapturer> capturer);
    ~WasapiStream();
    WasapiStream(const WasapiStream&) = delete;
    WasapiStream& operator=(const WasapiStream&) = delete;

    const AudioCapturer& capturer() const { return *m_capturer; }
    bool isOpen() const { return !m_endpoint.isEmpty(); }
    const QString& endpoint() const { return m_endpoint; }

    bool open(IMMDevice* device, const QString& endpoint, bool isLoudspeaker);
    void close();
    /// Takes what there is. False when recording has come to its end; it is closed then.
    bool takeSamples();
    /// Nothing has come for some time. A loudspeaker that plays nothing gives nothing, not even silence.
    bool isQuiet() const;

private:
    HRESULT start(IMMDevice* device, bool isLoudspeaker);
    bool fail(HRESULT why);

    const QSharedPointer<AudioCapturer> m_capturer;
    QString m_endpoint;
    Microsoft::WRL::ComPtr<IAudioClient> m_client;
    Microsoft::WRL::ComPtr<IAudioCaptureClient> m_capture;
    int m_channels = 0;
    int m_emptyLooks = 0;
    HRESULT m_trouble = S_OK; ///< since the last samples
};
