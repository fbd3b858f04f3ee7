#include "support/net/InstallerDownload.h"

#include <QDebug>
#include <QDir>
#include <limits>

namespace {

constexpr qint64 kSliceBytes = 2 * 1024 * 1024;
constexpr int kRangeNotSatisfiable = 416;

} // namespace

InstallerDownload::InstallerDownload(QNetworkAccessManager& network, InstallerInfo installer,
                                     const QString& folder, QObject* parent)
    : QObject(parent)
    , m_network(network)
    , m_installer(std::move(installer))
    , m_path(folder + u'/' + m_installer.file)
    , m_partPath(folder + u'/' + QString::fromLatin1(m_installer.sha256.toHex()) + QLatin1String(".part"))
{
}

void InstallerDownload::start()
{
    QMetaObject::invokeMethod(
        this, [this] { prepare(); }, Qt::QueuedConnection);
}

void InstallerDownload::cancel()
{
    m_isOver = true;
    m_file.close();
    if (m_transfer)
        m_transfer->cancel();
}

void InstallerDownload::prepare()
{
    if (m_isOver)
        return;
    const QString folder = QFileInfo(m_path).path();
    if (!QDir().mkpath(folder))
        return fail(Failure::Disk, QStringLiteral("cannot make ") + folder);
    removeOthers();
    openAndHash(QFileInfo::exists(m_path) ? m_path : m_partPath);
}

void InstallerDownload::removeOthers() const
{
    const QDir folder = QFileInfo(m_path).dir();
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (folder.filePath(name) != m_path && folder.filePath(name) != m_partPath &&
            !QFile::remove(folder.filePath(name)))
            qWarning() << "[InstallerDownload]: Cannot remove" << folder.filePath(name);
    }
}

void InstallerDownload::openAndHash(const QString& path)
{
    m_hash.reset();
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return fail(Failure::Disk, m_file.errorString());
    if (m_file.size() > m_installer.size)
        m_file.resize(0);
    hashSlice();
}

void InstallerDownload::hashSlice()
{
    if (m_isOver)
        return;
    const QByteArray slice = m_file.read(kSliceBytes);
    if (!slice.isEmpty()) {
        m_hash.addData(slice);
        QMetaObject::invokeMethod(
            this, [this] { hashSlice(); }, Qt::QueuedConnection);
    } else if (m_file.pos() == m_installer.size) {
        conclude();
    } else if (m_file.fileName() == m_partPath) {
        fetch();
    } else if (m_file.remove()) { // an installer that was cut later on
        openAndHash(m_partPath);
    } else {
        fail(Failure::Disk, m_file.errorString());
    }
}

void InstallerDownload::fetch()
{
    HttpRequest request;
    request.url = m_installer.url;
    request.from = m_file.pos();
    request.limits.mostBytes = std::numeric_limits<qint64>::max(); // beginBody() knows better
    m_transfer = std::make_unique<HttpTransfer>(m_network, request);
    m_transfer->setSink([this](qint64 from, qint64 size) { return beginBody(from, size); },
                        [this](const QByteArray& piece) { return takePiece(piece); });
    connect(m_transfer.get(), &HttpTransfer::finished, this, &InstallerDownload::finishFetch);
    m_transfer->start();
}

bool InstallerDownload::beginBody(qint64 from, qint64 size)
{
    if (m_isOver)
        return false;
    if (size >= 0 && from + size != m_installer.size) {
        m_refusal = Failure::Content;
        return false;
    }
    if (from == 0) {
        m_hash.reset();
        if (!m_file.resize(0) || !m_file.seek(0)) {
            m_refusal = Failure::Disk;
            return false;
        }
    }
    tellProgress();
    return true;
}

bool InstallerDownload::takePiece(const QByteArray& piece)
{
    if (m_isOver)
        return false;
    if (m_file.pos() + piece.size() > m_installer.size) {
        m_refusal = Failure::Content;
        return false;
    }
    if (m_file.write(piece) != piece.size()) {
        m_refusal = Failure::Disk;
        return false;
    }
    m_hash.addData(piece);
    tellProgress();
    return !m_isOver;
}

void InstallerDownload::finishFetch(const HttpAnswer& answer)
{
    if (m_isOver)
        return;
    if (m_refusal == Failure::Content || answer.status == kRangeNotSatisfiable)
        m_file.remove();
    if (m_refusal == Failure::Content)
        return fail(Failure::Content, QStringLiteral("it has not the size that is announced"));
    if (m_refusal)
        return fail(*m_refusal, m_file.errorString());
    if (answer.error != QNetworkReply::NoError)
        return fail(Failure::Network, answer.errorText);
    if (m_file.pos() != m_installer.size)
        return fail(Failure::Network, QStringLiteral("it ended too early"));
    conclude();
}

/// All bytes are there: it is the signed file, or it goes.
void InstallerDownload::conclude()
{
    const bool isFetched = m_transfer != nullptr;
    const bool isWhole = m_file.fileName() == m_path;
    m_file.close();
    if (m_hash.result() != m_installer.sha256) {
        qWarning() << "[InstallerDownload]: Removed, not the file that is signed:" << m_file.fileName();
        if (!m_file.remove())
            return fail(Failure::Disk, m_file.errorString());
        return isFetched ? fail(Failure::Content, QStringLiteral("wrong SHA-256")) : openAndHash(m_partPath);
    }
    if (!isWhole && !m_file.rename(m_path))
        return fail(Failure::Disk, m_file.errorString());
    m_isOver = true;
    qInfo() << "[InstallerDownload]: Downloaded" << m_path;
    emit downloaded(m_path);
}

void InstallerDownload::fail(Failure failure, const QString& reason)
{
    qWarning() << "[InstallerDownload]: Failed to download" << m_installer.url << reason;
    m_isOver = true;
    m_file.close();
    emit failed(failure);
}

/// Not at every piece: two hundred times is as often as anyone can see.
void InstallerDownload::tellProgress()
{
    const qint64 bytes = m_file.pos();
    if (m_toldBytes >= 0 && bytes - m_toldBytes < m_installer.size / 200 && bytes != m_installer.size)
        return;
    m_toldBytes = bytes;
    emit progress(bytes, m_installer.size);
}
