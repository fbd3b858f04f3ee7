#pragma once

#include "viewModels/WorkGroupModel.h"
#include "viewModels/WorkerModel.h"

#include <QImage>
#include <QJsonValue>
#include <QList>
#include <QMap>
#include <QWidget>
#include <memory>

namespace Ui {
class ControlPage;
}
class QBoxLayout;
class QLabel;
class StackLayout;
class StripPreview;

/// The page on which one device, or all of them, are operated. Knows neither devices nor effects: the setter
/// slots fill it with its signals blocked, the signals tell what the user did. Main thread.
/// Sources: ControlPage.cpp, ControlPage_options.cpp (the option widgets of the current effect).
class ControlPage : public QWidget
{
    Q_OBJECT

public:
    explicit ControlPage(QWidget* parent = nullptr);
    ~ControlPage() override;

    /// 0 from left to right, 1 from right to left.
    int dir() const;
    bool isLightEnabled() const;
    /// 0 to 1.
    float brightness() const;
    QString controllerId() const { return m_controllerId; }
    QString currentGroup() const { return m_currentGroup; }
    QString currentWorker() const { return m_currentWorker; }
    /// Class names of the current effect's option widgets; empty for none.
    QString sOptWidgetName() const;
    QString lOptWidgetName() const;
    /// Shown at the next change of the effect.
    void setProductImage(const QImage& image) { m_productImage = image; }
    /// That picture, with the device's light around it.
    StripPreview& stripPreview() const;
    /// Takes the option widgets off the page, as when their device is gone.
    void dropOptionWidgets();
    /// Shows or hides the choice between this device and all.
    void setControlModeVisible(bool visible);

public slots:
    void setDir(int dir);
    void setEnable(bool enable);
    void setSingleDevCtrlMode(bool enable);
    void setBrightness(float brightness);
    void setWorkGroups(QMap<QString, WorkGroupModel> groups, QString currentGroup = {});
    void setWorkers(QMap<QString, WorkerModel> workers, QString currentWorker = {});
    void setCurrentGroup(QString groupId);
    void setCurrentWorker(QString workerId);
    void setControllerName(QString name);
    void setControllerId(QString id);
    /// Why the strip may not show what was chosen, above the effects, and the text of a button below it that
    /// does something about it; translated already, empty for none.
    void setNotice(QString text, QString action = {});
    void setSOptWidProperty(QString key, QJsonValue val);
    void setLOptWidProperty(QString key, QJsonValue val);

signals:
    void dirChanged(int dir);
    void enableChanged(bool enable);
    void brightnessChanged(float brightness);
    /// The user wants to set what the device makes of its colours.
    void wallColorsOrdered();
    void workGoupChanged(QString id);
    void workerChanged(QString id);
    void controlModeChanged(bool isSingleDevCtrl);
    void optWidActived();
    void noticeActionClicked();
    void sOptWidPropertyChanged(QString key, QJsonValue val);
    void lOptWidPropertyChanged(QString key, QJsonValue val);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private slots:
    void onInstallDirRadioBtnChanged(bool dir);
    void onLEDSwitchBtnChanged(bool enable);
    void onBrightnessChanged(int value);
    void onDevCtlModeChanged();

private:
    /// One row of the left column: a header, and beside or below it its controls.
    struct Region
    {
        QWidget* widget;
        QBoxLayout* layout;
        QLabel* header;
        QWidget* body;
    };
    QList<Region> regions() const;

    void connectForm();
    void stackRegions();
    void toggleControlModeView();
    void placeHeaders(int pageWidth);
    void remeasure();
    void showControllerName();
    void chainTabOrder();

    QWidget* sOptWidget() const;
    bool hostSOptWidget(const QString& className);
    void retire(QWidget* optionWidget);
    void retireSOptWidget();
    void showProductImage();
    void fitSOptWidget(QWidget* widget);
    bool hostLOptWidget(const QString& className);

    std::unique_ptr<Ui::ControlPage> ui;
    QMap<QString, WorkerModel> m_workers;
    QMap<QString, WorkGroupModel> m_groups;
    QString m_currentGroup;
    QString m_currentWorker;
    QString m_controllerName;
    QString m_controllerId;
    QImage m_productImage;
    bool m_singleDevCtrlMode = false;
    StackLayout* m_regions = nullptr;
};
