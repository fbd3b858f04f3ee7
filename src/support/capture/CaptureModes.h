#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>

class CaptureBackend;

/// One entry of the list of ways in which this system's desktop can be read.
struct CaptureMode
{
    QString name;
    /// Null where the mode cannot work, for want of a display say.
    std::function<std::unique_ptr<CaptureBackend>()> create;
};

/// The modes of this system in the order of the settings dialog. A new back end is a new entry here.
QList<CaptureMode> captureModes();
