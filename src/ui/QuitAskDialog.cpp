#include "ui/QuitAskDialog.h"

#include "ui_QuitAskDialog.h"

#include <QCoreApplication>

QuitAskDialog::QuitAskDialog(QWidget* parent)
    : BaseDialog(parent)
    , ui(std::make_unique<Ui::QuitAskDialog>())
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    connect(ui->toolButton, &QToolButton::clicked, this, &QDialog::reject);
    connect(ui->rememberCbx, &QCheckBox::stateChanged, this,
            [this](int state) { m_remember = state == Qt::Checked; });
    connect(ui->miniActBtn, &QPushButton::clicked, this, [this] { answer(false); });
    connect(ui->exitActBtn, &QPushButton::clicked, this, [this] { answer(true); });
    ui->miniActBtn->setFocus();
}

QuitAskDialog::~QuitAskDialog() = default;

void QuitAskDialog::offerNoTray()
{
    // The word stands on the window's title bar as well, in its context.
    ui->miniActBtn->setText(QCoreApplication::translate("MainWindow", "最小化"));
}

void QuitAskDialog::answer(bool quit)
{
    m_quit = quit;
    accept();
}
