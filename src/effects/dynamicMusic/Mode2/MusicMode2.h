#pragma once

#include "effects/dynamicMusic/AbsMusicEffect.h"
#include "effects/dynamicMusic/Mode1/Fragment.h"

#include <QPointer>
#include <memory>

class IColorStrapManager;
class MoodShadow;

/// A mood that breathes with the music: the pictures of a mood shadow, at its own pace, dimmed by how loud it
/// is. Without sound it is dark. Properties: those of the mood, and "strength", the gain, 1.0 unless the user
/// has chosen another.
class MusicMode2 : public AbsMusicEffect
{
    Q_OBJECT

public:
    Q_INVOKABLE MusicMode2(const EffectWorkerOptions& options, QObject* parent);
    ~MusicMode2() override;

    /// For the mood, which begins with load.
    Q_INVOKABLE void DIColorStrapManager(IColorStrapManager* mgr);

    using AbsMusicEffect::spectrumUpdate;
    int load(const ControlOptions& ctlOptions) override;
    EffectWorkerOptions options() override;
    void unload() override;

    /// Stored at once.
    void setStrength(double value);

public slots:
    /// Sets the scale; the mood's next picture shows it.
    void spectrumUpdate(QVector<SoundChannel> channels) override;
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;
    void onCtlDarkChanged(bool dark) override;

protected:
    void onCapturerBound() override {}
    void goDark() override;

private slots:
    void update(QVector<LV_RGB> colors);

private:
    EffectWorkerOptions m_options;
    QPointer<IColorStrapManager> m_colorStrapManager;
    std::unique_ptr<MoodShadow> m_moodShadow; ///< from load on; its settings are stored with this effect's
    Fragment m_audible;                       ///< all that is heard
    float m_level = 0.1F;                     ///< of the mood's colours, 0 to 1
};
