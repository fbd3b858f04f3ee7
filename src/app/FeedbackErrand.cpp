#include "app/FeedbackErrand.h"

#include "support/net/FeedbackManager.h"
#include "support/net/NetRCManager.h"
#include "ui/FeedbackProgress.h"
#include "ui/openBox.h"

#include <QDebug>
#include <QDir>
#include <QGuiApplication>
#include <QMetaEnum>

namespace {

constexpr int kPatienceMs = 1000; ///< the cursor alone tells enough for so long
constexpr int kUnknown = -1;

QString nameOf(QNetworkReply::NetworkError error)
{
    return QString::fromLatin1(QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error));
}

} // namespace

FeedbackErrand::FeedbackErrand(FeedbackManager& feedback, NetRCManager& net, QWidget& window)
    : m_feedback(feedback)
    , m_net(net)
    , m_window(window)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatienceMs);
    connect(&m_patience, &QTimer::timeout, this, &FeedbackErrand::openProgressBox);
    connect(&m_feedback, &FeedbackManager::zipProgress, this, &FeedbackErrand::showProgress);
    connect(&m_feedback, &FeedbackManager::zipped, this, &FeedbackErrand::onZipped);
    connect(&m_net, &NetRCManager::feedbackProgress, this, [this](qint64 bytes, qint64 of) {
        // Once all is sent it is the service's turn, and nobody knows how long that takes.
        showProgress(bytes < of ? static_cast<int>(bytes * 100 / of) : kUnknown);
    });
}

FeedbackErrand::~FeedbackErrand()
{
    clearScreen();
}

void FeedbackErrand::send(const QString& message, const QString& contact)
{
    start(message, contact, {});
}

void FeedbackErrand::save(const QString& message, const QString& contact, const QString& file)
{
    start(message, contact, file);
}

void FeedbackErrand::start(const QString& message, const QString& contact, const QString& file)
{
    if (m_step != Step::None) {
        qInfo() << "[FeedbackErrand]: An earlier feedback is still on its way";
        return;
    }
    m_step = Step::Gathering;
    m_file = file;
    m_isCancelled = false;
    m_percent = kUnknown;
    m_patience.start();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_isCursorShown = true;
    m_feedback.setUserMsg(message);
    m_feedback.setUserContactInfo(contact);
    m_feedback.startZip(file);
}

void FeedbackErrand::onZipped(const QString& path, const QString& error)
{
    if (m_step != Step::Gathering)
        return;
    const bool isWritten = !path.isEmpty();
    if (isWritten && m_file.isEmpty() && !m_isCancelled)
        return sendArchive();
    if (!end())
        return;
    if (isWritten) {
        qInfo().noquote() << "The report has been saved to" << path;
        return openBox(&m_window, QMessageBox::Information,
                       tr("报告已保存：") + u'\n' + QDir::toNativeSeparators(path));
    }
    qWarning() << "[FeedbackErrand]: The report could not be written:" << error;
    openBox(&m_window, QMessageBox::Critical,
            (m_file.isEmpty() ? tr("反馈失败，原因：") : tr("无法保存报告，原因：")) + u' ' + error);
}

void FeedbackErrand::sendArchive()
{
    m_step = Step::Sending;
    if (m_box)
        m_box->setStep(FeedbackProgress::Step::Sending);
    showProgress(kUnknown);
    const QPointer<FeedbackErrand> self(this);
    m_net.sendFeedback(
        &m_feedback,
        [self] {
            if (!self || !self->end())
                return;
            qInfo() << "The feedback has sent to the server";
            openBox(&self->m_window, QMessageBox::Information, tr("反馈成功"));
        },
        [self](QNetworkReply::NetworkError error) {
            if (!self || !self->end())
                return;
            qWarning() << "An error occurred while sending the feedback data to the server" << error;
            openBox(&self->m_window, QMessageBox::Critical, tr("反馈失败，原因：") + u' ' + nameOf(error));
        });
}

void FeedbackErrand::cancel()
{
    clearScreen();
    m_isCancelled = true;
    if (m_step == Step::Gathering)
        m_feedback.cancelZip();
    else if (m_step == Step::Sending)
        m_net.cancelFeedback();
}

void FeedbackErrand::showProgress(int percent)
{
    m_percent = percent;
    if (m_box)
        m_box->setProgress(percent);
}

void FeedbackErrand::openProgressBox()
{
    clearScreen();
    m_box = new FeedbackProgress(&m_window);
    m_box->setStep(m_step == Step::Sending ? FeedbackProgress::Step::Sending
                                           : FeedbackProgress::Step::Gathering);
    m_box->setProgress(m_percent);
    connect(m_box, &FeedbackProgress::cancelled, this, &FeedbackErrand::cancel);
    m_box->show();
}

void FeedbackErrand::clearScreen()
{
    m_patience.stop();
    if (std::exchange(m_isCursorShown, false))
        QGuiApplication::restoreOverrideCursor();
    if (m_box) {
        m_box->hide();
        m_box->deleteLater(); // it may be the one that calls
    }
}

bool FeedbackErrand::end()
{
    clearScreen();
    m_step = Step::None;
    if (m_isCancelled)
        qInfo() << "[FeedbackErrand]: Cancelled";
    return !m_isCancelled;
}
