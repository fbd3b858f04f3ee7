#include "controllers/VTControllerEnumerator.h"

#include "controllers/VTController.h"

#include <QTimer>

namespace {

constexpr int kStartDelayMs = 1000; ///< until the receiver of the devices is connected

struct VirtualDevice
{
    const char* model;
    const char* serial;
    std::uint32_t nbLeds;
};
constexpr VirtualDevice kDevices[] = {
    {"VT0100", "1234567890", 120},
    {"VT0100", "0987654321", 120},
    {"LV0N03", "0987654321", 253},
};

} // namespace

VTControllerEnumerator::VTControllerEnumerator(QObject* parent)
    : IDeviceEnumerator(parent)
{
    QTimer::singleShot(kStartDelayMs, this, &VTControllerEnumerator::makeControllers);
}

void VTControllerEnumerator::makeControllers()
{
    const QImage picture(QStringLiteral("://images/Lv0127Icon.jpg"));
    for (const VirtualDevice& device : kDevices) {
        ControlOptions options;
        options.model = QLatin1String(device.model);
        options.kindName = options.model;
        options.serial = QLatin1String(device.serial);
        options.id = options.storeKey();
        options.portName = QStringLiteral("COM_VT");
        options.brightness = 0.6F;
        options.enable = true;
        options.nbLeds = device.nbLeds;
        options.icon = picture;
        options.image = picture;
        emit deviceEnabled(AbsRGBControllerPtr(new VTController(options, nullptr), &QObject::deleteLater));
    }
}
