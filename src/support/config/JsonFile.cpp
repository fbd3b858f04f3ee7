#include "support/config/JsonFile.h"

#include "support/config/DataFile.h"

#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QThread>
#include <filesystem>
#include <system_error>
#include <type_traits>

namespace {

constexpr int kMoreTries = 2; ///< for what another part of the program held for a moment
constexpr int kPauseMs = 20;

QString backupPath(const QString& path)
{
    return path + QLatin1String(".bak");
}

QByteArray toBytes(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

std::filesystem::path nativePath(const QString& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path.toStdWString();
    else
        return QFile::encodeName(path).toStdString();
}

/// Goes on after a part was taken, because only a write that takes nothing tells the reason.
bool writeWhole(QIODevice& device, const QByteArray& bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 taken = device.write(bytes.constData() + done, bytes.size() - done);
        if (taken <= 0)
            return false;
        done += taken;
    }
    return true;
}

void moveAside(const QString& path, const QString& reason)
{
    // A damaged one of the same instant keeps its name.
    QDateTime time = QDateTime::currentDateTime();
    QString aside;
    do {
        aside = path + QLatin1String(".corrupt-") + time.toString(QStringLiteral("yyyyMMdd-hhmmss-zzz"));
        time = time.addMSecs(1);
    } while (QFile::exists(aside));
    if (QFile::rename(path, aside))
        qWarning().noquote() << "[ConfigurationManager]:" << path << reason << "and was kept as" << aside;
    else
        qWarning().noquote() << "[ConfigurationManager]:" << path << reason << "and cannot be moved aside";
}

} // namespace

QJsonObject JsonFile::load()
{
    QJsonObject object;
    const Content content = read(m_path, &object);
    if (content == Content::Object) {
        m_saved = toBytes(object);
        return object;
    }
    // m_saved stays empty: the next write puts the file back, and the one after it would replace the backup.
    const Content backup = read(backupPath(m_path), &object);
    m_isUnknown = content == Content::Unknown || backup == Content::Unknown;
    if (backup == Content::Object)
        qWarning().noquote() << "[ConfigurationManager]: the last good copy of" << m_path << "is used";
    return object;
}

JsonFile::Content JsonFile::read(const QString& path, QJsonObject* object) const
{
    std::error_code trouble;
    if (std::filesystem::status(nativePath(path), trouble).type() == std::filesystem::file_type::not_found)
        return Content::None; // any other trouble on the way to it says nothing of the file
    QString reason;
    bool isUnknown = false;
    std::optional<QByteArray> bytes = readDataFile(path, &reason, &isUnknown);
    for (int i = 0; !bytes && isUnknown && i < kMoreTries; ++i) {
        QThread::msleep(kPauseMs);
        bytes = readDataFile(path, &reason, &isUnknown);
    }
    if (!bytes && isUnknown) {
        qWarning().noquote() << "[ConfigurationManager]:" << path
                             << "cannot be read (" + reason + "), it is left as it is";
        return Content::Unknown;
    }
    if (!bytes) {
        moveAside(path, QStringLiteral("cannot be read (%1)").arg(reason));
        return Content::None;
    }
    // What a loss of power leaves may be blocks of zeros, which the toolkit takes inside of a text.
    if (bytes->contains('\0')) {
        moveAside(path, QStringLiteral("does not parse (zero at byte %1)").arg(bytes->indexOf('\0')));
        return Content::None;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error == QJsonParseError::NoError && document.isObject()) {
        *object = document.object();
        return Content::Object;
    }
    moveAside(path, error.error == QJsonParseError::NoError
                        ? QStringLiteral("holds no JSON object")
                        : QStringLiteral("does not parse (%1 at byte %2)")
                              .arg(error.errorString(), QString::number(error.offset)));
    return Content::None;
}

bool JsonFile::write(const QJsonObject& object)
{
    const QByteArray bytes = toBytes(object);
    if (bytes == m_saved || (object.isEmpty() && m_saved.isEmpty() && !m_hasLeftovers))
        return true;
    QString error = QStringLiteral("what it holds was not to be read");
    if (!m_isUnknown && replace(m_path, bytes, &error)) {
        if (m_failing)
            qInfo().noquote() << "[ConfigurationManager]:" << m_path << "can be written again";
        m_saved = bytes;
        m_hasLeftovers = false;
        m_backupIsEqual = false;
        m_failing = false;
        return true;
    }
    if (!m_failing) {
        qWarning().noquote() << "[ConfigurationManager]: cannot write" << m_path << "(" + error + ");"
                             << "the values stay in memory"
                             << (m_isUnknown ? "for now" : "and writing is tried again");
    }
    m_failing = true;
    return false;
}

bool JsonFile::writeWithBackup(const QJsonObject& object)
{
    if (!m_saved.isEmpty() && !QFileInfo::exists(m_path)) { // deleted behind our back
        m_saved.clear();
        m_backupIsEqual = false;
    }
    if (!write(object))
        return false;
    if (m_saved.isEmpty() || m_backupIsEqual)
        return true;
    QString error;
    m_backupIsEqual = readDataFile(backupPath(m_path), &error) == m_saved;
    if (!m_backupIsEqual)
        m_backupIsEqual = replace(backupPath(m_path), m_saved, &error);
    if (!m_backupIsEqual)
        qWarning().noquote() << "[ConfigurationManager]: no backup of" << m_path << "(" + error + ")";
    return true; // the file itself is safe
}

bool JsonFile::replace(const QString& path, const QByteArray& bytes, QString* error)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    // Everything is written before the old file is touched: a full disk costs nothing.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeWhole(file, bytes)) {
        if (path == m_path && !m_saved.isEmpty())
            keepAsBackup();
        if (file.commit())
            return true;
    }
    *error = file.errorString();
    return false;
}

/// The whole file that is about to be replaced becomes the backup. A hard link moves no data; where the file
/// system has none, it is copied. A failure is no reason not to write the new file.
void JsonFile::keepAsBackup() const
{
    namespace fs = std::filesystem;
    const QString current = QFileInfo(m_path).canonicalFilePath(); // a link to a link would follow the file
    if (!QFileInfo(current).isFile())
        return; // deleted or replaced behind our back
    const QString fresh = backupPath(m_path) + QLatin1String(".new");
    QFile::remove(fresh);
    std::error_code error;
    fs::create_hard_link(nativePath(current), nativePath(fresh), error);
    if (error && !QFile::copy(current, fresh))
        return;
    fs::rename(nativePath(fresh), nativePath(backupPath(m_path)), error);
    QFile::remove(fresh); // still there when both names were one file already
}

bool JsonFile::remove()
{
    m_saved.clear();
    m_backupIsEqual = false;
    m_failing = m_isUnknown = false;
    const QFileInfo info(m_path);
    m_hasLeftovers = false;
    for (const QString& name : info.dir().entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        const bool isOurs = name == info.fileName() || name.startsWith(info.fileName() + u'.');
        if (isOurs && !QFile::remove(info.dir().filePath(name))) {
            qWarning().noquote() << "[ConfigurationManager]: cannot remove" << info.dir().filePath(name);
            m_hasLeftovers = true;
        }
    }
    return !m_hasLeftovers;
}
