#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVector>
#include <functional>
#include <initializer_list>

/// One property of a worker or an option widget: how it is read and written, and what it tells of.
struct EffectProperty
{
    enum Kind {
        Look,  ///< how the light looks: devices that are controlled together share it
        Place, ///< where the device's LEDs are and what feeds it: stays with this device
        Apart, ///< a state or an order: stays with it too, and is not among those of the empty key
    };

    QString key;
    std::function<QJsonValue()> read;             ///< empty: cannot be read
    std::function<void(const QJsonValue&)> write; ///< empty: cannot be written; checks what it is given
    Kind kind = Place; ///< nothing of an option widget is copied: there it may be left out
};

/// The property protocol of a worker or an option widget, which follows from the list of its properties.
/// The empty key stands for all of them as one object: they are written in the order of the list, and what
/// the object does not have stays as it is. Unknown keys read as null, and writing them changes nothing. Of a
/// worker without such a list all is taken for look.
class EffectProperties
{
public:
    /// The key by which a worker answers those of its properties that tell of the look, as one object.
    static constexpr char kLook[] = "lookProperties";

    EffectProperties() = default;
    EffectProperties(std::initializer_list<EffectProperty> properties)
        : m_properties(properties)
    {
    }

    /// Puts further properties behind the others, as a derived class does.
    void add(const EffectProperties& more) { m_properties += more.m_properties; }

    QJsonValue read(const QString& key) const
    {
        const bool all = key.isEmpty();
        const bool look = key == QLatin1String(kLook);
        QJsonObject several;
        for (const EffectProperty& each : m_properties) {
            if (!each.read)
                continue;
            if (each.key == key)
                return each.read();
            if ((all && each.kind != EffectProperty::Apart) || (look && each.kind == EffectProperty::Look))
                several.insert(each.key, each.read());
        }
        return all || look ? QJsonValue(several) : QJsonValue(QJsonValue::Null);
    }

    void write(const QString& key, const QJsonValue& val) const
    {
        const QJsonObject several = key.isEmpty() ? val.toObject() : QJsonObject();
        for (const EffectProperty& each : m_properties) {
            if (!each.write)
                continue;
            if (each.key == key)
                return each.write(val);
            if (each.kind != EffectProperty::Apart && several.contains(each.key))
                each.write(several.value(each.key));
        }
    }

private:
    QVector<EffectProperty> m_properties;
};

/// A worker or an option widget whose constructor lists its properties, and that is all.
template <typename Base>
class WithProperties : public Base
{
public:
    using Base::Base;

    QJsonValue effectProperty(const QString& key) override { return m_properties.read(key); }
    void setEffectProperty(const QString& key, const QJsonValue& val) override
    {
        m_properties.write(key, val);
    }
    /// For one that has this as a part of it, and with it these properties.
    const EffectProperties& properties() const { return m_properties; }

protected:
    EffectProperties m_properties;
};
