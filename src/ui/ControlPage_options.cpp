// How the control page hosts the option widgets of the current effect.
#include "ui/ControlPage.h"

#include "effects/AbsWorkerWidget.h"
#include "ui_ControlPage.h"

#include <QDebug>
#include <QGridLayout>
#include <QMetaType>

namespace {

/// An option widget by its class name; null for a name that the meta-type system does not know.
AbsWorkerWidget* createOptionWidget(const QString& className, QWidget* parent)
{
    const int type = QMetaType::type((className + u'*').toLatin1().constData());
    const QMetaObject* metaObject = QMetaType::metaObjectForType(type);
    if (!metaObject)
        return nullptr;
    QObject* object = metaObject->newInstance(Q_ARG(QWidget*, parent));
    auto* widget = qobject_cast<AbsWorkerWidget*>(object);
    if (!widget)
        delete object;
    return widget;
}

} // namespace

QString ControlPage::sOptWidgetName() const
{
    return m_workers.value(m_currentWorker).sOptWidget;
}

QString ControlPage::lOptWidgetName() const
{
    return m_workers.value(m_currentWorker).lOptWidget;
}

void ControlPage::setCurrentWorker(QString workerId)
{
    if (!m_workers.contains(workerId)) {
        // A stored effect that is no longer there: nothing is chosen, and no options show.
        qWarning() << "[ControlPage]: Not found effect, id" << workerId;
        workerId.clear();
    }
    m_currentWorker = workerId;
    ui->workerContainer->setCurrent(workerId);

    const WorkerModel model = m_workers.value(workerId);
    const bool hasSOpt = hostSOptWidget(model.sOptWidget);
    showProductImage();
    const bool hasLOpt = hostLOptWidget(model.lOptWidget);
    chainTabOrder();
    if (hasSOpt || hasLOpt)
        emit optWidActived();
    remeasure();
    update();
}

QWidget* ControlPage::sOptWidget() const
{
    const QLayoutItem* item = ui->otherOptionsWidget->layout()->itemAt(0);
    return item ? const_cast<QLayoutItem*>(item)->widget() : nullptr;
}

bool ControlPage::hostSOptWidget(const QString& className)
{
    if (QWidget* present = sOptWidget()) {
        if (className == QLatin1String(present->metaObject()->className())) {
            ui->otherOptRegion->setVisible(!present->isHidden());
            return true;
        }
        retireSOptWidget();
    }
    AbsWorkerWidget* widget = createOptionWidget(className, ui->otherOptionsWidget);
    if (!widget)
        return false;

    static_cast<QGridLayout*>(ui->otherOptionsWidget->layout())->addWidget(widget, 0, 0);
    fitSOptWidget(widget);
    connect(widget, &AbsWorkerWidget::effectPropertyChanged, this, &ControlPage::sOptWidPropertyChanged);
    connect(widget, &AbsWorkerWidget::miniHeightChanged, this, [this, widget] {
        fitSOptWidget(widget);
        remeasure();
    });
    connect(widget, &AbsWorkerWidget::visibleStatusChanged, this, [this](bool visible) {
        ui->otherOptRegion->setVisible(visible);
        remeasure();
        update();
    });
    // One that has hidden itself has nothing to set yet; it says when that changes.
    if (!widget->testAttribute(Qt::WA_WState_ExplicitShowHide))
        widget->show();
    ui->otherOptRegion->setVisible(!widget->isHidden());
    return true;
}

/// Out of the page at once and deleted later, because it may stand in one of its own signals.
void ControlPage::retire(QWidget* optionWidget)
{
    disconnect(optionWidget, nullptr, this, nullptr);
    optionWidget->hide();
    optionWidget->setParent(nullptr);
    optionWidget->deleteLater();
}

void ControlPage::retireSOptWidget()
{
    ui->otherOptRegion->hide();
    if (QWidget* widget = sOptWidget()) {
        ui->otherOptionsWidget->layout()->removeWidget(widget);
        retire(widget);
    }
}

/// The picture of the product takes the place of a large option widget, which shows another worker's state.
void ControlPage::showProductImage()
{
    ui->lOperateWidConatiner->setCurrentWidget(ui->productImgWid);
    ui->productImgWid->setImg(m_productImage);
    while (ui->lOperateWidConatiner->count() > 1) {
        QWidget* widget = ui->lOperateWidConatiner->widget(1); // behind the picture, which is the first
        ui->lOperateWidConatiner->removeWidget(widget);
        retire(widget);
    }
}

StripPreview& ControlPage::stripPreview() const
{
    return *ui->productImgWid;
}

void ControlPage::dropOptionWidgets()
{
    retireSOptWidget();
    showProductImage();
    remeasure();
}

void ControlPage::fitSOptWidget(QWidget* widget)
{
    // One that names no height of its own would vanish.
    const int height = widget->minimumHeight() > 0 ? widget->minimumHeight() : widget->sizeHint().height();
    widget->setFixedHeight(height);
    const QMargins margins = ui->otherOptionsWidget->layout()->contentsMargins();
    ui->otherOptionsWidget->setMinimumHeight(height + margins.top() + margins.bottom());
}

bool ControlPage::hostLOptWidget(const QString& className)
{
    AbsWorkerWidget* widget = createOptionWidget(className, ui->lOperateWidConatiner);
    if (!widget)
        return false;
    ui->lOperateWidConatiner->addWidget(widget);
    ui->lOperateWidConatiner->setCurrentWidget(widget);
    connect(widget, &AbsWorkerWidget::effectPropertyChanged, this, &ControlPage::lOptWidPropertyChanged);
    return true;
}

void ControlPage::setSOptWidProperty(QString key, QJsonValue val)
{
    // Also while it hides itself: the value may be what it waits for. Its signals are left free: what the
    // option makes of the value is told back.
    if (auto* widget = qobject_cast<AbsWorkerWidget*>(sOptWidget()))
        widget->setEffectProperty(key, val);
}

void ControlPage::setLOptWidProperty(QString key, QJsonValue val)
{
    QWidget* page = ui->lOperateWidConatiner->currentWidget();
    if (page == ui->productImgWid)
        return;
    if (auto* widget = qobject_cast<AbsWorkerWidget*>(page)) {
        widget->blockSignals(true);
        widget->setEffectProperty(key, val);
        widget->blockSignals(false);
    }
}
