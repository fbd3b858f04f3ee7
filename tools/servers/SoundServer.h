#pragma once

#include "ServerProcess.h"

#include <QDir>
#include <QProcessEnvironment>
#include <QTemporaryDir>

/// A sound server of the test's own (pulseaudio) with one silent loudspeaker, "first", that is the default.
/// Programs and the test itself reach it once useHere() has been called.
class SoundServer : public ServerProcess
{
public:
    ~SoundServer() { stop(); } // before its folder goes

    /// Makes this server the one that the process and its children find, whether it runs or not.
    void useHere() const { qputenv("PULSE_SERVER", address()); }
    /// Waits until the server answers; false, with a warning, when it does not.
    bool start()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("PULSE_SERVER");
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "PULSE_RUNTIME_PATH"})
            environment.insert(variable, m_home.path());
        m_server.setProcessEnvironment(environment);
        QFile::remove(m_socket); // a killed server leaves it
        m_server.start("pulseaudio", {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                                      "--disable-shm=yes", "-L", nullSink("first", 48000, 2), "-L",
                                      "module-native-protocol-unix auth-anonymous=1 socket=" + m_socket});
        return comesUp([this] { return QFile::exists(m_socket) && control({"info"}); });
    }

    QByteArray address() const { return "unix:" + QFile::encodeName(m_socket); }
    /// One more loudspeaker, heard by "<name>.monitor".
    bool addSink(const QString& name, int rate = 48000, int channels = 2)
    {
        return control(QStringList{"load-module"} + nullSink(name, rate, channels).split(' '));
    }
    bool removeSink(const QString& name)
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
    bool setDefaultSink(const QString& name) { return control({"set-default-sink", name}); }
    /// Asks the server; false unless it does as it is told.
    bool control(const QStringList& arguments, QByteArray* output = nullptr) const
    {
        QProcess process;
        process.start("pactl", QStringList{"--server=" + QString::fromUtf8(address())} + arguments);
        return succeeds(process, output);
    }

private:
    static QString nullSink(const QString& name, int rate, int channels)
    {
        // With rewinds the first sound would come two seconds late.
        return QString("module-null-sink sink_name=%1 rate=%2 channels=%3 norewinds=1 "
                       "sink_properties=device.description=%1")
            .arg(name)
            .arg(rate)
            .arg(channels);
    }

    QTemporaryDir m_home{QDir::tempPath() + "/sound-XXXXXX"}; // a socket's path must be short
    const QString m_socket = m_home.filePath("native");
};
