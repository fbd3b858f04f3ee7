#pragma once

#include <QTimer>
#include <QWidget>

class DeviceControlWidget;
class QLabel;

/// The panel of a device on its own, for a desktop that draws the tray's menu by itself and can show no
/// widget in it. Closed by Escape or a click elsewhere. Main thread.
class PanelPopup : public QWidget
{
    Q_OBJECT

public:
    PanelPopup();

    void setTitle(const QString& title);

    DeviceControlWidget& panel() { return *m_panel; }
    /// Beside this point, on the work area of its screen.
    void showAt(const QPoint& anchor);

    /// Where a window of this size stands beside the point: below it and to its right where there is room,
    /// and always within the work area, its upper left corner at least.
    static QPoint placeBeside(const QPoint& anchor, const QSize& size, const QRect& workArea);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void grabInput();

    QLabel* m_header;
    DeviceControlWidget* m_panel;
    QTimer m_grabbing;
    bool m_hasKeys = false;
    int m_pointerGrabsLeft = 40; ///< two seconds
};
