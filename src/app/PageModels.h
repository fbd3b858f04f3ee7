#pragma once

#include "viewModels/WorkGroupModel.h"
#include "viewModels/WorkerModel.h"

#include <QMap>

class EffectsManager;
struct ControlOptions;

/// Whether a device of this model can be given effects of the group on its page.
bool isGroupOffered(EffectsManager& effects, const QString& groupId, const QString& model);
/// The groups that the control page offers for a device of this model, by group id.
QMap<QString, WorkGroupModel> workGroupModels(EffectsManager& effects, const QString& model);
/// The effects of a group by effect id; none for an unknown group.
QMap<QString, WorkerModel> workerModels(EffectsManager& effects, const QString& groupId);
/// How a device is named where it is the subject: by the user's name or its port, and its id.
QString deviceTitle(const ControlOptions& device);
/// Why nothing stands chosen on the page of this device: a source text of the translation context
/// EffectNotice::kContext; empty when its effect is running and is offered.
const char* choiceNotice(EffectsManager& effects, const ControlOptions& device);
