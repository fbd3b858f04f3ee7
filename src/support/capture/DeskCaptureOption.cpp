#include "support/capture/DeskCaptureOption.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QJsonValue>
#include <QVariant>
#include <algorithm>

namespace {
qulonglong addressOf(const DeskCaptureOption* option)
{
    return reinterpret_cast<quintptr>(option);
}

/// The stored one, else the session's own. A name that is unknown here may be another system's: it stays.
int modeToBeginWith(const QList<CaptureMode>& modes)
{
    const QString stored =
        ConfigurationManager::instance()->appConfig(ConfigKeys::kCaptureMode.key).toString();
    const auto isStored = [&stored](const CaptureMode& mode) { return mode.name == stored; };
    auto found = std::find_if(modes.begin(), modes.end(), isStored);
    if (stored.isEmpty() || found == modes.end())
        found = std::find_if(modes.begin(), modes.end(), [](const auto& mode) { return mode.isSessionsOwn; });
    return found == modes.end() ? 0 : static_cast<int>(found - modes.begin());
}
} // namespace

DeskCaptureOption* DeskCaptureOption::current()
{
    if (!qApp)
        return nullptr;
    return reinterpret_cast<DeskCaptureOption*>(
        static_cast<quintptr>(qApp->property(kProperty).toULongLong()));
}

DeskCaptureOption::DeskCaptureOption(const QList<CaptureMode>& modes, QObject* parent)
    : QObject(parent)
    , m_modes(modes)
    , m_curMode(modeToBeginWith(modes))
{
    if (qApp)
        qApp->setProperty(kProperty, addressOf(this));
}

DeskCaptureOption::~DeskCaptureOption()
{
    if (current() == this)
        qApp->setProperty(kProperty, QVariant());
}

void DeskCaptureOption::setCurMode(int mode)
{
    if (mode < 0 || mode >= totalOfMode()) {
        qWarning() << "[DeskCaptureOption]: There is no capture mode" << mode;
        return;
    }
    if (mode == m_curMode)
        return;
    m_curMode = mode;
    // The session's own is what is there without a choice: the next session may be of the other kind.
    const CaptureMode& chosen = m_modes.at(mode);
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kCaptureMode.key,
                                                   chosen.isSessionsOwn ? QJsonValue() : chosen.name);
    qInfo().noquote() << ConfigKeys::kCaptureMode.key << "changed to" << chosen.name;
    emit curModeChanged(mode);
}

QString DeskCaptureOption::modeDesc(int mode) const
{
    return QCoreApplication::translate(CaptureMode::kContext, m_modes.at(mode).desc);
}
