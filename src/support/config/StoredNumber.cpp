#include "support/config/StoredNumber.h"

#include <QDebug>
#include <QHash>
#include <QMutex>
#include <cmath>

bool isUsableNumber(const QJsonValue& stored, double least, double most, bool whole, const QString& name,
                    const char* file, int line)
{
    static QMutex mutex;
    static QHash<QString, QJsonValue> told; // values are read again and again
    const QMutexLocker lock(&mutex);
    const double value = stored.toDouble();
    if (stored.isDouble() && value >= least && value <= most && (!whole || value == std::floor(value))) {
        told.remove(name);
        return true;
    }
    if (!told.contains(name) || told.value(name) != stored) {
        told.insert(name, stored);
        QMessageLogger(file, line, nullptr).warning().noquote()
            << "[Configuration]: The stored" << name << "does not count, it must be from" << least << "to"
            << most << "and is" << stored;
    }
    return false;
}
