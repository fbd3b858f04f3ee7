#pragma once

#include "ServerProcess.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A sound server of the test's own (pulseaudio) with one silent loudspeaker, "first", that is the default.
/// Programs and the test itself reach it once useHere() has been called.
class SoundServer : public ServerProcess
{
public:
    SoundServer();
    ~SoundServer() { stop(); } // before its folder goes

    /// Makes this server the one that the process and its children find, whether it runs or not.
    void useHere() const;
    /// Waits until the server answers; false, with a warning, when it does not.
    bool start();

    QByteArray address() const;
    /// One more loudspeaker, heard by "<name>.monitor".
    bool addSink(const QString& name, int rate = 48000, int channels = 2);
    bool removeSink(const QString& name);
    bool setDefaultSink(const QString& name) { return control({"set-default-sink", name}); }
    /// Asks the server; false unless it does as it is told.
    bool control(const QStringList& arguments, QByteArray* output = nullptr) const;

private:
    QTemporaryDir m_home;
};
