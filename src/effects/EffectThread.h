#pragma once

#include <QPointer>
#include <QThread>

/// The thread of one asynchronous worker.
class EffectThread : public QThread
{
    Q_OBJECT

public:
    explicit EffectThread(QObject* worker);

protected:
    void run() override;

private:
    QPointer<QObject> m_worker;
};
