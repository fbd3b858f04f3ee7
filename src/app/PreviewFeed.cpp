#include "app/PreviewFeed.h"

#include "app/DeviceManager.h"
#include "app/StripPlaces.h"
#include "support/config/DataFile.h"
#include "ui/ControlPage.h"
#include "ui/StripPreview.h"

#include <QJsonDocument>

namespace {

constexpr int kMovingMs = 100; // enough for soft light, and each picture costs
constexpr int kStillMs = 250;
constexpr int kStillAfterTicks = 20;

/// Of effects with a layout of their own.
const QString kLedMap = QStringLiteral("LEDMap");
const QString kScreenSize = QStringLiteral("screenSize");

/// Empty where there is none; why is the effects' to say.
QJsonObject shippedLayoutOf(const QString& model)
{
    QString reason;
    const auto bytes = readDataFile(QStringLiteral("controler_config/%1.json").arg(model), &reason);
    return bytes ? QJsonDocument::fromJson(*bytes).object() : QJsonObject();
}

} // namespace

bool PreviewFeed::Strip::operator==(const Strip& other) const
{
    return nbLeds == other.nbLeds && direction == other.direction && id == other.id && effect == other.effect;
}

PreviewFeed::PreviewFeed(DeviceManager& devices, ControlPage& page)
    : m_devices(devices)
    , m_page(page)
{
    connect(&m_timer, &QTimer::timeout, this, &PreviewFeed::pull);
    connect(&page.stripPreview(), &StripPreview::appeared, this, [this] {
        if (m_timer.isActive())
            return;
        wake();
        QTimer::singleShot(0, this, &PreviewFeed::pull); // the last light may be another device's
    });
    // What the user does shows at once.
    connect(&page, &ControlPage::dirChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::enableChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::brightnessChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::workGoupChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::workerChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::sOptWidPropertyChanged, this, &PreviewFeed::wake);
    connect(&page, &ControlPage::lOptWidPropertyChanged, this, [this] { m_isLayoutStale = true; });
    connect(&devices, &DeviceManager::effectPropertyChanged, this,
            [this](const QString& id, const QString&, const QString& key) {
                if (id == m_page.controllerId() && (key == kLedMap || key == kScreenSize)) {
                    m_isLayoutStale = true;
                    wake();
                }
            });
}

void PreviewFeed::wake()
{
    m_stillTicks = 0;
    if (!m_timer.isActive() || m_timer.interval() != kMovingMs)
        m_timer.start(kMovingMs);
}

void PreviewFeed::pull()
{
    StripPreview& preview = m_page.stripPreview();
    if (!preview.isSeen())
        return m_timer.stop();
    const AbsRGBControllerPtr controller = m_devices.controller(m_page.controllerId());
    if (!controller)
        return;
    place(controller->options());
    const QVector<LV_RGB> colors = controller->isDark() ? QVector<LV_RGB>() : controller->sentColors();
    if (colors.constData() != preview.colors().constData() && colors != preview.colors()) {
        preview.setColors(colors);
        return wake();
    }
    if (++m_stillTicks == kStillAfterTicks)
        m_timer.start(kStillMs);
}

void PreviewFeed::place(const ControlOptions& options)
{
    const Strip strip{options.id, m_devices.effects().boundEffectId(options.id), options.nbLeds,
                      options.installDirection};
    if (strip == m_strip && !m_isLayoutStale)
        return;
    m_strip = strip;
    m_isLayoutStale = false;
    QJsonObject layout;
    for (const QString& key : {kLedMap, kScreenSize})
        layout.insert(key, m_devices.effects().effectProperty(options.id, key));
    const StripPlaces places = stripPlaces(options, strip.effect, layout, shippedLayoutOf(options.model));
    m_page.stripPreview().setPlaces(places.points, places.aspect);
}
