// What files, plug-ins and the user's settings say about effects.
#include "Fuzz.h"

#include "FakeDeskDuplManager.h"
#include "controllers/LV_RGB.h"
#include "effects/ColorStrapManager.h"
#include "effects/EffectRegistry.h"
#include "effects/IEffectFactory.h"
#include "effects/colorful/MoodShadow.h"
#include "effects/colorful/strapColors.h"
#include "effects/dynamicMusic/AbsMusicEffect.h"
#include "effects/dynamicMusic/Mode1/Fragment.h"
#include "effects/graphics/PixmapSequence.h"
#include "effects/graphics/PixmapStream.h"
#include "effects/graphics/readColorPicture.h"
#include "effects/screenSync/LedMap.h"
#include "effects/screenSync/subModes/FullScreenMode.h"
#include "support/audio/AudioBackend.h"
#include "support/audio/AudioCapManager.h"
#include "support/config/ConfigKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QtEndian>

namespace {

const QString kStrip = QStringLiteral("LVTEST:01");

/// No sound, instead of the machine's.
class SilentSound : public AudioBackend
{
public:
    AudioSources sources() const override { return {}; }
    void attach(const QSharedPointer<AudioCapturer>&) override {}
    void detach(const QSharedPointer<AudioCapturer>&) override {}
    bool isServerThere() const override { return false; }
};

/// A plug-in that says of its effects whatever it likes.
class LyingFactory : public IEffectFactory
{
public:
    IEffectWorker* createWorker(QString) override { return nullptr; }
    QList<EffectWorkerOptions> workerOptionsList() override { return effects; }

    QList<EffectWorkerOptions> effects;
};

/// What the pages and hotkeys rely on, whatever the files and plug-ins were.
void checkCatalogue(const EffectRegistry& registry)
{
    for (const QString& id : registry.groupIds()) {
        const EffectGroupInfo group = registry.groupInfo(id);
        REQUIRE(group.id == id && !id.isEmpty());
        for (const QString& effect : group.workers)
            REQUIRE(registry.hasEffect(effect) && EffectWorkerOptions::groupOf(effect) == id);
        const QString usable = registry.usableEffect(id);
        REQUIRE(usable.isEmpty() ? group.workers.isEmpty() : registry.hasEffect(usable));
        const QString next = registry.nextGroupByOrder(id);
        REQUIRE(next.isEmpty() || registry.previousGroupByOrder(registry.nextGroupByOrder(next)) == next);
    }
    for (const QString& effect : registry.effectIds())
        REQUIRE(registry.groupInfo(EffectWorkerOptions::groupOf(effect)).workers.contains(effect));
}

/// The file with the checksums that its chunks need, and what its IDAT holds compressed: else hardly any
/// change would be seen behind the first check.
QByteArray mendedPng(const QByteArray& file)
{
    constexpr int kSignature = 8;
    QByteArray mended = file.left(kSignature);
    for (int at = kSignature; file.size() - at >= 8;) {
        const auto length = qFromBigEndian<quint32>(file.constData() + at);
        const QByteArray type = file.mid(at + 4, 4);
        QByteArray content = file.mid(at + 8, int(qMin<quint32>(length, 1 << 20)));
        at += 8 + content.size() + 4;
        if (type == "IDAT")
            content = qCompress(content).mid(4);
        quint32 crc = ~0U;
        for (const char byte : type + content) {
            crc ^= static_cast<uchar>(byte);
            for (int bit = 0; bit < 8; ++bit)
                crc = crc & 1 ? crc >> 1 ^ 0xEDB88320U : crc >> 1;
        }
        const auto number = [](quint32 value) {
            value = qToBigEndian(value);
            return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
        };
        mended += number(quint32(content.size())) + type + content + number(~crc);
    }
    return mended;
}

/// The catalogue as it is built in, with the extra effects, and the services that its workers are given.
struct Engine
{
    Engine()
    {
        new AudioCapManager(std::make_unique<SilentSound>());
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kExtraEffects.key, true);
        auto capture = QSharedPointer<FakeCapture>::create();
        capture->frame = cv::Mat(27, 48, CV_8UC4, cv::Scalar(10, 200, 90, 255));
        screens.order = QStringList{QStringLiteral("screen")};
        screens.captures.insert(QStringLiteral("screen"), capture);
        registry.load(&owner);
    }

    QSharedPointer<IEffectWorker> worker(const QString& id)
    {
        auto worker = registry.createWorker(id);
        if (auto* screen = qobject_cast<AbsScreenSync*>(worker.data()))
            screen->DIDeskDuplication(&screens);
        if (auto* mood = qobject_cast<MoodShadow*>(worker.data()))
            mood->DIColorStrapManager(&straps);
        return worker;
    }

    QObject owner;
    FakeDeskDuplManager screens{&owner};
    ColorStrapManager straps{&owner};
    EffectRegistry registry;
};

Engine& engine()
{
    QDir().mkpath(QStringLiteral("effects"));
    static auto* const whole = new Engine;
    return *whole;
}

