#include "ui/WorkerListView.h"

#include "ui/pageValues.h"
#include "widgets/EffectWorkerButton.h"

#include <QDebug>
#include <QGridLayout>
#include <QResizeEvent>

namespace {

constexpr int kColumns = 4;
constexpr int kSpacing = 12;
constexpr double kIconPart = 0.8; ///< of the disc's diameter

} // namespace

WorkerListView::WorkerListView(QWidget* parent)
    : ChoiceGrid(parent)
{
    connect(this, &ChoiceGrid::chosen, this, [this](const QString& id) {
        m_currentWorker = id;
        emit currentWorkerChanged(id);
    });
}

void WorkerListView::setWorkers(const QMap<QString, WorkerModel>& workers, const QString& currentWorker)
{
    if (workers.keys() != m_workers.keys()) { // else the buttons, and the focus, stay
        m_workers = workers;
        setChoices(choices(workers), "EffectNames", 1);
        fit();
    }
    m_currentWorker.clear();
    setCurrent({});
    setCurrentWorker(currentWorker);
}

void WorkerListView::setCurrentWorker(const QString& id)
{
    if (id.isEmpty())
        return;
    if (!m_workers.contains(id)) {
        qCritical().noquote() << "Not found worker button: " << id;
        return;
    }
    m_currentWorker = id;
    setCurrent(id);
}

QWidget* WorkerListView::currentButton() const
{
    return button(m_currentWorker).data();
}

void WorkerListView::resizeEvent(QResizeEvent* event)
{
    ChoiceGrid::resizeEvent(event);
    if (event->oldSize().width() != width())
        fit();
}

void WorkerListView::fit()
{
    auto* grid = static_cast<QGridLayout*>(layout());
    if (!grid)
        return;
    const QMargins margins = grid->contentsMargins();
    const int diameter =
        qMax(1, (width() - (kColumns - 1) * kSpacing - margins.left() - margins.right()) / kColumns);
    const int icon = static_cast<int>(kIconPart * diameter);
    int rowHeight = 0;
    for (const QString& id : m_workers.keys()) {
        const auto disc = button(id).staticCast<EffectWorkerButton>();
        disc->setDiameter(diameter);
        disc->setIconSize({icon, icon});
        rowHeight = disc->minimumHeight();
    }
    grid->setVerticalSpacing(kSpacing);
    for (int i = 0; i < kColumns; ++i)
        grid->setColumnStretch(i, 1);
    const int rows = (m_workers.size() + kColumns - 1) / kColumns;
    grid->setRowStretch(rows, 1); // room that is left stays below
    setMinimumHeight(rows == 0 ? 0
                               : rows * rowHeight + kSpacing * (rows - 1) + margins.top() + margins.bottom());
}
