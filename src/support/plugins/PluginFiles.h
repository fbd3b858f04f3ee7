#pragma once

#include <QString>

/// The file name pattern of this system's plug-in libraries.
QString pluginFilePattern();
