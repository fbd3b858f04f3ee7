#pragma once

#include <QString>

/// Whether version `a` is up to date relative to `b`: false only when `b` is a version, and a later one.
/// Versions are up to four numbers with dots between; what is missing is 0 ("1.2" is "1.2.0", and before
/// "1.2.1").
bool compareVersion(const QString& a, const QString& b);
