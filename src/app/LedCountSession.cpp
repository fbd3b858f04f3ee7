#include "app/LedCountSession.h"

#include "support/config/ConfigKeys.h"
#include "ui/ControllerConfigDialog.h"

#include <QDebug>

LedCountSession::LedCountSession(const AbsRGBControllerPtr& controller, QWidget* dialogParent)
    : m_controller(controller)
    , m_stored(static_cast<int>(controller->options().nbLeds))
    , m_dialog(new ControllerConfigDialog(dialogParent))
{
    m_dialog->setNbLed(qMax(m_stored, 1));
    m_dialog->setDeviceName(controller->options().kindName);
    connect(m_dialog, &ControllerConfigDialog::nbLEDChanged, this, &LedCountSession::showCount);
    connect(m_dialog, &QDialog::accepted, this, [this] { answer(true); });
    connect(m_dialog, &QDialog::rejected, this, [this] { answer(false); });
    m_controller->showWhite(false); // would hide the pattern
    showCount(m_dialog->nbLed());   // raises the mark to what may be lit by now
    // The effect is gone, but its last frames may be on their way, and would be repeated.
    const auto showAgain = [this] {
        if (m_controller)
            showCount(m_dialog->nbLed());
    };
    QMetaObject::invokeMethod(this, showAgain, Qt::QueuedConnection);
    m_dialog->open();
}

LedCountSession::~LedCountSession()
{
    if (m_controller) {
        m_controller->update({});
        address(qMax(m_stored, 1));
    }
    m_dialog->deleteLater(); // a signal of its own may have led here
}

void LedCountSession::showCount(int count)
{
    m_highest = qMax(m_highest, count);
    address(m_highest);
    // The transport pads with black, so exactly `count` LEDs are red on a strip of up to the mark.
    m_controller->update(QVector<LV_RGB>(count, LV_RGB{255, 0, 0}));
}

void LedCountSession::answer(bool accepted)
{
    if (accepted) {
        m_stored = m_dialog->nbLed();
        qDebug() << "The number of LEDs on the device has changed to " << m_stored << "by user operation.";
    } else {
        m_stored = qMax(m_stored, 1);
        m_controller->update({}); // or what the pattern lit beyond the count would stay lit
        qDebug() << "The operation of configuring the device is cancelled , device id "
                 << m_controller->options().id;
    }
    address(m_stored);
    m_controller.reset();
    emit answered(accepted);
}

void LedCountSession::address(int leds)
{
    m_controller->setNbLeds(static_cast<uint32_t>(leds));
    m_controller->saveProperty(QLatin1String(ConfigKeys::kNbLeds.key), m_stored); // a try is no choice
}
