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
const QString kEffect = "id.effect.singleColor.singleColor1";

} // namespace

/// The program's window on a real Wayland desktop.
class WaylandWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_desktop.start() && m_bus.start());
        m_program.environment.insert("WAYLAND_DISPLAY", m_desktop.display());
        m_program.environment.insert("XDG_SESSION_TYPE", "wayland");
        m_program.environment.insert("DBUS_SESSION_BUS_ADDRESS", m_bus.address());
        m_program.writeConfig("controllers.json", {{kStrip, storedStrip(kEffect, kLeds)}});
        m_program.writeConfig("app.json", {{"runtime.closeButtonAction", "Minimize to the system tray"}});
        qputenv("LUMIVAR_SERIAL_PORTS", m_program.portsFile().toLocal8Bit());
        QVERIFY(m_strip.plugIn());
    }
    void cleanup() { QVERIFY(!m_program.isRunning() || m_program.terminate()); }

    void userWorksWithTheWindow()
    {
        m_program.start();
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor) && isSeen(), kWaitMs);
        const QJsonObject about = m_desktop.windows()["Lumivar"];
        QCOMPARE(about["app_id"].toString(), "org.lumivar.Lumivar");
        QCOMPARE(about["border"].toString(), "csd"); // the desktop draws none around ours
        QVERIFY(QRect({}, WaylandDesktop::kScreen).contains(window()));
        drag({200, 25}, window().translated(50, 60));
        drag({1, 300}, window().adjusted(200, 0, 0, 0));

        QVERIFY(m_desktop.input({"key", "alt+s"}));
        QTRY_VERIFY_WITH_TIMEOUT(window("Settings").isValid(), kWaitMs);
        const QPoint corner = window("Settings").topLeft();
        QVERIFY(window().contains(window("Settings").center()));
        pointer(corner + QPoint(410, 147), {"mousedown", "1", "mouseup", "1"}); // the languages' list
        const auto isOpen = [&] {                                               // with its yellow entry
            return QColor(m_desktop.picture().pixel(corner + QPoint(500, 200))).saturation() > 200;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isOpen(), kWaitMs);
        QVERIFY(m_desktop.input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(!isOpen(), kWaitMs);
        QVERIFY(window("Settings").isValid());
        QVERIFY(m_desktop.input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(!window("Settings").isValid(), kWaitMs);
    }

    void windowComesAndGoesWithTheDesktop()
    {
        NotifierPanel panel(m_bus.address());
        panel.show();
        m_program.start({"--auto_startup"});
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!panel.item.isEmpty() && panel.menu().contains(kStrip), kWaitMs);
        QVERIFY(m_desktop.windows().isEmpty());
        panel.choose(kStrip);
        QTRY_VERIFY_WITH_TIMEOUT(window(kStrip).isValid(), kWaitMs);
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop.input({"key", "Right"}) && shows({}), kWaitMs);
        QVERIFY(m_desktop.input({"key", "Escape"}));
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop.windows().isEmpty(), kWaitMs);

        panel.clickItem();
        QTRY_VERIFY_WITH_TIMEOUT(isSeen(), kWaitMs);
        pointer(window().topRight() + QPoint(-25, 25), {"mousedown", "1", "mouseup", "1"}); // closes it
        QTRY_VERIFY_WITH_TIMEOUT(m_desktop.windows().isEmpty(), kWaitMs);
        for (const char* workspace : {"1", "2"}) { // put away, and out of sight
            QVERIFY(m_desktop.tell(QStringLiteral("workspace ") + workspace));
            QVERIFY(ProgramUnderTest::endsWell(*m_program.startAnother()));
            QTRY_VERIFY_WITH_TIMEOUT(isSeen(), kWaitMs);
        }

        QVERIFY(m_desktop.input({"key", "alt+o"}));
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        m_desktop.stop(); // before the light that was switched on has been stored
        QTRY_VERIFY_WITH_TIMEOUT(!m_program.isRunning(), kWaitMs);
        QTRY_VERIFY(shows({}));
        QVERIFY(m_program.readConfig("controllers.json")[kStrip].toObject()["enable"].toBool());

        m_program.start(); // the desktop cannot be reached
        QTRY_VERIFY_WITH_TIMEOUT(shows(kColor), kWaitMs);
        QVERIFY(m_program.logText().contains("no display can be reached"));
    }

private:
    /// Nowhere where there is none of that title.
    QRect window(const QString& title = "Lumivar") const
    {
        const QJsonObject rect = m_desktop.windows().value(title)["rect"].toObject();
        return {rect["x"].toInt(), rect["y"].toInt(), rect["width"].toInt(), rect["height"].toInt()};
    }
    /// Whether the picture has the window's darkness in its place, and the desktop around it.
    bool isSeen() const
    {
        const QRect place = window();
        const QImage picture = m_desktop.picture();
        const auto isBlue = [&](int x, int y) {
            const QPoint at = place.topLeft() + QPoint(x, y);
            return !picture.rect().contains(at) || picture.pixel(at) == WaylandDesktop::kBlue;
        };
        return place.isValid() && !isBlue(0, 0) && isBlue(-3, -3) && isBlue(-3, 40) && isBlue(40, -3) &&
               qGray(picture.pixel(place.topLeft() + QPoint(220, 25))) < 60;
    }
    void pointer(QPoint at, const QStringList& then = {}) const
    {
        const QStringList move{"mousemove", QString::number(at.x()), QString::number(at.y()), "sleep", "0.3"};
        QVERIFY(m_desktop.input(move + then));
    }
    /// Again where a busy desktop missed the press.
    void drag(QPoint grip, const QRect& target) const
    {
        const auto isThere = [&] { // the start of a drag is lost
            const QRect now = window();
            return (now.topLeft() - target.topLeft()).manhattanLength() <= 40 &&
                   (now.bottomRight() - target.bottomRight()).manhattanLength() <= 40 && isSeen();
        };
        for (int attempt = 0; attempt < 4 && !isThere(); ++attempt) {
            const QPoint from = window().topLeft() + grip;
            const QPoint distance = target.topLeft() - window().topLeft();
            pointer(from, {"mousedown", "1"});
            for (const int part : {4, 2, 1})
                pointer(from + distance / part);
            pointer(from + distance, {"mouseup", "1"});
            if (QTest::qWaitFor(isThere, kWaitMs / 4))
                return;
        }
        QVERIFY(isThere());
    }
    bool shows(LV_RGB color) const { return m_strip.shows(color, kLeds); }

    PrivateBus m_bus;
    WaylandDesktop m_desktop;
    ProgramUnderTest m_program;
    StripSimulator m_strip{{}};
};

QTEST_GUILESS_MAIN(WaylandWindowTest)
#include "tst_wayland_window.moc"
