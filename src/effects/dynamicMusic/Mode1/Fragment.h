#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <optional>

/// One meter on the strip: how many LEDs it has and what it listens to.
struct Fragment
{
    enum Channel { Left = 1, Right = 2 };

    int beginIndex = 0; ///< first LED
    int endIndex = 0;   ///< behind the last
    double dbEnhance = 0.0;
    double mulEnhance = 1.0;
    double minFrequency = 0.0; ///< hertz
    double maxFrequency = 0.0;
    int soundChannel = 0;  ///< one of Channel, any other for the louder of the two
    int dir = 0;           ///< 0 fills from the first LED on, 1 from the last one back, any other nothing
    QList<double> history; ///< the last levels; not stored

    int count() const { return endIndex - beginIndex; }
    QJsonObject toJson() const;
    /// Absent members have their defaults. Nothing, and a warning, for a fragment that cannot be used.
    static std::optional<Fragment> fromJson(const QString& name, const QJsonValue& value);
};

/// By their first LED, then their name. The LEDs are filled in this order: the indices of a fragment give its
/// size, and its place among the others.
using Fragments = QMap<QPair<int, QString>, Fragment>;
