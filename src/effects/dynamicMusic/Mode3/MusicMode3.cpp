#include "effects/dynamicMusic/Mode3/MusicMode3.h"

#include "effects/colorful/strapColors.h"
#include "effects/dynamicMusic/Mode1/LevelMeter.h"

#include <QTimer>
#include <algorithm>

namespace {

constexpr int kRowPixels = 300;
constexpr double kHighestLevel = 79.999999; // the last pixel, not the one behind it
constexpr int kRefreshMs = 10;

} // namespace

MusicMode3::Light::Light(const QGradientStops& stops)
    : row(gradientColors(stops, kRowPixels))
{
}

MusicMode3::MusicMode3(const EffectWorkerOptions& options, QObject* parent)
    : MusicMode1(options, parent)
{
}

int MusicMode3::load(const ControlOptions& ctlOptions)
{
    MusicMode1::load(ctlOptions);
    lightFragments();
    return 0;
}

void MusicMode3::lightFragments()
{
    const Light light({{0.0, QColor(Qt::blue)}, {1.0, QColor(Qt::red)}});
    for (auto fragment = m_fragments.cbegin(); fragment != m_fragments.cend(); ++fragment)
        m_lights.insert(fragment.key().second, light);
    QTimer::singleShot(kRefreshMs, this, &MusicMode3::onRefreshTimerTriggered);
}

void MusicMode3::onRefreshTimerTriggered()
{
    QVector<LV_RGB> result;
    for (auto fragment = m_fragments.cbegin(); fragment != m_fragments.cend(); ++fragment) {
        if (result.size() < nbLeds())
            result += fragmentColors(fragment.key().second, *fragment, 0.0);
    }
    result.resize(nbLeds());
    emit updateColors(result);
}

QVector<LV_RGB> MusicMode3::fragmentColors(const QString& name, const Fragment& fragment, double level)
{
    Light& light = m_lights[name];
    const double shown = std::min(light.filter.filter(level), kHighestLevel);
    const auto x = static_cast<int>(kRowPixels * (shown / LevelMeter::kFullScale));
    return QVector<LV_RGB>(fragment.count(), light.row.at(x));
}
