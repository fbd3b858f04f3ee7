#include "ui/HotKeyEditWidget.h"

#include "ui/HotKeyEditDialog.h"
#include "ui_HotKeyEditWidget.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QIcon>
#include <QKeySequence>
#include <QStyledItemDelegate>
#include <algorithm>

namespace {

enum Column { kAction, kCombine };

/// Shows combinations from left to right in every language, whatever the key, and in one spelling: a key that
/// was edited is kept in capitals.
class CombineDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant& value, const QLocale&) const override
    {
        constexpr QChar kIsolate(0x2066);
        constexpr QChar kEndOfIsolate(0x2069);
        const QString text = value.toString();
        const QString spelled = QKeySequence(text).toString(QKeySequence::PortableText);
        return kIsolate + (spelled.isEmpty() ? text : spelled) + kEndOfIsolate;
    }
};

} // namespace

HotKeyEditWidget::HotKeyEditWidget(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui::HotKeyEditWidget>())
{
    ui->setupUi(this);
    QTableWidget* table = ui->tableWidget;
    table->setItemDelegateForColumn(kCombine, new CombineDelegate(table));
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    showAll();

    auto* edit = new QAction(table);
    edit->setShortcuts({Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter});
    edit->setShortcutContext(Qt::WidgetShortcut);
    edit->setAutoRepeat(false);
    table->addAction(edit);
    const auto editCurrent = [this] { onTableItemClicked(ui->tableWidget->currentIndex()); };
    connect(edit, &QAction::triggered, this, editCurrent);
    connect(ui->editButton, &QPushButton::clicked, this, editCurrent);
    connect(table, &QTableWidget::doubleClicked, this, &HotKeyEditWidget::onTableItemClicked);
}

HotKeyEditWidget::~HotKeyEditWidget() = default;

void HotKeyEditWidget::setHotkeys(const QVector<HotkeyModel>& hotkeys)
{
    m_hotkeys = hotkeys;
    QTableWidget* table = ui->tableWidget;
    table->setRowCount(m_hotkeys.size());
    for (int row = 0; row < m_hotkeys.size(); ++row) {
        for (const Column column : {kAction, kCombine})
            table->setItem(row, column, new QTableWidgetItem);
    }
    if (table->currentRow() < 0)
        table->setCurrentCell(0, kAction);
    ui->editButton->setEnabled(!m_hotkeys.isEmpty());
    showAll();
}

void HotKeyEditWidget::setDescriptions(const QMap<QString, QString>& descriptions)
{
    m_descriptions = descriptions;
    showAll();
}

void HotKeyEditWidget::setTrouble(const QString& id, HotkeyTrouble trouble)
{
    HotkeyModel* hotkey = find(id);
    if (!hotkey || hotkey->trouble == trouble)
        return;
    hotkey->trouble = trouble;
    showAll();
}

void HotKeyEditWidget::setDesktopKeys(const QString& id, const QString& keys)
{
    if (HotkeyModel* hotkey = find(id)) {
        hotkey->desktopKeys = keys;
        showAll();
    }
}

void HotKeyEditWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        ui->retranslateUi(this);
        showAll();
    }
    QWidget::changeEvent(event);
}

void HotKeyEditWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    emit shown();
}

/// The editor does not outlive the table; the list may change while it is open, so its row is looked up
/// again.
void HotKeyEditWidget::onTableItemClicked(QModelIndex index)
{
    if (index.row() < 0 || index.row() >= m_hotkeys.size())
        return;
    const HotkeyModel hotkey = m_hotkeys.at(index.row());
    const QString id = hotkey.id;
    const QString description = m_descriptions.value(id);
    auto* dialog = new HotKeyEditDialog(description, hotkey.combine, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &HotKeyEditDialog::combineChanged, this,
            [this, dialog, id](const HotkeyCombine& combine) {
                if (m_checkHotkey)
                    dialog->setBindingStatus(m_checkHotkey(id, combine));
            });
    connect(dialog, &QDialog::finished, this, [this, dialog, id, description](int result) {
        if (result != QDialog::Accepted) {
            qInfo().noquote() << "Cancelled to apply hotkey:" << description;
            return;
        }
        qInfo().noquote() << "Accepted to apply hotkey:" << description;
        applyCombine(id, dialog->combine());
    });
    qInfo().noquote() << "Openning HotkeyEditDialog, command" << description;
    dialog->open();
}

void HotKeyEditWidget::applyCombine(const QString& id, const HotkeyCombine& combine)
{
    if (!m_applyHotkey || !m_applyHotkey(id, combine))
        return;
    if (HotkeyModel* hotkey = find(id)) {
        hotkey->combine = combine;
        hotkey->trouble = HotkeyTrouble::None;
        showAll();
    }
}

HotkeyModel* HotKeyEditWidget::find(const QString& id)
{
    const auto found = std::find_if(m_hotkeys.begin(), m_hotkeys.end(),
                                    [&id](const HotkeyModel& hotkey) { return hotkey.id == id; });
    return found == m_hotkeys.end() ? nullptr : &*found;
}

QString HotKeyEditWidget::reason(HotkeyTrouble trouble)
{
    switch (trouble) {
    case HotkeyTrouble::None:
        break;
    case HotkeyTrouble::Taken:
        return tr("这个快捷键已被其他程序占用，释放后会自动生效。");
    case HotkeyTrouble::NoSuchKey:
        return tr("当前键盘上没有这个键。");
    case HotkeyTrouble::NotAllowed:
        return tr("当前桌面不允许程序占用按键，快捷键暂时不起作用。");
    case HotkeyTrouble::NotGranted:
        return tr("桌面询问时，快捷键未获允许。修改任意一个，桌面会再次询问。");
    case HotkeyTrouble::NoKeysYet:
        return tr("桌面还没有给它分配按键，请在系统的键盘设置中分配。");
    }
    return {};
}

void HotKeyEditWidget::showRow(int row)
{
    const HotkeyModel& hotkey = m_hotkeys.at(row);
    const QString why = reason(hotkey.trouble);
    QTableWidgetItem* action = ui->tableWidget->item(row, kAction);
    action->setText(QCoreApplication::translate("HotkeyDescription",
                                                m_descriptions.value(hotkey.id).toUtf8().constData()));
    QTableWidgetItem* combine = ui->tableWidget->item(row, kCombine);
    combine->setText(hotkey.desktopKeys.isEmpty() ? hotkey.combine.toText()
                                                  : tr("%1（由桌面设定）").arg(hotkey.desktopKeys));
    combine->setIcon(why.isEmpty() ? QIcon() : QIcon(QStringLiteral(":/images/warning.png")));
    for (QTableWidgetItem* item : {action, combine}) {
        item->setToolTip(why);
        item->setData(Qt::AccessibleTextRole, why.isEmpty() ? QVariant() : item->text() + ". " + why);
    }
}

void HotKeyEditWidget::showAll()
{
    ui->tableWidget->setHorizontalHeaderLabels({tr("功能"), tr("快捷键")});
    for (int row = 0; row < m_hotkeys.size(); ++row)
        showRow(row);
    // What is likely to be the trouble of all.
    const auto refused = std::find_if(m_hotkeys.cbegin(), m_hotkeys.cend(), [](const HotkeyModel& hotkey) {
        return hotkey.trouble == HotkeyTrouble::NotAllowed || hotkey.trouble == HotkeyTrouble::NotGranted;
    });
    const QString notice = refused == m_hotkeys.cend() ? QString() : reason(refused->trouble);
    ui->notAllowedNotice->setText(notice);
    ui->notAllowedNotice->setHidden(notice.isEmpty());
}
