#pragma once

#include "effects/EffectProperties.h"
#include "effects/IEffectWorker.h"
#include "support/audio/SoundChannel.h"

#include <QElapsedTimer>
#include <QSharedPointer>
#include <QString>
#include <QTimer>
#include <QVector>

class AudioCapturer;

/// Base of the effects that follow the sound: binds one capturer and receives what it hears, on the worker's
/// thread; its pace is the capturer's. While the source that the user wants is gone, or none was ever chosen,
/// the default one stands in; it is never stored. Without a default there is no sound until there is one.
/// Whatever it is on: half a second without a picture of its own, and it shows black.
class AbsMusicEffect : public WithProperties<IEffectWorker>
{
    Q_OBJECT

public:
    explicit AbsMusicEffect(QObject* parent);
    /// Gives nothing back to the manager: that is for unload.
    ~AbsMusicEffect() override;

    static constexpr int kSilenceMs = 10000;
    /// Why there is no source, a text of the context "EffectNotice"; null while there is one.
    static const char* sourceTrouble();
    /// After so long without a sound the notice says so; tests shorten it.
    void setSilenceMs(int ms) { m_silenceMs = ms; }

public slots:
    virtual void spectrumUpdate(QVector<Spectrum> spectrum);
    virtual void spectrumUpdate(QVector<SoundChannel> channels);
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;
    /// Gives the capturer back meanwhile: nothing is recorded for a strip that is kept dark.
    void onCtlDarkChanged(bool dark) override;
    /// For each channel decimal numbers as text; entry 0 of channel 0 counts, 0 to 1.
    virtual void peakValuesChanged(QVector<QVector<QString>> peaks);
    int load(const ControlOptions& ctlOptions) override;
    /// The user's choice, which is stored. While there is no such source the default one stands in.
    void setCapturerId(QString newCapturerId);
    void unload() override;

protected:
    /// A capturer has just been bound; its data will follow.
    virtual void onCapturerBound() = 0;
    /// Half a second has passed without a sound, not even a silent one: black.
    virtual void goDark();

    QString effectId() { return options().id; }
    QString controllerId() const { return m_ctlOptions.id; }
    /// Up to here a level of a spectrum is no music to show; 0 to 79, from the application's settings.
    double quietLevel() const { return m_quietLevel; }
    int nbLeds() const { return static_cast<int>(m_ctlOptions.nbLeds); }

    ControlOptions m_ctlOptions;

private:
    void onCapturersChanged();
    void want(const QString& id);
    void bindBestCapturer();
    void connectCapturer(const QString& id);
    void releaseCapturer();
    void storeWantedId();
    void announce(const char* key);
    QString notice() const;
    void tellNotice();
    void noteLoudness(const QVector<QVector<QString>>& peaks);
    void onSilence();
    void setSilent(bool isSilent);

    enum class Life { Playing, Resting, Ended };
    Life m_life = Life::Playing;
    double m_quietLevel = 0.0;
    QString m_wantedId;   ///< what the user chose, be it gone at present; empty for nothing
    QString m_capturerId; ///< what is bound
    QSharedPointer<AudioCapturer> m_capturer;
    QString m_toldNotice;
    int m_silenceMs = kSilenceMs;
    bool m_isSilent = false;     ///< the source has given nothing but silence for long
    QElapsedTimer m_soundClock;  ///< since the last sound
    QTimer m_silenceTimer{this}; ///< ends no sooner than the silence is long enough
    QTimer m_darkTimer{this};    ///< ends what the effect or the source before has left on the strip
};
