#include "ProgramSandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr char kFakeReporter[] = R"(#!/bin/sh
here=$(dirname "$0")
printf '%s\n' "$@" > "$here/arguments.part"
mv "$here/arguments.part" "$here/arguments"
)";

void writeFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace

// A short path, because sockets stand below it.
ProgramSandbox::ProgramSandbox()
    : environment(QProcessEnvironment::systemEnvironment())
    , m_dir(QStringLiteral("/tmp/lumivar-test-XXXXXX"))
{
    const QFileDevice::Permissions onlyUser =
        QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    for (const char* folder : {"home", "config", "data", "run", "tmp", "bin"}) {
        QDir().mkpath(path(folder));
        QFile::setPermissions(path(folder), onlyUser);
    }
    environment.insert("HOME", path("home"));
    environment.insert("XDG_CONFIG_HOME", path("config"));
    environment.insert("XDG_DATA_HOME", path("data"));
    environment.insert("XDG_RUNTIME_DIR", path("run"));
    environment.insert("TMPDIR", path("tmp"));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
}

void ProgramSandbox::writeConfig(const QString& relative, const QByteArray& content) const
{
    writeFile(configPath(relative), content);
}

QString ProgramSandbox::copyBesideFakeReporter(const QString& program) const
{
    const QFileInfo original(program);
    // What else stands beside the program is its data.
    for (const QFileInfo& entry : original.dir().entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile::link(entry.filePath(), path("bin/" + entry.fileName()));
    }
    QString copy = path("bin/" + original.fileName());
    QFile::copy(program, copy);
    writeFile(path("bin/CrashReporter"), kFakeReporter);
    QFile::setPermissions(path("bin/CrashReporter"), QFile::permissions(copy));
    return copy;
}

QByteArray ProgramSandbox::reporterArguments() const
{
    return readFile(path("bin/arguments"));
}

std::unique_ptr<QProcess> ProgramSandbox::start(const QString& program, const QStringList& arguments)
{
    environment.insert("LD_LIBRARY_PATH", LIBRARY_FOLDER); // a copied program does not find its libraries
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(path("home"));
    process->setStandardErrorFile(path("stderr"), QIODevice::Append);
    process->start(program, arguments);
    if (!process->waitForStarted()) {
        qFatal("cannot start %s", qPrintable(program));
    }
    return process;
}

QString ProgramSandbox::output() const
{
    return QString::fromUtf8(readFile(path("stderr")));
}

QByteArray ProgramSandbox::readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
