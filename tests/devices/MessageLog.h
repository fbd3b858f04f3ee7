#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>

/// Collects what the program logs, from every thread, while it lives.
class MessageLog
{
public:
    MessageLog()
    {
        s_log = this;
        m_previous = qInstallMessageHandler(&MessageLog::handle);
    }
    ~MessageLog()
    {
        qInstallMessageHandler(m_previous);
        s_log = nullptr;
    }

    QStringList containing(const QString& text) const
    {
        const QMutexLocker lock(&m_mutex);
        return m_lines.filter(text);
    }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        {
            const QMutexLocker lock(&s_log->m_mutex);
            s_log->m_lines.append(text);
        }
        s_log->m_previous(type, context, text);
    }

    static inline MessageLog* s_log = nullptr;
    mutable QMutex m_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous;
};
