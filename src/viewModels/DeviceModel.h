#pragma once

#include <QIcon>
#include <QSharedPointer>
#include <QString>

class QToolButton;

/// One device as the home page shows it; kept by controller id.
struct DeviceModel
{
    QString name; ///< shown as plain text, the user may change it
    QString id;
    QIcon icon;
    bool flag = false;                  ///< the LED count can be changed: the page offers the settings button
    QSharedPointer<QToolButton> button; ///< filled by the page
};
