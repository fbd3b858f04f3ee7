#include "FrameLog.h"

#include "StripSimulator.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

bool FrameLog::open(const QString& path)
{
    if (path.isEmpty())
        return true;
    if (path == QLatin1String("-"))
        return m_file.open(stdout, QIODevice::WriteOnly);
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

void FrameLog::frame(const QString& strip, const StripFrame& frame)
{
    if (!m_file.isOpen())
        return;
    const auto colors = QByteArray::fromRawData(reinterpret_cast<const char*>(frame.colors.constData()),
                                                3 * frame.colors.size());
    write({{QStringLiteral("strip"), strip},
           {QStringLiteral("firstByteMs"), frame.firstByteMs},
           {QStringLiteral("lastByteMs"), frame.lastByteMs},
           {QStringLiteral("count"), frame.colors.size()},
           {QStringLiteral("totalBytes"), frame.totalBytes},
           {QStringLiteral("colors"), QString::fromLatin1(colors.toHex())}});
}

void FrameLog::event(const QString& strip, const QString& what)
{
    if (m_file.isOpen())
        write({{QStringLiteral("strip"), strip},
               {QStringLiteral("ms"), StripSimulator::nowMs()},
               {QStringLiteral("event"), what}});
}

void FrameLog::write(const QJsonObject& line)
{
    m_file.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    m_file.flush();
}
