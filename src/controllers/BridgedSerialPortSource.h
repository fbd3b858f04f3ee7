#pragma once

#include "controllers/SerialPortSource.h"
#include "support/SharedLibrary.h"

#include <QFileSystemWatcher>
#include <QTimer>
#include <optional>

/// Ports that the system does not list, such as a pseudo terminal or a network bridge, from a JSON file: an
/// array of objects with "name", "location" and "description". The file is followed while the program runs;
/// an entry that appears or moves is an arrival. A broken file is reported once and leaves the list as it
/// was.
class LUMIVAR_DEVICES_EXPORT BridgedSerialPortSource : public ISerialPortSource
{
    Q_OBJECT

public:
    explicit BridgedSerialPortSource(const QString& file, QObject* parent = nullptr);

    QList<SerialPortRecord> availablePorts() override { return m_ports; }

    /// The file named by LUMIVAR_SERIAL_PORTS, empty when there is none.
    static QString fileFromEnvironment();
    /// The entries of such a file; nothing when it is no array. Entries without name or location are skipped.
    static std::optional<QList<SerialPortRecord>> parse(const QByteArray& json, QString* error);

private:
    void reload();
    void watchFile();
    /// False when the file is broken.
    bool read();
    /// Tells whether a port is the one it was: a device that is plugged in anew may get the same location.
    QStringList identities() const;

    QString m_file;
    QList<SerialPortRecord> m_ports;
    QStringList m_identities; ///< one for each of m_ports
    QByteArray m_lastBytes;
    QString m_readError; ///< told already
    QFileSystemWatcher m_watcher;
    QTimer m_debounce;
    QTimer m_poll;
};
