#pragma once

#include "effects/AbsAnimatedEffect.h"
#include "effects/EffectProperties.h"
#include "effects/screenSync/BorderTracker.h"
#include "effects/screenSync/ColorSmoother.h"
#include "effects/screenSync/FrameSteps.h"
#include "effects/screenSync/Stillness.h"
#include "support/log/LoopBrake.h"

#include <QElapsedTimer>
#include <QSet>
#include <QSharedPointer>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QVector>
#include <opencv2/core/mat.hpp>

class IDeskCapture;
class IDeskDuplManager;

/// Base of the effects that follow the screen: binds one capturer, pulls a frame on every tick, conditions
/// it, lets the mode turn it into one colour per LED and emits the colours. Lives on one thread; no failure
/// reaches the caller. A frame that OpenCV refuses is skipped with one log line for each kind of failure.
/// Sources: AbsScreenSync.cpp (the road of a frame), AbsScreenSync_sources.cpp (what it looks at),
/// AbsScreenSync_properties.cpp (what can be set). After 0.3 s without a picture that it can use the strip
/// goes dark, and the property "notice" says why.
class AbsScreenSync : public WithProperties<AbsAnimatedEffect>
{
    Q_OBJECT

public:
    AbsScreenSync(const EffectWorkerOptions& options, QObject* parent);
    ~AbsScreenSync() override;

    int load(const ControlOptions& ctlOptions) override;
    void unload() override;
    void setEffectProperty(const QString& key, const QJsonValue& val) override;

    /// Injects the source of capturers, once, before load; `mgr` must outlive the worker's use of it.
    Q_INVOKABLE void DIDeskDuplication(IDeskDuplManager* mgr);

public slots:
    /// The whole way from a frame to `updateColors`.
    void frameInput(cv::Mat frame);
    /// The user's choice of another capturer, stored at once; when it cannot be had, the old one stays.
    void setInputSourceIdx(QString sourceIdx);
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlDarkChanged(bool dark) override;
    void onCtlLineBusy(int ms) override;
    /// 0.0 to 1.0, stored at once.
    void setBlurStrength(float strength);
    /// -1.0 to 1.0, stored at once.
    void setSaturationStrength(float strength);

protected:
    void update(double seconds) override;

    /// One colour per LED from a conditioned frame, which others may have as well and nobody writes into; may
    /// throw what OpenCV throws.
    virtual QVector<LV_RGB> frameToColors(cv::Mat frame) = 0;
    virtual LV_RGB adjustSaturation(LV_RGB color, double strength);
    /// Both use the worker's own blur strength, whatever the argument says.
    virtual cv::Mat blurFrame(cv::Mat src, double strength);
    virtual cv::UMat blurFrame(cv::UMat src, double strength);
    virtual cv::Mat wipeDarkSide(cv::Mat frame);
    /// The parts of a frame of this size that frameToColors() reads, so that no more has to be blurred; none:
    /// all of it. A mode that overrides blurFrame() gets the whole frame and may blur all of it.
    virtual std::vector<cv::Rect> lookedAt(const cv::Size& frame);
    /// A part of a conditioned frame scaled to `size`, made once for all who ask for the same.
    cv::Mat zoomed(const cv::Mat& frame, const cv::Rect& part, const cv::Size& size);
    /// Microseconds of a clock that never goes back; a test may turn it.
    virtual qint64 nowUs() const;

    /// Something that the colours depend on is another, be the screen still. Any thread.
    void showAtOnce();

    QString effectId() const { return m_effectOptions.id; }
    QString controllerId() const { return m_ctlOptions.id; }

