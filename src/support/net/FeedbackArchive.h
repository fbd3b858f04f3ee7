#pragma once

#include "support/net/PersonalText.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <functional>
#include <vector>

/// All logs of an archive together, before they are packed.
constexpr qint64 kMaxFeedbackLogBytes = 10 * 1000 * 1000;

/// One file of an archive.
struct FeedbackFile
{
    QString name; ///< with its folder
    QByteArray bytes;
};

/// What an archive is made from.
struct FeedbackContent
{
    QString message;
    QString contact;
    QJsonObject versions;
    QString configPath; ///< folder of the stores and the dumps
    QString logsPath;
    PersonalText personal; ///< for all but message and contact
};

/// Told of the progress from 0 to 100; false asks for the end.
using ArchiveProgress = std::function<bool(int percent)>;

/// The files of an archive: message.txt, contact.txt, versions.json, config/, dumps/, logs/ (newest first).
/// What cannot be read is named in left-out.txt with the reason, links and everything but plain files as
/// well. Any thread; incomplete when `progress` asked for the end.
std::vector<FeedbackFile> feedbackFiles(const FeedbackContent& content, const ArchiveProgress& progress);

/// The files as a zip archive. Empty on failure, when `error` tells why, and when `progress` asked for the
/// end. Any thread.
QByteArray zipped(const std::vector<FeedbackFile>& files, const ArchiveProgress& progress, QString* error);
