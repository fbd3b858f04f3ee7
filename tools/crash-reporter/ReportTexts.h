#pragma once

#include <QString>

/// What the reporter says, in one language. It has no catalogues, so that it depends on nothing that may have
/// been part of the crash.
struct ReportTexts
{
    QString title;
    QString message; ///< %1 is the program's file name
    QString dump;    ///< %1 is the path
    QString noDump;
    QString openFolder;
    QString close;
};

/// Chinese for every code that begins with "zh", English otherwise.
inline ReportTexts reportTexts(const QString& language)
{
    if (language.startsWith(QLatin1String("zh"), Qt::CaseInsensitive)) {
        return {QStringLiteral("崩溃报告"),       QStringLiteral("%1 遇到问题，已意外退出。"),
                QStringLiteral("转储文件：%1"),   QStringLiteral("没有找到转储文件。"),
                QStringLiteral("打开所在文件夹"), QStringLiteral("关闭")};
    }
    return {
        QStringLiteral("Crash report"),  QStringLiteral("%1 has run into a problem and ended unexpectedly."),
        QStringLiteral("Dump file: %1"), QStringLiteral("No dump file was found."),
        QStringLiteral("Open folder"),   QStringLiteral("Close")};
}
