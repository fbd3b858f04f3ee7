#include "app/PageModels.h"

#include "effects/EffectsManager.h"

#include <QCoreApplication>
#include <QPixmapCache>

namespace {

const QString kGraphicsGroup = QStringLiteral("id.effect.graphics");
const QString kGraphicsModel = QStringLiteral("LV0N03"); ///< the only model with that group

/// Without a picture of its own for the chosen state it would be tinted in the highlight colour. Pages of one
/// group follow each other, and decoding takes milliseconds: the toolkit keeps it until nobody has shown it
/// for a while.
QIcon plainIcon(const QString& id, const EffectPicture& source)
{
    const QString key = QStringLiteral("effect ") + id;
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = QPixmap::fromImage(source);
        QPixmapCache::insert(key, picture);
    }
    if (picture.isNull())
        return {};
    QIcon icon(picture);
    icon.addPixmap(picture, QIcon::Selected);
    return icon;
}

} // namespace

bool isGroupOffered(EffectsManager& effects, const QString& groupId, const QString& model)
{
    return !effects.groupInfo(groupId).workers.isEmpty() &&
           (groupId != kGraphicsGroup || model == kGraphicsModel);
}

QMap<QString, WorkGroupModel> workGroupModels(EffectsManager& effects, const QString& model)
{
    QMap<QString, WorkGroupModel> groups;
    for (const QString& id : effects.groupIds()) {
        if (!isGroupOffered(effects, id, model))
            continue;
        const EffectGroupInfo info = effects.groupInfo(id);
        WorkGroupModel group;
        group.name = info.name;
        group.tooltip = info.desc;
        group.order = info.order;
        groups.insert(id, group);
    }
    return groups;
}

QMap<QString, WorkerModel> workerModels(EffectsManager& effects, const QString& groupId)
{
    QMap<QString, WorkerModel> workers;
    for (const QString& id : effects.groupInfo(groupId).workers) {
        const EffectWorkerOptions effect = effects.effectOptions(id);
        WorkerModel worker;
        worker.name = effect.name;
        worker.tooltip = effect.desc;
        worker.order = effect.order;
        worker.icon = plainIcon(id, effect.icon);
        worker.sOptWidget = effect.sOptWidget;
        worker.lOptWidget = effect.lOptWidget;
        workers.insert(id, worker);
    }
    return workers;
}

const char* choiceNotice(EffectsManager& effects, const ControlOptions& device)
{
    if (!isGroupOffered(effects, device.workMode, device.model))
        return QT_TRANSLATE_NOOP("EffectNotice", "当前的工作模式不可用，请另选一种。");
    if (!effects.groupInfo(device.workMode).workers.contains(device.subMode) ||
        effects.boundEffectId(device.id) != device.subMode)
        return QT_TRANSLATE_NOOP("EffectNotice", "当前的效果不可用，请另选一种。");
    return "";
}

QString deviceTitle(const ControlOptions& device)
{
    const bool isNamed = device.kindName != device.model;
    return QStringLiteral("%1 (%2)").arg(isNamed ? device.kindName : device.portName, device.id);
}
