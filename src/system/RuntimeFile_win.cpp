#include "system/RuntimeFile.h"

#include <QDir>

// The temporary folder is the user's own.
QString runtimeFile(const QString& name)
{
    return QDir::temp().filePath(name);
}
