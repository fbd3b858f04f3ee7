#include "app/DisconnectionHistory.h"

namespace {

const QString kTimeFormat = QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz");

QDateTime timeOf(const QJsonValue& text)
{
    return QDateTime::fromString(text.toString(), kTimeFormat);
}

} // namespace

QJsonArray DisconnectionHistory::withFailure(const QJsonArray& history, const QDateTime& now)
{
    QJsonArray result;
    for (int i = qMax(0, history.size() - (kKept - 1)); i < history.size(); ++i)
        result.append(history.at(i));
    result.append(now.toString(kTimeFormat));
    return result;
}

DisconnectionHistory::Verdict DisconnectionHistory::judge(const QJsonArray& history)
{
    if (history.size() < kKept)
        return Verdict::Fine;
    const QDateTime first = timeOf(history.first());
    if (!first.isValid())
        return Verdict::FirstUnreadable;
    const QDateTime last = timeOf(history.last());
    if (!last.isValid())
        return Verdict::LastUnreadable;
    return first.addSecs(kTooOftenSecs) > last ? Verdict::TooOften : Verdict::Fine;
}
