#pragma once

#include <QString>

/// Path of a file or socket by which a second start finds the running program. On Linux it lies in a folder
/// that only this user can write to, so that several users can run the program and none can pose as another
/// one's. Empty, with a warning, when there is no such folder or the file there is somebody else's.
QString runtimeFile(const QString& name);
