#pragma once

#include <QProcess>
#include <csignal>
#include <sys/prctl.h>

/// A program that goes when the test does, even if that is killed: left behind it would talk into the ports
/// that the tests after this one are given. Start it on a thread that lives as long as the test.
class MortalProcess : public QProcess
{
protected:
    void setupChildProcess() override { ::prctl(PR_SET_PDEATHSIG, SIGKILL); }
};
