#pragma once

#include <QDBusMessage>
#include <QString>

/// The desktop's portals: one service of the session's bus, which asks the user in the program's name.
/// Nothing here waits.
namespace Portal {

inline const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString kRequest = QStringLiteral("org.freedesktop.portal.Request");
inline const QString kSession = QStringLiteral("org.freedesktop.portal.Session");

/// Tells the portal once who we are, and a new one again; before everything else that is said to it. One
/// that does not want to know, as older ones, does not matter.
void introduce();
/// A call of the portal itself.
QDBusMessage call(const QString& interface, const QString& method);
/// Ends a request or a session, which may be gone already; says nothing to a portal that is not there.
void close(const QString& interface, const QString& handle);

/// A name for a request or a session that nobody else can guess.
QString newToken();
/// Where the portal puts the request or session of that token; `kind` is "request" or "session".
QString handleOf(const QString& kind, const QString& token);

} // namespace Portal
