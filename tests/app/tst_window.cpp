#include "NotifierPanel.h"
#include "PrivateBus.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"

#include <QRect>
#include <QtTest>
#include <csignal>
#include <vector>
#include <xcb/xcb.h>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kMaxNudges = 300;
constexpr int kLeds = 60;
constexpr QSize kScreen(1700, 1200);
constexpr QPoint kCorner(1, 1);                        ///< of the window, where it is resized
constexpr QPoint kTrayIcon(12, kScreen.height() - 12); ///< the one icon in the tray
const QString kStrip = "LV0127:01020304";
constexpr int kMostIcon = 50;              ///< pixels
constexpr LV_RGB kColor{0x4F, 0x24, 0xD3}; ///< of the single-colour effect

bool isNear(const QRect& a, const QRect& b)
{
    constexpr int kPixels = 20;
    return (a.topLeft() - b.topLeft()).manhattanLength() <= kPixels &&
           (a.bottomRight() - b.bottomRight()).manhattanLength() <= kPixels;
}

/// A menu of the desktop's that still holds pointer and keyboard.
struct OpenMenu
{
    explicit OpenMenu(const QByteArray& display)
        : m_connection(xcb_connect(display.constData(), nullptr))
    {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const auto pointer = xcb_grab_pointer(m_connection, 1, root, 0, XCB_GRAB_MODE_ASYNC,
                                              XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
        const auto keys = xcb_grab_keyboard(m_connection, 1, root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                            XCB_GRAB_MODE_ASYNC);
        auto* pointed = xcb_grab_pointer_reply(m_connection, pointer, nullptr);
        auto* typed = xcb_grab_keyboard_reply(m_connection, keys, nullptr);
        isHolding = pointed && typed && pointed->status + typed->status == XCB_GRAB_STATUS_SUCCESS;
        free(pointed);
        free(typed);
    }
    ~OpenMenu() { xcb_disconnect(m_connection); }
    void letKeysGo()
    {
        xcb_ungrab_keyboard(m_connection, XCB_CURRENT_TIME);
        xcb_flush(m_connection);
    }
    Q_DISABLE_COPY(OpenMenu)

    bool isHolding = false;
    xcb_connection_t* m_connection;
};

} // namespace

/// The program's window as the user has it before them: a real window manager, a real tray, a real pointer.
class WindowTest : public QObject
{
    Q_OBJECT

private slots:
    /// A second process asks one that is stuck to end, for long: meanwhile the cases go on.
    void initTestCase()
    {
        m_stuck.environment.insert("QT_QPA_PLATFORM", "offscreen");
        m_stuck.start();
        QTRY_VERIFY_WITH_TIMEOUT(m_stuck.logText().contains("group information"), kWaitMs); // listens by now
        QVERIFY(::kill(pid_t(m_stuck.process().processId()), SIGSTOP) == 0);
        m_vain = m_stuck.startAnother({"--quit"});
    }
    void cleanupTestCase()
    {
        QVERIFY(m_vain->state() == QProcess::NotRunning || m_vain->waitForFinished(kWaitMs));
        QCOMPARE(m_vain->exitCode(), 1);
        QVERIFY(::kill(pid_t(m_stuck.process().processId()), SIGCONT) == 0);
        QVERIFY(ProgramUnderTest::endsWell(m_stuck.process()));
    }
    void init()
    {
        m_display = std::make_unique<VirtualDisplay>(kScreen);
        m_display->setArguments({"-dpi", "96"});
        QVERIFY(m_display->start());
        startDesktop("openbox", {"--sm-disable"});
        m_program = std::make_unique<ProgramUnderTest>();
        m_program->setDisplay(m_display->name());
        m_program->environment.insert("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // not the developer's panel
        const QString effect = "id.effect.singleColor.singleColor1";
        m_program->writeConfig("controllers.json", {{kStrip, storedStrip(effect, kLeds)}});
        m_program->writeConfig("app.json", {{"runtime.closeButtonAction", "Minimize to the system tray"}});
        StripSimulator::Options options;
        options.portsFile = m_program->portsFile();
        m_strip = std::make_unique<StripSimulator>(options);
        QVERIFY(m_strip->plugIn());
    }
    void cleanup()
    {
        m_program.reset();
        m_strip.reset();
        m_desktop.clear();
        m_bus.stop();
        m_display.reset();
    }

    void userWorksWithTheWindow()
    {
        startTray();
        startWithWindow();
        QVERIFY(QRect(QPoint(), kScreen).contains(geometry()));
        drag(QPoint(200, 25), {-90, 60});
        drag(kCorner, {60, -70});

        // The program goes on in the tray, and comes back from there.
        const QRect place = geometry();
        closeWindow();
        startAnother();
        QTRY_VERIFY_WITH_TIMEOUT(isActive(), kWaitMs);
        QCOMPARE(geometry(), place);
        closeWindow();
        clickIcon("1");
        QTRY_VERIFY_WITH_TIMEOUT(isActive(), kWaitMs);
        QVERIFY(shows(kColor));
        QVERIFY(m_program->terminate());
        QTRY_VERIFY(shows({}));
    }

    void endsWhenASecondProcessAsks()
    {
        const QString lock = m_program->path("run/LumivarSingleApp.lock");
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(lock), kWaitMs); // and does not listen yet
        const auto early = m_program->startAnother({"--quit"});
        QVERIFY(ProgramUnderTest::endsWell(m_program->process()));

        startWithWindow();
        pressKeys({"alt+s"});
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Settings", kWaitMs); // which is modal
        startAnother({"--quit"});
        QVERIFY(!QFile::exists(lock));
        QVERIFY(ProgramUnderTest::endsWell(m_program->process()));
        QTRY_VERIFY(shows({}));
        startAnother({"--quit"}); // there is none
    }

