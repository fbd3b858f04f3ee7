#include "ProbePlugin.h"

#include "effects/IColorStrapManager.h"
#include "support/capture/IDeskDuplManager.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QThread>
#include <stdexcept>

ProbeWorker::ProbeWorker(const EffectWorkerOptions& options)
    : m_options(options)
{
}

QJsonArray ProbeWorker::note(const QString& call)
{
    const bool onMain = QThread::currentThread() == qApp->thread();
    QMutexLocker lock(&m_mutex);
    m_journal += call + (onMain ? " main" : QThread::currentThread() == thread() ? " own" : " other");
    return QJsonArray::fromStringList(m_journal);
}

void ProbeWorker::DIDeskDuplication(IDeskDuplManager* manager)
{
    note(manager ? "desk" : "no desk");
}

void ProbeWorker::DIColorStrapManager(IColorStrapManager* manager)
{
    note(manager ? "straps" : "no straps");
}

int ProbeWorker::load(const ControlOptions& ctlOptions)
{
    note("load");
    {
        QMutexLocker lock(&m_mutex);
        m_controllerId = ctlOptions.id;
    }
    emit updateColors(QVector<LV_RGB>(static_cast<int>(ctlOptions.nbLeds), LV_RGB{1, 2, 3}));
    if (m_options.id.endsWith("throwing"))
        throw std::runtime_error("load of the probe");
    return 0;
}

QJsonValue ProbeWorker::effectProperty(const QString& key)
{
    if (key == "journal")
        return note("read");
    return key == "value" ? m_value : QJsonValue(QJsonValue::Null);
}

void ProbeWorker::setEffectProperty(const QString& key, const QJsonValue& val)
{
    note("set " + key);
    if (key == "value")
        m_value = val;
    if (key == "throw")
        throw 1;
}

void ProbeWorker::unload()
{
    const QJsonArray journal = note("unload");
    QMutexLocker lock(&m_mutex);
    ConfigurationManager::instance()->setEffectJsonValue(m_options.id, m_controllerId, "journal", journal);
}

void ProbeWorker::onCtlDirChanged(uint32_t dir)
{
    note(QString("dir %1").arg(dir));
}

void ProbeWorker::onCtlBrightnessChanged(float brightness)
{
    note(QString("brightness %1").arg(static_cast<double>(brightness)));
}

void ProbeWorker::onCtlKindNameChanged(QString kindName)
{
    note("name " + kindName);
}

void ProbeWorker::onCtlEnableChanged(bool enable)
{
    note(QString("enable %1").arg(enable));
}

IEffectWorker* ProbeFactory::createWorker(QString effectId)
{
    if (effectId.endsWith("none"))
        return nullptr;
    if (effectId.endsWith("throws"))
        throw std::runtime_error("createWorker of the probe");
    EffectWorkerOptions options;
    options.id = effectId;
    return new ProbeWorker(options);
}

QList<EffectWorkerOptions> ProbeFactory::workerOptionsList()
{
    QList<EffectWorkerOptions> list;
    for (const char* id : {"id.probe.sync", "id.probe.async", "id.probe.none", "id.probe.throws",
                           "id.probe.throwing", "", "nodot", "id.effect.singleColor.singleColor1"}) {
        EffectWorkerOptions options;
        options.id = id;
        options.name = "probe";
        options.async = options.id.endsWith(".async");
        list += options;
    }
    return list;
}
