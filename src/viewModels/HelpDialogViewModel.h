#pragma once

#include <QObject>
#include <QString>
#include <functional>

/// What the help dialog shows and what its buttons do. Main thread.
class HelpDialogViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString latestVersion READ latestVersion WRITE setLatestVersion NOTIFY latestVersionChanged)
    Q_PROPERTY(QString currentVersion READ currentVersion CONSTANT)
    Q_PROPERTY(
        QString userContactInfo READ userContactInfo WRITE setUserContactInfo NOTIFY userContactInfoChanged)

public:
    using SendFeedback = std::function<void(QString message, QString contact)>;
    using SaveReport = std::function<void(QString message, QString contact, QString file)>;
    using Order = std::function<void()>;

    explicit HelpDialogViewModel(QObject* parent = nullptr);

    QString latestVersion() const { return m_latestVersion; }
    void setLatestVersion(const QString& version);
    /// Whether the latest version can be asked for; true at first.
    bool isUpdateOffered() const { return m_isUpdateOffered; }
    void setUpdateOffered(bool isOffered); ///< emits latestVersionChanged()
    QString currentVersion() const;        ///< of the application
    QString userContactInfo() const { return m_userContactInfo; }
    void setUserContactInfo(const QString& contact);

    /// Of the new version, that is there; -1: no download is under way.
    int downloadPercent() const { return m_downloadPercent; }
    void setDownloadPercent(int percent);

    /// Calls what was handed in, if anything.
    void sendFeedback(const QString& message, const QString& contact) const;
    void saveReport(const QString& message, const QString& contact, const QString& file) const;
    void requestUpdate() const;
    void cancelUpdate() const;
    void setSendFeedback(SendFeedback send);
    void setSaveReport(SaveReport save);
    void setRequestUpdate(Order update);
    void setCancelUpdate(Order cancel);

    // Of the product, set once; what is empty or false hides its row.
    bool isOnline = false; ///< there is a service to ask for versions, and to send feedback to
    QString supportMail;
    QString webSite; ///< without http://

signals:
    void latestVersionChanged();
    void userContactInfoChanged();
    void downloadPercentChanged();

private:
    QString m_latestVersion;
    bool m_isUpdateOffered = true;
    QString m_userContactInfo;
    int m_downloadPercent = -1;
    SendFeedback m_sendFeedback;
    SaveReport m_saveReport;
    Order m_requestUpdate;
    Order m_cancelUpdate;
};
