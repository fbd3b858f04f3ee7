#pragma once

#include "viewModels/DeviceModel.h"

#include <QMap>
#include <QWidget>
#include <memory>

namespace Ui {
class HomePage;
}

/// The start page: a grid of device buttons, renamed in place, beside two picture boxes. Knows no device;
/// the owner fills it and hears what the user orders. Main thread.
class HomePage : public QWidget
{
    Q_OBJECT

public:
    explicit HomePage(QWidget* parent = nullptr);
    ~HomePage() override;

public slots:
    /// Replaces the whole grid; a name that is just being edited is given up.
    void setControllerList(QMap<QString, DeviceModel> ctls);
    /// Shows a picture with the address that a click on it opens. Nothing happens while the box is hidden.
    void setADBox1(QString imgFilename, QString clickUrl);

signals:
    void controllerEntryOrdered(QString id);
    void controllerOptOrdered(QString id);
    void controllerNameChanged(QString id, QString name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    std::unique_ptr<Ui::HomePage> ui;
    QMap<QString, DeviceModel> m_devices;
    QString m_adBox1Url;
};
