#include "ui/TrayMenu.h"

#include <QCoreApplication>
#include <QEvent>

TrayMenu::TrayMenu()
{
    m_separator.setSeparator(true);
    connect(&m_settings, &QAction::triggered, this, &TrayMenu::settingsOrdered);
    connect(&m_exit, &QAction::triggered, this, &TrayMenu::exitOrdered);
    retranslate();
    rebuild();
}

void TrayMenu::rebuild()
{
    clear();
    addActions({&m_settings, &m_separator, &m_exit});
}

void TrayMenu::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMenu::changeEvent(event);
}

void TrayMenu::retranslate()
{
    // The words stand on the window's title bar as well, in its context.
    m_settings.setText(QCoreApplication::translate("MainWindow", "设置"));
    m_exit.setText(QCoreApplication::translate("MainWindow", "退出"));
}