    QVector<LV_RGB> m_colors; ///< one entry per LED since load
    uint32_t m_direction = 0; ///< 1: the strip runs mirrored
    ControlOptions m_ctlOptions;

private slots:
    /// Called once, by the constructor: a running worker keeps the value it started with.
    void onAppConfigChanged(QString key);

private:
    void listProperties();
    void loadLook();
    void setSmoothing(const QString& mode);
    void setSaturationGate(int levels);
    void setBorderMode(const QString& mode);
    void setFrameInterval(int ms);
    /// Keeps the choice for this device.
    void storeLook(const char* appKey, const QJsonValue& value);
    /// The device's own choice, then the application's, then what ships, as far as there are any.
    QVector<QJsonValue> storedLook(const char* appKey) const;
    /// What comes now has nothing to do with what was before.
    void beginAnew();
    /// Brings the timer's period in line with the setting and the device's line.
    void applyFrameInterval();
    /// With a frame interval of its own it works and sends only where something changes.
    bool restsOnStillScreens() const { return m_frameInterval != 0; }
    /// The same frame again would change nothing.
    bool isSettled() const;
    void restOrGoOn(quint64 frameNumber);
    void onPictureChanged();
    void show(const QVector<LV_RGB>& colors);
    static bool wipeDarkSideAllowed();
    void setWipeDarkSide(bool wipe);
    void onCapturerReady(const QString& id);
    void onCapturerFailed(const QString& id);
    void onCapturersChanged();
    void onModeChanged();
    void announceSources();
    bool bindCapturer(const QString& sourceIdx);
    bool needsCapturer() const;
    void releaseCapturer();
    void adaptOutputSize();
    /// A text of EffectNotice::kContext; null: all is well again.
    void setTrouble(const char* trouble);
    void goDark();
    QString notice() const;
    const char* lackOfSource() const;
    /// Source text of the button that leads to a source; empty for none.
    QString noticeAction() const;
    void askForSources(bool isWanted);
    QVector<LV_RGB> conditionedColors(const cv::Mat& frame);
    /// Both: `seconds` after the frame before.
    cv::Mat withoutBorder(const cv::Mat& frame, double seconds);
    /// From one colour per LED as the mode sees it to those that are shown.
    void finishColors(QVector<LV_RGB>& colors, double seconds);
    bool isScreenshotDue() const;
    void takeScreenshot(const cv::Mat& frame);
    void countFrame();
    void reportOnce(const QString& kind, const QString& text);
    QJsonValue captureList() const;

    IDeskDuplManager* m_deskDuplManager = nullptr;

    QString m_wantedIdx; ///< what the user chose, be it gone at present
    QString m_sourceIdx; ///< what is bound: the wanted one or a stand-in, which is never stored
    QSharedPointer<IDeskCapture> m_capturer;
    QSize m_sourceSize;          ///< pixels of the bound source, as the output size was made for
    bool m_capturerLost = false; ///< bound, but its source is gone and there was no other
    double m_saturationStrength = 1.0;
    double m_blurStrength = 0.5;
    FrameSteps m_steps;
    std::vector<cv::Rect> m_places; ///< that the present frame is blurred at; none: all of it
    QElapsedTimer m_screenshotTimer;
    QElapsedTimer m_frameTimer;
    bool m_screenshotEnabled = false; ///< read once, so that a frame costs no look-up
    qint64 m_frameTimeSum = 0;        ///< ms
    LoopBrake m_frameBrake;
    int m_frameCount = 0;
    bool m_autoWipeDarkSide = false;
    ColorSmoother m_smoother;
    BorderTracker m_border;
    QElapsedTimer m_clock;
    qint64 m_lastStepUs = 0;
    int m_saturationGate = 0; ///< levels of chroma below which saturation is blended in; 0: none
    bool m_stableBorder = false;
    Stillness m_stillness;
    QVector<LV_RGB> m_shown; ///< emitted last
    int m_frameInterval = 0; ///< ms, or ConfigKeys::kFrameIntervalOfLine; 0: that of all effects
    bool m_advancedMode = false;
    QSet<QString> m_reported;        ///< kinds of failure already in the log
    const char* m_trouble = nullptr; ///< why there is no picture now
    bool m_dark = false;             ///< it has lasted so long that strip and page show it
    QTimer m_darkTimer{this};        ///< a child, so that it follows to the worker's thread
};
