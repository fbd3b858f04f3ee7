#pragma once

#include "controllers/AbsRGBController.h"
#include "ui/DeviceControlWidget.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <functional>

class LumivarApp;

/// Shows one device on a panel, for as long as it is seen, and does to the device, or to several, what the
/// user does there. Main thread.
class DeviceControlViewModel : public QObject
{
    Q_OBJECT

public:
    /// An empty id shows nothing yet. The view outlives this.
    DeviceControlViewModel(LumivarApp& app, DeviceControlWidget& view, const QString& id, QObject* parent);

    /// Shows this device, which alone is acted on from then on. False for an empty or an unknown id.
    bool setController(const QString& id);
    QString controllerID() const { return m_controllerId; }
    /// The devices that are acted on.
    void setTargets(const QSet<QString>& ids) { m_targets = ids; }

signals:
    void effectsViewChanged(const QMap<QString, DeviceControlWidget::EffectGroupModel>& groups,
                            const QString& currentGroup = {});

private slots:
    void onLightStatusChanged(bool enable);
    void onEffectGroupChanged(const QString& newGroup);
    void onEffectChanged(const QString& effect);
    void onBrightChanged(double brightness);

private:
    void refreshView();
    void setEffect(const QString& effect);
    void forEachTarget(const std::function<void(AbsRGBController&)>& action);
    QString targetNames() const;

    LumivarApp& m_app;
    DeviceControlWidget& m_view;
    QString m_controllerId;
    QSet<QString> m_targets;
    QPointer<AbsRGBController> m_controller; ///< whose changes are listened to
    QTimer m_refresh;                        ///< once for all changes that come together
};
