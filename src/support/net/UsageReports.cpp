#include "support/net/UsageReports.h"

#include "support/ThreadStart.h"
#include "support/crash/CrashStack.h"
#include "support/net/HttpTransfer.h"

#include <QDebug>
#include <QNetworkAccessManager>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

class UsageReports::Sender : public QObject
{
public:
    template <typename Done>
    void send(const HttpRequest& request, Done done)
    {
        if (!m_network)
            m_network = std::make_unique<QNetworkAccessManager>();
        m_transfers.push_back(std::make_unique<HttpTransfer>(*m_network, request));
        connect(m_transfers.back().get(), &HttpTransfer::finished, this, [done](const HttpAnswer& answer) {
            if (answer.error != QNetworkReply::NoError)
                qInfo() << "[NetRCManager]: The usage was not reported:" << answer.errorText;
            done();
        });
        m_transfers.back()->start();
    }

private:
    std::unique_ptr<QNetworkAccessManager> m_network;
    std::vector<std::unique_ptr<HttpTransfer>> m_transfers; ///< two in the program's whole life
};

UsageReports::UsageReports()
    : m_sender(new Sender)
{
    QObject::connect(&m_thread, &QThread::started, &m_thread, installCrashStackForThread,
                     Qt::DirectConnection);
    QObject::connect(&m_thread, &QThread::finished, m_sender, &QObject::deleteLater);
    m_thread.setObjectName(QStringLiteral("UsageReports"));
    if (startThread(m_thread))
        m_sender->moveToThread(&m_thread);
    else
        delete std::exchange(m_sender, nullptr);
}

UsageReports::~UsageReports()
{
    m_thread.quit();
    m_thread.wait();
}

void UsageReports::send(const QUrl& address, const QByteArray& body)
{
    if (!m_sender)
        return;
    HttpRequest request;
    request.url = address;
    request.contentType = "application/json";
    request.body = body;
    request.needsLength = false;
    {
        const std::lock_guard lock(m_mutex);
        ++m_underWay;
    }
    const auto done = [this] {
        const std::lock_guard lock(m_mutex);
        --m_underWay;
        m_done.notify_all();
    };
    QMetaObject::invokeMethod(m_sender, [sender = m_sender, request, done] { sender->send(request, done); });
}

void UsageReports::finish(int ms)
{
    std::unique_lock lock(m_mutex);
    m_done.wait_for(lock, std::chrono::milliseconds(ms), [this] { return m_underWay == 0; });
}
