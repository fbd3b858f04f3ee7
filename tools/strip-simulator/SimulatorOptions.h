#pragma once

#include "StripSimulator.h"

#include <QStringList>

#include <optional>

/// Something to do at a time after the start: button, unplug, plug or quit, with the number of a strip
/// behind it or without one for all.
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

    /// Reads the command line; on nonsense the result is empty and the error says why. Prints the help and
    /// ends the process when asked for it.
    static std::optional<SimulatorOptions> parse(const QStringList& arguments, QString& error);
};
