#pragma once

#include "ProgramUnderTest.h"
#include "VirtualDisplay.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QtTest>
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
        const QString config = m_home.filePath("config"), home = m_home.path();
        ProgramUnderTest::writeFile(config, "output * resolution 1280x800\noutput * bg #204080 solid_color\n"
                                            "for_window [app_id=\".*\"] floating enable\n");
        QStringList command{"sway", "-c", config};
        if (geteuid() == 0) { // which it refuses to be
            command = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"} + command;
            if (chown(QFile::encodeName(home).constData(), 65534, 65534) != 0)
                return false;
        }
        if (!m_display.start())
            return false;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QStringList values{"DISPLAY=" + m_display.name(), "HOME=" + home,
                                 "XDG_RUNTIME_DIR=" + home,     "WAYLAND_DISPLAY=" + display(),
                                 "SWAYSOCK=" + home + "/ipc",   "WLR_BACKENDS=x11",
                                 "WLR_RENDERER=pixman"};
        for (const QString& value : values)
            environment.insert(value.section('=', 0, 0), value.section('=', 1));
        m_server.setProcessEnvironment(environment);
        m_server.setProcessChannelMode(QProcess::MergedChannels);
        m_server.start(command.takeFirst(), command);
        const auto isUp = [this] { return QFile::exists(display()) && picture().pixel(1, 1) == kBlue; };
        if (QTest::qWaitFor(isUp, kStartMs))
            return true;
        qWarning() << "sway does not start:" << m_server.errorString() << m_server.readAll();
        return false;
    }

    /// For WAYLAND_DISPLAY.
    QString display() const { return m_home.filePath("wayland-1"); }
    /// Pointer and keyboard, by the words of xdotool.
    bool input(const QStringList& words) const { return m_display.run("xdotool", words); }
    /// Such as "workspace 2".
    bool tell(const QString& command) const { return !run("swaymsg", {command}).isEmpty(); }

    /// What sway tells of them, by title.
    QMap<QString, QJsonObject> windows() const
    {
        QMap<QString, QJsonObject> found;
        QJsonArray nodes{QJsonDocument::fromJson(run("swaymsg", {"-t", "get_tree"})).object()};
        while (!nodes.isEmpty()) {
            const QJsonObject node = nodes.takeAt(0).toObject();
            if (node.contains("app_id"))
                found.insert(node["name"].toString(), node);
            for (const char* children : {"nodes", "floating_nodes"})
                for (const auto& child : node[children].toArray())
                    nodes += child;
        }
        return found;
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
        process.setProcessEnvironment(m_server.processEnvironment());
        process.start(program, arguments);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }

    VirtualDisplay m_display{kScreen};
    QTemporaryDir m_home{"/tmp/lumivar-wayland-XXXXXX"};
};
