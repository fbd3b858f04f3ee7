#include "controllers/SystemPorts.h"

#include "controllers/WindowsSerial.h"

#include <algorithm>
#include <windows.h>
// behind windows.h
#include <cfgmgr32.h>
#include <setupapi.h>

namespace {

constexpr GUID kPortsClass = {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};
/// Also of ports whose drivers are of another class, such as modems.
constexpr GUID kComPortInterface = {
    0x86E0D1E0, 0x8089, 0x11D0, {0x9C, 0xE4, 0x08, 0x00, 0x3E, 0x30, 0x1F, 0x73}};

constexpr int kMaxNameLength = 256;

QString property(HDEVINFO devices, SP_DEVINFO_DATA& device, DWORD which)
{
    wchar_t text[kMaxNameLength + 1] = {};
    const bool isKnown =
        SetupDiGetDeviceRegistryPropertyW(devices, &device, which, nullptr, reinterpret_cast<BYTE*>(text),
                                          kMaxNameLength * sizeof *text, nullptr) != 0;
    return isKnown ? QString::fromWCharArray(text) : QString();
}

/// As the driver's own settings have it.
QString storedPortName(HDEVINFO devices, SP_DEVINFO_DATA& device)
{
    const HKEY key = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE)
        return {};
    wchar_t text[kMaxNameLength + 1] = {};
    DWORD size = kMaxNameLength * sizeof *text;
    const bool isKnown = RegQueryValueExW(key, L"PortName", nullptr, nullptr, reinterpret_cast<BYTE*>(text),
                                          &size) == ERROR_SUCCESS;
    RegCloseKey(key);
    return isKnown ? QString::fromWCharArray(text) : QString();
}

void append(QList<SystemPort>& ports, const SystemPort& port)
{
    const auto isSame = [&](const SystemPort& known) { return known.name == port.name; };
    if (port.name.startsWith(QLatin1String("COM")) && std::none_of(ports.cbegin(), ports.cend(), isSame))
        ports.append(port);
}

void appendDevices(QList<SystemPort>& ports, const GUID& kind, DWORD flags)
{
    const HDEVINFO devices = SetupDiGetClassDevsW(&kind, nullptr, nullptr, flags | DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE)
        return;
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof device;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device); ++i) {
        const QString friendly = property(devices, device, SPDRP_FRIENDLYNAME);
        QString name = storedPortName(devices, device);
        if (name.isEmpty())
            name = WindowsSerial::portName(friendly);
        QString description = property(devices, device, SPDRP_DEVICEDESC);
        if (description.isEmpty())
            description = WindowsSerial::description(friendly);
        wchar_t instance[MAX_DEVICE_ID_LEN] = {};
        SetupDiGetDeviceInstanceIdW(devices, &device, instance, MAX_DEVICE_ID_LEN, nullptr);
        append(ports, {name, WindowsSerial::location(name), description,
                       WindowsSerial::usbIds(QString::fromWCharArray(instance))});
    }
    SetupDiDestroyDeviceInfoList(devices);
}

/// Virtual ports that are no device of the system's list.
void appendMappedPorts(QList<SystemPort>& ports)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_QUERY_VALUE, &key) !=
        ERROR_SUCCESS)
        return;
    for (DWORD i = 0;; ++i) {
        wchar_t device[kMaxNameLength + 1] = {};
        wchar_t text[kMaxNameLength + 1] = {};
        DWORD deviceLength = kMaxNameLength;
        DWORD size = kMaxNameLength * sizeof *text;
        const LSTATUS status = RegEnumValueW(key, i, device, &deviceLength, nullptr, nullptr,
                                             reinterpret_cast<BYTE*>(text), &size);
        if (status == ERROR_SUCCESS) {
            const QString name = QString::fromWCharArray(text);
            append(ports, {name, WindowsSerial::location(name), {}, {}});
        } else if (status != ERROR_MORE_DATA) { // that one has no name of ours
            break;
        }
    }
    RegCloseKey(key);
}

} // namespace

QList<SystemPort> systemPorts()
{
    QList<SystemPort> ports;
    appendDevices(ports, kPortsClass, 0);
    appendDevices(ports, kComPortInterface, DIGCF_DEVICEINTERFACE);
    appendMappedPorts(ports);
    return ports;
}
