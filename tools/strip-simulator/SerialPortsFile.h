#pragma once

#include <QString>

#include <functional>

class QJsonArray;

/// The JSON list of bridged serial ports that the program watches: an array of objects with name, location
/// and description. Several processes may change one file at the same time; readers always see a whole one.
class SerialPortsFile
{
public:
    /// An empty path stands for the one in the environment variable LUMIVAR_SERIAL_PORTS.
    explicit SerialPortsFile(const QString& path = QString());

    QString path() const { return m_path; }

    /// Adds a port, or replaces the one of that name. False when there is no path or it can't be written.
    bool add(const QString& name, const QString& location, const QString& description) const;
    /// Removes the port if it still stands at that location. True when it is not in the file any more.
    bool remove(const QString& name, const QString& location) const;

private:
    bool change(const std::function<void(QJsonArray&)>& edit) const;

    QString m_path;
};
