#pragma once

#include "effects/IEffectWorker.h"
#include "support/audio/SoundChannel.h"

#include <QSharedPointer>
#include <QString>
#include <QVector>

class AudioCapturer;

/// Base of the effects that follow the sound: binds one capturer and receives what it hears, on the worker's
/// thread; its pace is the capturer's. Without a capturer it emits nothing until there is one. When the
/// source in use goes, it changes to the default one, and back when the source returns.
class AbsMusicEffect : public IEffectWorker
{
    Q_OBJECT

public:
    explicit AbsMusicEffect(QObject* parent);
    /// Gives nothing back to the manager: that is for unload.
    ~AbsMusicEffect() override;

    QJsonValue effectProperty(const QString& key) override;
    void setEffectProperty(const QString& key, const QJsonValue& val) override;

public slots:
    virtual void spectrumUpdate(QVector<Spectrum> spectrum);
    virtual void spectrumUpdate(QVector<SoundChannel> channels);
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;
    /// For each channel decimal numbers as text; entry 0 of channel 0 counts, 0 to 1.
    virtual void peakValuesChanged(QVector<QVector<QString>> peaks);
    int load(const ControlOptions& ctlOptions) override;
    /// Changes the source and stores the choice. An unknown identifier gives the default capturer.
    void setCapturerId(QString newCapturerId);
    void unload() override;

protected:
    /// A capturer has just been bound; its data will follow.
    virtual void onCapturerBound() = 0;

    QString effectId() { return options().id; }
    QString controllerId() const { return m_ctlOptions.id; }
    int nbLeds() const { return static_cast<int>(m_ctlOptions.nbLeds); }

    ControlOptions m_ctlOptions;

private:
    void onCapturerReady(const QString& id);
    void onCapturerFailed(const QString& id);
    void onCapturersChanged();
    void bindCapturer(const QString& id);
    void releaseCapturer();
    void storeCapturerId();

    QString m_capturerId;
    QSharedPointer<AudioCapturer> m_capturer;
    QString m_chosenId; ///< what the user wants, be it gone at present
};
