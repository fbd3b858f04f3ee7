#pragma once

#include <QString>
#include <QStringList>

/// The file name that a server gives, fit to be used in a folder of ours on every system: of a relative path
/// the last part. Empty for whatever leads or could lead elsewhere: absolute, upwards, hidden, a device's
/// name, a character out of the ordinary, an ending that is none of `endings` (without dot).
QString plainFileName(const QString& named, const QStringList& endings);
