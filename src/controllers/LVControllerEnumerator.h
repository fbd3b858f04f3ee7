#pragma once

#include "controllers/IDeviceEnumerator.h"
#include "controllers/ProbeReply.h"
#include "controllers/SerialPortSource.h"
#include "support/SharedLibrary.h"

#include <QHash>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <functional>

class LVController;
class ProbeDialogue;

/// How long discovery takes its time, in ms; tests shorten it.
struct DiscoveryTiming
{
    int walkMs = 100;    ///< between two ports of the start-up scan
    int scanMs = 5000;   ///< between two retries of failed ports
    int arrivalMs = 500; ///< a port settles after its arrival
    int replyMs = 5000;  ///< a device begins to answer within
    int silenceMs = 30;  ///< ends an answer
    int patience = 3;    ///< how many times as long a silent device is waited for once
    int hasteMs = 500;   ///< between two scans after a sleep, when ports come back one by one
    int hastyScans = 20; ///< of them, before the usual pace
};

/// Finds the strips on serial ports: asks every port that may have one at start, when it arrives, and again
/// as long as it fails. Main thread.
class LUMIVAR_DEVICES_EXPORT LVControllerEnumerator : public IDeviceEnumerator
{
    Q_OBJECT

public:
    /// Without a source it follows the system's ports and those named in the environment.
    explicit LVControllerEnumerator(std::unique_ptr<ISerialPortSource> source = nullptr,
                                    DiscoveryTiming timing = {}, QObject* parent = nullptr);
    ~LVControllerEnumerator() override;
    void setAsleep(bool asleep) override;

    /// The ports whose verification failed and that are tried again.
    const QSet<QString>& pendingDevices() const { return m_pendingDevices; }
    /// Tries them again without waiting for the next turn, because something has changed.
    void lookAgain() { scanCH340Devices(); }

signals:
    void deviceArrival(QString deviceName);

private slots:
    void onDeviceArrival(QString deviceName);
    void scanCH340Devices();

private:
    void walkPorts();
    int questions(const QString& portName) const;
    /// A port that is being probed or driven cannot be opened a second time, which is no trouble.
    bool isOurs(const ProbeDialogue* dialogue) const;
    bool isProbed(const QString& portName, const ProbeDialogue* except = nullptr) const;
    QList<ProbeDialogue*> dialogues() const;
    void noteOpenError(const ProbeDialogue* dialogue);
    void lookForAdapters();
    PortHolder holderBefore(const QString& portName) const { return m_findings.value(portName).holder; }
    /// Tells of the port what `look` finds out in another thread, because it takes long to go through all
    /// processes; unless something else is told of it meanwhile. `then`: told, and news.
    void find(const QString& portName, const std::function<PortFinding()>& look,
              const std::function<void()>& then = {});
    void setPortless(const PortFindings& portless);
    /// False when it was so before.
    bool note(const PortFinding& finding);
    void forget(const QString& portName);
    void tellFindings();
    void makeController(const QString& portName);
    void onTimedOut(ProbeDialogue* dialogue);
    void onReply(ProbeDialogue* dialogue, const QByteArray& raw);
    void onLost(ProbeDialogue* dialogue);
    void refuse(ProbeDialogue* dialogue);
    void giveUp(ProbeDialogue* dialogue);
    /// Null when nothing can drive the port.
    LVController* adopt(ProbeDialogue* dialogue, const ProbeReply& reply);

    std::unique_ptr<ISerialPortSource> m_source;
    DiscoveryTiming m_timing;
    QSet<QString> m_pendingDevices;
    QHash<QString, int> m_silences;        ///< by port name, since it arrived
    QMap<QString, PortFinding> m_findings; ///< by port name
    QHash<QString, int> m_turns;           ///< of findings, by port name: what is found out late is not told
    QSet<QString> m_lookedInto;            ///< ports that another thread looks into
    bool m_isLookingForAdapters = false;
    PortFindings m_portless; ///< adapters that are no port
    QTimer m_scanTimer;
    bool m_isAsleep = false;
    int m_hastyScans = 0;                             ///< that are left
    QHash<QString, QPointer<LVController>> m_adopted; ///< by port name
};
