// What the dialog says, in the language of the moment.
#include "support/capture/DeskCaptureOption.h"
#include "ui/Languagemanager.h"
#include "ui/SettingsDialog.h"

#include "ui_SettingsDialog.h"

#include <QApplication>
#include <QDir>

namespace {

const QLatin1String kLanguageFolder(":/languages");

/// The languages by their own names.
const QPair<const char*, const char*> kLanguageNames[] = {
    {"zh", "中文"},    {"en", "English"}, {"fr", "français"},   {"de", "Deutsch"},
    {"ja", "日本語"},  {"ko", "한국어"},  {"es", "español"},    {"pt", "português"},
    {"ru", "русский"}, {"ar", "العربية"}, {"vi", "Tiếng Việt"},
};

QString nameOf(const QString& language)
{
    for (const auto& [code, name] : kLanguageNames) {
        if (language == QLatin1String(code))
            return QString::fromUtf8(name);
    }
    return language;
}

QString richText(const QString& plain)
{
    QString lines = plain.toHtmlEscaped();
    lines.replace(u'\n', QLatin1String("<br>"));
    return QStringLiteral("<qt>%1</qt>").arg(lines); // only this kind wraps in a tool tip
}

} // namespace

void SettingsDialog::retranslate()
{
    ui->retranslateUi(this);
    fillPageBar();
    fillLanguages();
    fillCaptureModes();
    explainRows();
}

void SettingsDialog::fillPageBar()
{
    setPageNames(qApp->property("isAdvanced").toBool() ? tr("通用设置;快捷键设置;高级设置")
                                                       : tr("通用设置;快捷键设置"));
}

void SettingsDialog::fillLanguages()
{
    const QSignalBlocker blocker(ui->cbxLanguage);
    ui->cbxLanguage->clear();
    const QStringList files =
        QDir(kLanguageFolder).entryList({QStringLiteral("lumivar_*.qm")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        const QString code = file.section(u'_', 1).section(u'.', 0, 0);
        if (ui->cbxLanguage->findData(code) < 0)
            ui->cbxLanguage->addItem(nameOf(code), code);
    }
    ui->cbxLanguage->setCurrentIndex(
        ui->cbxLanguage->findData(LanguageManager::instance()->currentLanguage()));
}

void SettingsDialog::fillCaptureModes()
{
    QComboBox* modes = ui->screenCaptureModeComboBox;
    for (int i = 0; i < modes->count(); ++i)
        modes->setItemText(i, tr("模式 %1").replace(QLatin1String("%1"), QString::number(i + 1)));
}

QString SettingsDialog::captureModeText() const
{
    QString text = tr("读取屏幕画面的方式。画面不正常时可以换一种。");
    const DeskCaptureOption* option = DeskCaptureOption::current();
    for (int i = 0; option && i < option->totalOfMode(); ++i)
        text += u'\n' + tr("%1：%2").arg(ui->screenCaptureModeComboBox->itemText(i), option->modeDesc(i));
    return text;
}

void SettingsDialog::explainRows()
{
    const auto explain = [](QWidget* row, QWidget* control, const QString& text) {
        row->setToolTip(richText(text));
        control->setAccessibleDescription(text);
    };
    explain(ui->languageRow, ui->cbxLanguage, tr("界面立即使用所选的语言。"));
    explain(ui->startupRow, ui->chkStartup, tr("登录系统后自动在后台启动。"));
    explain(ui->lockedRow, ui->chkLightsOffWhileLocked, tr("屏幕锁定或关闭期间灯光熄灭，恢复后照常亮起。"));
    explain(ui->phyBtnActionRow, ui->phyBtnActionCbx, tr("按下设备上的按钮时执行的操作。"));
    explain(ui->phyBtnSingleRow, ui->phyBtnSingleCtrllMode,
            tr("选中后，任意一台设备的按钮会控制所有设备，否则只控制该设备本身。"));
    explain(ui->btnOpenConfigDir, ui->btnOpenConfigDir, tr("保存设置和日志的文件夹。"));
    explain(ui->btnDefaultSettings, ui->btnDefaultSettings,
            tr("删除所有设置，下次启动时生效。执行前会先询问。"));
    explain(ui->closeBtnActRow, ui->closeBtnActCbx, tr("选中后，关闭主窗口时灯光继续工作，程序留在托盘中。"));
    explain(ui->screenCaptureModeView, ui->screenCaptureModeComboBox, captureModeText());
    explain(ui->advancedModeRow, ui->screenSyncAdvanedModeCBX,
            tr("显示同屏模式的更多选项，部分在重新启动后生效。"));
    explain(ui->gamaRow, ui->gamaSliderBar, tr("数值越小灯光越亮，越大灯光越暗，1.00为原样。"));
    explain(ui->screenEditRow, ui->screenEditCheckBox, ui->screenEditCheckBoxHint->text());
    explain(ui->screenshotRow, ui->screenshotCheckBox, ui->screenshotCheckBoxHint->text());
    explain(ui->loopLogRow, ui->loopLogCheckBox, ui->loopLogCheckBoxHint->text());
}
