#pragma once

class QString;

/// From now on a crash writes a dump below configPath()/dumps and starts the program "CrashReporter" beside
/// the executable with "--file", "--path" and "--language"; the process still dies of its crash. Call once,
/// on the main thread, when configuration and log exist; other threads add installCrashStackForThread().
/// `logFilePath` gets the handler's lines, because no logger can be used in a crash; it may be unwritable.
void installCrashHandler(const QString& logFilePath);
