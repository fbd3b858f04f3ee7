#include "effects/dynamicMusic/MMSOptWidget.h"

#include "effects/dynamicMusic/MediaSourceOptWidget.h"
#include "effects/dynamicMusic/strengthSlider.h"
#include "support/config/ConfigKeys.h"
#include "support/config/hashPropertyKey.h"
#include "support/log/Loggers.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QJsonObject>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

namespace {

constexpr int kHeight = 100;
constexpr int kSideMargin = 18; // both as the row of the sources has them
constexpr int kLabelGap = 6;
constexpr const char* kStrengthKey = ConfigKeys::kMusicStrength.key;

} // namespace

MMSOptWidget::MMSOptWidget(QWidget* parent)
    : AbsWorkerWidget(parent)
    , m_mediaSource(new MediaSourceOptWidget(this))
    , m_strengthLabel(new QLabel(this))
    , m_strengthSlider(new QSlider(Qt::Horizontal, this))
{
    setFixedHeight(kHeight);
    m_strengthLabel->setObjectName(QStringLiteral("strengthLabel"));
    m_strengthLabel->setBuddy(m_strengthSlider);
    m_strengthSlider->setObjectName(QStringLiteral("strengthSlider"));
    m_strengthSlider->setRange(StrengthSlider::kMin, StrengthSlider::kMax);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(kSideMargin, 0, kSideMargin, 0);
    row->setSpacing(kLabelGap); // else the column's
    row->addWidget(m_strengthLabel);
    row->addWidget(m_strengthSlider);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, kSideMargin / 2);
    column->setSpacing(0);
    column->addWidget(m_mediaSource);
    column->addLayout(row);
    retranslate();

    connect(m_mediaSource, &AbsWorkerWidget::effectPropertyChanged, this,
            &AbsWorkerWidget::effectPropertyChanged);
    connect(m_strengthSlider, &QSlider::valueChanged, this, &MMSOptWidget::onStrengthSliderChanged);
}

void MMSOptWidget::setEffectProperty(const QString& key, const QJsonValue& val)
{
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kStrengthKey):
        showStrength(val);
        break;
    case hashPropertyKey(""):
        showStrength(val.toObject().value(QLatin1String(kStrengthKey)));
        m_mediaSource->setEffectProperty(key, val);
        break;
    default:
        m_mediaSource->setEffectProperty(key, val);
        break;
    }
}

QJsonValue MMSOptWidget::effectProperty(const QString& key)
{
    const double strength = StrengthSlider::strengthOf(m_strengthSlider->value());
    switch (hashPropertyKey(key)) {
    case hashPropertyKey(kStrengthKey):
        return strength;
    case hashPropertyKey(""): {
        QJsonObject all = m_mediaSource->effectProperty(key).toObject();
        all.insert(QLatin1String(kStrengthKey), strength);
        return all;
    }
    default:
        return m_mediaSource->effectProperty(key);
    }
}

void MMSOptWidget::showStrength(const QJsonValue& strength)
{
    const QSignalBlocker blocker(m_strengthSlider);
    if (strength.isDouble())
        m_strengthSlider->setValue(StrengthSlider::valueOf(strength.toDouble()));
}

void MMSOptWidget::onStrengthSliderChanged(int value)
{
    const double strength = StrengthSlider::strengthOf(value);
    emit effectPropertyChanged(kStrengthKey, strength);
    LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(QStringLiteral("Strength changed to %1").arg(strength)));
}

void MMSOptWidget::retranslate()
{
    m_strengthLabel->setText(tr("强度："));
}

void MMSOptWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    AbsWorkerWidget::changeEvent(event);
}
