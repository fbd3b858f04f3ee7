#include "NotifierPanel.h"
#include "PrivateBus.h"
#include "ProgramUnderTest.h"
#include "StoredStrip.h"
#include "StripSimulator.h"
#include "WaylandDesktop.h"

#include <QtTest>

namespace {

constexpr int kWaitMs = 20000;
constexpr int kLeds = 60;
constexpr LV_RGB kColor{0x4F, 0x24, 0xD3}; ///< of the single-colour effect
const QString kStrip = "LV0127:01020304";

} // namespace

/// The program's window on a real Wayland desktop.
class WaylandWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_desktop = std::make_unique<WaylandDesktop>();
        QVERIFY(m_desktop->start());
        QVERIFY(m_bus.start());
        m_program = std::make_unique<ProgramUnderTest>();
        m_program->environment.insert("WAYLAND_DISPLAY", m_desktop->display());
        m_program->environment.insert("XDG_SESSION_TYPE", "wayland");
        m_program->environment.insert("DBUS_SESSION_BUS_ADDRESS", m_bus.address());
        m_program->writeConfig("controllers.json",
                               {{kStrip, storedStrip("id.effect.singleColor.singleColor1", kLeds)}});
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
        m_desktop.reset();
        m_bus.stop();
    }

    void userWorksWithTheWindow()
    {
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(window("Lumivar").isValid(), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        const QJsonObject about = m_desktop->windows()["Lumivar"];
        QCOMPARE(about["app_id"].toString(), "org.lumivar.Lumivar");
        QCOMPARE(about["border"].toString(), "csd"); // the desktop draws none around ours
        const QRect shown = window("Lumivar");
        QVERIFY(QRect({}, WaylandDesktop::kScreen).contains(shown));
        QTRY_VERIFY_WITH_TIMEOUT(isSeenAt(shown), kWaitMs);

        drag({200, 25}, {50, 60});
        QTRY_VERIFY_WITH_TIMEOUT(isNear(window("Lumivar"), shown.translated(50, 60)), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(isSeenAt(window("Lumivar")), kWaitMs);
        const QRect moved = window("Lumivar");
        drag({1, 300}, {200, 0});
        QTRY_VERIFY_WITH_TIMEOUT(isNear(window("Lumivar"), moved.adjusted(200, 0, 0, 0)), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(isSeenAt(window("Lumivar")), kWaitMs);

        QVERIFY(m_desktop->input({"key", "alt+s"}));
        QTRY_VERIFY_WITH_TIMEOUT(window("Settings").isValid(), kWaitMs);
        QVERIFY(window("Lumivar").contains(window("Settings").center()));
        click(window("Settings").topLeft() + QPoint(410, 147)); // the list of languages, which opens below
        const QPoint entry = window("Settings").topLeft() + QPoint(500, 200);
        const auto yellow = [&] { return QColor(m_desktop->picture().pixel(entry)).saturation() > 200; };
        QTRY_VERIFY_WITH_TIMEOUT(yellow(), kWaitMs);
        QVERIFY(m_desktop->input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(!yellow(), kWaitMs);
        QVERIFY(window("Settings").isValid());
        QVERIFY(m_desktop->input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(!window("Settings").isValid(), kWaitMs);
    }

    void windowGoesAndComesBack()
    {
        NotifierPanel panel(m_bus.address());
        panel.show();
        m_program->start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!panel.item.isEmpty() && panel.menu().contains(kStrip), kWaitMs);
        QVERIFY(m_desktop->windows().isEmpty());
        panel.choose(kStrip);
        QTRY_VERIFY_WITH_TIMEOUT(window(kStrip).isValid(), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop->input({"key", "Right"}) && shows({}), kWaitMs);
        QVERIFY(m_desktop->input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop->windows().isEmpty(), kWaitMs);

        panel.clickItem();
        QTRY_VERIFY_WITH_TIMEOUT(isSeenAt(window("Lumivar")), kWaitMs);
        click(window("Lumivar").topRight() + QPoint(-25, 25)); // the close button
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop->windows().isEmpty(), kWaitMs);
        for (const char* workspace : {"1", "2"}) { // put away, and out of sight
            QVERIFY(m_desktop->tell(QStringLiteral("workspace ") + workspace));
            QVERIFY(ProgramUnderTest::endsWell(*m_program->startAnother()));
            QTRY_VERIFY_WITH_TIMEOUT(isSeenAt(window("Lumivar")), kWaitMs);
        }
        QVERIFY(m_program->terminate());
    }

    void nothingIsLeftBurningWhereTheDesktopEnds()
    {
        m_program->start();
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(window("Lumivar").isValid(), kWaitMs);
        m_desktop->stop();
        QTRY_VERIFY_WITH_TIMEOUT(!m_program->isRunning(), kWaitMs);
        QTRY_VERIFY(shows({}));

        m_program->start(); // the desktop cannot be reached
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QVERIFY(m_program->logText().contains("no display can be reached"));
        QVERIFY(m_program->terminate());
    }

private:
    QRect window(const QString& title) const { return m_desktop->place(title); }
    static bool isNear(const QRect& a, const QRect& b)
    {
        constexpr int kPixels = 40; // the start of a drag is lost
        return (a.topLeft() - b.topLeft()).manhattanLength() <= kPixels &&
               (a.bottomRight() - b.bottomRight()).manhattanLength() <= kPixels;
    }
    void click(QPoint at) const
    {
        QVERIFY(m_desktop->input({"mousemove", QString::number(at.x()), QString::number(at.y()), "sleep",
                                  "0.3", "mousedown", "1", "sleep", "0.1", "mouseup", "1"}));
    }
    /// Whether the picture has the window's darkness within this place, and the desktop around it.
    bool isSeenAt(const QRect& place) const
    {
        const QImage picture = m_desktop->picture();
        const auto isBlue = [&](QPoint at) {
            return !picture.rect().contains(at) || picture.pixel(at) == WaylandDesktop::kBlue;
        };
        return !isBlue(place.topLeft()) && qGray(picture.pixel(place.topLeft() + QPoint(220, 25))) < 60 &&
               isBlue(place.topLeft() - QPoint(3, 3)) && isBlue({place.left() - 3, place.top() + 40}) &&
               isBlue({place.left() + 40, place.top() - 3});
    }
    void drag(QPoint grip, QPoint distance) const
    {
        const QPoint from = window("Lumivar").topLeft() + grip;
        QStringList words{"mousemove", QString::number(from.x()), QString::number(from.y()), "sleep", "0.2"};
        words += {"mousedown", "1", "sleep", "0.2"};
        for (const int part : {4, 2, 1}) {
            const QPoint to = from + distance / part;
            words += {"mousemove", QString::number(to.x()), QString::number(to.y()), "sleep", "0.2"};
        }
        QVERIFY(m_desktop->input(words + QStringList{"mouseup", "1"}));
    }
    bool shows(LV_RGB color) const
    {
        const QVector<LV_RGB> shown = m_strip->lastFrame().colors;
        return shown.size() == kLeds && shown.count(color) == kLeds;
    }

    PrivateBus m_bus;
    std::unique_ptr<WaylandDesktop> m_desktop;
    std::unique_ptr<ProgramUnderTest> m_program;
    std::unique_ptr<StripSimulator> m_strip;
};

QTEST_GUILESS_MAIN(WaylandWindowTest)
#include "tst_wayland_window.moc"
