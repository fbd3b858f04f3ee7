#pragma once

#include <QList>
#include <QString>

/// One sound source of the system: what a loudspeaker plays, or a microphone.
struct AudioSource
{
    QString id;             ///< the system's own name, stable over restarts
    QString name;           ///< for people
    bool isDefault = false; ///< what the default loudspeaker plays

    bool operator==(const AudioSource& other) const
    {
        return id == other.id && name == other.name && isDefault == other.isDefault;
    }
};
using AudioSources = QList<AudioSource>;

/// The identifier of the capturer that is always on what the default loudspeaker plays.
constexpr char kDefaultCapturerId[] = "default";
