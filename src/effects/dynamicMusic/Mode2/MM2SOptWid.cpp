#include "effects/dynamicMusic/Mode2/MM2SOptWid.h"

#include "effects/colorful/SFrmMoodShadow.h"
#include "effects/dynamicMusic/MMSOptWidget.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

MM2SOptWid::MM2SOptWid(QWidget* parent)
    : WithProperties(parent)
    , m_sound(new MMSOptWidget(this))
    , m_mood(new SFrmMoodShadow(this))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    for (AbsWorkerWidget* part :
         {static_cast<AbsWorkerWidget*>(m_sound), static_cast<AbsWorkerWidget*>(m_mood)}) {
        rows->addWidget(part);
        connect(part, &AbsWorkerWidget::effectPropertyChanged, this, &AbsWorkerWidget::effectPropertyChanged);
    }
    setFixedHeight(m_sound->minimumHeight() + m_mood->minimumHeight());
    m_properties.add(m_sound->properties());
    m_properties.add(m_mood->properties());
}

bool MM2SOptWid::event(QEvent* event)
{
    // The latter comes whenever a text has changed.
    if (event->type() == QEvent::Show || event->type() == QEvent::LayoutRequest)
        alignLabels();
    return AbsWorkerWidget::event(event);
}

/// The parts have a grid each; with labels of one width they look like one.
void MM2SOptWid::alignLabels()
{
    const auto labels = findChildren<QLabel*>();
    int width = 0;
    for (const QLabel* label : labels)
        width = std::max(width, label->sizeHint().width());
    for (QLabel* label : labels)
        label->setMinimumWidth(width);
}
