#include "support/config/ConfigurationManager.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ControllerStore.h"
#include "support/config/DataFile.h"
#include "support/config/EffectStore.h"
#include "support/config/FlatStore.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QJsonDocument>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <algorithm>

namespace {

constexpr int kWriteDelayMs = 1000;
constexpr int kLongestRetryMs = 60000;

QString standardFolder(QStandardPaths::StandardLocation location)
{
    // Not the location of the application: the crash reporter and the tests look in the same place.
    return QStandardPaths::writableLocation(location) + QLatin1String("/Lumivar");
}

/// The product's own values for application keys; another file by the environment, for tests of exact
/// numbers.
QString shippedDefaultsFile()
{
    return qEnvironmentVariable("LUMIVAR_DEFAULTS", QStringLiteral("defaults.json"));
}

/// The object in a file that stands beside the program; nothing, with a log line, where there is no good one.
std::optional<QJsonObject> shippedObject(const QString& path)
{
    QString reason;
    const std::optional<QByteArray> bytes = readDataFile(path, &reason);
    if (!bytes) {
        qInfo().noquote() << "[ConfigurationManager]: no defaults in" << path << reason;
        return std::nullopt;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject()) {
        qWarning().noquote() << "[ConfigurationManager]: broken defaults in" << path << error.errorString();
        return std::nullopt;
    }
    return document.object();
}

} // namespace

struct ConfigurationManager::Private
{
    Private(ConfigurationManager* owner, const QString& config, const QString& resources,
            const QString& defaults)
        : manager(owner)
        , configPath(config)
        , resourcesPath(resources)
        , defaultsFile(defaults)
        , app(config + QLatin1String("/app.json"))
        , global(config + QLatin1String("/global.json"))
        , controllers(config + QLatin1String("/controllers.json"))
        , effects(config + QLatin1String("/effects"))
    {
    }

    /// At most that many ms from now; a sooner appointment stands. Without an event loop save() is left.
    void schedule(int ms)
    {
        if (!QCoreApplication::instance() || (timer.isActive() && timer.remainingTime() <= ms))
            return;
        timer.start(ms);
    }
    void settle(bool written)
    {
        retryMs = written ? kWriteDelayMs : std::min(retryMs * 2, kLongestRetryMs);
        if (!written)
            schedule(retryMs);
        if (isTroubled == !written)
            return;
        isTroubled = !written;
        emit manager->savingTroubleChanged(isTroubled);
    }
    /// Read at first use: by then the log system stands and hears of damage.
    const QJsonObject& shippedValues()
    {
        if (!shipped)
            shipped =
                defaultsFile.isEmpty() ? QJsonObject() : shippedObject(defaultsFile).value_or(QJsonObject());
        return *shipped;
    }
    void write(bool all)
    {
        bool written = effects.write(all);
        for (FlatStore* store : {&app, &global, static_cast<FlatStore*>(&controllers)})
            written = store->write(all) && written;
        settle(written);
    }

    ConfigurationManager* const manager;
    const QString configPath;
    const QString resourcesPath;
    const QString defaultsFile;
    std::optional<QJsonObject> shipped;
    FlatStore app;
    FlatStore global;
    ControllerStore controllers;
    EffectStore effects;
    bool isTroubled = false;
    QTimer timer;
    int retryMs = kWriteDelayMs;
};

ConfigurationManager* ConfigurationManager::instance()
{
    // Never destroyed: the crash handler and late destructors may still ask for it.
    static ConfigurationManager* const manager = [] {
        auto* created = new ConfigurationManager(standardFolder(QStandardPaths::GenericConfigLocation),
                                                 standardFolder(QStandardPaths::GenericDataLocation),
                                                 shippedDefaultsFile());
        if (QCoreApplication::instance())
            created->moveToThread(QCoreApplication::instance()->thread());
        return created;
    }();
    return manager;
}

ConfigurationManager::ConfigurationManager(const QString& configPath, const QString& resourcesPath,
                                           const QString& defaultsFile)
    : d(std::make_unique<Private>(this, configPath, resourcesPath, defaultsFile))
{
    d->timer.setParent(this); // follows to another thread
    d->timer.setSingleShot(true);
    connect(&d->timer, &QTimer::timeout, this, [this] { d->write(false); });
    for (const QString& folder : {configPath, resourcesPath}) {
        if (!QDir().mkpath(folder))
            qWarning().noquote() << "[ConfigurationManager]: cannot create the folder" << folder;
    }
}

ConfigurationManager::~ConfigurationManager()
{
    save();
}

