#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QVector>

/// One reader of what others wrote. It gets any bytes, may be called as often as wanted, and keeps nothing
/// from one call to the next. Main thread, with an application object and a home folder of its own.
struct FuzzTarget
{
    const char* name;
    void (*run)(const QByteArray& bytes);
};

QVector<FuzzTarget>& fuzzTargets();

/// Defines a target; what stands in its body may end the process by REQUIRE().
#define FUZZ_TARGET(name)                                                                                    \
    static void fuzz_##name(const QByteArray& bytes);                                                        \
    static const bool added_##name = (fuzzTargets().append({#name, fuzz_##name}), true);                     \
    static void fuzz_##name(const QByteArray& bytes)

/// A promise that holds for every input; where it does not, the process aborts, as after any other find.
#define REQUIRE(promise) ((promise) ? void() : brokenPromise(#promise, __FILE__, __LINE__))
[[noreturn]] void brokenPromise(const char* promise, const char* file, int line);

/// Deals the bytes of an input out: choices first, the rest as content. Zeros behind the end.
class FuzzInput
{
public:
    explicit FuzzInput(const QByteArray& bytes)
        : m_bytes(bytes)
    {
    }

    bool isOver() const { return m_at >= m_bytes.size(); }
    /// 0 to 255, and below `below`.
    int number(int below = 256) { return isOver() ? 0 : static_cast<uchar>(m_bytes[m_at++]) % below; }
    /// Up to the next line feed, without it.
    QByteArray line()
    {
        const int end = m_bytes.indexOf('\n', m_at);
        QByteArray text = m_bytes.mid(m_at, end < 0 ? -1 : end - m_at);
        m_at = end < 0 ? m_bytes.size() : end + 1;
        return text;
    }
    QByteArray rest()
    {
        QByteArray text = m_bytes.mid(m_at);
        m_at = m_bytes.size();
        return text;
    }

private:
    const QByteArray m_bytes;
    int m_at = 0;
};

/// The folder of this process for files that the targets write, in memory where the system can; with a slash.
QString fuzzFolder();
/// Sets the application, the home folder and the silence of the log up; to be called once, first of all.
void beginFuzzing();

void writeFuzzFile(const QString& path, const QByteArray& bytes);
QByteArray readFuzzFile(const QString& path);
/// Every kind of value for the text: what it says in JSON, else the text itself.
QJsonValue fuzzValue(const QByteArray& text);
QJsonObject fuzzObject(const QByteArray& text);
