#pragma once

#include "viewModels/WorkGroupModel.h"
#include "viewModels/WorkerModel.h"

#include <QMap>

class EffectsManager;

/// The groups that the control page offers for a device of this model, by group id.
QMap<QString, WorkGroupModel> workGroupModels(EffectsManager& effects, const QString& model);
/// The effects of a group by effect id; none for an unknown group.
QMap<QString, WorkerModel> workerModels(EffectsManager& effects, const QString& groupId);
