#pragma once

#include <QUrl>

/// Whether its host is this machine: "localhost" or a loopback number.
bool isLoopback(const QUrl& address);

/// Whether a request may go there: HTTPS, or HTTP to the loopback address. No user or password inside.
bool isAllowedAddress(const QUrl& address);

/// Whether an answer may lead on from one address to another: only to HTTPS, or from loopback to loopback.
bool isAllowedRedirect(const QUrl& from, const QUrl& to);

/// The address of a path of the service, with one slash between the two.
QUrl serviceUrl(const QUrl& service, const QString& path);
