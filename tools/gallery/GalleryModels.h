#pragma once

#include "viewModels/DeviceModel.h"

#include <QMap>

/// `count` devices of the models that the product table knows, some with difficult names.
QMap<QString, DeviceModel> galleryDevices(int count);
