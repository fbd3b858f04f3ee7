#include "effects/AbsWorkerWidget.h"

#include "effects/IEffectWorker.h"

AbsWorkerWidget::AbsWorkerWidget(QWidget* parent)
    : QWidget(parent)
{
    qRegisterMetaType<IEffectWorkerPtr>("IEffectWorkerPtr");
}
