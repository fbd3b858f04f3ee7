#pragma once

#include <QList>
#include <functional>
#include <memory>

class ScreenGrabber;

/// Makes what reads this system's desktop in one of the ways there are; null where it cannot work, for want
/// of a display say.
using CaptureMode = std::function<std::shared_ptr<ScreenGrabber>()>;

/// The modes of this system in the order of the settings dialog. Another grabber is a new entry here.
QList<CaptureMode> captureModes();
