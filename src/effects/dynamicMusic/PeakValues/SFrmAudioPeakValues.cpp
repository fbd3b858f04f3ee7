#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"

#include "effects/dynamicMusic/MediaSourceOptWidget.h"

#include <QGridLayout>

namespace {

constexpr int kMinHeight = 80;

} // namespace

SFrmAudioPeakValues::SFrmAudioPeakValues(QWidget* parent)
    : AbsWorkerWidget(parent)
    , m_mediaSource(new MediaSourceOptWidget(this))
{
    setMinimumHeight(kMinHeight);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_mediaSource, 0, 0);
    connect(m_mediaSource, &AbsWorkerWidget::effectPropertyChanged, this,
            &AbsWorkerWidget::effectPropertyChanged);
}

void SFrmAudioPeakValues::setEffectProperty(const QString& key, const QJsonValue& val)
{
    m_mediaSource->setEffectProperty(key, val);
}

QJsonValue SFrmAudioPeakValues::effectProperty(const QString& key)
{
    return m_mediaSource->effectProperty(key);
}
