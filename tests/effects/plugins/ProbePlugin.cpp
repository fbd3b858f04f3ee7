#include "effects/IColorStrapManager.h"
#include "effects/IEffectFactory.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QMutex>
#include <QThread>
#include <stdexcept>

/// Keeps a journal of its calls, each with the thread it came on ("own" is the worker's, where that is not
/// the main one). It is read as the property "journal", and unload stores it.
class ProbeWorker : public IEffectWorker
{
    Q_OBJECT

public:
    explicit ProbeWorker(const QString& id) { m_options.id = id; }

    Q_INVOKABLE void DIDeskDuplication(IDeskDuplManager* manager) { note(manager ? "desk" : "no desk"); }
    Q_INVOKABLE void DIColorStrapManager(IColorStrapManager*) { note("straps"); }

    int load(const ControlOptions& ctlOptions) override
    {
        note("load", ctlOptions.id);
        emit updateColors(QVector<LV_RGB>(static_cast<int>(ctlOptions.nbLeds), LV_RGB{1, 2, 3}));
        if (m_options.id.endsWith("throwing"))
            throw std::runtime_error("load of the probe");
        return 0;
    }
    EffectWorkerOptions options() override { return m_options; }
    QJsonValue effectProperty(const QString& key) override
    {
        if (key == "journal")
            note("read");
        return key == "journal"                    ? QJsonValue(m_journal)
               : key == "noticeAction"             ? m_action
               : key == "value" || key == "notice" ? m_value
                                                   : QJsonValue::Null;
    }
    void setEffectProperty(const QString& key, const QJsonValue& val) override
    {
        note("set " + key);
        (key == "noticeAction" ? m_action : m_value) = val;
        if (key == "throw")
            throw 1;
    }
    void unload() override
    {
        note("unload");
        emit effectPropertyChanged("unload", true); // whoever hears of it may call back
        QMutexLocker lock(&m_mutex);
        ConfigurationManager::instance()->setEffectJsonValue(m_options.id, m_controllerId, "journal",
                                                             m_journal);
    }

public slots:
    void onCtlDirChanged(uint32_t dir) override { note(QString("dir %1").arg(dir)); }
    void onCtlBrightnessChanged(float b) override
    {
        note(QString("brightness %1").arg(static_cast<double>(b)));
    }
    void onCtlKindNameChanged(QString kindName) override { note("name " + kindName); }
    void onCtlEnableChanged(bool enable) override { note(QString("enable %1").arg(enable)); }

private:
    void note(const QString& call, const QString& controllerId = {})
    {
        const QThread* here = QThread::currentThread();
        QMutexLocker lock(&m_mutex); // unload may meet a load that is running
        m_journal += call + (here == qApp->thread() ? " main" : here == thread() ? " own" : " other");
        if (!controllerId.isEmpty())
            m_controllerId = controllerId;
    }

    EffectWorkerOptions m_options;
    QJsonValue m_value = 0;
    QJsonValue m_action;
    QMutex m_mutex; // guards what follows
    QString m_controllerId;
    QJsonArray m_journal;
};

/// Good effects, entries that no factory should have, and effects that yield no worker.
class ProbeFactory : public IEffectFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IEffectFactory_iid)
    Q_INTERFACES(IEffectFactory)

public:
    IEffectWorker* createWorker(QString effectId) override
    {
        if (effectId.endsWith("throws"))
            throw std::runtime_error("createWorker of the probe");
        return effectId.endsWith("none") ? nullptr : new ProbeWorker(effectId);
    }
    QList<EffectWorkerOptions> workerOptionsList() override
    {
        QList<EffectWorkerOptions> list;
        for (const char* id : {"id.probe.sync", "id.probe.async", "id.probe.none", "id.probe.throws",
                               "id.probe.throwing", "", "nodot", "id.effect.singleColor.singleColor1"}) {
            list += EffectWorkerOptions();
            list.last().id = id;
            list.last().name = "probe";
            list.last().async = list.last().id.endsWith(".async");
        }
        return list;
    }
};

#include "ProbePlugin.moc"
