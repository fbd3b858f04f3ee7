#include "support/net/FeedbackArchive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <algorithm>

namespace {

constexpr qint64 kMaxStoreBytes = 4 * 1000 * 1000; // all of them together
constexpr qint64 kMaxDumpBytes = 500 * 1000;
constexpr int kBlockBytes = 256 * 1024; // between two looks at whether to go on

/// From the first line that starts within the last `most` bytes.
QByteArray newestLines(const QByteArray& text, qint64 most)
{
    if (text.size() <= most)
        return text;
    const int end = text.indexOf('\n', int(text.size() - most - 1));
    return end < 0 ? QByteArray() : text.mid(end + 1);
}

/// Collects the files of one archive.
class Collection
{
public:
    Collection(const FeedbackContent& content, const ArchiveProgress& progress)
        : m_content(content)
        , m_progress(progress)
    {
    }

    void add(const QString& name, const QByteArray& bytes);
    void addStores();
    void addNewestDump();
    void addLogs();
    std::vector<FeedbackFile> taken();

private:
    struct Log
    {
        QFileInfo file;
        QString name;
    };

    static QFileInfoList listed(const QString& folder, const QStringList& filters);
    QByteArray read(const QFileInfo& file, const QString& name, qint64 most);
    QByteArray withoutPersonal(const QByteArray& text);
    std::vector<Log> logs() const;
    void leaveOut(const QString& name, const QString& reason);
    void addStore(const QFileInfo& file, const QString& folder);
    bool goesOn();