/// Gives a worker everything it may be sent, and looks at what it says; workers of the audio modes are told
/// of a sound, others of a picture of the screen.
void useWorker(IEffectWorker& worker, const QByteArray& text)
{
    worker.onCtlDirChanged(1);
    worker.onCtlBrightnessChanged(0.5F);
    if (auto* music = qobject_cast<AbsMusicEffect*>(&worker)) {
        const Spectrum loud{100, 0.5F, 60};
        music->spectrumUpdate(QVector<SoundChannel>{{{loud, loud}}, {{loud}}});
        music->peakValuesChanged({{QString::fromLatin1(text.left(40))}});
        music->peakValuesChanged({{QStringLiteral("0.7")}});
    } else if (auto* screen = qobject_cast<AbsScreenSync*>(&worker)) {
        screen->frameInput(cv::Mat(27, 48, CV_8UC4, cv::Scalar(10, 200, 90, 255)));
    }
    worker.onCtlDarkChanged(true);
    worker.onCtlDarkChanged(false);
}

/// Runs the worker of an effect from load to unload with what is stored; properties of the object are set.
void runWorker(const QString& effectId, const ControlOptions& strip, const QJsonObject& properties,
               const QByteArray& text)
{
    const QString look = QLatin1String(EffectProperties::kLook);
    QJsonValue left;
    for (int life = 0; life < 2; ++life) {
        const auto worker = engine().worker(effectId);
        REQUIRE(worker);
        const bool mayDiffer = effectId.contains(QLatin1String("peakValues")); // told by a file
        QObject::connect(worker.data(), &IEffectWorker::updateColors, worker.data(),
                         [&](const QVector<LV_RGB>& colors) {
                             REQUIRE(colors.size() == int(strip.nbLeds) || mayDiffer);
                             REQUIRE(colors.size() <= 0xFFFF);
                         });
        worker->load(strip);
        if (life == 1) // what was set is what the next start finds
            REQUIRE(worker->effectProperty(look) == left);
        useWorker(*worker, text);
        if (life == 0) {
            for (auto each = properties.begin(); each != properties.end(); ++each) {
                worker->setEffectProperty(each.key(), each.value());
                worker->effectProperty(each.key());
            }
            worker->setEffectProperty(QString(), properties);
            useWorker(*worker, text);
        }
        left = worker->effectProperty(look);
        worker->unload();
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

ControlOptions stripOf(int nbLeds)
{
    ControlOptions options;
    options.model = QStringLiteral("LVTEST");
    options.id = kStrip;
    options.nbLeds = static_cast<quint32>(nbLeds);
    return options;
}

} // namespace

FUZZ_TARGET(group_file)
{
    engine();
    writeFuzzFile(QStringLiteral("effects/groups.json"), bytes);
    QObject owner;
    EffectRegistry registry;
    registry.load(&owner);
    QFile::remove(QStringLiteral("effects/groups.json"));
    checkCatalogue(registry);
}

/// Lines of an effect each: id, name, place, classes of the option widgets.
FUZZ_TARGET(plugin_catalogue)
{
    LyingFactory factory;
    FuzzInput input(bytes);
    while (!input.isOver() && factory.effects.size() < 100) {
        const QStringList parts = QString::fromUtf8(input.line()).split(u'\t');
        EffectWorkerOptions effect;
        effect.id = parts.value(0);
        effect.name = parts.value(1);
        effect.order = parts.value(2).toInt();
        effect.sOptWidget = parts.value(3);
        effect.lOptWidget = parts.value(4);
        effect.async = parts.size() % 2 == 0;
        factory.effects.append(effect);
    }
    QObject owner;
    EffectRegistry registry;
    registry.load(&owner);
    registry.addFactory(&factory);
    checkCatalogue(registry);
    for (const EffectWorkerOptions& effect : qAsConst(factory.effects))
        REQUIRE(EffectWorkerOptions::groupOf(effect.id).isEmpty() || !registry.createWorker(effect.id));
}

/// The user's gradients as they are stored; an object is the file that ships them.
FUZZ_TARGET(straps)
{
    ConfigurationManager* config = ConfigurationManager::instance();
    engine();
    const QJsonValue value = fuzzValue(bytes);
    writeFuzzFile(QStringLiteral("effects/colorStraps.json"), bytes);
    config->setEffectJsonValue(
        QLatin1String(ConfigKeys::kColorStrapsEffect), QLatin1String(ConfigKeys::kAllControllers),
        QLatin1String(ConfigKeys::kColorStrapList), value.isObject() ? QJsonValue() : value);
    ColorStrapManager straps(nullptr, config);
    const int count = straps.strapCount();
    REQUIRE(count > 0);
    for (int i = 0; i < count; ++i) {
        const ColorStrap strap = straps.strap(i);
        REQUIRE(strapColors(strap, 50).size() == 50);
        straps.setStrap(i, strap);
        const ColorStrap again = straps.strap(i);
        REQUIRE(again.name == strap.name && again.endsColor == strap.endsColor &&
                strapStops(again) == strapStops(strap));
    }
    REQUIRE(ColorStrapManager(nullptr, config).strapCount() == count);
}

FUZZ_TARGET(fragment)
{
    const auto fragment = Fragment::fromJson(QStringLiteral("left"), fuzzValue(bytes));
    if (!fragment)
        return;
    REQUIRE(fragment->count() > 0 && fragment->count() <= 0xFFFF);
    const auto again = Fragment::fromJson(QStringLiteral("left"), fragment->toJson());
    REQUIRE(again && again->toJson() == fragment->toJson());
}

/// Which effect, how long the strip, then its settings as they are stored and as they are set.
FUZZ_TARGET(effect_settings)
{
    FuzzInput input(bytes);
    const QStringList ids = engine().registry.effectIds();
    const QString& id = ids.at(input.number(ids.size()));
    const ControlOptions strip = stripOf(input.number());
    const QByteArray text = input.rest();
    const QJsonObject settings = fuzzObject(text);
    ConfigurationManager::instance()->setEffectJsonValue(id, kStrip, QString(), settings);
    runWorker(id, strip, settings, text);
}

/// The file that tells where the bars of the peak effects lie.
FUZZ_TARGET(peak_file)
{
    engine();
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
                           QStringLiteral("/controler_config");
    QDir().mkpath(folder);
    FuzzInput input(bytes);
    const QString id = QStringLiteral("id.effect.dynamicMusic.peakValues_%1").arg(1 + input.number(8));
    const ControlOptions strip = stripOf(input.number());
    const QByteArray text = input.rest();
    writeFuzzFile(folder + QStringLiteral("/LVTEST_01.json"), text);
    runWorker(id, strip, {}, text);
    QFile::remove(folder + QStringLiteral("/LVTEST_01.json"));
}

/// What ships for the meters of a model.
FUZZ_TARGET(fragment_file)
{
    engine();
    QDir().mkpath(QStringLiteral("effects/dynamicMusic"));
    FuzzInput input(bytes);
    const QString id = QStringLiteral("id.effect.dynamicMusic.musicMode_%1").arg(1 + input.number(4));
    const ControlOptions strip = stripOf(input.number());
    const QByteArray text = input.rest();
    writeFuzzFile(QStringLiteral("effects/dynamicMusic/LVTEST.json"), text);
    ConfigurationManager::instance()->setEffectJsonValue(id, kStrip, QString(), QJsonObject());
    runWorker(id, strip, {}, text);
    QFile::remove(QStringLiteral("effects/dynamicMusic/LVTEST.json"));
}

/// A map as it is stored or shipped: LEDs on the canvas and pixels inside the frame.
FUZZ_TARGET(led_map)
{
    FuzzInput input(bytes);
    const ControlOptions strip = stripOf(input.number());
    const bool isWhole = input.number() % 8 == 0;
    const QByteArray text = input.rest();
    LedMap map = LedMap::defaultGrid(int(strip.nbLeds));
    map.apply(fuzzObject(text));
    map.resize(map.screenSize.expandedTo({1, 1}).boundedTo({300, 200}));
    for (const QPoint& point : qAsConst(map.points))
        REQUIRE(QRect(QPoint(), map.screenSize).contains(point));
    LedMap again = LedMap::defaultGrid(int(strip.nbLeds));
    again.apply(map.toConfig());
    REQUIRE(again.screenSize == map.screenSize && again.points == map.points);
    for (const cv::Rect& place : placesOf(map.points, map.screenSize, {120, 67}))
        REQUIRE((place & cv::Rect(0, 0, 120, 67)) == place && !place.empty());

    if (!isWhole)
        return; // what follows takes a hundred times as long
    engine();
    QDir().mkpath(QStringLiteral("controler_config"));
    writeFuzzFile(QStringLiteral("controler_config/LVTEST.json"), text);
    const QString id = QStringLiteral("id.effect.screenSync.fullScreen");
    ConfigurationManager::instance()->setEffectJsonValue(id, kStrip, QString(), QJsonObject());
    runWorker(id, strip, {}, text);
    QFile::remove(QStringLiteral("controler_config/LVTEST.json"));
}

/// A picture of the stream: as it is, or with checksums mended.
FUZZ_TARGET(picture)
{
    QDir().mkpath(QStringLiteral("pictures"));
    const QString path = QStringLiteral("pictures/1.png");
    const QByteArray file = bytes.mid(1);
    const QByteArray png = FuzzInput(bytes).number(2) ? mendedPng(file) : file;
    writeFuzzFile(path, png);
    QString problem;
    const cv::Mat picture = readColorPicture(path, &problem);
    REQUIRE(picture.empty() != problem.isEmpty());
    if (!picture.empty()) {
        const auto width = qFromBigEndian<qint32>(png.constData() + 16);
        const auto height = qFromBigEndian<qint32>(png.constData() + 20);
        REQUIRE(picture.size() == cv::Size(width, height) || picture.size() == cv::Size(height, width));
    }
    PixmapSequence sequence(QStringLiteral("pictures"), {23, 11});
    REQUIRE(sequence.beginRead());
    sequence.readNext();
    const cv::Mat frame = sequence.frame();
    REQUIRE(frame.empty() == picture.empty());
    REQUIRE(frame.empty() || serpentineColors(frame).size() == 23 * 11);
}
