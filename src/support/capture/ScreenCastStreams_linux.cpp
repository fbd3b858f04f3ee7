#include "support/capture/ScreenCastStreams_linux.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDebug>
#include <QGuiApplication>
#include <QScreen>
#include <QSet>
#include <limits>
#include <optional>

namespace {

constexpr int kMostCoordinate = 1 << 20;
constexpr int kMostIdLength = 200;

struct Pair
{
    int first = 0;
    int second = 0;
};

/// A structure of two numbers.
std::optional<Pair> pairOf(const QVariant& told)
{
    if (told.userType() != qMetaTypeId<QDBusArgument>())
        return {};
    const auto argument = told.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(ii)"))
        return {};
    Pair pair;
    argument.beginStructure();
    argument >> pair.first >> pair.second;
    argument.endStructure();
    if (qAbs(qint64(pair.first)) > kMostCoordinate || qAbs(qint64(pair.second)) > kMostCoordinate)
        return {};
    return pair;
}

/// The screen of the toolkit that the stream shows; by its size alone only where that is no guess.
const QScreen* screenAt(const std::optional<Pair>& position, const QSize& size)
{
    const QScreen* found = nullptr;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect geometry = screen->geometry();
        if (position && geometry.topLeft() == QPoint(position->first, position->second))
            return screen;
        if (position || geometry.size() != size)
            continue;
        if (found)
            return nullptr;
        found = screen;
    }
    return found;
}

QString nameOf(const QScreen* screen, int number)
{
    QStringList names;
    if (screen)
        names << screen->model().trimmed() << screen->name().trimmed();
    names.removeAll(QString());
    return names.isEmpty() ? QCoreApplication::translate("ScreenCastSession", "屏幕 %1").arg(number)
                           : names.join(QLatin1Char(' '));
}

ScreenCastStream streamOf(uint node, const QVariantMap& properties, int number)
{
    const auto position = pairOf(properties.value(QStringLiteral("position")));
    const Pair size = pairOf(properties.value(QStringLiteral("size"))).value_or(Pair());

    ScreenCastStream stream;
    stream.node = node;
    if (size.first > 0 && size.second > 0) {
        const Pair corner = position.value_or(Pair());
        stream.place = QRect(corner.first, corner.second, size.first, size.second);
    }
    const QScreen* screen = screenAt(position, stream.place.size());
    stream.name = nameOf(screen, number);
    stream.primary = screen && screen == QGuiApplication::primaryScreen();

    QString id = properties.value(QStringLiteral("id")).toString().left(kMostIdLength);
    if (id.isEmpty() && !stream.place.isEmpty())
        id = QStringLiteral("%1x%2+%3+%4")
                 .arg(size.first)
                 .arg(size.second)
                 .arg(stream.place.x())
                 .arg(stream.place.y());
    stream.id = QStringLiteral("portal:") + (id.isEmpty() ? QString::number(number) : id);
    return stream;
}

} // namespace

ScreenCastStreams screenCastStreams(const QVariant& told)
{
    constexpr uint kNoNode = std::numeric_limits<uint>::max();
    if (told.userType() != qMetaTypeId<QDBusArgument>())
        return {};
    const auto list = told.value<QDBusArgument>();
    if (list.currentSignature() != QLatin1String("a(ua{sv})"))
        return {};
    ScreenCastStreams streams;
    QSet<QString> ids;
    int number = 0;
    list.beginArray();
    while (!list.atEnd()) {
        uint node = 0;
        QVariantMap properties;
        list.beginStructure();
        list >> node >> properties;
        list.endStructure();
        ++number;
        if (node == 0 || node == kNoNode) {
            qWarning() << "[ScreenCastSession]: A stream without a node";
            continue;
        }
        ScreenCastStream stream = streamOf(node, properties, number);
        const QString id = stream.id;
        for (int twin = 2; ids.contains(stream.id); ++twin)
            stream.id = QStringLiteral("%1~%2").arg(id).arg(twin);
        ids.insert(stream.id);
        streams << stream;
    }
    list.endArray();
    return streams;
}
