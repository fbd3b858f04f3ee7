#pragma once

#include "ServerRequest.h"

/// Reads one request of HTTP/1.1 as it comes, in pieces of any size. What comes behind it is passed over.
class RequestParser
{
public:
    enum class State {
        Head,
        Body,
        Whole,
        Refused, ///< refusal() says why; the request holds what was read until then
    };

    static constexpr qint64 kMostHeadBytes = 16 * 1024;
    static constexpr qint64 kMostBodyBytes = 64 * 1024 * 1024;

    State add(const QByteArray& bytes);
    State state() const { return m_state; }
    /// The HTTP status that refuses the request.
    int refusal() const { return m_refusal; }
    /// Whether the client waits for a word before it sends the body.
    bool awaitsContinue() const;
    const ServerRequest& request() const { return m_request; }

private:
    void readLine(QByteArray line);
    void readRequestLine(const QByteArray& line);
    void readHeader(const QByteArray& line);
    void endHead();
    void refuse(int status);

    State m_state = State::Head;
    int m_refusal = 0;
    QByteArray m_line; ///< what has come of the line
    qint64 m_headBytes = 0;
    qint64 m_bodyBytes = 0; ///< announced
    ServerRequest m_request;
};
