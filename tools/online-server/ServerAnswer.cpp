#include "ServerAnswer.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qint64 kEndlessBytes = 10'000'000'000;
constexpr qint64 kWrongBy = 1000;

QByteArray reason(int status)
{
    static const QMap<int, QByteArray> reasons{
        {200, "OK"},
        {206, "Partial Content"},
        {307, "Temporary Redirect"},
        {400, "Bad Request"},
        {404, "Not Found"},
        {405, "Method Not Allowed"},
        {408, "Request Timeout"},
        {413, "Content Too Large"},
        {415, "Unsupported Media Type"},
        {416, "Range Not Satisfiable"},
        {431, "Request Header Fields Too Large"},
        {500, "Internal Server Error"},
        {501, "Not Implemented"},
        {505, "HTTP Version Not Supported"},
    };
    return reasons.value(status, "Unknown");
}

/// Without a length where that is negative.
QByteArray headOf(const ServerAnswer& answer, qint64 length)
{
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + ' ' + reason(answer.status) + "\r\n";
    const auto add = [&head](const QByteArray& name, const QByteArray& value) {
        head += name + ": " + value + "\r\n";
    };
    add("Content-Type", answer.contentType);
    if (length >= 0)
        add("Content-Length", QByteArray::number(length));
    for (auto it = answer.headers.begin(); it != answer.headers.end(); ++it)
        add(it.key(), it.value());
    add("Connection", "close");
    return head + "\r\n";
}

QByteArray chunked(const QByteArray& body)
{
    constexpr int kChunkBytes = 100;
    QByteArray chunks;
    for (int from = 0; from < body.size(); from += kChunkBytes) {
        const QByteArray chunk = body.mid(from, kChunkBytes);
        chunks += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    }
    return chunks + "0\r\n\r\n";
}

} // namespace

ServerAnswer plainAnswer(int status)
{
    return {status, "text/plain", reason(status) + '\n', {}};
}

ServerAnswer rangeAnswer(ServerAnswer file, const QByteArray& range)
{
    static const QRegularExpression form(QStringLiteral(R"(\Abytes=([0-9]{1,18})-([0-9]{1,18})?\z)"));
    file.headers["Accept-Ranges"] = "bytes";
    const auto match = form.match(QString::fromLatin1(range));
    const qint64 size = file.body.size();
    const qint64 first = match.captured(1).toLongLong();
    const bool hasLast = !match.captured(2).isEmpty();
    const qint64 last = std::min(size - 1, hasLast ? match.captured(2).toLongLong() : size - 1);
    if (!match.hasMatch() || (hasLast && match.captured(2).toLongLong() < first))
        return file;
    if (first >= size) {
        ServerAnswer none = plainAnswer(416);
        none.headers["Content-Range"] = "bytes */" + QByteArray::number(size);
        return none;
    }
    file.status = 206;
    file.body = file.body.mid(int(first), int(last - first + 1));
    file.headers["Content-Range"] = "bytes " + QByteArray::number(first) + '-' + QByteArray::number(last) +
                                    '/' + QByteArray::number(size);
    return file;
}

AnswerDelivery delivery(ServerAnswer answer, ServerFault fault, const QUrl& redirectTo)
{
    switch (fault) {
    case ServerFault::SilentAfterConnect:
        return {};
    case ServerFault::BrokenGzip:
        answer.headers["Content-Encoding"] = "gzip";
        break;
    case ServerFault::HtmlPage:
        answer = {200, "text/html", "<!DOCTYPE html><title>Welcome</title><p>Please log in.</p>\n", {}};
        break;
    case ServerFault::Redirect:
        answer = plainAnswer(307);
        answer.headers["Location"] = redirectTo.toEncoded();
        break;
    case ServerFault::Chunked:
        answer.headers["Transfer-Encoding"] = "chunked";
        answer.body = chunked(answer.body);
        break;
    default:
        break;
    }

    AnswerDelivery out{headOf(answer, answer.body.size()), answer.body};
    out.isSlow = fault == ServerFault::OneByteASecond;
    out.isEndless = fault == ServerFault::Endless || fault == ServerFault::EndlessUnannounced;
    if (out.isEndless)
        out.head = headOf(answer, fault == ServerFault::Endless ? kEndlessBytes : -1);
    else if (fault == ServerFault::Chunked)
        out.head = headOf(answer, -1);
    else if (fault == ServerFault::WrongLength)
        out.head = headOf(answer, answer.body.size() + kWrongBy);
    else if (fault == ServerFault::CutInTheMiddle)
        out.body.chop(out.body.size() - out.body.size() / 2);
    return out;
}
