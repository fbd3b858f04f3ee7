#pragma once

#include "effects/IEffectFactory.h"

#include <QJsonArray>
#include <QMutex>

class IColorStrapManager;
class IDeskDuplManager;

/// Keeps a journal of the calls it gets, each with the thread it came on ("own" is the worker's thread).
/// It is read as the property "journal", and unload stores it.
class ProbeWorker : public IEffectWorker
{
    Q_OBJECT

public:
    explicit ProbeWorker(const EffectWorkerOptions& options);

    Q_INVOKABLE void DIDeskDuplication(IDeskDuplManager* manager);
    Q_INVOKABLE void DIColorStrapManager(IColorStrapManager* manager);

    int load(const ControlOptions& ctlOptions) override;
    EffectWorkerOptions options() override { return m_options; }
    QJsonValue effectProperty(const QString& key) override;
    void setEffectProperty(const QString& key, const QJsonValue& val) override;
    void unload() override;

public slots:
    void onCtlDirChanged(uint32_t dir) override;
    void onCtlBrightnessChanged(float brightness) override;
    void onCtlKindNameChanged(QString kindName) override;
    void onCtlEnableChanged(bool enable) override;

private:
    QJsonArray note(const QString& call);

    EffectWorkerOptions m_options;
    QJsonValue m_value = 0;
    QMutex m_mutex; // guards what follows: unload may meet a load that is running
    QString m_controllerId;
    QStringList m_journal;
};

/// Good effects, entries that no factory should have, and effects that yield no worker.
class ProbeFactory : public IEffectFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IEffectFactory_iid)
    Q_INTERFACES(IEffectFactory)

public:
    IEffectWorker* createWorker(QString effectId) override;
    QList<EffectWorkerOptions> workerOptionsList() override;
};
