#include "support/net/FeedbackManager.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "support/net/FeedbackArchive.h"
#include "support/net/SystemVersions.h"

#include <QDebug>
#include <QDir>
#include <QSaveFile>
#include <QTemporaryFile>
#include <QThreadPool>
#include <atomic>

namespace {

/// One archive on its way, shared by the manager and the pool's thread: whoever lets go of it last removes
/// the temporary file. All but isCancelled belongs to the one that writes, until ended().
class Zipping : public QObject
{
    Q_OBJECT

public:
    ~Zipping() override
    {
        if (!temporary.isEmpty())
            QFile::remove(temporary);
    }

    void write(); ///< any thread

    FeedbackContent content;
    QString file;      ///< where to; empty: a temporary file
    QString temporary; ///< once it is written
    QString error;     ///< why not; empty when cancelled
    bool isWritten = false;
    std::atomic<bool> isCancelled{false};

signals:
    void progressed(int percent);
    void ended();

private:
    bool writeTemporary(const QByteArray& bytes);
    bool writeChosen(const QByteArray& bytes);
};

void Zipping::write()
{
    int shown = -1;
    const auto step = [&](int percent) {
        if (!isCancelled && percent > shown)
            emit progressed(shown = percent);
        return !isCancelled;
    };
    // Half of the time goes into reading, half into packing.
    const auto files = feedbackFiles(content, [&](int percent) { return step(percent / 2); });
    if (isCancelled)
        return;
    const QByteArray bytes = zipped(
        files, [&](int percent) { return step(50 + percent / 2); }, &error);
    if (!bytes.isEmpty() && !isCancelled)
        isWritten = file.isEmpty() ? writeTemporary(bytes) : writeChosen(bytes);
}

bool Zipping::writeTemporary(const QByteArray& bytes)
{
    QTemporaryFile target(QDir::tempPath() + QLatin1String("/lumivar-feedback-XXXXXX.zip"));
    if (target.open() && target.write(bytes) == bytes.size() && target.flush()) {
        target.setAutoRemove(false);
        temporary = target.fileName();
        return true;
    }
    error = target.errorString();
    return false;
}

bool Zipping::writeChosen(const QByteArray& bytes)
{
    QSaveFile target(file);
    const bool isOpen = target.open(QIODevice::WriteOnly);
    if (isOpen)
        target.setPermissions(QFile::ReadOwner | QFile::WriteOwner); // like the temporary one: it is personal
    if (isOpen && target.write(bytes) == bytes.size() && !isCancelled && target.commit())
        return true;
    if (!isCancelled)
        error = target.errorString();
    return false;
}

} // namespace

struct FeedbackManager::Private
{
    std::shared_ptr<Zipping> prepared(const QString& file) const;
    QString finished(const std::shared_ptr<Zipping>& zipping);

    QString message;
    std::shared_ptr<Zipping> running;
    std::shared_ptr<Zipping> latest; ///< the one that wrote the temporary archive
};

/// Everything that has to be asked on the main thread.
std::shared_ptr<Zipping> FeedbackManager::Private::prepared(const QString& file) const
{
    const ConfigurationManager* config = ConfigurationManager::instance();
    const QString contact = config->appConfig(ConfigKeys::kUserContact.key).toString();
    PersonalFacts facts = personalFacts();
    facts.contacts.append(contact);
    auto zipping = std::make_shared<Zipping>();
    zipping->content = {
        message, contact, systemVersions(), config->configPath(), config->logsPath(), PersonalText(facts)};
    zipping->file = file;
    return zipping;
}

/// The path of what was written, and the log line where nothing was.
QString FeedbackManager::Private::finished(const std::shared_ptr<Zipping>& zipping)
{
    if (zipping->isWritten && !zipping->file.isEmpty())
        return zipping->file;
    if (zipping->isWritten && !zipping->isCancelled) {
        latest = zipping;
        return zipping->temporary;
    }
    if (!zipping->isCancelled)
        qWarning().noquote() << "[FeedbackManager]: cannot write the archive:" << zipping->error;
    return {};
}

FeedbackManager::FeedbackManager(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

FeedbackManager::~FeedbackManager()
{
    cancelZip();
    if (d->running)
        d->running->disconnect(this); // while it is there: the pool's thread may be the one that ends it
}

void FeedbackManager::setUserMsg(const QString& message)
{
    d->message = message;
}

void FeedbackManager::setUserContactInfo(const QString& contact)
{
    if (contact != userContactInfo())
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kUserContact.key, contact);
}

QString FeedbackManager::userContactInfo() const
{
    return ConfigurationManager::instance()
        ->appConfig(ConfigKeys::kUserContact.key)
        .toString(ConfigKeys::kUserContact.fallback);
}

QString FeedbackManager::zipFeedbackFile()
{
    const std::shared_ptr<Zipping> zipping = d->prepared({});
    zipping->write();
    return d->finished(zipping);
}

void FeedbackManager::startZip(const QString& file)
{
    if (d->running)
        return;
    d->running = d->prepared(file);
    Zipping* zipping = d->running.get();
    connect(zipping, &Zipping::progressed, this, [this](int percent) {
        if (!d->running->isCancelled)
            emit zipProgress(percent);
    });
    connect(zipping, &Zipping::ended, this, [this] {
        const std::shared_ptr<Zipping> ended = std::move(d->running);
        const QString path = d->finished(ended);
        emit zipped(path, path.isEmpty() ? ended->error : QString());
    });
    QThreadPool::globalInstance()->start([zipping = d->running] {
        zipping->write();
        emit zipping->ended();
    });
}

void FeedbackManager::cancelZip()
{
    if (d->running)
        d->running->isCancelled = true;
}

QString FeedbackManager::feedbackFile() const
{
    return d->latest ? d->latest->temporary : QString();
}

#include "FeedbackManager.moc"
