#pragma once

#include <QByteArray>
#include <QString>

class OnlineServer;

/// What a server offers, from a folder: version.json and advertisement.json with the members of
/// docs/online.md, `files` with what they name, served as /files/NAME and, as the installer, /download/NAME.
/// False, with the reason, when a file cannot be read or is none of these.
bool serveFolder(OnlineServer& server, const QString& folder, QString* error);

/// A sample of it: a later version with nothing to download, and a picture.
void serveSample(OnlineServer& server);

/// Keeps it in `feedback` below the folder; gives the file's path, empty on failure.
QString keepFeedback(const QString& folder, const QByteArray& archive);
