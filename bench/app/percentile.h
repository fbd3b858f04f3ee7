#pragma once

#include <QVector>
#include <algorithm>

/// The value that this share of all is at most; there must be one.
inline double percentile(QVector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values.at(qMin(values.size() - 1, int(share * values.size())));
}