    void windowWaitsInTheTaskbarForATrayThatIsLate()
    {
        m_program->start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(isMinimised(), kWaitMs);
        QVERIFY(geometry().isEmpty());
        ask("xdotool search --name '^Lumivar$' windowactivate %@"); // a click in the task bar
        closeInto(Away::Taskbar);
        startAnother(); // it is away, not just minimised
        closeInto(Away::Taskbar);
        for (int i = 0; i < 2; ++i) { // the second one when the first has gone
            QTRY_VERIFY_WITH_TIMEOUT(isMinimised(), kWaitMs);
            startTray();
            QTRY_VERIFY_WITH_TIMEOUT(!isMinimised(), kWaitMs);
            QVERIFY(geometry().isEmpty());
            clickIcon("1");
            closeInto(Away::Tray);
            m_desktop.pop_back();
        }
    }

    void windowGoesToTheNotifiersOfALatePanel()
    {
        startBus();
        m_program->start({"--auto_startup"});
        for (int i = 0; i < 2; ++i) { // as when the panel is restarted
            QTRY_VERIFY_WITH_TIMEOUT(isMinimised(), kWaitMs);
            NotifierPanel panel(m_bus.address());
            QVERIFY(panel.isWatching);
            panel.show();
            QTRY_VERIFY_WITH_TIMEOUT(!isMinimised(), kWaitMs);
            QTRY_VERIFY_WITH_TIMEOUT(!panel.item.isEmpty(), kWaitMs);
            panel.clickItem();
            closeInto(Away::Tray);
        }
        QTRY_VERIFY_WITH_TIMEOUT(isMinimised(), kWaitMs);
        const NotifierPanel watcher(m_bus.address()); // alone it shows nothing
        QVERIFY(watcher.isWatching);
        startAnother();
        closeInto(Away::Taskbar);
    }

    void panelThatNeverAnswersHoldsNothingUp()
    {
        startBus();
        startTray();
        QThread neverStarted;
        auto panel = std::make_unique<NotifierPanel>(m_bus.address());
        panel->moveToThread(&neverStarted);
        startWithWindow();
        closeInto(Away::Taskbar);
        panel.reset(); // what is left is the other tray
        QTRY_VERIFY_WITH_TIMEOUT(!isMinimised(), kWaitMs);
        panel = std::make_unique<NotifierPanel>(m_bus.address());
        panel->moveToThread(&neverStarted);
        QVERIFY(m_program->terminate());
    }

