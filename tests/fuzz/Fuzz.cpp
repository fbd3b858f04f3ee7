#include "Fuzz.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

QVector<FuzzTarget>& fuzzTargets()
{
    static QVector<FuzzTarget> targets;
    return targets;
}

void brokenPromise(const char* promise, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: broken: %s\n", file, line, promise);
    std::abort();
}

QString fuzzFolder()
{
    const QString memory = QStringLiteral("/dev/shm");
    const bool isLeftToUs = !qEnvironmentVariableIsSet("TMPDIR") && QFileInfo(memory).isWritable();
    static const QTemporaryDir folder((isLeftToUs ? memory : QDir::tempPath()) +
                                      QStringLiteral("/lumivar-fuzz-XXXXXX"));
    return folder.path() + QLatin1Char('/');
}

void beginFuzzing()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* name :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"}) {
        const QString path = fuzzFolder() + QString::fromLatin1(name).toLower();
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(name, QFile::encodeName(path));
    }
    qunsetenv("LUMIVAR_PRODUCT");
    qputenv("LUMIVAR_DEFAULTS", QFile::encodeName(fuzzFolder() + QStringLiteral("defaults.json")));
    // What the log says costs most of the time, and its wording is no subject here; that it is made up is.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtFatalMsg || qEnvironmentVariableIsSet("LUMIVAR_FUZZ_LOG"))
            std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    new QApplication(count, arguments); // lives as long as the process, as the readers' statics do
    QDir::setCurrent(fuzzFolder());
}

void writeFuzzFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    REQUIRE(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size());
}

QByteArray readFuzzFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonValue fuzzValue(const QByteArray& text)
{
    const QJsonArray one = QJsonDocument::fromJson('[' + text + ']').array();
    return one.size() == 1 ? one.first() : QJsonValue(QString::fromUtf8(text));
}

QJsonObject fuzzObject(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).object();
}
