#pragma once

#include <QHash>
#include <QString>
#include <cstdint>
#include <opencv2/core/mat.hpp>

struct xcb_connection_t;

/// Spares grabs of a screen that stands still, by the Damage extension. Damage slows the drawing of others
/// down, so it is asked for only once several frames were the same, and given up at the first change. As
/// some drivers fail to report, a still screen is looked at every second all the same; a change found that
/// way ends the use of Damage for this connection. Capture thread only.
class X11ChangeWatch
{
public:
    X11ChangeWatch(xcb_connection_t* connection, uint32_t drawable);

    /// Whether an event will tell when the source's last frame does not show the screen any more.
    bool tellsOfChange(const QString& id) const;
    /// Whether the source's last frame still shows the screen, after the events that have come so far.
    bool isUnchanged(const QString& id) const;
    void beforeGrab(const QString& id);
    /// `frame` is kept: it must not be written to. To be called after the events up to the grab were read.
    void afterGrab(const QString& id, const cv::Mat& frame);
    /// True for the one that tells of a change.
    bool handleEvent(int type, uint32_t sequence);
    /// Gives Damage up when nobody has grabbed for a while.
    void rest();

private:
    struct Source
    {
        cv::Mat frame;
        int sameFrames = 0;
        bool watched = false; ///< grabbed since Damage was asked for
        qint64 grabbedUs = 0;
    };

    bool isStill() const;
    void arm();
    void disarm();

    xcb_connection_t* const m_connection;
    const uint32_t m_drawable;
    int m_event = -1; ///< event code; -1 without a trustworthy extension
    uint32_t m_damage = 0;
    uint32_t m_armedSequence = 0; ///< events of earlier requests belong to the arming
    QHash<QString, Source> m_sources;
    qint64 m_lastGrabUs = 0;
};
