#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <algorithm>

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

/// Null for a source that is not there; valid as long as the list is.
inline const CaptureSource* findSource(const CaptureSources& sources, const QString& id)
{
    const auto it = std::find_if(sources.begin(), sources.end(),
                                 [&id](const CaptureSource& source) { return source.id == id; });
    return it == sources.end() ? nullptr : &*it;
}
