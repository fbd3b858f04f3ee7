#include "CrashWindow.h"
#include "ReportTexts.h"
#include "system/DisplayCheck.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QLocale>
#include <QTextStream>
#include <cstdio>

namespace {

/// The newest dump below the folder, empty if there is none.
QString newestDump(const QDir& folder)
{
    const QStringList newestFirst = folder.entryList({QStringLiteral("*.dmp")}, QDir::Files, QDir::Time);
    return newestFirst.isEmpty() ? QString()
                                 : QDir::toNativeSeparators(folder.absoluteFilePath(newestFirst.first()));
}

/// Whether the platform shows windows at all.
bool isVisiblePlatform()
{
    const QString platform = QGuiApplication::platformName();
    return platform != QLatin1String("offscreen") && !platform.startsWith(QLatin1String("minimal"));
}

void print(const ReportTexts& texts, const QString& program, const QString& dumpPath)
{
    QTextStream out(stderr);
    out.setCodec("UTF-8");
    out << texts.message.arg(program) << '\n'
        << (dumpPath.isEmpty() ? texts.noDump : texts.dump.arg(dumpPath)) << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    choosePlatformWithoutDisplay();
    QApplication app(argc, argv);
    forgetChosenPlatform();

    QCommandLineParser parser;
    parser.addOption(
        {QStringLiteral("file"), QStringLiteral("Name of the program that crashed"), QStringLiteral("name")});
    parser.addOption(
        {QStringLiteral("path"), QStringLiteral("Folder of the user's data"), QStringLiteral("folder")});
    parser.addOption({QStringLiteral("language"), QStringLiteral("Language code"), QStringLiteral("code")});
    parser.parse(QCoreApplication::arguments()); // whatever is wrong with them, the user has to be told

    const QString chosen = parser.value(QStringLiteral("language")); // empty when the user chose none
    const ReportTexts texts = reportTexts(chosen.isEmpty() ? QLocale::system().name() : chosen);
    const QString program = parser.value(QStringLiteral("file"));
    const QDir folder(parser.value(QStringLiteral("path")) + QLatin1String("/dumps"));
    const QString dumpPath = newestDump(folder);

    print(texts, program, dumpPath);
    if (!isVisiblePlatform())
        return 0;
    CrashWindow window(texts, program, dumpPath, folder.absolutePath());
    window.show();
    return QApplication::exec();
}
