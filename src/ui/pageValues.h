#pragma once

#include "viewModels/WorkGroupModel.h"
#include "viewModels/WorkerModel.h"
#include "widgets/ChoiceGrid.h"

#include <QMap>
#include <type_traits>

/// What a grid shows of groups or effects, by id.
template <typename Model>
ChoiceGrid::Choices choices(const QMap<QString, Model>& models)
{
    ChoiceGrid::Choices result;
    for (auto model = models.begin(); model != models.end(); ++model) {
        ChoiceGrid::Choice& choice = result[model.key()] = {model->name, model->tooltip, model->order, {}};
        if constexpr (std::is_same_v<Model, WorkerModel>)
            choice.icon = model->icon;
    }
    return result;
}

/// A brightness of 0 to 1 as the sliders show it: truncated, but 0.53 is 0.52999998 as a float.
inline int toPercent(float brightness)
{
    constexpr float kFloatErrorPercent = 0.001F;
    return static_cast<int>(qBound(0.0F, brightness * 100.0F + kFloatErrorPercent, 100.0F));
}
