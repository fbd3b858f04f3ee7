#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>
#include <memory>

/// A home of its own for programs under test, and a folder with a fake crash reporter to run them from.
class ProgramSandbox
{
public:
    ProgramSandbox();

    QProcessEnvironment environment;

    QString path(const QString& relative) const { return m_dir.filePath(relative); }
    /// A file below the program's configuration folder.
    QString configPath(const QString& relative) const { return path("config/Lumivar/" + relative); }
    void writeConfig(const QString& relative, const QByteArray& content) const;

    /// Puts the program beside a reporter that writes its arguments down; returns the copy's path.
    QString copyBesideFakeReporter(const QString& program) const;
    /// The arguments that the fake reporter has got, one a line; empty until it has run.
    QByteArray reporterArguments() const;

    /// Starts the program in the home folder; it is killed with the returned object if it still runs.
    std::unique_ptr<QProcess> start(const QString& program, const QStringList& arguments = {});
    /// What all programs have written to standard error so far.
    QString output() const;

    static QByteArray readFile(const QString& path);

private:
    QTemporaryDir m_dir;
};
