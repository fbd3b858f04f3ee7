#pragma once

#include "ui/BaseDialog.h"

class QLabel;
class QPushButton;
class QSpinBox;
class QToolButton;

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
    void retranslate();
    void showDeviceName();
    QWidget* makeHeader();
    QWidget* makeCountRow();
    QWidget* makeButtons();

    int m_nbLed = 1;
    QString m_deviceName;
    QLabel* m_title = nullptr;
    QToolButton* m_closeBtn = nullptr;
    QLabel* m_deviceNameLabel = nullptr;
    QLabel* m_totalLabel = nullptr;
    QSpinBox* m_nbLEDBox = nullptr;
    QLabel* m_help = nullptr;
    QPushButton* m_rejectBtn = nullptr;
    QPushButton* m_okBtn = nullptr;
};
