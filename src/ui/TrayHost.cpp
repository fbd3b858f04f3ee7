#include "ui/TrayHost.h"

TrayHost::TrayHost(QObject* parent)
    : QObject(parent)
    , m_watch(makeWatch())
{
}

TrayHost::~TrayHost() = default;

void TrayHost::setAvailable(bool isAvailable)
{
    if (isAvailable == m_isAvailable)
        return;
    m_isAvailable = isAvailable;
    emit availableChanged(isAvailable);
}
