#include "effects/dynamicMusic/PeakValues/SFrmAudioPeakValues.h"

#include "effects/dynamicMusic/MediaSourceOptWidget.h"

#include <QGridLayout>

namespace {

constexpr int kMinHeight = 80;

} // namespace

SFrmAudioPeakValues::SFrmAudioPeakValues(QWidget* parent)
    : WithProperties(parent)
    , m_mediaSource(new MediaSourceOptWidget(this))
{
    m_properties = m_mediaSource->properties();
    setMinimumHeight(kMinHeight);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_mediaSource, 0, 0);
    connect(m_mediaSource, &AbsWorkerWidget::effectPropertyChanged, this,
            &AbsWorkerWidget::effectPropertyChanged);
}
