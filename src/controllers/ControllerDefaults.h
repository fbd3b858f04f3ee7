#pragma once

#include "controllers/ControlOptions.h"

namespace ControllerDefaults {

inline constexpr char kModels[] = "controler_config/LVController.json";

/// Puts the defaults of the record's model into it: pictures, brightness, LED count and so on. `path` is one
/// JSON object with a member for each model. A missing or broken file is logged and gives the general
/// defaults, and a device without an LED count. False where the file does not have the model.
bool apply(ControlOptions& options, const QString& path = QLatin1String(kModels));

/// Whether the file has this model.
bool isKnown(const QString& model, const QString& path = QLatin1String(kModels));

} // namespace ControllerDefaults
