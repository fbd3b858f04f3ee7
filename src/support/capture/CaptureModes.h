#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>

class ScreenGrabber;

/// One of the ways to read this system's desktop.
struct CaptureMode
{
    static constexpr char kContext[] = "CaptureMode"; ///< of the translations

    QString name; ///< by which the user's choice is kept
    /// Null where it cannot work, for want of a display say.
    std::function<std::shared_ptr<ScreenGrabber>()> create = {};
    bool isSessionsOwn = false; ///< what this session is read by unless the user chooses otherwise
    const char* desc = "";      ///< what it is, for people: a source text
    QString idPrefix = {};      ///< the ids of its sources begin with it, and those of no other mode do
};

/// The modes of this system in the order of the settings dialog. Another grabber is a new entry here.
QList<CaptureMode> captureModes();
