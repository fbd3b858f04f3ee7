#include "online/InstallerHandOver.h"

#include <QDebug>
#include <QProcess>
#include <QTimer>

namespace {

constexpr int kTakenMs = 1000;

} // namespace

void handOverInstaller(const QString& path, QObject* asker, std::function<void(bool isTaken)> done)
{
    const bool isStarted = QProcess::startDetached(path, {});
    if (!isStarted)
        qWarning().noquote() << "[InstallerHandOver]: Does not start:" << path;
    QTimer::singleShot(isStarted ? kTakenMs : 0, asker, [=] { done(isStarted); });
}