    void userGivesAShortcutAnotherKey()
    {
        startTray();
        startWithWindow();
        pressKeys({"alt+s"});
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Settings", kWaitMs);
        pressKeys({"Right"});                           // to the page of shortcuts
        for (const LV_RGB color : {LV_RGB{}, kColor}) { // with a modal dialog open
            pressKeys({"ctrl+alt+shift+F10"});
            QTRY_VERIFY_WITH_TIMEOUT(shows(color), kWaitMs);
        }
        pressKeys({"Tab", "F2"}); // in the table, on its first action
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Lumivar", kWaitMs);
        pressKeys({"p", "Tab", "Tab", "space"});
        QTRY_VERIFY_WITH_TIMEOUT(logs("The hotkey binding has been changed: Ctrl+Alt+Shift+P"), kWaitMs);
        QVERIFY(m_program->terminate());

        // The next start, without a window, while another program is worked with.
        m_program->start({"--auto_startup"});
        startDesktop("xev", {});
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Event Tester", kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QVERIFY(geometry().isEmpty());
        for (const LV_RGB color : {LV_RGB{}, kColor}) {
            pressKeys({"ctrl+alt+shift+p"});
            QTRY_VERIFY_WITH_TIMEOUT(shows(color), kWaitMs);
        }
        QCOMPARE(activeTitle(), "Event Tester");
    }

    void userStartsAgainWithTheDefaults()
    {
        const QString picture = m_program->configFile("pixel_source/mine.png");
        ProgramUnderTest::writeFile(picture, "mine");
        m_program->writeConfig("global.json", {{"mine", 1}});
        startWithWindow();
        pressKeys({"alt+s"});
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Settings", kWaitMs);
        pressKeys(QVector<QString>(7, "Tab").toList()); // to the last button of the first section
        for (const bool isSure : {false, true}) {
            pressKeys({"space"});
            QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Lumivar", kWaitMs);
            QVERIFY(m_program->isRunning() && shows(kColor));
            if (isSure)
                pressKeys({"Tab"}); // from No, which is what Return means
            pressKeys({"Return"});
            if (!isSure)
                QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Settings", kWaitMs);
        }
        QVERIFY(ProgramUnderTest::endsWell(m_program->process()));
        QTRY_VERIFY(shows({}));
        QVERIFY(m_program->readConfig("global.json")["cleanStartup"].toBool());
        QVERIFY(m_program->readConfig("app.json").contains("runtime.closeButtonAction"));

        m_program->start();
        constexpr int kAsShipped = 120;
        QTRY_COMPARE_WITH_TIMEOUT(m_strip->lastFrame().colors.size(), kAsShipped, kWaitMs);
        QVERIFY(m_program->terminate());
        const QJsonObject global = m_program->readConfig("global.json");
        QVERIFY(!global["cleanStartup"].toBool(true) && global["mine"] == 1);
        QVERIFY(!m_program->readConfig("app.json").contains("runtime.closeButtonAction"));
        QCOMPARE(ProgramUnderTest::readFile(picture), QByteArray("mine"));
    }

    void panelShowsInTheMenuThatTheProgramDraws()
    {
        startTray();
        m_program->start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        clickIcon("3");
        QTRY_COMPARE_WITH_TIMEOUT(popups().size(), 1, kWaitMs);
        const auto isOpen = [&] {         // the keys arrive once the menu holds them
            pressKeys({"Down", "Right"}); // the device, and its panel
            return popups().size() == 2;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isOpen(), kWaitMs);
        pressKeys({"Right"}); // from the light to the dark
        QTRY_VERIFY_WITH_TIMEOUT(shows({}), kWaitMs);
        for (const QRect& popup : popups())
            QVERIFY(QRect(QPoint(), kScreen).contains(popup));
        m_strip->unplug();
        QTRY_COMPARE_WITH_TIMEOUT(popups().size(), 1, kWaitMs);
        pressKeys({"Escape"});
        QTRY_VERIFY_WITH_TIMEOUT(popups().isEmpty(), kWaitMs);
        QVERIFY(m_program->terminate());
    }

