// The user's settings: files that are cut, mixed up or written by hand, and what is stored in them again.
#include "Fuzz.h"

#include "app/HotkeyBinding.h"
#include "support/config/ConfigurationManager.h"
#include "support/config/JsonFile.h"
#include "support/config/StoredNumber.h"
#include "support/net/PersonalText.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMap>

namespace {

/// The object in the bytes; false when there is none.
bool isStore(const QByteArray& bytes, QJsonObject* object)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    *object = document.object();
    return error.error == QJsonParseError::NoError && document.isObject();
}

QDir emptyFolder(const QString& name)
{
    QDir folder(fuzzFolder() + name);
    folder.removeRecursively();
    folder.mkpath(QStringLiteral("."));
    return folder;
}

bool isAside(const QDir& folder, const QByteArray& bytes)
{
    for (const QString& name : folder.entryList({QStringLiteral("*.corrupt-*")}, QDir::Files)) {
        if (readFuzzFile(folder.filePath(name)) == bytes)
            return true;
    }
    return false;
}

} // namespace

/// A file and its backup, each perhaps broken or missing: the good one counts, the broken one stays readable.
FUZZ_TARGET(json_file)
{
    FuzzInput input(bytes);
    const int parts = input.number(4);
    const int cutAt = input.number() * (bytes.size() - 2) / 255;
    const QByteArray rest = input.rest();
    const QDir folder = emptyFolder(QStringLiteral("store"));
    const QString path = folder.filePath(QStringLiteral("a.json"));
    const QByteArray file = rest.left(cutAt);
    const QByteArray backup = rest.mid(cutAt);
    if (parts & 1)
        writeFuzzFile(path, file);
    if (parts & 2)
        writeFuzzFile(path + QStringLiteral(".bak"), backup);

    QJsonObject expected;
    const auto isGood = [&](const QByteArray& part) {
        return !part.contains('\0') && isStore(part, &expected);
    };
    const bool isWhole = (parts & 1) && isGood(file);
    if (!isWhole && (!(parts & 2) || !isGood(backup)))
        expected = {};
    JsonFile store(path);
    QJsonObject object = store.load();
    REQUIRE(object == expected);
    REQUIRE(isWhole || !(parts & 1) || isAside(folder, file));
    object.insert(QStringLiteral("added"), QStringLiteral("value"));
    REQUIRE(store.write(object) && JsonFile(path).load() == object);
    REQUIRE(store.writeWithBackup(object) && QFile::remove(path) && JsonFile(path).load() == object);
}

/// Lines of orders: what was set last is there, at once and in the next run.
FUZZ_TARGET(configuration)
{
    const QString path = emptyFolder(QStringLiteral("settings")).path();
    const QString none;
    QMap<QStringList, QJsonValue> model;
    const auto check = [&model](ConfigurationManager& manager) {
        for (auto entry = model.cbegin(); entry != model.cend(); ++entry) {
            const QStringList& key = entry.key();
            const QJsonValue value = key[0] == QLatin1String("a")   ? manager.appConfig(key[1])
                                     : key[0] == QLatin1String("g") ? manager.globalValue(key[1])
                                     : key[0] == QLatin1String("c")
                                         ? manager.controllerJsonObj(key[1]).value(key[2])
                                         : manager.effectJsonValue(key[1], key[2], key[3]);
            REQUIRE(value == entry.value());
        }
    };
    FuzzInput input(bytes.left(2000));
    for (int run = 0; run < 2; ++run) {
        ConfigurationManager manager(path, path, none);
        check(manager);
        for (QByteArray line = input.line(); !line.isEmpty() && line != "quit"; line = input.line()) {
            QStringList key = QString::fromUtf8(line).split(u'\t');
            const QJsonValue value = fuzzValue(key.takeLast().toUtf8());
            while (key.size() < 4)
                key.append(QStringLiteral("k"));
            key = key.mid(0, 4);
            if (key[0] == QLatin1String("a"))
                manager.setAppConfig(key[1], value);
            else if (key[0] == QLatin1String("g"))
                manager.setGlobalValue(key[1], value);
            else if (key[0] == QLatin1String("c"))
                manager.controllerJsonObj(key[1]).insert(key[2], value);
            else if (key[0] == QLatin1String("e") && !key[3].isEmpty())
                manager.setEffectJsonValue(key[1], key[2], key[3], value);
            else
                continue;
            const int parts = key[0] == QLatin1String("e") ? 4 : key[0] == QLatin1String("c") ? 3 : 2;
            model.insert(key.mid(0, parts), value);
        }
        check(manager);
    }
    ConfigurationManager manager(path, path, none);
    check(manager);
}

