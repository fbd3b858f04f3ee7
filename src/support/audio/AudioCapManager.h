#pragma once

#include "support/SharedLibrary.h"

// Sound, from the effects down to the system:
//
//   AudioCapManager    what the effects see: a list of sources, shared AudioCapturers, who comes and goes
//   AudioCapturer      one source in use: takes samples from the back end without waiting or allocating and
//                      emits spectra and peaks
//   AnalysisThread     turns the samples of all capturers in use into spectra, with an AudioAnalyser each
//   AudioBackend       where another way to hear the system slots in: PulseBackend with a PulseRecorder for
//                      each source in use, WasapiBackend, NullAudioBackend

#include "support/audio/AudioCapturer.h"
#include "support/audio/AudioSource.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QString>
#include <memory>
#include <mutex>

class AnalysisThread;
class AudioBackend;

/// The system's sound sources. Lives on the main thread, where it emits; the operations may be called from
/// any thread. Nothing is captured while nobody holds a capturer, but for a moment after the last has
/// released it, so that from one effect to the next the recording goes on. While a source is gone its
/// capturer is silent; it goes on by itself when the source comes back.
class LUMIVAR_SUPPORT_EXPORT AudioCapManager : public QObject
{
    Q_OBJECT

public:
    /// The process-wide instance, made by the first call; ends with the application object. The first call
    /// may take up to a second where the sound server does not answer.
    static AudioCapManager* instance();

    /// The machine was asleep: what was lost meanwhile comes back sooner than by itself. Main thread.
    static void reconnect();

    static constexpr int kLingerMs = 2000;

    /// With another back end than the system's. Where there is no instance yet, this one is it.
    /// `lingerMs`: for so long a source is captured after its last user.
    explicit AudioCapManager(std::unique_ptr<AudioBackend> backend, int lingerMs = kLingerMs);
    ~AudioCapManager() override;

    /// The default first.
    QList<QString> allCapturers() const;
    /// Whether there is a sound server, or whatever this system has, that could offer any.
    bool isServerThere() const;
    /// The capturer that follows what the default loudspeaker plays; empty when there is none.
    QString defaultCapturer() const;
    /// Null when the identifier is unknown. Each success is matched by one releaseCapturer().
    QSharedPointer<AudioCapturer> acquireCapturer(const QString& id);
    void releaseCapturer(const QString& id);
    /// The text for people, translated; empty for an unknown identifier.
    QString capturerDesc(const QString& id) const;

signals:
    /// The list, one of its texts or isServerThere() is another, be it only that another loudspeaker is the
    /// default, or that the program speaks another language.
    void capturersChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onSourcesChanged();

private:
    struct Shared
    {
        QSharedPointer<AudioCapturer> capturer;
        int users = 0;
        quint64 release = 0; ///< the number of the last one
    };

    void endUnused(const QString& id, quint64 release);

    const int m_lingerMs;

    std::unique_ptr<AnalysisThread> m_analysis;
    std::unique_ptr<AudioBackend> m_backend;
    mutable std::mutex m_mutex; // guards what follows
    AudioSources m_sources;
    bool m_isServerThere = false;
    QHash<QString, Shared> m_shared;
    quint64 m_releases = 0;
};
