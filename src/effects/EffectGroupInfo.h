#pragma once

#include "effects/EffectPicture.h"

#include <QSet>
#include <QString>

/// One group of effects, as the pages offer it.
struct EffectGroupInfo
{
    QString id;
    QString name; ///< already looked up once; source text in the translation context "GroupInformation"
    QString desc;
    EffectPicture icon;
    QSet<QString> workers; ///< ids of the effects in this group
    int order = 0;         ///< place in the sequence of groups
    QString defaultEffect; ///< effect id chosen when nothing else decides
};
