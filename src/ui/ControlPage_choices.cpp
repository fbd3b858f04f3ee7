// The control page's buttons for effect groups and for the effects of one group.
#include "ui/ControlPage.h"

#include "ui/controls/EffectWorkerButton.h"
#include "ui/controls/LineWrappedRadioButton.h"
#include "ui_ControlPage.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QPointer>
#include <QSignalBlocker>
#include <QTextDocument>

namespace {

constexpr int kGroupColumns = 3;
constexpr int kGroupRowHeight = 40;
constexpr int kGroupMargin = 20;
constexpr int kWorkerColumns = 4;
constexpr int kWorkerDiameter = 100;
constexpr int kToolTipMs = 30000;

QString translated(const char* context, const QString& source)
{
    return source.isEmpty() ? QString() : QCoreApplication::translate(context, source.toUtf8().constData());
}

/// A name is no shortcut: each "&" shows.
QString buttonText(QString name)
{
    return name.replace(u'&', QLatin1String("&&"));
}

QString toolTipText(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()) : text;
}

/// Gone for the user at once. A button may be dropped by whoever hears of its own click, so the object itself
/// stays until it has come back from there.
void retire(QWidget* button)
{
    button->hide();
    button->setParent(nullptr);
    button->deleteLater();
}

QGridLayout* renewGrid(QWidget* container)
{
    delete container->layout();
    return new QGridLayout(container);
}

} // namespace

void ControlPage::setWorkGroups(QMap<QString, WorkGroupModel> groups)
{
    setWorkGroups(groups, QString());
}

void ControlPage::setWorkGroups(QMap<QString, WorkGroupModel> groups, QString currentGroup)
{
    m_groups.clear();
    QGridLayout* grid = renewGrid(ui->workGroupContainer);
    grid->setContentsMargins(kGroupMargin, kGroupMargin, kGroupMargin, kGroupMargin);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(15);

    QMap<int, QWidget*> byOrder;
    for (auto group = groups.begin(); group != groups.end(); ++group) {
        addGroupButton(group.key(), group.value());
        QWidget*& slot = byOrder[group->order];
        if (slot)
            slot->hide(); // two groups of one order: the later takes the place
        slot = group->button.data();
    }
    int i = 0;
    for (QWidget* button : qAsConst(byOrder)) {
        grid->addWidget(button, i / kGroupColumns, i % kGroupColumns);
        grid->setColumnStretch(i % kGroupColumns, 1); // else the widths hang on how texts were wrapped before
        button->show();
        ++i;
    }

    const int rows = (groups.size() + kGroupColumns - 1) / kGroupColumns;
    const QMargins margins = grid->contentsMargins();
    ui->workGroupContainer->setMinimumHeight(margins.top() + margins.bottom() + rows * kGroupRowHeight +
                                             grid->spacing() * (rows - 1));
    fitTexts();
    chainTabOrder();
    if (!currentGroup.isEmpty())
        setCurrentGroup(currentGroup);
    remeasure();
}

void ControlPage::addGroupButton(const QString& id, WorkGroupModel& model)
{
    model.button = {new LineWrappedRadioButton(ui->workGroupContainer), retire};
    LineWrappedRadioButton* button = model.button.data();
    button->setProperty("class", "RadioButton1");
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    button->installEventFilter(this);
    translateGroup(model);
    connect(button, &LineWrappedRadioButton::toggled, this, [this, id](bool checked) {
        if (!checked)
            return;
        m_currentGroup = id;
        emit workGoupChanged(id);
    });
    m_groups.insert(id, model);
}

void ControlPage::translateGroup(const WorkGroupModel& model)
{
    const QString name = translated("GroupInformation", model.name);
    model.button->setText(buttonText(name));
    model.button->setAccessibleName(name);
    model.button->setToolTip(toolTipText(translated("GroupInformation", model.tooltip)));
}

