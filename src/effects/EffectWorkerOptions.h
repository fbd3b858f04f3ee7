#pragma once

#include "effects/EffectPicture.h"

#include <QMetaType>
#include <QString>

/// One entry of the effect catalogue.
struct EffectWorkerOptions
{
    QString id;   ///< id.effect.<group>.<name>; everything before the last dot is the group's id
    QString name; ///< source text in the translation context "EffectNames"
    EffectPicture icon;
    EffectPicture previewImage;
    QString detail;
    QString desc;
    int order = 0;      ///< place within its group, ascending
    QString sOptWidget; ///< class of the short option widget, empty for none
    QString lOptWidget; ///< class of the long option widget, empty for none
    bool async = false; ///< the worker gets a thread of its own

    /// The id of the group that an effect belongs to; empty for a text without a dot.
    static QString groupOf(const QString& effectId)
    {
        const int dot = effectId.lastIndexOf(u'.');
        return dot < 0 ? QString() : effectId.left(dot);
    }
};
Q_DECLARE_METATYPE(EffectWorkerOptions)
