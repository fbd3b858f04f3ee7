#pragma once

#include <QList>
#include <QRect>
#include <QString>

/// One picture source of the desktop, normally a monitor.
struct CaptureSource
{
    QString id;     ///< stable over restarts, such as a connector's name
    QString name;   ///< for people
    QRect geometry; ///< pixels, in the desktop's coordinates
    bool primary = false;

    bool operator==(const CaptureSource& other) const
    {
        return id == other.id && name == other.name && geometry == other.geometry && primary == other.primary;
    }
};
using CaptureSources = QList<CaptureSource>;
