#include "PluginFiles.h"

QString pluginFilePattern()
{
    return QStringLiteral("*.so");
}
