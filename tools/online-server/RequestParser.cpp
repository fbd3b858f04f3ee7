#include "RequestParser.h"

#include <QList>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

bool isToken(const QByteArray& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               (c != '\0' && std::strchr("!#$%&'*+-.^_`|~", c));
    });
}

bool hasControls(const QByteArray& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return (c >= 0 && c < ' ' && c != '\t') || c == 0x7f; });
}

} // namespace

RequestParser::State RequestParser::add(const QByteArray& bytes)
{
    int at = 0;
    while (m_state == State::Head && at < bytes.size()) {
        const int feed = bytes.indexOf('\n', at);
        const int end = feed < 0 ? bytes.size() : feed + 1;
        m_headBytes += end - at;
        if (m_headBytes > kMostHeadBytes) {
            refuse(431);
            break;
        }
        m_line += bytes.mid(at, end - at);
        at = end;
        if (feed >= 0)
            readLine(std::exchange(m_line, {}));
    }
    if (m_state == State::Body) {
        const qint64 missing = m_bodyBytes - m_request.body.size();
        m_request.body += bytes.mid(at, int(std::min<qint64>(missing, bytes.size() - at)));
        if (m_request.body.size() == m_bodyBytes)
            m_state = State::Whole;
    }
    return m_state;
}

bool RequestParser::awaitsContinue() const
{
    return m_state == State::Body && m_request.body.isEmpty() &&
           m_request.headers.value("expect").toLower() == "100-continue";
}

void RequestParser::readLine(QByteArray line)
{
    if (!line.endsWith("\r\n"))
        return refuse(400);
    line.chop(2);
    if (hasControls(line))
        refuse(400);
    else if (m_request.method.isEmpty())
        readRequestLine(line);
    else if (line.isEmpty())
        endHead();
    else
        readHeader(line);
}

void RequestParser::readRequestLine(const QByteArray& line)
{
    if (line.isEmpty())
        return; // left over from a request before
    const QList<QByteArray> parts = line.split(' ');
    if (parts.size() != 3 || !isToken(parts[0]) || !parts[1].startsWith('/'))
        return refuse(400);
    m_request.method = parts[0];
    m_request.path = parts[1];
    if (parts[2] != "HTTP/1.1" && parts[2] != "HTTP/1.0")
        refuse(parts[2].startsWith("HTTP/") ? 505 : 400);
}

void RequestParser::readHeader(const QByteArray& line)
{
    const int colon = line.indexOf(':');
    const QByteArray name = line.left(colon).toLower();
    if (colon < 0 || !isToken(name))
        return refuse(400);
    const QByteArray value = line.mid(colon + 1).trimmed();
    QByteArray& held = m_request.headers[name];
    if (name == "content-length" && !held.isEmpty() && held != value)
        return refuse(400); // where the body ends would be anybody's guess
    held = held.isEmpty() || name == "content-length" ? value : held + ", " + value;
}

void RequestParser::endHead()
{
    if (m_request.headers.contains("transfer-encoding"))
        return refuse(501);
    const QByteArray length = m_request.headers.value("content-length", "0");
    if (length.isEmpty() ||
        !std::all_of(length.begin(), length.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return refuse(400);
    bool fits = false;
    m_bodyBytes = length.toLongLong(&fits);
    if (!fits || m_bodyBytes > kMostBodyBytes)
        return refuse(413);
    m_state = State::Body;
}

void RequestParser::refuse(int status)
{
    m_refusal = status;
    m_state = State::Refused;
}
