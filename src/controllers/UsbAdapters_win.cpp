#include "controllers/UsbAdapters.h"

#include "controllers/WindowsSerial.h"

#include <windows.h>
// behind windows.h
#include <cfgmgr32.h>
#include <setupapi.h>

QList<PortlessAdapter> portlessAdapters(const QString&)
{
    QList<PortlessAdapter> found;
    const HDEVINFO devices = SetupDiGetClassDevsW(nullptr, L"USB", nullptr, DIGCF_PRESENT | DIGCF_ALLCLASSES);
    if (devices == INVALID_HANDLE_VALUE)
        return found;
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof device;
    for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device); ++i) {
        wchar_t instance[MAX_DEVICE_ID_LEN] = {};
        ULONG status = 0;
        ULONG problem = 0;
        if (!SetupDiGetDeviceInstanceIdW(devices, &device, instance, MAX_DEVICE_ID_LEN, nullptr) ||
            !isStripAdapter(WindowsSerial::usbIds(QString::fromWCharArray(instance))) ||
            CM_Get_DevNode_Status(&status, &problem, device.DevInst, 0) != CR_SUCCESS)
            continue;
        if (status & DN_HAS_PROBLEM)
            found.append({QString::fromWCharArray(instance)});
    }
    SetupDiDestroyDeviceInfoList(devices);
    return found;
}
