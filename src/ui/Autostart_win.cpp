#include "ui/Autostart.h"

#include <QCoreApplication>
#include <QDebug>
#include <QSettings>

namespace {

const QString kRunKey =
    QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run");

} // namespace

bool Autostart::isEnabled()
{
    const QSettings run(kRunKey, QSettings::NativeFormat);
    return run.value(QCoreApplication::applicationName()).toString() ==
           registryCommand(QCoreApplication::applicationFilePath());
}

void Autostart::setEnabled(bool isEnabled)
{
    QSettings run(kRunKey, QSettings::NativeFormat);
    if (isEnabled)
        run.setValue(QCoreApplication::applicationName(),
                     registryCommand(QCoreApplication::applicationFilePath()));
    else
        run.remove(QCoreApplication::applicationName());
    run.sync();
    if (run.status() != QSettings::NoError)
        qWarning().noquote() << "[Autostart]: Cannot write" << kRunKey;
}
