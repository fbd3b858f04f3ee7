#pragma once

#include "FrameLog.h"
#include "GuestProgram.h"
#include "SimulatorOptions.h"
#include "StripMeter.h"
#include "StripScreen.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QUdpSocket>

#include <memory>
#include <vector>

class QSocketNotifier;
class Scenery;

/// The simulator as a program: strips, what is shown of them, and the commands that come from keys, lines,
/// the script and signals.
class SimulatorApp : public QObject
{
    Q_OBJECT

public:
    /// The scenery lives longer.
    explicit SimulatorApp(const SimulatorOptions& options, Scenery* scenery = nullptr);
    ~SimulatorApp() override;

    /// Plugs everything in. False, with a message on standard error, when something could not start.
    bool start();
    /// Ends the started program, if there is one, and then the event loop.
    void quit();

private:
    struct Strip
    {
        std::unique_ptr<StripSimulator> device;
        QString label; ///< model and serial
        StripMeter meter;
    };

    bool launchGuest();
    void restartGuest();
    void addStrip(const StripSimulator::Options& options);
    void watchInput();
    void readInput();
    void onKey(char key);
    void execute(const QString& command);
    void apply(const QString& verb, Strip& strip);
    void onFrame(Strip& strip, const StripFrame& frame);
    void sendToViewer(const QVector<LV_RGB>& colors);
    void onGuestFinished(int exitCode, QProcess::ExitStatus status);
    void onNoFrame();
    void draw();
    void printLines();
    void say(const QString& who, const QString& what);
    void leave();
    void failIf(bool failed, const QString& why);

    SimulatorOptions m_options;
    Scenery* m_scenery;
    std::vector<std::unique_ptr<Strip>> m_strips;
    std::unique_ptr<StripScreen> m_screen; ///< null when there is no terminal to draw in
    FrameLog m_log;
    GuestProgram m_guest;
    QUdpSocket m_viewer;
    QSocketNotifier* m_input = nullptr;
    QByteArray m_line; ///< an unfinished line of input
    QTimer m_tick;
    QElapsedTimer m_clock;
    QStringList m_summary; ///< printed when the terminal is itself again
    bool m_sawFrame = false;
    bool m_quitting = false;
    bool m_restarting = false;
    int m_exitCode = 0;
};
