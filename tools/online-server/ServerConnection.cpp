#include "ServerConnection.h"

#include <QSslSocket>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace {

constexpr int kRequestMs = 30000; // for the whole of it
constexpr int kLingerMs = 200;    // a refused client may be sending still, and would not see the answer
constexpr int kSlowMs = 1000;
constexpr qint64 kAheadBytes = 256 * 1024; // written before the client has taken it
constexpr int kPieceBytes = 64 * 1024;

} // namespace

ServerConnection::ServerConnection(QTcpSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
{
    m_socket->setParent(this);
    connect(m_socket, &QTcpSocket::readyRead, this, &ServerConnection::read);
    connect(m_socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(m_socket, &QTcpSocket::bytesWritten, this, &ServerConnection::sendMore);
    if (const auto* tls = qobject_cast<QSslSocket*>(m_socket))
        connect(tls, &QSslSocket::encryptedBytesWritten, this, &ServerConnection::sendMore);
    QTimer::singleShot(kRequestMs, this, [this] {
        if (!m_isTold)
            m_socket->abort();
    });
}

void ServerConnection::read()
{
    const QByteArray bytes = m_socket->readAll();
    if (m_isTold)
        return; // one request a connection
    m_parser.add(bytes);
    if (m_parser.awaitsContinue() && !std::exchange(m_wasAskedOn, true))
        m_socket->write("HTTP/1.1 100 Continue\r\n\r\n");
    if (m_parser.state() == RequestParser::State::Whole ||
        m_parser.state() == RequestParser::State::Refused) {
        m_isTold = true;
        emit requested(m_parser.request(), m_parser.refusal());
    }
}

void ServerConnection::send(const AnswerDelivery& delivery)
{
    if (delivery.head.isEmpty())
        return; // for the client to close
    m_delivery = delivery;
    m_isSending = true;
    m_socket->write(m_delivery.head);
    if (m_delivery.isSlow) {
        auto* const clock = new QTimer(this);
        connect(clock, &QTimer::timeout, this, [this] { sendPiece(1); });
        clock->start(kSlowMs);
    } else {
        sendMore();
    }
}

/// As much as the client is likely to take soon.
void ServerConnection::sendMore()
{
    const auto* const tls = qobject_cast<QSslSocket*>(m_socket);
    const auto unsent = [this, tls] {
        return m_socket->bytesToWrite() + (tls ? tls->encryptedBytesToWrite() : 0);
    };
    while (m_isSending && !m_delivery.isSlow && unsent() < kAheadBytes)
        sendPiece(kPieceBytes);
}

void ServerConnection::sendPiece(int bytes)
{
    static const QByteArray blanks(kPieceBytes, ' ');
    const int piece = std::min(bytes, m_delivery.body.size() - m_sent);
    if (piece > 0) {
        m_sent += piece;
        m_isSending = m_socket->write(m_delivery.body.constData() + m_sent - piece, piece) == piece;
    } else if (m_delivery.isEndless) {
        m_isSending = m_socket->write(blanks) == blanks.size();
    } else if (std::exchange(m_isSending, false)) {
        QTimer::singleShot(m_parser.refusal() == 0 ? 0 : kLingerMs, m_socket,
                           [this] { m_socket->disconnectFromHost(); });
    }
}
