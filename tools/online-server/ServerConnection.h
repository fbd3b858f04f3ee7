#pragma once

#include "RequestParser.h"
#include "ServerAnswer.h"

#include <QObject>

class QTcpSocket;

/// One connection: a request, an answer, the end. Deletes itself when it has been closed.
class ServerConnection : public QObject
{
    Q_OBJECT

public:
    /// Takes the socket over.
    ServerConnection(QTcpSocket* socket, QObject* parent);

    void send(const AnswerDelivery& delivery);

signals:
    /// Once; `refusal` is 0 or the status to answer.
    void requested(const ServerRequest& request, int refusal);

private:
    void read();
    void sendMore();
    void sendPiece(int bytes);

    QTcpSocket* m_socket;
    RequestParser m_parser;
    bool m_wasAskedOn = false;
    bool m_isTold = false;
    AnswerDelivery m_delivery;
    int m_sent = 0; ///< of the body
    bool m_isSending = false;
};
