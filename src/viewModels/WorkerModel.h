#pragma once

#include <QIcon>
#include <QSharedPointer>
#include <QString>

class EffectWorkerButton;

/// One effect inside a group as the pages show it; kept by effect id.
struct WorkerModel
{
    QString name;                              ///< source text in the translation context "EffectNames"
    QString tooltip;                           ///< the same context
    int order = 0;                             ///< place within the group, ascending
    QIcon icon;                                ///< may be null
    QString sOptWidget;                        ///< class of the short option widget, empty for none
    QString lOptWidget;                        ///< class of the long option widget, empty for none
    QSharedPointer<EffectWorkerButton> button; ///< filled by the page
};
