#include "ProgramUnderTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>

namespace {
constexpr int kEndMs = 10000;

} // namespace

ProgramUnderTest::ProgramUnderTest(const QString& folder)
    : m_folder(folder)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    QDir home(m_home.path());
    for (const char* folder : {"config/Lumivar", "data", "run", "tmp"})
        home.mkpath(QLatin1String(folder));
    QFile::setPermissions(home.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert(QStringLiteral("HOME"), home.path());
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.filePath(QStringLiteral("run")));
    m_environment.insert(QStringLiteral("TMPDIR"), home.filePath(QStringLiteral("tmp")));
    m_environment.insert(QStringLiteral("LUMIVAR_SERIAL_PORTS"), portsFile());
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        m_environment.remove(QLatin1String(name));
}

ProgramUnderTest::~ProgramUnderTest()
{
    m_process.kill();
    m_process.waitForFinished();
}

void ProgramUnderTest::setDisplay(const QByteArray& display)
{
    m_environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(display));
}

QString ProgramUnderTest::useCopyOfProgramFolder()
{
    const QDir from(m_folder);
    const QDir to(m_home.filePath(QStringLiteral("program/bin")));
    QDirIterator files(from.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString target = to.filePath(from.relativeFilePath(files.next()));
        QDir().mkpath(QFileInfo(target).path());
        QFile::copy(files.filePath(), target);
    }
    // The program looks for its libraries beside its own folder.
    QFile::link(QDir::cleanPath(from.filePath(QStringLiteral("../lib"))),
                m_home.filePath(QStringLiteral("program/lib")));
    m_folder = to.path();
    return m_folder;
}

void ProgramUnderTest::start(const QStringList& arguments)
{
    m_process.setProcessEnvironment(m_environment);
    m_process.start(m_folder + QStringLiteral("/lumivar"), arguments);
    m_process.waitForStarted();
}

bool ProgramUnderTest::terminate()
{
    m_process.terminate();
    return m_process.waitForFinished(kEndMs) && m_process.exitStatus() == QProcess::NormalExit &&
           m_process.exitCode() == 0;
}

QString ProgramUnderTest::portsFile() const
{
    return m_home.filePath(QStringLiteral("ports.json"));
}

QString ProgramUnderTest::configFile(const QString& name) const
{
    return m_home.filePath(QStringLiteral("config/Lumivar/") + name);
}

QJsonObject ProgramUnderTest::readConfig(const QString& name) const
{
    QFile file(configFile(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

void ProgramUnderTest::writeConfig(const QString& name, const QJsonObject& object) const
{
    QFile file(configFile(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(object).toJson());
}

QString ProgramUnderTest::logText(const QString& folder) const
{
    QString text;
    const QDir logs(configFile(QStringLiteral("logs/") + folder));
    for (const QString& name : logs.entryList({QStringLiteral("*.log")}, QDir::Files)) {
        QFile file(logs.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            text += QString::fromUtf8(file.readAll());
    }
    return text;
}

QString ProgramUnderTest::standardError()
{
    m_standardError += QString::fromUtf8(m_process.readAllStandardError());
    return m_standardError;
}
