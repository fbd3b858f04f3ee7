#pragma once

#include "ui/PagedDialog.h"

#include <QSharedPointer>
#include <memory>

class HelpDialogViewModel;

namespace Ui {
class HelpDialog;
}

/// Shows the version, takes the user's feedback and tells where the maker is to be found. What its buttons do
/// is the view model's. Without an online service the rows that only it can fill are hidden; a report can be
/// saved all the same. Main thread.
class HelpDialog : public PagedDialog
{
    Q_OBJECT

public:
    explicit HelpDialog(QSharedPointer<HelpDialogViewModel> viewModel, QWidget* parent = nullptr);
    ~HelpDialog() override;

signals:
    /// For listeners; the view model has been called.
    void requestSendFeedback(QString userMsg, QString userContactInfo);

protected:
    void retranslate() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void currentItemChanged(int index, QString item);
    void onSendFeedbackBtnClicked();
    void onLatestVersionChanged();
    void onUpdateBtnClicked();

private:
    void showDownload();
    void initVersionPage();
    void initFeedbackPage();
    void initContactPage();
    void onReportUsageClicked(bool isAgreed);
    void onSaveReportBtnClicked();
    void allowSending();

    std::unique_ptr<Ui::HelpDialog> ui;
    QSharedPointer<HelpDialogViewModel> m_viewModel;
};
