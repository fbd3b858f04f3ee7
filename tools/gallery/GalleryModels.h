#pragma once

#include "viewModels/DeviceModel.h"

#include <QJsonObject>
#include <QMap>

/// `count` devices of the models that the product table knows, some with difficult names.
QMap<QString, DeviceModel> galleryDevices(int count);

/// The properties that option widgets would get from a worker: sound sources, one of a long name; animations;
/// screens, and whatever can be set with them.
QJsonObject galleryProperties();

/// Further states of an option widget, by name: the properties that differ.
QMap<QString, QJsonObject> galleryStates(const QString& optionWidget);
