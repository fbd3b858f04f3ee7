#include "effects/dynamicMusic/Mode1/MusicMode1.h"

#include "effects/dynamicMusic/Mode1/LevelMeter.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDebug>
#include <algorithm>

namespace {

constexpr const char* kStrengthKey = ConfigKeys::kMusicStrength.key;
constexpr char kRight[] = "right";

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

/// Two halves that grow from the middle, and the LED between them.
Fragments defaultFragments(int nbLeds, double gain)
{
    Fragments fragments;
    const auto add = [&fragments, gain](const char* name, int beginIndex, int endIndex, int dir) {
        Fragment fragment;
        fragment.beginIndex = beginIndex;
        fragment.endIndex = endIndex;
        fragment.dbEnhance = 1.0;
        fragment.mulEnhance = gain;
        fragment.maxFrequency = 200.0;
        fragment.dir = dir;
        fragments.insert({beginIndex, QLatin1String(name)}, fragment);
    };
    const int half = nbLeds / 2;
    const bool odd = nbLeds % 2 != 0;
    add("left", 0, half, 1);
    if (odd)
        add("mid", half, half + 1, 0);
    add(kRight, odd ? half + 1 : half, nbLeds, 0);
    return fragments;
}

QJsonObject toJson(const Fragments& fragments)
{
    QJsonObject json;
    for (auto fragment = fragments.cbegin(); fragment != fragments.cend(); ++fragment)
        json.insert(fragment.key().second, fragment->toJson());
    return json;
}

/// Whether an unload has stored these for a strip of another length, and nobody has changed them since.
bool areOutgrown(const QJsonObject& stored, int nbLeds, double gain)
{
    const int before = stored[QLatin1String(kRight)][QLatin1String(ConfigKeys::kEndIndex.key)].toInt();
    return before != nbLeds && stored == toJson(defaultFragments(before, gain));
}

} // namespace

MusicMode1::MusicMode1(const EffectWorkerOptions& options, QObject* parent)
    : AbsMusicEffect(parent)
    , m_options(options)
{
    m_properties.add({{kStrengthKey, [this] { return m_strength; },
                       [this](const QJsonValue& val) {
                           if (val.isDouble())
                               setStrength(val.toDouble());
                       },
                       EffectProperty::Look}});
}

int MusicMode1::load(const ControlOptions& ctlOptions)
{
    AbsMusicEffect::load(ctlOptions);
    loadLEDFragmentsFromConfig(ctlOptions);
    m_direction = static_cast<int>(ctlOptions.installDirection);
    return 0;
}

EffectWorkerOptions MusicMode1::options()
{
    return m_options;
}

void MusicMode1::loadLEDFragmentsFromConfig(const ControlOptions& options)
{
    const QString modelFile = QStringLiteral("effects/dynamicMusic/%1.json").arg(options.model);
    const QJsonObject stored = config()
                                   ->effectJsonValue(effectId(), options.id, QString(), modelFile)
                                   .toObject()
                                   .value(QLatin1String(ConfigKeys::kFragments))
                                   .toObject();
    const auto& usual = ConfigKeys::kMulEnhance;
    const double gain = stored[QLatin1String(kRight)][QLatin1String(usual.key)].toDouble(usual.fallback);
    const bool outgrown = areOutgrown(stored, nbLeds(), gain);
    for (auto member = stored.begin(); member != stored.end() && !outgrown; ++member) {
        if (const auto fragment = Fragment::fromJson(member.key(), member.value()))
            m_fragments.insert({fragment->beginIndex, member.key()}, *fragment);
    }
    m_strength = config()
                     ->effectJsonValue(effectId(), options.id, kStrengthKey)
                     .toDouble(ConfigKeys::kMusicStrength.fallback);
    if (!m_fragments.isEmpty())
        return;
    qWarning().noquote() << "No configuration was read for" << options.id;
    m_fragments = defaultFragments(nbLeds(), outgrown ? gain : usual.fallback);
    qInfo().noquote() << "The default configuration is generated for" << options.id;
}

void MusicMode1::unload()
{
    config()->setEffectJsonValue(effectId(), controllerId(), ConfigKeys::kFragments, toJson(m_fragments));
    config()->setEffectJsonValue(effectId(), controllerId(), kStrengthKey, m_strength);
    config()->saveEffectJsonObj(effectId());
    AbsMusicEffect::unload();
}

void MusicMode1::spectrumUpdate(QVector<SoundChannel> channels)
{
    if (channels.isEmpty())
        return;
    QVector<LV_RGB> result;
    for (auto fragment = m_fragments.begin(); fragment != m_fragments.end(); ++fragment) {
        const double level =
            LevelMeter::smooth(fragment->history, LevelMeter::heard(*fragment, channels, quietLevel()));
        const QVector<LV_RGB> colors = fragmentColors(fragment.key().second, *fragment, level);
        if (colors.size() == fragment->count() && result.size() < nbLeds())
            result += colors;
    }
    result.resize(nbLeds());
    if (m_direction == 1)
        std::reverse(result.begin(), result.end());
    emit updateColors(result);
}

QVector<LV_RGB> MusicMode1::fragmentColors(const QString&, const Fragment& fragment, double level)
{
    return LevelMeter::colors(fragment, level);
}

void MusicMode1::onCapturerBound()
{
    emit updateColors(QVector<LV_RGB>(nbLeds()));
}

void MusicMode1::setStrength(double value)
{
    m_strength = value;
    for (Fragment& fragment : m_fragments)
        fragment.mulEnhance = value;
    config()->setEffectJsonValue(effectId(), controllerId(), kStrengthKey, m_strength);
    config()->saveEffectJsonObj(effectId());
}

void MusicMode1::onCtlDirChanged(uint32_t dir)
{
    AbsMusicEffect::onCtlDirChanged(dir);
    m_direction = static_cast<int>(dir);
}

void MusicMode1::spectrumUpdate(QVector<Spectrum>) {}
void MusicMode1::onCtlBrightnessChanged(float) {}
void MusicMode1::onCtlKindNameChanged(QString) {}
void MusicMode1::onCtlEnableChanged(bool) {}
