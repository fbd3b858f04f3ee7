#pragma once

#include "controllers/ColorCorrection.h"
#include "controllers/ColorPipeline.h"
#include "controllers/ControlOptions.h"
#include "controllers/LV_RGB.h"
#include "support/SharedLibrary.h"
#include "support/log/LoopBrake.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QSharedPointer>
#include <QTimer>
#include <QVariant>
#include <optional>

/// One LED device, physical or virtual: its settings, their persistence, and the colour pipeline
/// (ColorPipeline, enable gate) from an effect's colours to the transport of the subclass.
/// Lives on the main thread. Repeats the last picture when nobody feeds it for 800 ms.
class LUMIVAR_DEVICES_EXPORT AbsRGBController : public QObject
{
    Q_OBJECT

public:
    explicit AbsRGBController(QObject* parent = nullptr);
    ~AbsRGBController() override;

    const ControlOptions& options() const { return m_options; }
    void setBrightness(float brightness);
    /// Shows it at once and stores nothing: the settings hold the one gamma of all devices.
    void setGama(float gama);
    void setEnable(bool enable);
    void setInstallDirection(uint32_t dir);
    void setKindName(const QString& kindName);
    void setNbLeds(uint32_t nbLeds);
    void setSubMode(const QString& subMode);
    void setWorkMode(const QString& workMode);
    /// Keeps the device dark whatever it is told to show: one black picture goes out and nothing more until
    /// it may be lit again, then the last picture at once. No choice of the user's, and stored nowhere.
    void setDark(bool dark);
    bool isDark() const { return m_isDark; }

    const ColorCorrection& correction() const { return m_correction; }
    /// The user's choice: shown at once and stored.
    void setCorrection(const ColorCorrection& correction);
    /// All LEDs white instead of the effect's colours, to judge the correction by, for as long as the light
    /// is on; what the effect shows meanwhile comes with `false`. Stored nowhere.
    void showWhite(bool white);
    /// The last picture as it went to the transport, one entry per LED; black while the light is off, empty
    /// before the first one. Amounts of light: as bytes of a screen they would look too dark.
    const QVector<LV_RGB>& sentColors() const { return m_sentColors; }
    /// The power limit has to hold pictures back, or had to within the last two seconds.
    bool isPowerLimited() const { return m_isPowerLimited; }

    /// Overlays the stored settings of this device; false when nothing is stored.
    bool loadConfig();
    /// For a device of which nothing is stored: what the settings say of new ones becomes its own.
    void startAsNew();
    void saveProperty(const QString& key, const QVariant& value);
    void saveConfig();
    /// Group and effect of the user's choice.
    struct EffectChoice
    {
        QString workMode;
        QString subMode;
    };
    /// What is bound, unless that stands in.
    EffectChoice chosenEffect() const;
    /// What is bound only stands in for this one, which stays stored until the user makes another choice.
    void keepChosenEffect(const EffectChoice& choice);

public slots:
    /// Takes a complete picture, LED 0 first, and sends it through the pipeline.
    virtual void update(QVector<LV_RGB> colors);

public:
    /// Sends one processed picture on the transport.
    virtual void writeColors(const QVector<LV_RGB>& colors) = 0;
    /// The LED count changed: adapt the transport.
    virtual void rebuildHeader() = 0;
    /// Starts to switch the device off without waiting for it; the destructor waits. Call it on every
    /// controller before destroying several, so that they go dark at the same time. Nothing is sent
    /// afterwards.
    virtual void beginRelease() {}
    /// Waits until a release that was begun is over; half a second at most.
    virtual void waitForRelease() {}
    /// Waits until the device has what it was sent so far, the black picture of setDark().
    virtual void waitUntilSent(QDeadlineTimer) {}

signals:
    void statusChanged(uint32_t status, QString description);
    void kindNameChanged(QString kindName);
    void enableChanged(bool enable);
    void brightnessChanged(float brightness);
    void gamaChanged(float gama);
    void workModeChanged();
    void subModeChanged(QString subMode);
    void installDirectionChanged(uint32_t dir);
    void darkChanged(bool dark);
    /// A frame came too early for the line, which is ready for another one in `ms`.
    void lineBusy(int ms);
    void correctionChanged();
    void powerLimitedChanged(bool limited);
    void devActionActived(int action);

protected:
    /// Takes the record over, but for the gamma: that of the settings holds for every device.
    void describe(const ControlOptions& options);
    const QVector<LV_RGB>& blackColors() const { return m_blackColors; }

    ControlOptions m_options;

private slots:
    void internalUpdate();
    void onStrapColorOffsetParamChanged(QString key);

private:
    static float configuredGama();
    int ledCount() const { return static_cast<int>(m_options.nbLeds); }
    void storeEffect(const EffectChoice& choice);
    void endStandIn();
    void sendBlack() { send(QVector<LV_RGB>(ledCount())); }
    /// To the transport, and kept for sentColors().
    void send(const QVector<LV_RGB>& colors);
    void followPowerLimit();
    /// Refresh warning and the average interval, for the loop log.
    void reportPace(const QVector<LV_RGB>& out);

    QSet<QString> m_unusable; ///< keys whose stored values do not count, and are left to the user as they are
    std::optional<EffectChoice> m_chosenEffect; ///< where another one stands in
    bool m_isDark = false;
    QTimer m_refreshTimer;
    QVector<LV_RGB> m_rawColors;
    QVector<LV_RGB> m_blackColors;
    QVector<LV_RGB> m_sentColors;
    ColorCorrection m_correction;
    bool m_isPowerLimited = false;
    QDeadlineTimer m_powerLimitHold; ///< runs while the limit counts as needed
    bool m_showsWhite = false;
    ColorPipeline m_pipeline;
    QElapsedTimer m_updateTimer;
    qint64 m_updateMsSum = 0;
    qint64 m_updateCount = 0;
    LoopBrake m_refreshBrake;
    LoopBrake m_paceBrake;
};

using AbsRGBControllerPtr = QSharedPointer<AbsRGBController>;
Q_DECLARE_METATYPE(AbsRGBControllerPtr)
