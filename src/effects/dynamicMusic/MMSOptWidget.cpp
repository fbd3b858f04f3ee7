#include "effects/dynamicMusic/MMSOptWidget.h"

#include "effects/dynamicMusic/MediaSourceOptWidget.h"
#include "effects/dynamicMusic/strengthSlider.h"
#include "support/config/ConfigKeys.h"
#include "support/log/Loggers.h"

#include <QEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace {

constexpr int kHeight = 100;
constexpr const char* kStrengthKey = ConfigKeys::kMusicStrength.key;

} // namespace

MMSOptWidget::MMSOptWidget(QWidget* parent)
    : WithProperties(parent)
    , m_mediaSource(new MediaSourceOptWidget(this))
    , m_strengthLabel(new QLabel(this))
    , m_strengthSlider(new QSlider(Qt::Horizontal, this))
{
    m_properties.add({{kStrengthKey, [this] { return StrengthSlider::strengthOf(m_strengthSlider->value()); },
                       [this](const QJsonValue& strength) {
                           // Never reported back: the slider knows fewer strengths than the worker.
                           const QSignalBlocker blocker(m_strengthSlider);
                           if (strength.isDouble())
                               m_strengthSlider->setValue(StrengthSlider::valueOf(strength.toDouble()));
                       }}});
    m_properties.add(m_mediaSource->properties());
    setFixedHeight(kHeight);
    m_strengthLabel->setObjectName(QStringLiteral("strengthLabel"));
    m_strengthLabel->setBuddy(m_strengthSlider);
    m_strengthSlider->setObjectName(QStringLiteral("strengthSlider"));
    m_strengthSlider->setRange(StrengthSlider::kMin, StrengthSlider::kMax);

    m_mediaSource->addRow(m_strengthLabel, m_strengthSlider);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_mediaSource);
    retranslate();

    connect(m_mediaSource, &AbsWorkerWidget::effectPropertyChanged, this,
            &AbsWorkerWidget::effectPropertyChanged);
    connect(m_strengthSlider, &QSlider::valueChanged, this, &MMSOptWidget::onStrengthSliderChanged);
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