    void panelShowsBesideAMenuThatTheDesktopDraws()
    {
        startBus();
        NotifierPanel panel(m_bus.address());
        panel.show();
        m_program->start({"--auto_startup"});
        QThread::sleep(2); // a busy panel answers late
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!panel.item.isEmpty() && panel.menu().contains(kStrip), kWaitMs);
        for (const bool isByKey : {true, false}) {
            pointer({kScreen.width() - 5, kScreen.height() - 5});
            auto menu = std::make_unique<OpenMenu>(m_display->name());
            QVERIFY(menu->isHolding); // the popup before has left it both
            panel.choose(kStrip);
            QTRY_COMPARE_WITH_TIMEOUT(popups().size(), 1, kWaitMs);
            menu->letKeysGo(); // and the pointer later
            QVERIFY(QRect(QPoint(), kScreen).contains(popups().constFirst()));
            const auto isReached = [&] { // as above
                pressKeys({isByKey ? "Right" : "Left"});
                return shows(isByKey ? LV_RGB{} : kColor);
            };
            QTRY_VERIFY_WITH_TIMEOUT(isReached(), kWaitMs);
            menu.reset();
            const auto isGone = [&] {
                isByKey ? pressKeys({"Escape"}) : click({100, 100});
                return popups().isEmpty();
            };
            QTRY_VERIFY_WITH_TIMEOUT(isGone(), kWaitMs);
        }
        panel.choose("Setup");
        QTRY_COMPARE_WITH_TIMEOUT(activeTitle(), "Settings", kWaitMs);
        pressKeys({"Tab", "d"}); // to the languages, and to the one that begins so
        QTRY_VERIFY_WITH_TIMEOUT(panel.menu().contains("Einstellungen"), kWaitMs);
        panel.choose(kStrip); // beside the dialog
        QTRY_COMPARE_WITH_TIMEOUT(popups().size(), 1, kWaitMs);
        m_strip->unplug();
        QTRY_VERIFY_WITH_TIMEOUT(popups().isEmpty(), kWaitMs);
        QVERIFY(OpenMenu(m_display->name()).isHolding);
        QVERIFY(!panel.menu().contains(kStrip));
        QVERIFY(m_program->terminate());
    }

