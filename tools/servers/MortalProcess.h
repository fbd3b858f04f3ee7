#pragma once

#include <QProcess>

/// A program that goes when the one that started it does, even if that is killed: left behind it would talk
/// into the ports that others are given later. Start it on a thread that lives as long as the program.
class MortalProcess : public QProcess
{
protected:
    void setupChildProcess() override;
};
