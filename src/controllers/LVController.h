#pragma once

#include "controllers/AbsRGBController.h"
#include "controllers/SerialLine.h"
#include "support/SharedLibrary.h"

#include <QDeadlineTimer>
#include <memory>

class LVSerialPort;
struct PortRelease;
class QThread;

/// A physical strip on a serial line. The controller stays on the main thread, its port gets a thread of its
/// own. Blacks the strip out when it goes.
class LUMIVAR_DEVICES_EXPORT LVController : public AbsRGBController
{
    Q_OBJECT

public:
    /// Takes the open port over. Useless, and soon to be deleted, when the system has no thread for it.
    LVController(const ControlOptions& options, LVSerialPort* serial, QObject* parent);
    /// Waits for the black-out: half a second at most.
    ~LVController() override;

    bool isUseless() const { return m_thread == nullptr; }
    /// Of the thread that drives the port; others on this computer can tell by it that one is driven.
    static QString threadName(const QString& portName) { return QStringLiteral("serial ") + portName; }

    void writeColors(const QVector<LV_RGB>& colors) override;
    void rebuildHeader() override;
    void beginRelease() override;
    void waitForRelease() override;
    void waitUntilSent(QDeadlineTimer deadline) override;

signals:
    void writeToPort(QByteArray bytes);

private slots:
    void onDevCmd1();
    void onSerialError(SerialLine::SerialPortError error, QString description);

private:
    void stopThread();

    QByteArray m_header;
    LVSerialPort* m_serial;
    QThread* m_thread = nullptr;
    std::shared_ptr<PortRelease> m_release;
    QDeadlineTimer m_releaseDeadline;
    bool m_portClosed = false;
};
