#pragma once

#include "effects/screenSync/AbsScreenSync.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QMutex>
#include <QPoint>
#include <QSize>

struct LedMap;

/// Every LED has a free place on a small model of the screen and shows the pixel there. The layout comes from
/// the user's edits or from the default file of the device's model, and may change while frames run:
/// setScreenSize, setLEDPos and the properties of the layout may be used from any thread.
class FullScreenMode : public AbsScreenSync
{
    Q_OBJECT

public:
    Q_INVOKABLE FullScreenMode(const EffectWorkerOptions& options, QObject* parent);
    ~FullScreenMode() override;

    /// The living worker whose property "effectObject" this is; null for any other text. Any thread, but the
    /// worker may die on its own.
    static FullScreenMode* atAddress(const QString& address);

    int load(const ControlOptions& ctlOptions) override;
    void unload() override;
    void onCtlDirChanged(uint32_t dir) override;

    /// The default layout of the device's model, empty when there is none.
    QJsonObject LEDMapConfigDefJsonObj(const ControlOptions& ctlOptions);
    /// The user's layout, or else the default one.
    QJsonObject LEDMapConfigJsonObj(const ControlOptions& ctlOptions);

    /// Canvas in pixels, up to 300 by 200; LEDs outside move to its border. Stored at once.
    void setScreenSize(const QSize& size);

signals:
    /// The frame at canvas size, for every frame while somebody is connected; the image owns its pixels.
    void frameSnapshot(QImage frame);
    void deviceDirChanged(int dir);

public slots:
    /// Moves LED `id` (from 0) to a pixel of the canvas. Stored at once.
    void setLEDPos(int id, QPoint pos);

protected:
    QVector<LV_RGB> frameToColors(cv::Mat frame) override;
    std::vector<cv::Rect> lookedAt(const cv::Size& frame) override;
    /// Who begins to watch sees a still screen at once, too.
    void connectNotify(const QMetaMethod& signal) override;

private:
    QSize screenSize();
    bool isWatched() const;
    /// `beneath` counts where `config` says nothing.
    void takeLedMap(const QJsonObject& beneath, const QJsonObject& config);
    void restoreDefaultLayout();
    QJsonArray layout();
    /// Elements with id (from 0), x and y; stored once for all of them.
    void setLayout(const QJsonArray& leds);
    /// The caller holds m_ledMapMutex. False, with a warning, outside the canvas or the strip.
    bool placeLed(const QSize& canvas, int id, QPoint pos);
    /// The caller holds what it needs for the values it passes.
    void storeLedMap(const LedMap& map);

    QVector<QPoint> m_ledMap; ///< index = LED number, canvas pixels
    QJsonArray m_beyondStrip; ///< stored for LEDs that a longer strip had; kept for when it has them again
    QMutex m_ledMapMutex;     ///< guards the two above; taken after m_sizeMutex where both are needed
    QMutex m_sizeMutex;       ///< guards m_screenSize
    QSize m_screenSize;
};
