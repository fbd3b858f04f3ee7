#include "system/AccessGrant.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace {

constexpr int kDismissed = 126; ///< as pkexec says it

QString helperPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/grant-access");
}

QString asker()
{
    return QStandardPaths::findExecutable(QStringLiteral("pkexec"));
}

/// For a shell.
QString quoted(QString path)
{
    return QLatin1Char('\'') + path.replace(u'\'', QLatin1String("'\\''")) + QLatin1Char('\'');
}

} // namespace

struct AccessGrant::Private
{
    /// Without a parent: its destructor would wait for a process that runs as somebody else by now.
    QPointer<QProcess> process;
    QTimer late;
};

AccessGrant::AccessGrant(int lateMs, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    d->late.setSingleShot(true);
    d->late.setInterval(lateMs);
    connect(&d->late, &QTimer::timeout, this, [this] { setState(State::Late); });
}

AccessGrant::~AccessGrant()
{
    if (!d->process)
        return;
    d->process->disconnect(this);
    connect(d->process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), d->process,
            &QObject::deleteLater);
    d->process->terminate(); // closes the system's dialog; who has confirmed it already, is served
}

bool AccessGrant::isPossible()
{
    return !asker().isEmpty() && QFileInfo(helperPath()).isExecutable();
}

QStringList AccessGrant::commands(const QString& group)
{
    QStringList lines;
    if (QFileInfo(helperPath()).isExecutable())
        lines += QStringLiteral("sudo %1").arg(quoted(helperPath()));
    lines += QStringLiteral("sudo usermod -aG %1 \"$USER\"").arg(group);
    return lines;
}

QString AccessGrant::installedRule()
{
    for (const char* folder : {"/etc", "/usr/lib", "/lib"}) {
        QString path = QLatin1String(folder) + QStringLiteral("/udev/rules.d/70-lumivar.rules");
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

QStringList AccessGrant::driverCommands()
{
    return {QStringLiteral("sudo modprobe ch341")};
}

void AccessGrant::request()
{
    if (d->process)
        return;
    auto* process = new QProcess;
    d->process = process;
    const auto end = [this, process](State state) {
        process->disconnect(this);
        process->deleteLater();
        d->process.clear();
        d->late.stop();
        setState(state);
    };
    connect(process, &QProcess::errorOccurred, this, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            end(State::Failed);
    });
    connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [end, process](int code, QProcess::ExitStatus status) {
                qInfo().noquote() << "[AccessGrant]: The step ended with" << code
                                  << process->readAllStandardError().trimmed().left(500);
                if (status == QProcess::NormalExit && code == 0)
                    end(State::Granted);
                else
                    end(code == kDismissed ? State::Cancelled : State::Failed);
            });
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    qInfo() << "[AccessGrant]: Asking the system for access to the adapters";
    d->late.start();
    setState(State::Pending);
    // Without a desktop's agent it would ask in the terminal, where nobody may be looking.
    process->start(asker(), {QStringLiteral("--disable-internal-agent"), helperPath()});
}

void AccessGrant::forget()
{
    if (!d->process)
        setState(State::Idle);
}

void AccessGrant::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged();
}