void ControlPage::setCurrentGroup(QString groupId)
{
    const auto group = m_groups.constFind(groupId);
    if (group == m_groups.constEnd())
        return;
    m_currentGroup = groupId;
    const QSignalBlocker blocker(this);
    group->button->setChecked(true);
}

void ControlPage::setWorkers(QMap<QString, WorkerModel> workers)
{
    setWorkers(workers, QString());
}

void ControlPage::setWorkers(QMap<QString, WorkerModel> workers, QString currentWorker)
{
    m_workers.clear();
    QGridLayout* grid = renewGrid(ui->workerContainer);
    grid->setVerticalSpacing(20);

    QMap<qint64, QWidget*> byOrder;
    int rowHeight = 0;
    for (auto worker = workers.begin(); worker != workers.end(); ++worker) {
        addWorkerButton(worker.key(), worker.value());
        rowHeight = worker->button->minimumHeight();
        qint64 place = worker->order;
        if (byOrder.contains(place))
            place = qHash(worker.key(), 0);
        byOrder.insert(place, worker->button.data());
    }
    int i = 0;
    for (QWidget* button : qAsConst(byOrder)) {
        grid->addWidget(button, i / kWorkerColumns, i % kWorkerColumns, Qt::AlignCenter);
        button->show();
        ++i;
    }
    chainTabOrder();

    const int count = workers.size();
    const int rows = (count + kWorkerColumns - 1) / kWorkerColumns;
    const QMargins margins = grid->contentsMargins();
    ui->workerContainer->setMinimumHeight(margins.top() + margins.bottom() + rows * rowHeight +
                                          grid->verticalSpacing() * (rows - 1));
    const QPointer<QGridLayout> mine(grid);
    if (!currentWorker.isEmpty())
        setCurrentWorker(currentWorker);
    if (!mine)
        return; // whoever filled the options has set other effects meanwhile
    ui->workersRegion->setVisible(count != 1);
    remeasure();
}

void ControlPage::addWorkerButton(const QString& id, WorkerModel& model)
{
    if (model.icon.isNull()) {
        QString name = id;
        name.replace(u'.', u'_');
        const QString path = QStringLiteral("images/icons/%1.png").arg(name);
        model.icon = QIcon(path);
        // Without a picture of its own for the chosen state it would be tinted in the highlight colour.
        model.icon.addFile(path, QSize(), QIcon::Selected);
    }
    model.button = {new EffectWorkerButton(ui->workerContainer), retire};
    EffectWorkerButton* button = model.button.data();
    button->setProperty("class", "WorkerButton");
    button->setIcon(model.icon);
    button->setIconSize(QSize(kWorkerDiameter, kWorkerDiameter));
    button->setDiameter(kWorkerDiameter);
    button->setToolTipDuration(kToolTipMs);
    button->installEventFilter(this);
    translateWorker(model);
    connect(button, &EffectWorkerButton::toggled, this, [this, id](bool checked) {
        if (!checked)
            return;
        emit workerChanged(id);
        if (m_workers.contains(id)) // the receiver may have set other effects
            setCurrentWorker(id);
    });
    m_workers.insert(id, model);
}

void ControlPage::translateWorker(const WorkerModel& model)
{
    const QString name = translated("EffectNames", model.name);
    model.button->setText(buttonText(name));
    model.button->setAccessibleName(name);
    model.button->setToolTip(toolTipText(translated("EffectNames", model.tooltip)));
}

void ControlPage::checkWorkerButton(const QString& id)
{
    for (auto worker = m_workers.constBegin(); worker != m_workers.constEnd(); ++worker) {
        EffectWorkerButton* button = worker->button.data();
        const QSignalBlocker blocker(button);
        if (worker.key() == id) {
            button->setChecked(true);
        } else if (button->isChecked() && !m_workers.contains(id)) {
            // Of an exclusive group one stays checked otherwise.
            button->setAutoExclusive(false);
            button->setChecked(false);
            button->setAutoExclusive(true);
        }
    }
}
