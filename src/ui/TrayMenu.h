#pragma once

#include <QAction>
#include <QMenu>

/// What the tray icon's menu holds. Knows neither icon nor tray. Main thread.
class TrayMenu : public QMenu
{
    Q_OBJECT

public:
    TrayMenu();

    /// When devices have come or gone.
    void rebuild();

signals:
    void settingsOrdered();
    void exitOrdered();

protected:
    void changeEvent(QEvent* event) override;

private:
    void retranslate();

    QAction m_settings;
    QAction m_separator;
    QAction m_exit;
};
