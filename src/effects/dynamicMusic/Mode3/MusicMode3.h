#pragma once

#include "effects/dynamicMusic/Mode1/MusicMode1.h"
#include "effects/dynamicMusic/Mode3/PeakDecayFilter.h"

#include <QBrush>
#include <QHash>

/// Each fragment is of one colour, which its level takes from a gradient: blue when it is quiet, red when it
/// is loud. The colour rises at once and falls within half a second.
class MusicMode3 : public MusicMode1
{
    Q_OBJECT

public:
    Q_INVOKABLE MusicMode3(const EffectWorkerOptions& options, QObject* parent);

    int load(const ControlOptions& ctlOptions) override;

protected:
    QVector<LV_RGB> fragmentColors(const QString& name, const Fragment& fragment, double level) override;
    /// Gives every fragment its gradient, and paints the quiet state a moment later.
    void lightFragments();

private slots:
    void onRefreshTimerTriggered();

private:
    /// A gradient as a row of pixels from quiet to loud, and the level that is shown of it.
    struct Light
    {
        explicit Light(const QGradientStops& stops = {});

        QVector<LV_RGB> row;
        PeakDecayFilter filter;
    };

    QHash<QString, Light> m_lights; ///< by the fragments' names
};
