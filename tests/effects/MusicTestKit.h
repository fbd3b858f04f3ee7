#pragma once

#include "effects/IEffectWorker.h"
#include "support/audio/AudioBackend.h"
#include "support/audio/AudioCapManager.h"
#include "support/config/ConfigurationManager.h"

#include <QSignalSpy>

/// Offers what the test lists and keeps in `attached` what is captured.
class FakeAudioBackend : public AudioBackend
{
public:
    AudioSources sources() const override { return list; }
    void attach(const QSharedPointer<AudioCapturer>& capturer) override { attached.append(capturer->id()); }
    void detach(const QSharedPointer<AudioCapturer>& capturer) override
    {
        attached.removeOne(capturer->id());
    }
    void offer(const AudioSources& sources)
    {
        list = sources;
        emit sourcesChanged();
    }

    bool isServerThere() const override { return isThere; }

    AudioSources list;
    QStringList attached;
    bool isThere = true;
};

namespace MusicTestKit {

using Frame = QVector<LV_RGB>;

inline const LV_RGB kBlack{0, 0, 0};
inline const AudioSource kSpeaker{"speaker.monitor", "Speaker", true};
inline const AudioSource kHeadset{"headset", "Headset", false};

inline EffectWorkerOptions entry(const QString& id)
{
    EffectWorkerOptions options;
    options.id = id;
    return options;
}

inline ControlOptions strip(unsigned nbLeds, unsigned direction = 0, int ledPerUnit = 0)
{
    ControlOptions options;
    options.model = "LVTEST";
    options.id = "LVTEST:01";
    options.nbLeds = nbLeds;
    options.installDirection = direction;
    options.ledPerUnit = ledPerUnit;
    return options;
}

/// An effect and what it emits.
template <typename Effect>
struct Watched : Effect
{
    explicit Watched(const QString& id)
        : Effect(entry(id), nullptr)
    {
    }
    Frame last() const { return frames.isEmpty() ? Frame() : frames.last().at(0).template value<Frame>(); }

    QSignalSpy frames{this, &IEffectWorker::updateColors};
};

template <typename Effect>
struct Running : Watched<Effect>
{
    Running(const QString& id, const ControlOptions& options)
        : Watched<Effect>(id)
    {
        this->load(options);
    }
};

/// Whose clock stands still: the tests make the steps.
template <typename Effect>
struct Stepped : Watched<Effect>
{
    explicit Stepped(const QString& id)
        : Watched<Effect>(id)
    {
        this->stop();
    }
    Frame after(double seconds)
    {
        this->frames.clear();
        this->update(seconds);
        return this->last();
    }
};

inline QVector<int> lit(const Frame& frame)
{
    QVector<int> leds;
    for (int i = 0; i < frame.size(); ++i) {
        if (frame.at(i) != kBlack)
            leds += i;
    }
    return leds;
}

inline QJsonValue stored(const QString& effectId, const char* key)
{
    return ConfigurationManager::instance()->effectJsonValue(effectId, "LVTEST:01", key);
}

/// A test whose sound sources are its own.
class MusicTest : public QObject
{
protected:
    void setSources(const AudioSources& sources, int lingerMs = 0)
    {
        m_manager.reset(); // first: there is one instance
        m_backend = new FakeAudioBackend;
        m_backend->list = sources;
        m_manager = std::make_unique<AudioCapManager>(std::unique_ptr<AudioBackend>(m_backend), lingerMs);
    }

    std::unique_ptr<AudioCapManager> m_manager;
    FakeAudioBackend* m_backend = nullptr;
};

} // namespace MusicTestKit
