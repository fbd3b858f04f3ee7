#pragma once

#include "effects/AbsWorkerWidget.h"
#include "effects/EffectProperties.h"
#include "effects/screenSync/LedMap.h"

#include <QImage>
#include <QPointer>
#include <QUndoStack>
#include <memory>
#include <optional>

namespace Ui {
class SSLOptWidget;
}
class FullScreenMode;

/// The editor of the full screen effect's layout: the live frame under one square per LED, the size of the
/// canvas, and a way back. Properties: "LEDMap" and "screenSize" as the worker's, "deviceDir", and
/// "effectObject", the address of the worker whose frames it shows while it is visible; text that is none of
/// a living worker changes nothing. What the user does leaves as "LEDPos" (one LED), "LEDMap" (those of
/// several that moved), "screenSize" and "resetCmd". A new map from outside ends what can be undone. Main
/// thread.
class SSLOptWidget : public WithProperties<AbsWorkerWidget>
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit SSLOptWidget(QWidget* parent);
    ~SSLOptWidget() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void onFrameTick(QImage frame);
    void onLedItemPosChanged(int id, QPoint newPos);
    void onScreenSizeChanged(int unused);
    void onResetBtnClicked();
    void onDeviceDirChanged(int dir);

private:
    void listProperties();
    void addUndoActions();
    void setLedMap(const QJsonValue& map);
    void setScreenSize(QSize size);
    void setWorker(const QString& address);
    void followFrames();

    void onLedItemsMoved(const QVector<QPoint>& positions);
    QJsonObject sizeProperty() const;
    QJsonObject ledProperty(int id) const;
    void showLayout(const LedMap& layout);
    void report(const LedMap& before);
    void remember(const LedMap& before);
    void forgetSteps();

    std::unique_ptr<Ui::SSLOptWidget> m_ui;
    LedMap m_layout; ///< mirrors the worker's
    QUndoStack m_steps;
    bool m_isFilled = false;             ///< the size is being set from outside
    bool m_isReplaying = false;          ///< a step runs: its stack must not be emptied meanwhile
    std::optional<LedMap> m_beforeReset; ///< until the map comes that the reset has made
    QPointer<FullScreenMode> m_worker;
    // Receivers of the worker's signals: with them go the connections and what still waits in the queue.
    std::unique_ptr<QObject> m_link;
    std::unique_ptr<QObject> m_frameLink;
};
