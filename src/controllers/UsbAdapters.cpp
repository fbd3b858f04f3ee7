#include "controllers/UsbAdapters.h"

bool isStripAdapter(UsbIds ids)
{
    return ids.vendor == 0x1A86 && (ids.product == 0x7522 || ids.product == 0x7523);
}
