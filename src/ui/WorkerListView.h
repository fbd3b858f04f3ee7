#pragma once

#include "viewModels/WorkerModel.h"
#include "widgets/ChoiceGrid.h"

/// The effects of a group as discs, four to a row, as large as the width allows. Main thread.
class WorkerListView : public ChoiceGrid
{
    Q_OBJECT

public:
    explicit WorkerListView(QWidget* parent = nullptr);

    /// Without a current effect, or with one that is not among them, nothing stands chosen.
    void setWorkers(const QMap<QString, WorkerModel>& workers, const QString& currentWorker = {});
    /// An empty id is ignored, an unknown one is logged.
    void setCurrentWorker(const QString& id);
    /// Null where none stands chosen.
    QWidget* currentButton() const;

signals:
    /// By the user.
    void currentWorkerChanged(QString id);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();

    QMap<QString, WorkerModel> m_workers;
    QString m_currentWorker;
};
