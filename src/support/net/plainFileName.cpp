#include "support/net/plainFileName.h"

#include <QRegularExpression>
#include <algorithm>

QString plainFileName(const QString& named, const QStringList& endings)
{
    static const QRegularExpression safe(
        QStringLiteral(R"(\A(?:[\w+@~-][\w .+@~-]{0,63}/){0,4}([\w+@~-][\w .+@~-]{0,63})\z)"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression device(QStringLiteral(R"(\A(con|prn|aux|nul|com\d|lpt\d) *\.)"),
                                           QRegularExpression::CaseInsensitiveOption);
    const QString name = safe.match(named).captured(1);
    const bool hasEnding = std::any_of(endings.begin(), endings.end(), [&name](const QString& ending) {
        return name.endsWith(QLatin1Char('.') + ending, Qt::CaseInsensitive);
    });
    return hasEnding && !device.match(name).hasMatch() ? name : QString();
}
