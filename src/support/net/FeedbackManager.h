#pragma once

#include <QObject>
#include <QString>
#include <memory>

/// Gathers one message of the user's with what helps to understand it: logs (newest first, 10 MB at most),
/// versions and the configuration without anything personal. Main thread; archives are written on the global
/// pool.
class FeedbackManager : public QObject
{
    Q_OBJECT

public:
    explicit FeedbackManager(QObject* parent = nullptr);
    ~FeedbackManager() override; ///< ends what is being written, without waiting; removes the temporary file

    void setUserMsg(const QString& message);
    /// Remembered over restarts.
    void setUserContactInfo(const QString& contact);
    QString userContactInfo() const;

    /// Writes the archive to a temporary file and gives its path, empty on failure (told of in the log).
    /// Blocks.
    QString zipFeedbackFile();
    /// The same in the background: ends with zipped(). A second call while one is under way does nothing.
    /// With a `file` the archive is written there, whole or not at all; else to the temporary file.
    void startZip(const QString& file = {});
    /// Ends with zipped() as well, soon, and only then another can start. A chosen file that was already
    /// written is told of all the same.
    void cancelZip();

    /// The temporary archive that was written last, empty when there is none.
    QString feedbackFile() const;

signals:
    void zipProgress(int percent);
    void zipped(QString path, QString error); ///< path empty: `error` tells why, both empty: cancelled

private:
    struct Private;
    std::unique_ptr<Private> d;
};
