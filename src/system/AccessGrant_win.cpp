#include "system/AccessGrant.h"

// Everybody may open a serial port here, and drivers come by the system's updates.

struct AccessGrant::Private
{
};

AccessGrant::AccessGrant(int, QObject* parent)
    : QObject(parent)
{
}

AccessGrant::~AccessGrant() = default;

bool AccessGrant::isPossible()
{
    return false;
}

QStringList AccessGrant::commands(const QString&)
{
    return {};
}

QString AccessGrant::installedRule()
{
    return {};
}

QStringList AccessGrant::driverCommands()
{
    return {};
}

void AccessGrant::request()
{
    setState(State::Failed);
}

void AccessGrant::forget()
{
    setState(State::Idle);
}

void AccessGrant::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}
