#pragma once

#include <QMutex>
#include <QStringList>
#include <QtGlobal>

/// While it lives it also keeps every log line, of any thread, for a test to look at.
class LogCapture
{
public:
    LogCapture()
    {
        s_active = this;
        s_previous = qInstallMessageHandler(&LogCapture::handle);
    }
    ~LogCapture()
    {
        qInstallMessageHandler(s_previous);
        s_active = nullptr;
    }
    Q_DISABLE_COPY(LogCapture)

    /// The lines that hold this text, in their order.
    QStringList containing(const QString& text) const
    {
        QMutexLocker lock(&m_mutex);
        return m_lines.filter(text);
    }
    int count(const QString& text) const { return containing(text).size(); }
    bool contains(const QString& text) const { return count(text) > 0; }

private:
    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
    {
        {
            QMutexLocker lock(&s_active->m_mutex);
            s_active->m_lines += text;
        }
        s_previous(type, context, text);
    }

    static inline LogCapture* s_active = nullptr;
    static inline QtMessageHandler s_previous = nullptr;
    mutable QMutex m_mutex;
    QStringList m_lines;
};
