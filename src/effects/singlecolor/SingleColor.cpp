#include "effects/singlecolor/SingleColor.h"

#include "effects/rgb.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QDebug>

namespace {

constexpr int kRefreshMs = 500;
constexpr const char* kColorKey = ConfigKeys::kSingleColor.key;

} // namespace

SingleColor::SingleColor(const EffectWorkerOptions& options, QObject* parent)
    : WithProperties(parent)
    , m_effectOptions(options)
{
    m_properties.add({{kColorKey, [this] { return toRgbArray(m_color); },
                       [this](const QJsonValue& color) {
                           if (color.isArray())
                               m_color = colorFromRgbArray(color.toArray());
                       },
                       EffectProperty::Look}});
}

int SingleColor::load(const ControlOptions& ctlOptions)
{
    m_colors.resize(static_cast<int>(ctlOptions.nbLeds));
    bool ok = false;
    // m_ctlOptions is still empty here: what these calls write through goes to the store's nameless
    // controller, and the device's own entry is written from the first tick on.
    setColor(QColor(ConfigurationManager::instance()
                        ->effectVariant(m_effectOptions.id, ctlOptions.id, kColorKey)
                        .toUInt(&ok)));
    if (!ok) {
        qInfo().nospace().noquote() << "[SingleColor]: Not found single color mode configuration "
                                    << ctlOptions.id;
        setColor(QColor(ConfigKeys::kSingleColor.fallback));
    } else {
        qInfo().nospace().noquote() << "[SingleColor]: Single color mode is starting, current color:"
                                    << m_color << ", controller: " << ctlOptions.id;
    }
    m_ctlOptions = ctlOptions;
    m_refreshTimer.setInterval(kRefreshMs);
    connect(&m_refreshTimer, &QTimer::timeout, this, [this] { setColor(m_color); });
    m_refreshTimer.start();
    return 0;
}

EffectWorkerOptions SingleColor::options()
{
    return m_effectOptions;
}

void SingleColor::unload()
{
    storeColor();
    qInfo().nospace().noquote() << "[Single color]: Single color mode is stopping, controller: "
                                << m_ctlOptions.id << " color: " << m_color;
}

void SingleColor::setColor(QColor color)
{
    m_color = color;
    m_colors.fill(toLedColor(color));
    storeColor();
    emit updateColors(m_colors);
}

void SingleColor::storeColor()
{
    ConfigurationManager* config = ConfigurationManager::instance();
    config->setEffectVariant(m_effectOptions.id, m_ctlOptions.id, kColorKey, m_color.rgb());
    config->saveEffectJsonObj(m_effectOptions.id);
}

void SingleColor::onCtlDirChanged(uint32_t) {}
void SingleColor::onCtlBrightnessChanged(float) {}
void SingleColor::onCtlKindNameChanged(QString) {}
void SingleColor::onCtlEnableChanged(bool) {}
