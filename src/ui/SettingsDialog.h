#pragma once

#include "ui/PagedDialog.h"

#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <memory>
#include <optional>

class HotKeyEditWidget;

namespace Ui {
class SettingsDialog;
}

/// The user's preferences, on two pages or, with the application's property "isAdvanced", three. Every change
/// is stored at once and counts from then on; there is nothing to confirm. Made anew for each opening, so
/// that it shows the values of the moment. Main thread.
class SettingsDialog : public PagedDialog
{
    Q_OBJECT

public:
    explicit SettingsDialog(QWidget* parent = nullptr);
    /// Takes the box along that may stand before it.
    ~SettingsDialog() override;

    /// The table of the shortcuts; whoever opens the dialog fills it.
    HotKeyEditWidget* hotkeyEditWidget() const;

signals:
    /// With every step of the slider, for the strips to follow; it is stored in a slower pace.
    void gamaMoved(double gama);

protected:
    void retranslate() override;

private slots:
    void onCrashTestTriggered();
    void onCheckBoxStateChanged(int state);
    void onCbxLanguageCurrentIndexChanged(int index);
    void on_btnOpenConfigDir_clicked();
    void onSliderBarCurItemChanged(int index, QString item);
    void onGamaChanged(int value);
    void onScreenEditStatChanged(bool status);
    void onScreenshotStatChanged(bool status);
    void onLoopLogStatChanged(bool status);
    void onPhyBtnSingleModeChanged(bool status);
    void onBtnDefaultSettings();
    void onPhyBtnActionCbxChanged(int i);

private:
    void initGeneralPage();
    void initCloseActionView();
    void initPhysicalButton();
    void initScreenCaptureModeView();
    void initAdvancedPage();
    void onCloseActionChanged(int state);
    void onAdvancedModeChanged(int state);
    void storeGama();

    void fillPageBar();
    void fillLanguages();
    void fillCaptureModes();
    QString captureModeText() const;
    void explainRows();
    /// One box at a time; it goes with the dialog.
    QMessageBox* makeBox(QMessageBox::Icon icon, const QString& title, const QString& text,
                         QMessageBox::StandardButtons buttons, QWidget* parent);

    std::unique_ptr<Ui::SettingsDialog> ui;
    QPointer<QMessageBox> m_box;
    QTimer m_gamaTimer;           ///< runs while a gamma waits to be stored
    std::optional<double> m_gama; ///< chosen and not stored yet
};
