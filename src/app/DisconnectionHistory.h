#pragma once

#include <QDateTime>
#include <QJsonArray>

/// The last failures of a device, as they are stored: at most three local times as text, oldest first.
namespace DisconnectionHistory {

constexpr int kKept = 3;
constexpr int kTooOftenSecs = 20; ///< three failures in less than this are too many

enum class Verdict {
    Fine,
    TooOften,
    FirstUnreadable,
    LastUnreadable,
};

/// The history with one more failure; the oldest ones drop out.
QJsonArray withFailure(const QJsonArray& history, const QDateTime& now);

Verdict judge(const QJsonArray& history);

} // namespace DisconnectionHistory
