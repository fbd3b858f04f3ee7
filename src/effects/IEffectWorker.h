#pragma once

#include "controllers/ControlOptions.h"
#include "controllers/LV_RGB.h"
#include "effects/EffectWorkerOptions.h"
#include "support/SharedLibrary.h"

#include <QJsonValue>
#include <QObject>
#include <QSharedPointer>

/// Produces complete colour vectors for exactly one controller.
/// Order of calls: constructor, injection methods, connections, load, any number of slots and properties,
/// unload, deleteLater. Properties: the empty key stands for all of them, as one JSON object.
class LUMIVAR_EFFECTS_EXPORT IEffectWorker : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sets the worker up for a controller and starts it. Always returns 0: missing data means a default.
    virtual int load(const ControlOptions& ctlOptions) = 0;
    virtual EffectWorkerOptions options() = 0;
    virtual QJsonValue effectProperty(const QString& key) = 0;
    virtual void setEffectProperty(const QString& key, const QJsonValue& val) = 0;
    /// The last call, never without load and after all calls that waited: writes what must survive. May come
    /// from another thread than the worker's. On the main thread the injected services may be gone after it.
    virtual void unload() = 0;

public slots:
    virtual void onCtlDirChanged(uint32_t dir) = 0;
    virtual void onCtlBrightnessChanged(float brightness) = 0;
    virtual void onCtlKindNameChanged(QString kindName) = 0;
    virtual void onCtlEnableChanged(bool enable) = 0;
    /// Nothing of the worker's is shown meanwhile, whatever the user's choice: it may rest, and goes on
    /// afterwards.
    virtual void onCtlDarkChanged(bool) {}
    /// A frame came before the device's line was ready for it: the next one is in time after `ms`.
    virtual void onCtlLineBusy(int ms) { Q_UNUSED(ms) }

signals:
    void updateColors(QVector<LV_RGB> colors);
    void effectPropertyChanged(QString key, QJsonValue val);
};

using IEffectWorkerPtr = QSharedPointer<IEffectWorker>;
Q_DECLARE_METATYPE(IEffectWorkerPtr)
