#include "ui/HelpDialog.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/compareVersion.h"
#include "viewModels/HelpDialogViewModel.h"

#include "ui_HelpDialog.h"

#include <QCoreApplication>
#include <QDate>
#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QRegExpValidator>
#include <QStandardPaths>
#include <utility>

namespace {

constexpr QSize kUsualSize(560, 440);
const QLatin1String kUsageKey(ConfigKeys::kReportUsage.key);

/// Letters, digits, "@", "." and some Latin-1 characters, four to twenty of them.
const QString kContactPattern = QStringLiteral(u"^[a-zA-Z0-9\u00D2\u00BB-\u00FD\u009B@.]{4,20}$");

} // namespace

HelpDialog::HelpDialog(QSharedPointer<HelpDialogViewModel> viewModel, QWidget* parent)
    : PagedDialog(parent)
    , ui(std::make_unique<Ui::HelpDialog>())
    , m_viewModel(std::move(viewModel))
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    connect(ui->toolButton, &QToolButton::clicked, this, &QDialog::reject);
    connect(ui->sliderBar, &SliderBar::currentItemChanged, this, &HelpDialog::currentItemChanged);
    initVersionPage();
    initFeedbackPage();
    initContactPage();
    initPages(*ui->sliderBar, *ui->stackedWidget, kUsualSize);
    HelpDialog::retranslate();
}

HelpDialog::~HelpDialog() = default;

void HelpDialog::initVersionPage()
{
    ui->currentVerLabel->setText(m_viewModel->currentVersion());
    connect(m_viewModel.data(), &HelpDialogViewModel::latestVersionChanged, this,
            &HelpDialog::onLatestVersionChanged);
    connect(m_viewModel.data(), &HelpDialogViewModel::downloadPercentChanged, this,
            &HelpDialog::showDownload);
    connect(ui->updateBtn, &QPushButton::clicked, this, &HelpDialog::onUpdateBtnClicked);

    ui->usageSection->setVisible(m_viewModel->isOnline);
    ui->reportUsageCbx->setChecked(
        ConfigurationManager::instance()->appConfig(kUsageKey).toBool(ConfigKeys::kReportUsage.fallback));
    connect(ui->reportUsageCbx, &QCheckBox::clicked, this, &HelpDialog::onReportUsageClicked);
}

void HelpDialog::initFeedbackPage()
{
    ui->pushButton_send->setVisible(m_viewModel->isOnline);
    ui->userContactInfoEdit->setText(m_viewModel->userContactInfo());
    ui->userContactInfoEdit->setValidator(new QRegExpValidator(QRegExp(kContactPattern), this));
    connect(ui->userContactInfoEdit, &QLineEdit::textChanged, m_viewModel.data(),
            &HelpDialogViewModel::setUserContactInfo);
    connect(ui->userContactInfoEdit, &QLineEdit::textChanged, this, &HelpDialog::allowSending);
    connect(ui->userMsgEdit, &QPlainTextEdit::textChanged, this, &HelpDialog::allowSending);
    allowSending();
    connect(ui->pushButton_send, &QPushButton::clicked, this, &HelpDialog::onSendFeedbackBtnClicked);
    connect(ui->saveReportBtn, &QPushButton::clicked, this, &HelpDialog::onSaveReportBtnClicked);
}

void HelpDialog::initContactPage()
{
    const auto link = [this](QLabel* label, const char* form, const QString& address) {
        label->setText(QString::fromLatin1(form).arg(address.toHtmlEscaped()));
        label->setHidden(address.isEmpty());
        label->setTextInteractionFlags(Qt::TextBrowserInteraction);
        label->setOpenExternalLinks(true);
        label->installEventFilter(this);
    };
    link(ui->label_email, "<a style = \"color: rgb(248, 248, 248); \" href = \"mailto:%1\">%1</a>",
         m_viewModel->supportMail);
    link(ui->label_website, "<a style = \"color: rgb(248, 248, 248); \" href='http://%1'>%1</a>",
         m_viewModel->webSite);
}

