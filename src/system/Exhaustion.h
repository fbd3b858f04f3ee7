#pragma once

/// Ends the process with a message where the system has run out of what the program cannot go on without:
/// memory that nobody does without, as a crash, and threads that the toolkit starts and then waits for
/// without end, with `lastAct` before, on the main thread if that still answers. Call it first thing, and
/// once more behind whoever takes the toolkit's messages over.
void endWhenExhausted(void (*lastAct)());

/// Why the process is about to crash, for the crash handler.
const char* crashReason();
