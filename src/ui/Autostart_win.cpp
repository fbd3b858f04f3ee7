#include "ui/Autostart.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSettings>

namespace {

const QString kRunKey =
    QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run");
/// Where the system's settings and its task manager switch entries off.
const QString kApprovalKey =
    QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\"
                   "StartupApproved\\Run");

} // namespace

bool Autostart::isEnabled()
{
    const QString name = QCoreApplication::applicationName();
    const QSettings run(kRunKey, QSettings::NativeFormat);
    const QSettings approvals(kApprovalKey, QSettings::NativeFormat);
    return run.value(name).toString() == registryCommand(QCoreApplication::applicationFilePath()) &&
           !isDisapproved(approvals.value(name).toString());
}

void Autostart::setEnabled(bool isEnabled)
{
    const QString name = QCoreApplication::applicationName();
    QSettings run(kRunKey, QSettings::NativeFormat);
    QSettings approvals(kApprovalKey, QSettings::NativeFormat);
    if (isEnabled)
        run.setValue(name, registryCommand(QCoreApplication::applicationFilePath()));
    else
        run.remove(name);
    if (approvals.contains(name))
        approvals.remove(name);
    run.sync();
    if (run.status() != QSettings::NoError)
        qWarning().noquote() << "[Autostart]: Cannot write" << kRunKey;
}
