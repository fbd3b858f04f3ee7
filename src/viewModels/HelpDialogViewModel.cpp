#include "viewModels/HelpDialogViewModel.h"

#include <QCoreApplication>

HelpDialogViewModel::HelpDialogViewModel(QObject* parent)
    : QObject(parent)
{
}

void HelpDialogViewModel::setLatestVersion(const QString& version)
{
    if (version == m_latestVersion)
        return;
    m_latestVersion = version;
    emit latestVersionChanged();
}

void HelpDialogViewModel::setUpdateOffered(bool isOffered)
{
    if (isOffered == m_isUpdateOffered)
        return;
    m_isUpdateOffered = isOffered;
    emit latestVersionChanged();
}

QString HelpDialogViewModel::currentVersion() const
{
    return QCoreApplication::applicationVersion();
}

void HelpDialogViewModel::setUserContactInfo(const QString& contact)
{
    if (contact == m_userContactInfo)
        return;
    m_userContactInfo = contact;
    emit userContactInfoChanged();
}

void HelpDialogViewModel::setDownloadPercent(int percent)
{
    if (percent == m_downloadPercent)
        return;
    m_downloadPercent = percent;
    emit downloadPercentChanged();
}

void HelpDialogViewModel::sendFeedback(const QString& message, const QString& contact) const
{
    if (m_sendFeedback)
        m_sendFeedback(message, contact);
}

void HelpDialogViewModel::saveReport(const QString& message, const QString& contact,
                                     const QString& file) const
{
    if (m_saveReport)
        m_saveReport(message, contact, file);
}

void HelpDialogViewModel::requestUpdate() const
{
    if (m_requestUpdate)
        m_requestUpdate();
}

void HelpDialogViewModel::cancelUpdate() const
{
    if (m_cancelUpdate)
        m_cancelUpdate();
}

void HelpDialogViewModel::setSendFeedback(SendFeedback send)
{
    m_sendFeedback = std::move(send);
}

void HelpDialogViewModel::setSaveReport(SaveReport save)
{
    m_saveReport = std::move(save);
}

void HelpDialogViewModel::setRequestUpdate(Order update)
{
    m_requestUpdate = std::move(update);
}

void HelpDialogViewModel::setCancelUpdate(Order cancel)
{
    m_cancelUpdate = std::move(cancel);
}
