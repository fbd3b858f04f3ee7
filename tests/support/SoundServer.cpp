#include "SoundServer.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QThread>

namespace {

QString nullSink(const QString& name, int rate, int channels)
{
    // With rewinds the first sound would come two seconds late.
    return QString("module-null-sink sink_name=%1 rate=%2 channels=%3 norewinds=1 "
                   "sink_properties=device.description=%1")
        .arg(name)
        .arg(rate)
        .arg(channels);
}
} // namespace

SoundServer::SoundServer()
    : m_home(QDir::tempPath() + "/sound-XXXXXX") // a socket's path must be short
{
}

void SoundServer::useHere() const
{
    qputenv("PULSE_SERVER", address());
}

bool SoundServer::start()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("PULSE_SERVER");
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"})
        environment.insert(variable, m_home.path());
    m_server.setProcessEnvironment(environment);
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    QFile::remove(m_home.filePath("native")); // a killed server leaves it
    m_server.start("pulseaudio",
                   {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
                    "-L", nullSink("first", 48000, 2), "-L",
                    "module-native-protocol-unix auth-anonymous=1 socket=" + m_home.filePath("native")});
    for (QDeadlineTimer patience(kStartMs); !patience.hasExpired(); QThread::msleep(10)) {
        if (m_server.state() == QProcess::NotRunning)
            break;
        if (QFile::exists(m_home.filePath("native")) && control({"info"}))
            return true;
        m_server.waitForFinished(0);
    }
    qWarning() << "pulseaudio does not start:" << m_server.errorString() << m_server.readAll();
    stop();
    return false;
}

QByteArray SoundServer::address() const
{
    return "unix:" + QFile::encodeName(m_home.filePath("native"));
}

bool SoundServer::addSink(const QString& name, int rate, int channels)
{
    return control(QStringList{"load-module"} + nullSink(name, rate, channels).split(' '));
}

bool SoundServer::removeSink(const QString& name)
{
    QByteArray modules;
    if (!control({"list", "short", "modules"}, &modules))
        return false;
    for (const QByteArray& line : modules.split('\n')) {
        if (line.contains("sink_name=" + name.toUtf8() + ' '))
            return control({"unload-module", QString::fromUtf8(line.split('\t').first())});
    }
    return false;
}

bool SoundServer::control(const QStringList& arguments, QByteArray* output) const
{
    QProcess process;
    process.start("pactl", QStringList{"--server=" + QString::fromUtf8(address())} + arguments);
    return succeeds(process, output);
}
