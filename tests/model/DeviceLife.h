#pragma once

#include "SimulatedStrips.h"

#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>
#include <cstdint>
#include <memory>

class ControlPage;
class HomePage;
class LumivarApp;

/// One thing that happens to the program: by its user, a strip or the machine.
struct Step
{
    enum Kind {
        Plug,
        Unplug,
        Answer,
        Press,
        Noise,
        Effect,
        Group,
        Colour,
        Brightness,
        Light,
        Direction,
        Name,
        Count,
        AllLights,
        AllTogether,
        ButtonAction,
        Gamma,
        Sleep,
        Lock,
        DiskFull,
        Display,
        Jam,
        Home,
        Wait,
        Restart,
        Kinds
    };
    Kind kind = Wait;
    int strip = 0;
    int value = 0;

    QString toString() const;
};
using Steps = QVector<Step>;

/// A sequence as the seed gives it; other seeds are other sequences.
Steps randomSteps(std::uint64_t seed);
QString toString(const Steps& steps);
/// Empty where the text is none.
Steps stepsFrom(const QString& text);

/// The program on its simulated strips, and what is known of how it has to behave. Main thread.
class DeviceLife
{
public:
    DeviceLife();
    ~DeviceLife();

    /// Lives one sequence from a fresh start of settings, until all is at rest and every strip unplugged.
    /// What was wrong, or nothing.
    QString live(const Steps& steps);

private:
    /// The user's last choices for one device.
    struct Choices
    {
        QJsonObject device;            ///< members of its stored object
        QMap<QString, QString> effect; ///< last one by group
        int red = -1;                  ///< of the single colour
        int seenForMs = 0;             ///< it has been there for so long
    };

    void begin();
    void act(const Step& step);
    void press(SimulatedStrip& strip);
    void fallAsleep();
    void actOnPage(const Step& step, const QString& id);
    void answerCountDialog(const QString& id, int value);
    void choose(const QString& id, const char* key, const QJsonValue& value);
    void chooseEffect(const QString& id, const QString& effect);
    void run(int ms);
    /// At every moment.
    QString wrong();
    /// After a while without steps.
    QString wrongAtRest();
    QString wrongOf(SimulatedStrip& strip);
    QString wrongCounts();
    QString wrongStore();
    QString wrongAfterRelease();
    QString rest();
    QString end();
    void start();

    LumivarApp& app() { return *m_app; }
    HomePage& home();
    ControlPage& page();
    QList<QString> present();
    bool isThere(const QString& id);
    bool isExcused(SimulatedStrip& strip) { return strip.isBlack() || m_excused.contains(&strip); }

    std::unique_ptr<LumivarApp> m_app;
    std::vector<std::unique_ptr<SimulatedStrip>> m_strips;
    QMap<QString, Choices> m_choices;
    bool m_isAsleep = false;
    bool m_isLocked = false;
    bool m_isDiskFull = false;
    QSet<SimulatedStrip*> m_excused; ///< their line did not take what was sent
    int m_ports = 0;
    int m_baseThreads = 0;
    QString m_wrong;
};
