#include "ui/FeedbackProgress.h"

#include "ui_FeedbackProgress.h"

#include <QEvent>

namespace {

constexpr int kWhole = 100;

} // namespace

FeedbackProgress::FeedbackProgress(QWidget* parent)
    : BaseDialog(parent)
    , ui(std::make_unique<Ui::FeedbackProgress>())
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    setWindowModality(Qt::ApplicationModal);
    showStep();
    setProgress(-1);
    connect(ui->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(this, &QDialog::rejected, this, &FeedbackProgress::cancelled);
}

FeedbackProgress::~FeedbackProgress() = default;

void FeedbackProgress::setStep(Step step)
{
    m_step = step;
    showStep();
}

void FeedbackProgress::setProgress(int percent)
{
    ui->progressBar->setMaximum(percent < 0 ? 0 : kWhole);
    ui->progressBar->setValue(percent);
}

void FeedbackProgress::showStep()
{
    ui->stepLabel->setText(m_step == Step::Gathering ? tr("正在收集日志...") : tr("正在发送反馈..."));
}

void FeedbackProgress::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        showStep();
    }
    BaseDialog::changeEvent(event);
}
