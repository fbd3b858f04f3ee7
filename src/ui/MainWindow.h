#pragma once

#include "ui/WindowRegion.h"

#include <QWidget>
#include <memory>

class ControlPage;
class HomePage;

namespace Ui {
class MainWindow;
}

/// The one top-level window: frameless, with a title bar of its own above the home and the control page.
/// Main thread.
class MainWindow : public QWidget
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    void switchToControlPage();
    void switchToHomePage();
    bool isHomePage() const;
    HomePage* homePage() const;
    ControlPage* controlPage() const;

    /// Without a tray a window that is put away is minimised, where the desktop can do that. One that is
    /// away already changes its place as the tray comes and goes.
    void setTrayAvailable(bool isAvailable);
    void putAway();
    /// Brings a window that shows before all others.
    void comeToFront();
    bool isPutAway() const { return isHidden() || m_isPutAway; }

    /// Offers the new version, until the user has ordered it.
    void showNewVersionBtn();
    /// What of the new version is there. The button then shows it, orders nothing and has a menu with what
    /// ends it. -1: no download; the button is seen only while it offers a version.
    void setDownloadProgress(int percent);
    /// One calm line below the title bar, already translated; an empty text hides it.
    void setNotice(const QString& text);
    /// Takes the size to open with: much of a small screen, a part of a large one.
    void sizeToScreen();
    /// A window that does not lie inside its screen gets 80 % of it, centred.
    void fitToScreen();
    /// Hides the title bar's buttons whose signal nobody takes.
    void hideUnusedButtons();
    /// The region under a point in window coordinates.
    WindowRegion regionAt(QPoint position) const;

signals:
    /// The user sees it, perhaps for the first time.
    void opened();
    void requestShowHelpDlg();
    void requestUpdateAppVersion();
    void requestCancelDownload();
    void allStrapOnOff(bool on);
    void settingsBtnTriggered();
    /// Declared for listeners, never emitted.
    void pageSwitched();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool nativeEvent(const QByteArray& eventType, void* message, long* result) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private slots:
    void onHomeButtonClicked();
    void onAllOnBtnClicked();
    void onAllOffBtnClicked();
    void on_pushButton_settings_clicked();
    void on_pushButton_help_clicked();
    void on_toolButton_min_clicked();
    void on_toolButton_close_clicked();
    void onNewVersionBtnClicked();

private:
    void loadStyleSheet();
    void showShortcuts();
    void showDownload();
    void followScreen();
    void noticeOpening();
    bool isFillingScreen() const;
    /// Whether a minimised window can be found again: somebody manages windows.
    static bool canMinimise();
    /// Whether a window that shows can ask to be brought to the front; else only one that appears gets there.
    static bool canBeRaised();
    /// Serves the regions with the system's own means; what is returned lives as long as the window.
    std::unique_ptr<QObject> makeFrame();

    std::unique_ptr<Ui::MainWindow> ui;
    std::unique_ptr<QObject> m_frame;
    bool m_hasTray = true;
    bool m_isPutAway = false;
    bool m_hasNewVersion = false; ///< to offer
    int m_downloadPercent = -1;
    const int m_titleHeight = 50;
    const int m_borderWidth = 5;
};
