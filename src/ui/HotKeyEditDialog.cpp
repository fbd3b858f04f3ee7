#include "ui/HotKeyEditDialog.h"

#include "hotkey/KeyName.h"
#include "ui_HotKeyEditDialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <utility>

namespace {

constexpr int kStatusMs = 3000;

} // namespace

HotKeyEditDialog::HotKeyEditDialog(QString description, HotkeyCombine combine, QWidget* parent)
    : BaseDialog(parent)
    , ui(std::make_unique<Ui::HotKeyEditDialog>())
    , m_description(std::move(description))
    , m_combine(std::move(combine))
{
    ui->setupUi(this);
    setHeaderSize(ui->header->minimumHeight());
    showDescription();
    ui->ctrlCBX->setChecked(m_combine.ctrl);
    ui->altCBX->setChecked(m_combine.alt);
    ui->shiftCBX->setChecked(m_combine.shift);
    ui->keyLineEdit->setText(m_combine.key);
    // It shows a key and holds no text, so nothing that composes or edits texts may come between.
    ui->keyLineEdit->setAttribute(Qt::WA_InputMethodEnabled, false);
    ui->keyLineEdit->installEventFilter(this);
    ui->keyLineEdit->setFocus();
    m_invalidMark = ui->keyLineEdit->addAction(QIcon(QStringLiteral(":/images/warning.png")),
                                               QLineEdit::TrailingPosition);
    m_invalidMark->setVisible(false);
    QSizePolicy keepsItsPlace = ui->statusLabel->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    ui->statusLabel->setSizePolicy(keepsItsPlace);
    ui->statusLabel->hide();
    m_statusTimer.setSingleShot(true);

    connect(ui->keyLineEdit, &QLineEdit::selectionChanged, ui->keyLineEdit, &QLineEdit::deselect);
    connect(ui->keyLineEdit, &QLineEdit::textChanged, this, &HotKeyEditDialog::readControls);
    for (QCheckBox* modifier : {ui->ctrlCBX, ui->altCBX, ui->shiftCBX})
        connect(modifier, &QCheckBox::clicked, this, &HotKeyEditDialog::readControls);
    connect(&m_statusTimer, &QTimer::timeout, ui->statusLabel, &QWidget::hide);
    connect(ui->okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->quitButton, &QToolButton::clicked, this, &QDialog::reject);
}

HotKeyEditDialog::~HotKeyEditDialog() = default;

void HotKeyEditDialog::setBindingStatus(bool valid)
{
    ui->statusLabel->setText(valid ? QStringLiteral("<font color=Green>有效</font>")
                                   : QStringLiteral("<font color=Red>无效组合</font>"));
    ui->statusLabel->show();
    m_statusTimer.start(kStatusMs);
    ui->okButton->setEnabled(valid);
    m_invalidMark->setVisible(!valid);
    explainMark();
}

void HotKeyEditDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        showDescription();
        explainMark();
    }
    BaseDialog::changeEvent(event);
}

bool HotKeyEditDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->keyLineEdit) {
        if (event->type() == QEvent::ShortcutOverride) { // the key is meant for the field
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress) {
            takeKey(static_cast<QKeyEvent&>(*event));
            return true;
        }
    }
    return BaseDialog::eventFilter(watched, event);
}

void HotKeyEditDialog::showDescription()
{
    ui->cmdNameLabel->setText(
        QCoreApplication::translate("HotkeyDescription", m_description.toUtf8().constData()));
}

/// What the mark means, while it shows. It stays when the status has gone.
void HotKeyEditDialog::explainMark()
{
    const QString text =
        m_invalidMark->isVisible() ? tr("这个组合不能用：已被占用，或键盘上没有这个键。") : QString();
    m_invalidMark->setToolTip(text);
    ui->keyLineEdit->setAccessibleDescription(text);
}

/// Escape and Tab alone lead out of the field, as everywhere; with Ctrl or Alt they are keys like any other.
void HotKeyEditDialog::takeKey(const QKeyEvent& event)
{
    if (event.isAutoRepeat())
        return;
    const bool isAlone = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
        return;
    case Qt::Key_Escape:
        if (isAlone)
            return reject();
        break;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (isAlone) {
            focusNextPrevChild(event.key() == Qt::Key_Tab);
            return;
        }
        break;
    default:
        break;
    }
    const QString name = hotkeyKeyName(event);
    if (!name.isEmpty())
        ui->keyLineEdit->setText(name);
}

void HotKeyEditDialog::readControls()
{
    m_combine = {ui->keyLineEdit->text(), ui->ctrlCBX->isChecked(), ui->altCBX->isChecked(),
                 ui->shiftCBX->isChecked()};
    emit combineChanged(m_combine);
}
