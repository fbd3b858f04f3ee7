#pragma once

#include "controllers/LV_RGB.h"
#include "controllers/PortFinding.h"
#include "viewModels/DeviceModel.h"
#include "viewModels/HotkeyModel.h"

#include <QImage>
#include <QJsonObject>
#include <QMap>
#include <QPointF>
#include <QVector>

/// `count` devices of the models that the product table knows, some with difficult names.
QMap<QString, DeviceModel> galleryDevices(int count);

/// What may keep devices from being found: a usual one of them, and all.
QVector<PortFindings> galleryFindings();

/// The properties that option widgets would get from a worker: sound sources, one of a long name; animations;
/// screens, and whatever can be set with them.
QJsonObject galleryProperties();

/// Further states of an option widget, by name: the properties that differ.
QMap<QString, QJsonObject> galleryStates(const QString& optionWidget);

/// The properties that the layout editor would get: so many LEDs around the canvas, not quite evenly.
QJsonObject galleryLayout(int leds);

/// A bright scene with a dark side, at canvas size.
QImage galleryFrame();

/// The layout that is shipped for a model; empty for none.
QJsonObject galleryShippedLayout(const QString& model);

/// The light of LEDs that stand there: all colours, and some that are dark.
QVector<LV_RGB> galleryLight(const QVector<QPointF>& places);

/// The hotkey actions with their first combinations; their names in the source language by id.
QVector<HotkeyModel> galleryHotkeys();
QMap<QString, QString> galleryHotkeyNames();