    const FeedbackContent& m_content;
    const ArchiveProgress& m_progress;
    std::vector<FeedbackFile> m_files;
    QString m_leftOut;
    qint64 m_storeBytes = 0;
    qint64 m_allBytes = kMaxFeedbackLogBytes; // to be gone through
    qint64 m_doneBytes = 0;
    bool m_goesOn = true;
};

/// With links and whatever else bears such a name, so that they can be told of.
QFileInfoList Collection::listed(const QString& folder, const QStringList& filters)
{
    if (QFileInfo(folder).isSymLink())
        return {};
    return QDir(folder).entryInfoList(filters, QDir::Files | QDir::System | QDir::Hidden, QDir::Name);
}

/// The end of the file, one byte more than `most` when it is larger; empty when it cannot be read, which is
/// noted.
QByteArray Collection::read(const QFileInfo& file, const QString& name, qint64 most)
{
    if (file.isSymLink() || !file.isFile()) { // a pipe would hold us for good
        leaveOut(name, QStringLiteral("not a plain file"));
        return {};
    }
    QFile input(file.filePath());
    QByteArray bytes;
    if (input.open(QIODevice::ReadOnly)) {
        input.seek(std::max<qint64>(0, input.size() - most - 1));
        bytes = input.read(most + 1);
    }
    if (bytes.isEmpty() && input.error() != QFileDevice::NoError)
        leaveOut(name, input.errorString());
    return bytes;
}

bool Collection::goesOn()
{
    m_goesOn = m_goesOn && m_progress(int(std::min<qint64>(100, 100 * m_doneBytes / m_allBytes)));
    return m_goesOn;
}

QByteArray Collection::withoutPersonal(const QByteArray& text)
{
    QByteArray result;
    for (int from = 0; from < text.size() && goesOn();) {
        const int lineEnd = text.indexOf('\n', std::min(from + kBlockBytes, text.size()));
        const int end = lineEnd < 0 ? text.size() : lineEnd + 1;
        result += m_content.personal.removedFrom(QString::fromUtf8(text.mid(from, end - from))).toUtf8();
        m_doneBytes += end - from;
        from = end;
    }
    return result;
}

void Collection::add(const QString& name, const QByteArray& bytes)
{
    m_files.push_back({m_content.personal.removedFrom(name), bytes});
}

void Collection::leaveOut(const QString& name, const QString& reason)
{
    m_leftOut += m_content.personal.removedFrom(name + QLatin1String(": ") + reason) + u'\n';
}

void Collection::addStores()
{
    const QString& path = m_content.configPath;
    for (const QString& store : QStringList{"app.json", "global.json", "controllers.json"}) {
        for (const QFileInfo& file : listed(path, {store, store + QLatin1String(".corrupt-*")}))
            addStore(file, QStringLiteral("config/"));
    }
    for (const QFileInfo& file : listed(path + QLatin1String("/effects"), {"*.json", "*.json.corrupt-*"}))
        addStore(file, QStringLiteral("config/effects/"));
}

void Collection::addStore(const QFileInfo& file, const QString& folder)
{
    const QString name = folder + file.fileName();
    const qint64 most = kMaxStoreBytes - m_storeBytes;
    const QByteArray bytes = read(file, name, most);
    if (bytes.size() > most) {
        leaveOut(name, QStringLiteral("too large"));
        return;
    }
    m_storeBytes += bytes.size();
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    const PersonalText& personal = m_content.personal;
    if (document.isObject())
        add(name, QJsonDocument(personal.removedFrom(QJsonValue(document.object())).toObject()).toJson());
    else if (!bytes.isEmpty()) // damaged
        add(name, withoutPersonal(bytes));
}

void Collection::addNewestDump()
{
    QFileInfoList dumps = listed(m_content.configPath + QLatin1String("/dumps"), {"*.dmp"});
    const auto newest = std::max_element(dumps.begin(), dumps.end(), [](const auto& a, const auto& b) {
        return a.lastModified() < b.lastModified();
    });
    if (newest == dumps.end())
        return;
    const QString name = QLatin1String("dumps/") + newest->fileName();
    QByteArray text = read(*newest, name, kMaxDumpBytes);
    if (text.size() > kMaxDumpBytes || text.contains('\0')) {
        leaveOut(name, QStringLiteral("no short text"));
        return;
    }
    // The bytes of the stack may spell what no search for words finds.
    const int stack = text.indexOf("\nStack:\n");
    if (stack >= 0)
        text.truncate(stack + 1);
    if (!text.isEmpty())
        add(name, withoutPersonal(text));
}

std::vector<Collection::Log> Collection::logs() const
{
    std::vector<Log> logs;
    for (const QString& folder : {QString(), QStringLiteral("devices/"), QStringLiteral("usrOptions/")}) {
        const QFileInfoList files =
            listed(QDir::cleanPath(m_content.logsPath + u'/' + folder), {"*.log", "*.log.1"});
        for (const QFileInfo& file : files)
            logs.push_back({file, QLatin1String("logs/") + folder + file.fileName()});
    }
    std::stable_sort(logs.begin(), logs.end(), [](const Log& a, const Log& b) {
        return a.file.lastModified() > b.file.lastModified();
    });
    return logs;
}

void Collection::addLogs()
{
    const std::vector<Log> newestFirst = logs();
    qint64 room = kMaxFeedbackLogBytes;
    qint64 bytes = 0;
    for (const Log& log : newestFirst)
        bytes += log.file.size();
    m_allBytes = m_doneBytes + std::clamp<qint64>(bytes, 1, room);
    for (const Log& log : newestFirst) {
        if (room == 0) {
            leaveOut(log.name, QStringLiteral("no room"));
            continue;
        }
        const QByteArray text = read(log.file, log.name, room);
        if (text.isEmpty())
            continue;
        // Both times: names may be longer or shorter than what stands for them.
        const QByteArray all = withoutPersonal(newestLines(text, room));
        const QByteArray lines = newestLines(all, room);
        if (!goesOn())
            return;
        const bool isWhole = text.size() <= room && lines.size() == all.size();
        if (!lines.isEmpty())
            add(log.name, lines);
        if (!isWhole)
            leaveOut(log.name, QStringLiteral("all but its end"));
        room = isWhole ? room - lines.size() : 0;
    }
}

std::vector<FeedbackFile> Collection::taken()
{
    if (!m_leftOut.isEmpty())
        m_files.push_back({QStringLiteral("left-out.txt"), m_leftOut.toUtf8()});
    return std::move(m_files);
}

} // namespace

std::vector<FeedbackFile> feedbackFiles(const FeedbackContent& content, const ArchiveProgress& progress)
{
    Collection collection(content, progress);
    collection.add(QStringLiteral("message.txt"), content.message.toUtf8());
    collection.add(QStringLiteral("contact.txt"), content.contact.toUtf8());
    const QJsonObject versions = content.personal.removedFrom(QJsonValue(content.versions)).toObject();
    collection.add(QStringLiteral("versions.json"), QJsonDocument(versions).toJson());
    collection.addStores();
    collection.addNewestDump();
    collection.addLogs();
    return collection.taken();
}
