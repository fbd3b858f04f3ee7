#include "online/InstallerHandOver.h"

#include <QDebug>
#include <QProcess>
#include <QTimer>
#include <unistd.h>

namespace {

constexpr int kTakenMs = 1000; ///< an opener that finds nobody has said so by then

/// Stays when the program goes, unlike a usual process.
class Opener : public QProcess
{
public:
    using QProcess::QProcess;
    ~Opener() override { setProcessState(NotRunning); } // or it would be killed

protected:
    void setupChildProcess() override { setsid(); }
};

} // namespace

void handOverInstaller(const QString& path, QObject* asker, std::function<void(bool isTaken)> done)
{
    auto* opener = new Opener(asker);
    auto* patience = new QTimer(opener);
    const auto end = [=](const QString& error) {
        opener->disconnect();
        patience->stop();
        opener->deleteLater();
        if (!error.isEmpty())
            qWarning().noquote() << "[InstallerHandOver]: Nobody takes" << path << error;
        done(error.isEmpty());
    };
    patience->setSingleShot(true);
    QObject::connect(patience, &QTimer::timeout, opener, [end] { end({}); });
    if (!path.endsWith(QLatin1String(".deb"))) {
        const auto refuse = [end] { end(QStringLiteral("not a package that the desktop installs")); };
        QMetaObject::invokeMethod(opener, refuse, Qt::QueuedConnection);
        return;
    }
    QObject::connect(opener, &QProcess::errorOccurred, opener, [=] { end(opener->errorString()); });
    QObject::connect(opener, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), opener,
                     [end](int exitCode) {
                         if (exitCode != 0)
                             end(QStringLiteral("xdg-open ends with %1").arg(exitCode));
                     });
    opener->setProcessChannelMode(QProcess::ForwardedChannels);
    opener->setStandardInputFile(QProcess::nullDevice());
    patience->start(kTakenMs);
    opener->start(QStringLiteral("xdg-open"), {path});
}
