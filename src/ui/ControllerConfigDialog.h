#pragma once

#include "ui/BaseDialog.h"

class QLabel;
class QSpinBox;

/// Asks for the number of LEDs of a device (1 to 300) while the strip shows that number live.
class ControllerConfigDialog : public BaseDialog
{
    Q_OBJECT

public:
    explicit ControllerConfigDialog(QWidget* parent = nullptr);

    int nbLed() const { return m_nbLed; }
    void setNbLed(int nbLed);
    void setDeviceName(const QString& deviceName);

signals:
    void nbLEDChanged(int nbLeds);

protected:
    bool event(QEvent* event) override;

private:
    void showDeviceName();
    QWidget* makeHeader();
    QWidget* makeCountRow();
    QWidget* makeButtons();

    int m_nbLed = 1;
    QString m_deviceName;
    QLabel* m_deviceNameLabel = nullptr;
    QSpinBox* m_nbLEDBox = nullptr;
};
