#include "support/plugins/PluginFiles.h"

QString pluginFilePattern()
{
    return QStringLiteral("*.so");
}