void HelpDialog::retranslate()
{
    ui->retranslateUi(this);
    const bool hasContact = !m_viewModel->supportMail.isEmpty() || !m_viewModel->webSite.isEmpty();
    setPageNames(hasContact ? tr("版本信息;问题反馈;联系我们") : tr("版本信息;问题反馈"));
    onLatestVersionChanged();
    showDownload();
    const QString goesAlong = tr("包含日志、版本号和设置，其中的个人信息会被去除。");
    ui->logHint->setToolTip(goesAlong);
    for (QPushButton* button : {ui->pushButton_send, ui->saveReportBtn}) {
        button->setToolTip(goesAlong);
        button->setAccessibleDescription(goesAlong);
    }
    ui->reportUsageCbx->setAccessibleDescription(ui->usageHint->text());
}

void HelpDialog::currentItemChanged(int index, QString item)
{
    showPage(index, item);
}

void HelpDialog::onLatestVersionChanged()
{
    const bool isOnline = m_viewModel->isOnline;
    const bool isNewer = !compareVersion(m_viewModel->currentVersion(), m_viewModel->latestVersion());
    ui->latestVerDescLabel->setText(isNewer ? tr("最新版本号：") : tr("已是最新版本"));
    ui->latestVerLabel->setText(isNewer ? m_viewModel->latestVersion() : QString());
    ui->versionRows->addWidget(ui->latestVerDescLabel, 1, 0, 1, isNewer ? 1 : 3); // moves it
    ui->latestVerDescLabel->setVisible(isOnline);
    ui->latestVerLabel->setVisible(isOnline && isNewer);
    ui->updateBtn->setVisible(isOnline && isNewer && m_viewModel->isUpdateOffered());
}

/// The button that started it shows it, and ends it.
void HelpDialog::showDownload()
{
    const int percent = m_viewModel->downloadPercent();
    ui->updateBtn->setPercent(percent);
    ui->updateBtn->setText(tr("点击更新"));
    ui->updateBtn->setMinimumWidth(ui->updateBtn->sizeHint().width()); // a number is shorter
    if (percent >= 0)
        ui->updateBtn->setText(QStringLiteral("%1 %").arg(percent));
}

void HelpDialog::onUpdateBtnClicked()
{
    if (m_viewModel->downloadPercent() < 0)
        return m_viewModel->requestUpdate();
    connect(ui->updateBtn->openMenu(QCoreApplication::translate("MainWindow", "取消下载")),
            &QAction::triggered, m_viewModel.data(), &HelpDialogViewModel::cancelUpdate);
}

void HelpDialog::onReportUsageClicked(bool isAgreed)
{
    ConfigurationManager::instance()->setAppConfig(kUsageKey, isAgreed);
    qInfo().noquote() << kUsageKey << "changed to" << isAgreed;
}

/// An empty form is sent by mistake only.
void HelpDialog::allowSending()
{
    ui->pushButton_send->setEnabled(!ui->userMsgEdit->toPlainText().trimmed().isEmpty() ||
                                    !ui->userContactInfoEdit->text().isEmpty());
}

void HelpDialog::onSendFeedbackBtnClicked()
{
    const QString message = ui->userMsgEdit->toPlainText();
    const QString contact = ui->userContactInfoEdit->text();
    m_viewModel->sendFeedback(message, contact);
    emit requestSendFeedback(message, contact);
}

void HelpDialog::onSaveReportBtnClicked()
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    if (!folder.exists()) // the dialog would fall back on the program's own folder
        folder = QDir::home();
    const QString name =
        QStringLiteral("Lumivar-report-%1.zip").arg(QDate::currentDate().toString(Qt::ISODate));
    auto* dialog = new QFileDialog(this, ui->saveReportBtn->text(), folder.filePath(name),
                                   QStringLiteral("ZIP (*.zip)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("zip"));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString& file) {
        m_viewModel->saveReport(ui->userMsgEdit->toPlainText(), ui->userContactInfoEdit->text(), file);
    });
    dialog->open();
}

/// Tab would come to the label first and to the link in it only then, and with Shift not out of it again.
bool HelpDialog::eventFilter(QObject* watched, QEvent* event)
{
    auto* label = qobject_cast<QLabel*>(watched);
    if (label && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
            return focusNextPrevChild(key == Qt::Key_Tab);
    }
    if (label && event->type() == QEvent::FocusIn)
        label->setSelection(0, label == ui->label_email ? m_viewModel->supportMail.size()
                                                        : m_viewModel->webSite.size());
    if (label && event->type() == QEvent::FocusOut)
        label->setSelection(0, 0);
    return PagedDialog::eventFilter(watched, event);
}
