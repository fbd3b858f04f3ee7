#include "support/capture/X11ChangeWatch.h"

#include "support/capture/DeskCapture.h"

#include <QDebug>
#include <algorithm>
#include <cstdlib>
#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace {
constexpr int kStillFrames = 8;
constexpr qint64 kLookAnywayUs = 1000000;
constexpr qint64 kRestUs = 1500000;
} // namespace

X11ChangeWatch::X11ChangeWatch(xcb_connection_t* connection, uint32_t drawable)
    : m_connection(connection)
    , m_drawable(drawable)
{
    const auto* extension = xcb_get_extension_data(connection, &xcb_damage_id);
    if (!extension || !extension->present)
        return;
    auto* version =
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr);
    if (version)
        m_event = extension->first_event + XCB_DAMAGE_NOTIFY;
    free(version);
}

bool X11ChangeWatch::tellsOfChange(const QString& id) const
{
    const auto it = m_sources.find(id);
    return m_damage && it != m_sources.end() && it->watched;
}

bool X11ChangeWatch::isUnchanged(const QString& id) const
{
    return tellsOfChange(id) && DeskCapture::nowUs() - m_sources.constFind(id)->grabbedUs < kLookAnywayUs;
}

void X11ChangeWatch::beforeGrab(const QString& id)
{
    if (m_event >= 0 && !m_damage && m_sources.value(id).sameFrames >= kStillFrames && isStill())
        arm();
}

void X11ChangeWatch::afterGrab(const QString& id, const cv::Mat& frame)
{
    Source& source = m_sources[id];
    const bool same = DeskCapture::isSame(frame, source.frame);
    if (!same && source.watched && m_damage && frame.size() == source.frame.size()) {
        qInfo() << "[DeskDuplManager]: The display does not report all changes, every frame is grabbed";
        disarm();
        m_event = -1;
    }
    source.sameFrames = same ? source.sameFrames + 1 : 0;
    source.frame = frame;
    source.watched = m_damage != 0;
    source.grabbedUs = m_lastGrabUs = DeskCapture::nowUs();
}

bool X11ChangeWatch::handleEvent(int type, uint32_t sequence)
{
    if (!m_damage || type != m_event || int32_t(sequence - m_armedSequence) < 0)
        return false;
    disarm();
    for (Source& source : m_sources)
        source.sameFrames = 0;
    return true;
}

void X11ChangeWatch::rest()
{
    if (m_damage && DeskCapture::nowUs() - m_lastGrabUs > kRestUs)
        disarm();
}

bool X11ChangeWatch::isStill() const
{
    const qint64 now = DeskCapture::nowUs();
    return std::none_of(m_sources.begin(), m_sources.end(), [now](const Source& source) {
        return source.sameFrames < kStillFrames && now - source.grabbedUs < kLookAnywayUs;
    });
}

void X11ChangeWatch::arm()
{
    m_damage = xcb_generate_id(m_connection);
    xcb_damage_create(m_connection, m_damage, m_drawable, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    // A new damage begins with everything damaged, and reports that.
    m_armedSequence = xcb_damage_subtract(m_connection, m_damage, XCB_NONE, XCB_NONE).sequence;
}

void X11ChangeWatch::disarm()
{
    xcb_damage_destroy(m_connection, m_damage);
    xcb_flush(m_connection);
    m_damage = 0;
    for (Source& source : m_sources)
        source.watched = false;
}