/// What the product ships: counts where the user has nothing.
FUZZ_TARGET(defaults_file)
{
    const QDir folder = emptyFolder(QStringLiteral("shipped"));
    const QString path = folder.filePath(QStringLiteral("defaults.json"));
    writeFuzzFile(path, bytes);
    QJsonObject shipped;
    if (!isStore(bytes, &shipped))
        shipped = {};
    ConfigurationManager manager(folder.path(), folder.path(), path);
    for (const QString& key : {QStringLiteral("language"), QStringLiteral("runtime.gama")}) {
        manager.setAppConfig(key, 7);
        REQUIRE(manager.appConfig(key) == QJsonValue(7) && manager.shippedConfig(key) == shipped.value(key));
        manager.setAppConfig(key, QJsonValue::Null);
        const QJsonValue now = manager.appConfig(key);
        REQUIRE(shipped.contains(key) ? now == shipped.value(key) : now.isNull());
    }
}

namespace {

template <typename T>
bool isBounded(const ConfigKeys::Number<T>& number)
{
    const T value = applicationNumber(number);
    return value == number.fallback || (value >= number.least && value <= number.most);
}

} // namespace

/// Settings of the program that somebody has written by hand.
FUZZ_TARGET(application_settings)
{
    QJsonObject& settings = ConfigurationManager::instance()->AppConfigJsonObj();
    settings = fuzzObject(bytes);
    const QJsonObject before = settings;
    REQUIRE(isBounded(ConfigKeys::kDevUpdateIntervalMs) && isBounded(ConfigKeys::kGama));
    REQUIRE(isBounded(ConfigKeys::kPixmapStreamReadIntervalMs) && isBounded(ConfigKeys::kMusicQuietLevel));
    REQUIRE(isBounded(ConfigKeys::kSaturationGate) && isBounded(ConfigKeys::kFixedFrameIntervalMs));
    REQUIRE(settings == before);
    settings = {};
}

/// Logs and stores on their way out: whatever is in them, nothing that tells who the user is.
FUZZ_TARGET(personal_text)
{
    static const PersonalText personal(
        PersonalFacts{{QStringLiteral("alice"), QStringLiteral("Alice Example")},
                      {QStringLiteral("desk-7.lan")},
                      {QStringLiteral("/home/alice")},
                      {QStringLiteral("alice@mail.example")},
                      {QStringLiteral("0123456789abcdef")}});
    static const QRegularExpression left(
        QStringLiteral("(?<![\\p{L}\\p{N}\\p{M}])(alice|desk-7|0123456789abcdef)(?![\\p{L}\\p{N}\\p{M}])"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    const auto isClean = [](const QString& text) { return !left.match(text).hasMatch(); };
    REQUIRE(isClean(personal.removedFrom(QString::fromUtf8(bytes))));
    const QJsonObject object{{QStringLiteral("whole"), fuzzValue(bytes)}};
    const QJsonObject clean = personal.removedFrom(QJsonValue(object)).toObject();
    const auto check = [&](const QJsonValue& value, const auto& checkAll) -> void {
        REQUIRE(isClean(value.toString()));
        for (const QJsonValue each : value.toArray())
            checkAll(each, checkAll);
        const QJsonObject members = value.toObject();
        for (auto member = members.begin(); member != members.end(); ++member) {
            REQUIRE(isClean(member.key()));
            checkAll(member.value(), checkAll);
        }
    };
    check(clean, check);
}

FUZZ_TARGET(hotkey_binding)
{
    const std::optional<HotkeyBinding> binding = HotkeyBinding::fromStored(fuzzValue(bytes));
    if (binding) {
        REQUIRE(binding->isValid() && HotkeyBinding::fromStored(binding->toStored()) == binding);
        REQUIRE(HotkeyBinding::fromCombine(binding->toCombine()) == *binding);
    }
    const HotkeyBinding named =
        HotkeyBinding::fromCombine({QString::fromUtf8(bytes), false, bytes.size() % 2 == 0, true});
    if (named.isValid())
        REQUIRE(HotkeyBinding::fromStored(named.toStored()) == named);
}
