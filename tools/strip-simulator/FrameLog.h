#pragma once

#include "StripFrame.h"

#include <QFile>

class QJsonObject;

/// Frames and events as lines of JSON. Without a file nothing is written.
class FrameLog
{
public:
    /// "-" is standard output, empty is nowhere. False when the file can't be written.
    bool open(const QString& path);

    void frame(const QString& strip, const StripFrame& frame);
    void event(const QString& strip, const QString& what);

private:
    void write(const QJsonObject& line);

    QFile m_file;
};
