#include "support/net/compareVersion.h"

#include <QRegularExpression>
#include <QVersionNumber>

bool compareVersion(const QString& a, const QString& b)
{
    static const QRegularExpression version(QStringLiteral(R"(\A[0-9]{1,9}(\.[0-9]{1,9}){0,3}\z)"));
    const auto number = [](const QString& text) { return QVersionNumber::fromString(text).normalized(); };
    return !version.match(b).hasMatch() || number(b) <= number(a);
}
