#pragma once

#include <QStringList>

#include <optional>

/// What a server may do wrong with an answer's body, or instead of one.
enum class ServerFault {
    None,
    SilentAfterConnect, ///< takes the request and says nothing
    OneByteASecond,
    Endless,            ///< announces 10 GB and never stops
    EndlessUnannounced, ///< announces nothing and never stops
    WrongLength,        ///< announces more than it sends, then closes
    CutInTheMiddle,     ///< half of the body, then closes
    BrokenGzip,         ///< says that the body is compressed, which it is not
    HtmlPage,           ///< a page of HTML with status 200, as a hotel's network answers
    ServerError,        ///< status 500
    Redirect,           ///< status 307 to `OnlineServer::redirectTo`
    Chunked,            ///< tells no length, which is right for JSON only
};

/// By its name on a command line.
std::optional<ServerFault> serverFault(const QString& name);
QStringList serverFaultNames();
