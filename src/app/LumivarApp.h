#pragma once

#include "app/DeviceManager.h"
#include "app/FeedbackErrand.h"
#include "app/HotKeyManager.h"
#include "app/PreviewFeed.h"
#include "online/ADManager.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/net/FeedbackManager.h"
#include "support/net/NetRCManager.h"
#include "system/AccessGrant.h"
#include "system/SessionWatch.h"
#include "ui/LVSysTray.h"
#include "ui/MainWindow.h"

#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <functional>

class HelpDialog;
class HelpDialogViewModel;
class HotKeyEditWidget;
class QDialog;
class SettingsDialog;
class WallColorDialog;

/// The one object that knows every other subsystem and joins them. Main thread.
/// Sources: LumivarApp.cpp (construction), LumivarApp_wiring.cpp (what the window's signals lead to),
/// LumivarApp_flows.cpp (effects and the control page), LumivarApp_devices.cpp (devices come, go, are
/// pressed), LumivarApp_tray.cpp (the tray's menu and its panels), LumivarApp_hotkeys.cpp (the hotkey actions
/// and their editing), LumivarApp_dialogs.cpp (dialogs that the user asks for), LumivarApp_online.cpp (the
/// online service), LumivarApp_session.cpp (sleep, lock, the end of the session), LumivarApp_wall.cpp (what a
/// device makes of its colours).
class LumivarApp : public QObject
{
    Q_OBJECT

public:
    explicit LumivarApp(QObject* parent);
    ~LumivarApp() override;

    MainWindow& mainWindow() { return m_mainWindow; }
    DeviceManager& deviceManager() { return m_deviceManager; }
    /// Gives the table of the shortcut page its rows and what decides on a change, and keeps its state up to
    /// date. The table is the window's, and goes no later than this object does.
    void fillHotkeys(HotKeyEditWidget& table);

    /// Blacks every strip out when the process ends without the destructor; half a second at most.
    void releaseDevices() { m_deviceManager.releaseAll(); }

public slots:
    /// A second start asks to see this one: a window that was put away is shown, a covered one comes to the
    /// front, one that the user has minimised stays as it is.
    void onWakeUpRequested();
    /// Fills the control page from the state of its device. Nothing happens while the home page is showing.
    void updateControlPageView();
    /// A second request brings the dialog that is open to the front.
    void showSettingsDialog();

private slots:
    void onNewController(QString ctlName);
    void onControllerFailed(QString ctlName);
    void onAllStrapOnOff(bool on);
    void onHomePageDevClicked(QString id);
    void onCtlPageWorkGroupChanged(QString groupId);
    void onCtlPageWorkerChanged(QString workerId);
    void onDevPhyBtnClicked(QString ctlName, int btn);
    void onHotkeyActived(QString id);
    void onHasNewVersion();
    void onRequestUpdateAppVersion();
    void runInstallProcess(QString installerPath);
    void onRequestShowHelpDlg();
    void onAppAboutToQuit();
    void sendFeedback(QString msg, QString contact);

private:
    struct HotkeyAction
    {
        const char* name; ///< source text of the translation context "HotkeyDescription"
        HotkeyBinding binding;
        std::function<void()> run;
        int row; ///< in the order in which the actions are shown
    };
    using NeighbourGroup = QString (EffectsManager::*)(const QString& groupId);

    void showWindow();
    void uiStyleListener();

    void makeTray();
    void makeMainWindow();
    void connectControlPage();
    void rename(const QString& id, const QString& name);
    void reconfigure(const QString& id);
    void changeDirection(int dir);
    void changeBrightness(float brightness);
    void changeEnable(bool enable);

    ControlPage& controlPage() const;
    /// Whether the control page is showing, and this device on it.
    bool isOnControlPage(const QString& id) const;
    void fillWorkGroups(const ControlOptions& options);
    void fillWorkers(const QString& controllerId);
    void logControlPage() const;
    void setEffect(const QString& effectId);
    void onControlModeChanged(bool isSingleDevCtrl);
    void onSOptWidPropertyChanged(const QString& key, const QJsonValue& val);
    void copyPropertyToOthers(const QString& key, const QJsonValue& val);
    void onOptWidActived();
    void showNotice();
    void showNotices();
    void showFindings();
    void onAccessGrantChanged();
    void onEffectPropertyChanged(const QString& ctl, const QString& effect, const QString& key,
                                 const QJsonValue& val);

    void refreshHomePage();
    void removeController(const QString& id);
    void pressButton(const QString& id, int action, const QString& currentEffect, bool enabledBefore);
    void bindNextGroup(const QString& id, const QString& currentEffect);
    QString effectOfGroup(QString group, NeighbourGroup neighbour, const QList<QString>& ids);
    void toggleLight(const QString& id, bool enable);

    void makeHotkeys();
    void letDesktopAsk();
    void makeHotkey(const QString& id, const char* name, const HotkeyBinding& fallback,
                    const std::function<void()>& run);
    bool hasDevices() const;
    void switchAllByHotkey();
    void changeGroupByHotkey(NeighbourGroup neighbour);
    void stepBrightness(double step);
    bool checkHotkey(const QString& id, const HotkeyCombine& combine);
    bool applyHotkey(const QString& id, const HotkeyCombine& combine);

    void showWallColorDialog(const QString& id);

    void watchSession();
    void onAboutToSleep();
    void onResumed();
    void onScreenOffChanged(bool off);
    void onAboutToShutDown();
    void setDark();

    void reportStart();
    void startVersionCheck();
    void connectDownload();
    void startAdvertisement();
    void makeHelpDlgViewModel();
    void showDownload(int percent);
    void startDownload();
    void cancelDownload();
    void endDownload(const QString& notice);

    /// With what stands before it, or a box that waits for its answer would be covered.
    static void bringToFront(QDialog& dialog);
    /// The stored setting; one that is missing is written with its default.
    static QJsonValue firstUse(const char* key, const QJsonValue& fallback);
    /// True: the control page acts on its own device, else on all of them. Read afresh at each event.
    static bool isSingleControlMode();
    void forEachController(const std::function<void(AbsRGBController&)>& action);
    /// The place is the caller's: the appender takes lines of one place for one run and drops those between,
    /// so that different actions must not share one.
    static void logUserAction(const QString& text, const char* file = __builtin_FILE(),
                              int line = __builtin_LINE());

    MainWindow m_mainWindow;
    SessionWatch m_session; ///< holds the machine's end up until the devices are dark
    bool m_isAsleep = false;
    bool m_isDarkForScreen = false;
    DeskCaptureOption m_captureOption; ///< there to be chosen from before anything is captured
    DeviceManager m_deviceManager;
    PreviewFeed m_previewFeed;
    FeedbackManager m_feedbackManager;
    NetRCManager m_netManager;
    HotKeyManager m_hotKeyManager;
    ADManager m_adManager;
    LVSysTray m_sysTray;
    FeedbackErrand m_feedbackErrand;
    QSharedPointer<HelpDialogViewModel> m_helpViewModel;
    AccessGrant m_accessGrant;
    QPointer<SettingsDialog> m_settingsDialog; ///< the open one; the window's child, as the next
    QPointer<HelpDialog> m_helpDialog;
    QPointer<WallColorDialog> m_wallColorDialog;
    bool m_allStrapOn = true;                    ///< last asked for by the switch for all devices
    QMap<QString, HotkeyAction> m_hotkeyActions; ///< by id
};
