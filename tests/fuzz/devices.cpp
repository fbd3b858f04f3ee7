// What devices, the system and the shipped files say about devices.
#include "Fuzz.h"

#include "FakeController.h"
#include "controllers/BridgedSerialPortSource.h"
#include "controllers/ControllerDefaults.h"
#include "controllers/LVController.h"
#include "controllers/ProbeReply.h"
#include "controllers/ReplyCollector.h"
#include "support/config/ConfigurationManager.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

struct Piece
{
    QByteArray bytes;
    int quietTicks = 0; ///< behind it
};

/// The answer as a dialogue takes it, each tick of which looks at the line.
QByteArray heard(const QVector<Piece>& pieces)
{
    ReplyCollector collector;
    int ticks = 0;
    for (const Piece& piece : pieces) {
        collector.add(piece.bytes);
        for (int i = 0; i < piece.quietTicks && !collector.isOver(); ++i)
            collector.tick();
        if (!collector.isEmpty() && collector.isOver())
            return collector.reply();
    }
    for (; !collector.isEmpty() && !collector.isOver(); ++ticks)
        collector.tick();
    REQUIRE(ticks <= ReplyCollector::kMaxTicks + 1);
    REQUIRE(collector.reply().size() <= ProbeReply::kMaxBytes + 1);
    return collector.reply();
}

/// Cuts the bytes at places and with pauses up to a length that the input chooses.
QVector<Piece> cut(FuzzInput& input, QByteArray bytes, int longestPause)
{
    QVector<Piece> pieces;
    for (int cuts = input.number(6); cuts > 0 && bytes.size() > 1; --cuts) {
        const int at = 1 + input.number(bytes.size() - 1);
        pieces.append({bytes.left(at), input.number(longestPause + 1)});
        bytes.remove(0, at);
    }
    pieces.append({bytes, 0});
    return pieces;
}

} // namespace

/// Cuts, then the answer of a device with the usual tail: it is this device or none.
FUZZ_TARGET(probe)
{
    FuzzInput input(bytes.left(16));
    QByteArray answer = "LV" + bytes.mid(16) + "\r\n";
    const bool endsInside = answer.indexOf("\r\n") != answer.size() - 2;
    const ProbeReply whole = ProbeReply::parse(answer);
    const int pause = endsInside ? ReplyCollector::kTicksOfSilence - 1 : ReplyCollector::kTicksOfDoubt - 1;
    const ProbeReply reply = ProbeReply::parse(heard(cut(input, answer.left(255), pause)));
    REQUIRE(!reply.isValid() || reply.id == whole.id);
}

/// Any bytes in any pieces: an end in time, no memory, and nothing that an answer does not have.
FUZZ_TARGET(probe_noise)
{
    FuzzInput input(bytes.left(16));
    ProbeReply reply = ProbeReply::parse(heard(cut(input, bytes.mid(16), ReplyCollector::kTicksOfDoubt * 2)));
    if (!reply.isValid())
        return;
    REQUIRE(reply.model.startsWith('L') &&
            reply.id == reply.model + (reply.hasSerial ? ':' + reply.serial : QString()));
    REQUIRE(reply.hasSerial || reply.serial.isEmpty());
    reply.standIn(QStringLiteral("1-2"));
    REQUIRE(!reply.serial.isEmpty());
}

FUZZ_TARGET(port_list)
{
    QString error;
    const auto ports = BridgedSerialPortSource::parse(bytes, &error);
    REQUIRE(ports || !error.isEmpty());
    if (!ports)
        return;
    QJsonArray array;
    for (const SerialPortRecord& port : *ports) {
        REQUIRE(port.isValid() && !port.systemLocation.isEmpty());
        array.append(QJsonObject{
            {"name", port.name}, {"location", port.systemLocation}, {"description", port.description}});
    }
    const auto again = BridgedSerialPortSource::parse(QJsonDocument(array).toJson(), &error);
    REQUIRE(again && again->size() == ports->size());
    for (int i = 0; i < ports->size(); ++i)
        REQUIRE(again->at(i).name == ports->at(i).name &&
                again->at(i).systemLocation == ports->at(i).systemLocation);
}

FUZZ_TARGET(models)
{
    const QString path = fuzzFolder() + QStringLiteral("models.json");
    writeFuzzFile(path, bytes);
    ControlOptions options;
    options.model = QStringLiteral("LV0127");
    const bool isKnown = ControllerDefaults::apply(options, path);
    REQUIRE(isKnown == ControllerDefaults::isKnown(options.model, path));
    REQUIRE(options.brightness >= 0 && options.brightness <= 1);
    REQUIRE(options.nbLeds <= 10000);
}

/// The stored object of a device, and what is stored of it afterwards.
FUZZ_TARGET(device_store)
{
    const QString id = QStringLiteral("LVTEST:01");
    QJsonObject& object = ConfigurationManager::instance()->controllerJsonObj(id);
    if (bytes.contains("\\u0000"))
        return; // names with one are sorted in a way in which the toolkit does not find them
    const QJsonObject stored = fuzzObject(QByteArray(bytes).replace('\0', ' '));
    object = stored;
    FakeController first(id);
    if (!first.loadConfig())
        return;
    const ControlOptions& options = first.options();
    REQUIRE(options.brightness >= 0 && options.brightness <= 1);
    REQUIRE(options.nbLeds <= 10000);
    first.update(QVector<LV_RGB>(static_cast<int>(options.nbLeds), LV_RGB{255, 1, 128}));
    first.saveConfig();
    for (auto member = stored.begin(); member != stored.end(); ++member)
        REQUIRE(object.contains(member.key())); // those of a later version stay
    FakeController second(id);
    const ControlOptions& again = second.options();
    REQUIRE(second.loadConfig());
    REQUIRE(again.brightness == options.brightness && again.nbLeds == options.nbLeds &&
            again.enable == options.enable && again.kindName == options.kindName &&
            again.installDirection == options.installDirection && again.subMode == options.subMode);
    object = {};
}
