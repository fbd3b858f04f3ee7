#include "effects/colorful/SFrmColorMap.h"

#include "support/config/ConfigKeys.h"
#include "support/log/Loggers.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>

namespace {

constexpr int kHeight = 50;
constexpr int kMargin = 18;
constexpr int kMinRowHeight = 22; // more than the margins leave, or the text would be cut
constexpr const char* kSpeedKey = ConfigKeys::kColorMapSpeed.key;

} // namespace

SFrmColorMap::SFrmColorMap(QWidget* parent)
    : WithProperties(parent)
    , m_speedLabel(new QLabel(this))
    , m_speedSlider(new QSlider(Qt::Horizontal, this))
{
    m_properties.add({{kSpeedKey, [this] { return m_speedSlider->value(); },
                       [this](const QJsonValue& speed) { m_speedSlider->setValue(speed.toInt(0)); }}});
    setFixedHeight(kHeight);
    m_speedLabel->setObjectName(QStringLiteral("speedLabel"));
    m_speedSlider->setObjectName(QStringLiteral("speedSlider"));
    m_speedLabel->setBuddy(m_speedSlider);
    m_speedSlider->setRange(1, 200);
    m_speedSlider->setMinimumHeight(kMinRowHeight);
    m_speedLabel->setMinimumHeight(kMinRowHeight);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    row->addWidget(m_speedLabel);
    row->addWidget(m_speedSlider);
    retranslate();

    connect(m_speedSlider, &QSlider::valueChanged, this, &SFrmColorMap::onSpeedSliderChanged);
}

void SFrmColorMap::onSpeedSliderChanged(int v)
{
    emit effectPropertyChanged(kSpeedKey, v);
    LOG4CPLUS_INFO(usrOptionsLogger(), toLogString(QStringLiteral("Speed changed to %1").arg(v)));
}

void SFrmColorMap::retranslate()
{
    m_speedLabel->setText(tr("速度："));
}

void SFrmColorMap::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    AbsWorkerWidget::changeEvent(event);
}
