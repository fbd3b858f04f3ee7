#pragma once

#include "StripSimulator.h"

#include <QStringList>

#include <optional>

class QCommandLineParser;

/// Something to do at a time after the start: button, unplug or plug, with the number of a strip behind it or
/// without one for all, restart, quit, and what the scenery knows.
struct TimedCommand
{
    int atMs;
    QString command;
};

/// What the command line asks for.
struct SimulatorOptions
{
    QVector<StripSimulator::Options> strips;
    QString mapFile;  ///< empty: the one of the model beside the program
    QString jsonFile; ///< "-" is standard output
    QVector<TimedCommand> script;
    int quitAfterMs = -1; ///< from the first frame on
    int patienceMs = -1;  ///< for the first frame
    bool plain = false;
    bool check = false;
    bool viewer = false;
    QStringList guest; ///< program and arguments
    QString guestLog;

    /// What the command line may say of strips and their program.
    static void addTo(QCommandLineParser& parser);
    /// What it does say; on nonsense the result is empty and the error says why.
    static std::optional<SimulatorOptions> of(const QCommandLineParser& parser, QString& error);
};
