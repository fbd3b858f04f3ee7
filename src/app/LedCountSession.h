#pragma once

#include "controllers/AbsRGBController.h"

class ControllerConfigDialog;

/// The time in which the user looks for the LED count of a device: a dialog is open, and the strip shows the
/// count live, red on black. Only an answer is stored: destroyed without one, the session leaves the count as
/// it was, and a question that was open stays open. Main thread.
class LedCountSession : public QObject
{
    Q_OBJECT

public:
    LedCountSession(const AbsRGBControllerPtr& controller, QWidget* dialogParent);
    ~LedCountSession() override;

signals:
    void answered(bool accepted);

private:
    void showCount(int count);
    void answer(bool accepted);
    void address(int leds);

    AbsRGBControllerPtr m_controller; ///< null once the question is answered
    int m_stored;                     ///< 0: nobody has chosen a count yet
    int m_highest = 200;              ///< LEDs that the pattern addresses at least
    ControllerConfigDialog* m_dialog;
};
