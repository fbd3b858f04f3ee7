#pragma once

#include "ServerFault.h"

#include <QByteArray>
#include <QMap>
#include <QUrl>

/// What a request is answered.
struct ServerAnswer
{
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    QMap<QByteArray, QByteArray> headers; ///< beside type and length
};

/// How an answer goes out, with the fault that spoils it.
struct AnswerDelivery
{
    QByteArray head; ///< empty: nothing is ever said
    QByteArray body;
    bool isSlow = false;    ///< a byte of the body a second
    bool isEndless = false; ///< blanks behind the body
};

ServerAnswer plainAnswer(int status);

/// The part of the file that a Range header asks for (206), or all of it, as without one or with one that
/// makes no sense; 416 where there is nothing of the file.
ServerAnswer rangeAnswer(ServerAnswer file, const QByteArray& range);

AnswerDelivery delivery(ServerAnswer answer, ServerFault fault, const QUrl& redirectTo);
