#include "ui/HotKeyEditDialog.h"

#include "ui_HotKeyEditDialog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPushButton>
#include <utility>

namespace {

constexpr int kStatusMs = 3000;

QString hotkeyKeyName(const QKeyEvent& event)
{
    const QString name = QKeySequence(event.key()).toString(QKeySequence::PortableText);
    return QKeySequence(name)[0] == event.key() ? name : QString();
}

/// The same key in capitals, where those still mean it: there are letters without a capital.
QString inCapitals(const QString& keyName)
{
    const QString capitals = keyName.toUpper();
    return QKeySequence(capitals) == QKeySequence(keyName) ? capitals : keyName;
}

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
    for (QWidget* comesAndGoes :
         {static_cast<QWidget*>(ui->statusLabel), static_cast<QWidget*>(ui->invalidMark)}) {
        QSizePolicy policy = comesAndGoes->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        comesAndGoes->setSizePolicy(policy);
        comesAndGoes->hide();
    }
    ui->invalidMark->setPixmap(QIcon(QStringLiteral(":/images/warning.png")).pixmap(16, 16));
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
    ui->invalidMark->setVisible(!valid);
    ui->okButton->setEnabled(valid);
}

void HotKeyEditDialog::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        showDescription();
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
        ui->keyLineEdit->setText(inCapitals(name));
}

void HotKeyEditDialog::readControls()
{
    m_combine = {ui->keyLineEdit->text(), ui->ctrlCBX->isChecked(), ui->altCBX->isChecked(),
                 ui->shiftCBX->isChecked()};
    emit combineChanged(m_combine);
}
