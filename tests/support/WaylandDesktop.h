#pragma once

#include "ProgramUnderTest.h"
#include "VirtualDisplay.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QThread>
#include <unistd.h>

/// A Wayland desktop of the test's own (sway), blue, on which windows float. Its screen is a window of a
/// virtual display, whose pointer and keyboard it has.
class WaylandDesktop : public ServerProcess
{
public:
    static constexpr QSize kScreen{1280, 800};
    static constexpr QRgb kBlue = 0xff204080;

    ~WaylandDesktop() { stop(); }

    /// Waits until it shows its screen; false, with a warning, when it does not.
    bool start()
    {
        if (!m_display.start())
            return false;
        const QString config = m_home.filePath("config");
        ProgramUnderTest::writeFile(config, "output * resolution 1280x800\noutput * bg #204080 solid_color\n"
                                            "for_window [app_id=\".*\"] floating enable\n");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("WAYLAND_DISPLAY");
        environment.insert("DISPLAY", QString::fromLatin1(m_display.name()));
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR"})
            environment.insert(name, m_home.path());
        environment.insert("SWAYSOCK", m_home.filePath("ipc"));
        environment.insert("WLR_BACKENDS", "x11");
        environment.insert("WLR_RENDERER", "pixman");
        m_server.setProcessEnvironment(environment);
        QStringList command{"sway", "-c", config};
        if (geteuid() == 0) { // which it refuses to be
            constexpr uid_t kNobody = 65534;
            if (chown(QFile::encodeName(m_home.path()).constData(), kNobody, kNobody) != 0)
                return false;
            command = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"} + command;
        }
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        m_server.start(command.takeFirst(), command);
        for (QDeadlineTimer patience(kStartMs); !patience.hasExpired(); QThread::msleep(50)) {
            if (QFile::exists(display()) && picture().pixel(1, 1) == kBlue)
                return true;
            if (m_server.state() == QProcess::NotRunning || m_server.waitForFinished(0))
                break;
        }
        qWarning() << "sway does not start:" << m_server.errorString() << m_server.readAll();
        return false;
    }

    /// For WAYLAND_DISPLAY.
    QString display() const { return m_home.filePath("wayland-1"); }
    /// Pointer and keyboard, by the words of xdotool.
    bool input(const QStringList& words) const { return m_display.run("xdotool", words); }
    /// Such as "output * scale 2".
    bool tell(const QString& command) const { return !run("swaymsg", {command}).isEmpty(); }

    /// What sway tells of them, by title.
    QMap<QString, QJsonObject> windows() const
    {
        QMap<QString, QJsonObject> found;
        collect(QJsonDocument::fromJson(run("swaymsg", {"-t", "get_tree"})).object(), found);
        return found;
    }
    /// Nowhere where there is no such window.
    QRect place(const QString& title) const
    {
        const QJsonObject rect = windows().value(title)["rect"].toObject();
        return {rect["x"].toInt(), rect["y"].toInt(), rect["width"].toInt(), rect["height"].toInt()};
    }
    /// What the user sees.
    QImage picture() const
    {
        const QImage image = QImage::fromData(run("grim", {"-t", "ppm", "-"}));
        return image.isNull() ? QImage(kScreen, QImage::Format_RGB32) : image;
    }

private:
    QByteArray run(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = m_server.processEnvironment();
        environment.insert("WAYLAND_DISPLAY", display());
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }
    static void collect(const QJsonObject& node, QMap<QString, QJsonObject>& found)
    {
        if (node.contains("app_id"))
            found.insert(node["name"].toString(), node);
        for (const char* children : {"nodes", "floating_nodes"}) {
            for (const QJsonValue& child : node[children].toArray())
                collect(child.toObject(), found);
        }
    }

    VirtualDisplay m_display{kScreen};
    QTemporaryDir m_home{"/tmp/lumivar-wayland-XXXXXX"};
};
