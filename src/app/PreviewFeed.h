#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class ControlPage;
class DeviceManager;
struct ControlOptions;

/// Has the control page show the light of its device: pulls the colours as they are sent, ten times a
/// second at most, four times where nothing changes, and never while nobody sees them. Main thread.
class PreviewFeed : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    PreviewFeed(DeviceManager& devices, ControlPage& page);

private:
    void wake();
    void pull();
    void place(const ControlOptions& options);

    /// What the places of the LEDs follow from, but for the layout of the effect.
    struct Strip
    {
        QString id;
        QString effect;
        quint32 nbLeds = 0;
        quint32 direction = 0;
        bool operator==(const Strip& other) const;
    };

    DeviceManager& m_devices;
    ControlPage& m_page;
    QTimer m_timer;
    Strip m_strip;
    bool m_isLayoutStale = true;
    int m_stillTicks = 0;
};