private:
    enum class Away { Taskbar, Tray };

    void startTray() { startDesktop("trayer", {"--edge", "bottom", "--align", "left"}); }
    void startWithWindow() const
    {
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor) && isActive(), kWaitMs);
    }
    void startAnother(const QStringList& arguments = {}) const
    {
        QVERIFY(ProgramUnderTest::endsWell(*m_program->startAnother(arguments)));
    }
    void startBus()
    {
        QVERIFY(m_bus.start());
        m_program->environment.insert("DBUS_SESSION_BUS_ADDRESS", m_bus.address());
    }
    void startDesktop(const QString& program, const QStringList& arguments)
    {
        m_desktop.push_back(std::make_unique<QProcess>());
        m_display->startProgram(*m_desktop.back(), program, arguments);
        QVERIFY2(m_desktop.back()->waitForStarted(), qPrintable(program));
    }

    /// What X programs have to say; one that finds nothing ends with an error, which is no matter here.
    QByteArray ask(const QString& command) const
    {
        QByteArray answer;
        m_display->run("sh", {"-c", command + " 2>/dev/null || true"}, &answer);
        return answer;
    }
    /// Of the window with the focus.
    QString activeTitle() const
    {
        return QString::fromUtf8(ask("xdotool getactivewindow getwindowname")).trimmed();
    }
    /// Whether the window manager has taken the program's window in and given it the focus.
    bool isActive() const { return activeTitle() == "Lumivar" && !geometry().isEmpty(); }
    /// The program's visible window, or nothing.
    QRect geometry() const
    {
        const QByteArray found =
            ask("xdotool search --onlyvisible --name '^Lumivar$' getwindowgeometry --shell %@");
        return {number(found, "X="), number(found, "Y="), number(found, "WIDTH="), number(found, "HEIGHT=")};
    }

    /// The program's visible menus and panels, which no window manager knows, or its icon in the tray.
    QList<QRect> popups(bool isIcon = false) const
    {
        QList<QRect> found;
        const QByteArray windows = ask("xdotool search --onlyvisible --class lumivar");
        for (const QByteArray& id : windows.split('\n')) {
            const QByteArray about = id.isEmpty() ? id : ask("xwininfo -id " + id);
            const QRect place(number(about, "Absolute upper-left X:"),
                              number(about, "Absolute upper-left Y:"), number(about, "Width:"),
                              number(about, "Height:"));
            if (isIcon ? place.contains(kTrayIcon)
                       : about.contains("Override Redirect State: yes") && place.width() > kMostIcon)
                found.append(place);
        }
        return found;
    }
    void clickIcon(const QString& mouseButton) const
    {
        QTRY_VERIFY_WITH_TIMEOUT(!popups(true).isEmpty(), kWaitMs); // it comes when it likes
        pointer(kTrayIcon, {"click", mouseButton});
    }
    static int number(const QByteArray& text, const QByteArray& name)
    {
        const QByteArray rest = text.mid(text.indexOf(name) + name.size());
        return text.contains(name) ? rest.left(rest.indexOf('\n')).trimmed().toInt() : 0;
    }
    /// Whether the task bar has the window, which cannot be seen.
    bool isMinimised() const
    {
        return ask("for each in $(xdotool search --name '^Lumivar$'); do xprop -id $each WM_STATE; done")
            .contains("Iconic");
    }
    void closeWindow() const
    {
        click(geometry().topRight() + QPoint(-20, 25));
        QTRY_VERIFY_WITH_TIMEOUT(geometry().isEmpty(), kWaitMs);
    }
    /// The window that comes.
    void closeInto(Away place) const
    {
        QTRY_VERIFY_WITH_TIMEOUT(isActive(), kWaitMs);
        closeWindow();
        QTRY_COMPARE_WITH_TIMEOUT(isMinimised(), place == Away::Taskbar, kWaitMs);
    }

    void pointer(QPoint at, const QStringList& then = {}) const
    {
        const QStringList move{"mousemove", QString::number(at.x()), QString::number(at.y())};
        QVERIFY(m_display->run("xdotool", move + then));
    }
    void pressKeys(const QStringList& keys) const
    {
        QVERIFY(m_display->run("xdotool", QStringList{"key"} + keys));
    }
    void click(QPoint at) const { pointer(at, {"click", "1"}); }
    void drag(QPoint grip, QPoint distance) const
    {
        const QRect before = geometry();
        QRect after = before.translated(distance);
        if (grip == kCorner)
            after.setBottomRight(before.bottomRight());
        const QPoint from = before.topLeft() + grip;
        pointer(from, {"mousedown", "1"});
        // A drag of the title bar counts once it is longer than a click, and its start is lost. A program
        // that is slow to take it up must not find the pointer at the end of its way already, nor released.
        const auto isTakenUp = [&] { // a search finds nothing when any window goes under its hands
            const QRect now = geometry();
            return !now.isEmpty() && now != before;
        };
        for (int i = 0; !isTakenUp() && i < kMaxNudges; ++i)
            pointer(from + QPoint(distance.x() < 0 ? -12 - i % 3 : 12 + i % 3, 0));
        pointer(from + distance);
        QTRY_VERIFY_WITH_TIMEOUT(isNear(geometry(), after), kWaitMs);
        pointer(from + distance, {"mouseup", "1"});
    }

    bool logs(const QString& text) const { return m_program->logText().contains(text); }
    bool shows(LV_RGB color) const { return m_strip->shows(color, kLeds); }

    ProgramUnderTest m_stuck;
    std::unique_ptr<QProcess> m_vain;
    PrivateBus m_bus;
    std::unique_ptr<VirtualDisplay> m_display;
    std::vector<std::unique_ptr<QProcess>> m_desktop;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(WindowTest)
#include "tst_window.moc"
