#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// Far more than any file of the program's own comes to.
constexpr qint64 kMaxDataFileBytes = 64 * 1024 * 1024;

/// The content of a file that users may replace. Nothing, and the reason, for a file that cannot be read or
/// is larger than kMaxDataFileBytes, and for anything but a regular file, which is not even opened: a pipe
/// would hold the caller for good. `isUnknown`: the system gave it not or not whole, for lack of means
/// perhaps, and its content may be all right.
std::optional<QByteArray> readDataFile(const QString& path, QString* error, bool* isUnknown = nullptr);
