#include "ui/QuitAskDialog.h"

#include "ui_QuitAskDialog.h"

#include <QCoreApplication>
#include <QEvent>

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
    m_hasTray = false;
    retranslate();
}

void QuitAskDialog::retranslate()
{
    ui->retranslateUi(this);
    if (!m_hasTray) // the word stands on the window's title bar as well, in its context
        ui->miniActBtn->setText(QCoreApplication::translate("MainWindow", "最小化"));
}

void QuitAskDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    BaseDialog::changeEvent(event);
}

void QuitAskDialog::answer(bool quit)
{
    m_quit = quit;
    accept();
}
