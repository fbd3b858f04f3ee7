#pragma once

#include "viewModels/WorkGroupModel.h"
#include "viewModels/WorkerModel.h"

#include <QMap>
#include <QWidget>
#include <memory>

namespace Ui {
class DeviceControlWidget;
}

/// The small panel of the tray: light, brightness, effect group and effect of one device, or of all. Knows
/// neither devices nor effects, and may be part of a menu or stand alone. The setters emit, as the user's
/// doings do: who fills it blocks its signals. Main thread.
class DeviceControlWidget : public QWidget
{
    Q_OBJECT

public:
    using EffectGroupModel = WorkGroupModel;

    explicit DeviceControlWidget(QWidget* parent = nullptr);
    ~DeviceControlWidget() override;

    void setEffectGroups(const QMap<QString, EffectGroupModel>& groups, const QString& currentGroup = {});
    /// False for an empty or an unknown id, and nothing changes.
    bool setCurrentGroup(const QString& id);
    void setWorkers(const QMap<QString, WorkerModel>& workers, const QString& currentWorker = {});
    void setLightEnabled(bool enable);
    /// 0 to 1.
    void setBrightness(float brightness);

signals:
    void effectGroupChanged(QString id);
    void enableStatusChagned(bool enable);
    void brightChanged(double brightness);
    void currentEffectChanged(QString id);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private slots:
    void onEffectGroupClicked(const QString& id);
    void onBrightChanged(int percent);
    void onEnableStatusChanged(bool enable);
    void onCurEffectChanged(const QString& id);

private:
    void nameParts();
    void revealCurrentWorker();

    std::unique_ptr<Ui::DeviceControlWidget> ui;
    QMap<QString, EffectGroupModel> m_groups;
};
