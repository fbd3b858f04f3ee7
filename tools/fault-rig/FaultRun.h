#pragma once

#include "FaultCounts.h"
#include "ProgramUnderTest.h"
#include "StripSimulator.h"
#include "VirtualDisplay.h"

#include <QJsonObject>
#include <QStringList>
#include <functional>
#include <memory>

/// The real program from start to end with faults below it: a user works with it for a moment, and a judge
/// looks whether it ran on or ended with a message, whether the stores are whole and the strip is black.
class FaultRun
{
public:
    /// With a display that has a window manager the user works with the window and the keys as well.
    explicit FaultRun(const VirtualDisplay* display = nullptr);

    /// Lets these calls of the kind fail, counted from 1.
    void fail(FaultKind kind, long first, long last);
    /// And these the next ones.
    void failNow(FaultKind kind, long times = 1) { fail(kind, calls(kind) + 1, calls(kind) + times); }
    /// Pieces of memory count from so many bytes on.
    void start(int leastBytes = 4096);
    /// Does what a minute of use does, and asks for the end.
    void use();
    /// Asks for the end, and waits.
    void end();
    /// What is wrong, in words; empty when nothing is.
    QStringList judge();

    /// All that the program has said, and the dumps of a crash.
    QString report() const;
    /// How the program ended, when not as asked; with the last message of its own.
    QString ending() const { return m_ending; }
    long calls(FaultKind kind) const { return m_counts->calls[kind]; }
    long failed(FaultKind kind) const { return m_counts->failed[kind]; }
    ProgramUnderTest& program() { return m_program; }
    StripSimulator& strip() { return *m_strip; }

private:
    /// Waits while the program runs; false when that does not help.
    bool waitFor(const std::function<bool()>& condition, int ms);
    void prepareStores() const;
    void pressKeys(const QStringList& keys);
    void pressButton();
    void startAgain();
    void judgeCrash(QStringList& finds);
    void judgeStores(QStringList& finds) const;
    void judgeStrip(const QJsonObject& strip, QStringList& finds) const;
    QString lastMessage() const;

    const VirtualDisplay* const m_display;
    ProgramUnderTest m_program;
    std::unique_ptr<StripSimulator> m_strip;
    std::unique_ptr<void, void (*)(void*)> m_memory;
    FaultCounts* m_counts;
    QString m_ending;
    bool m_isHanging = false, m_endsUnasked = false, m_staysDark = false;
};