QJsonValue ConfigurationManager::appConfig(const QString& key) const
{
    QJsonValue stored = d->app.values().value(key);
    if (!stored.isUndefined() && !stored.isNull())
        return stored;
    const QJsonValue shipped = shippedConfig(key);
    return shipped.isUndefined() ? stored : shipped;
}

QJsonValue ConfigurationManager::shippedConfig(const QString& key) const
{
    return d->shippedValues().value(key);
}

void ConfigurationManager::setAppConfig(const QString& key, const QJsonValue& value)
{
    if (d->app.set(key, value))
        d->schedule(kWriteDelayMs);
    emit appConfigChanged(key);
}

QJsonObject& ConfigurationManager::AppConfigJsonObj()
{
    return d->app.values();
}

void ConfigurationManager::saveAppConfigJsonObj()
{
    d->app.touch();
    d->schedule(kWriteDelayMs);
    emit appConfigObjSaved();
}

QJsonValue ConfigurationManager::globalValue(const QString& key) const
{
    return d->global.values().value(key);
}

void ConfigurationManager::setGlobalValue(const QString& key, const QJsonValue& value)
{
    if (d->global.set(key, value))
        d->schedule(kWriteDelayMs);
}

QJsonObject& ConfigurationManager::controllerJsonObj(const QString& key)
{
    return d->controllers.object(key);
}

void ConfigurationManager::saveControllerJsonObj(const QString& key)
{
    Q_UNUSED(key) // all devices share a file
    d->controllers.touch();
    d->schedule(kWriteDelayMs);
}

QJsonValue ConfigurationManager::effectJsonValue(const QString& effectId, const QString& controllerId,
                                                 const QString& key) const
{
    return d->effects.value(effectId, controllerId, key);
}

QJsonValue ConfigurationManager::effectJsonValue(const QString& effectId, const QString& controllerId,
                                                 const QString& key, const QString& defaultFile) const
{
    QJsonValue stored = d->effects.value(effectId, controllerId, key);
    const std::optional<QJsonObject> defaults = shippedObject(defaultFile);
    if (!defaults)
        return stored;
    QJsonValue fallback = key.isEmpty() ? *defaults : defaults->value(key);
    if (stored.isUndefined() || stored.isNull())
        return fallback;
    if (!stored.isObject() || !fallback.isObject())
        return stored;
    // Member by member, not deeper: a stored list of fragments replaces the default list.
    QJsonObject merged = fallback.toObject();
    const QJsonObject own = stored.toObject();
    for (auto member = own.begin(); member != own.end(); ++member)
        merged.insert(member.key(), member.value());
    return merged;
}

void ConfigurationManager::setEffectJsonValue(const QString& effectId, const QString& controllerId,
                                              const QString& key, const QJsonValue& value)
{
    d->effects.setValue(effectId, controllerId, key, value);
}

QVariant ConfigurationManager::effectVariant(const QString& effectId, const QString& controllerId,
                                             const QString& key) const
{
    const QJsonValue value = effectJsonValue(effectId, controllerId, key);
    return value.isNull() ? QVariant() : value.toVariant();
}

void ConfigurationManager::setEffectVariant(const QString& effectId, const QString& controllerId,
                                            const QString& key, const QVariant& value)
{
    setEffectJsonValue(effectId, controllerId, key, QJsonValue::fromVariant(value));
}

void ConfigurationManager::saveEffectJsonObj(const QString& effectId)
{
    // Queued when this is another thread: the timer and the disk are the main thread's.
    if (d->effects.markPending(effectId))
        QMetaObject::invokeMethod(this, [this] { d->schedule(kWriteDelayMs); });
}

QString ConfigurationManager::configPath() const
{
    return d->configPath;
}

QString ConfigurationManager::logsPath() const
{
    return d->configPath + QLatin1String("/logs");
}

QString ConfigurationManager::resourcesPath() const
{
    return d->resourcesPath;
}

bool ConfigurationManager::isSavingTroubled() const
{
    return d->isTroubled;
}

void ConfigurationManager::save()
{
    d->timer.stop();
    d->write(true);
}

void ConfigurationManager::reset()
{
    d->app.reset();
    d->controllers.reset();
    d->effects.reset();
    d->schedule(kWriteDelayMs); // where something could not be deleted
}

void ConfigurationManager::EnableCleanStartup()
{
    setGlobalValue(QLatin1String(ConfigKeys::kCleanStartup.key), true);
    // At once: the reset that the user asked for must not be lost if quitting goes wrong.
    d->write(false);
}
