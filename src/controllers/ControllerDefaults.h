#pragma once

#include "controllers/ControlOptions.h"

namespace ControllerDefaults {

/// Puts the defaults of the record's model into it: pictures, brightness, LED count and so on. `path` is one
/// JSON object with a member for each model. A missing or broken file is logged and gives the general
/// defaults, and a device without an LED count.
void apply(ControlOptions& options,
           const QString& path = QStringLiteral("controler_config/LVController.json"));

} // namespace ControllerDefaults
