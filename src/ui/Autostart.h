#pragma once

#include <QString>

/// The start of this program together with the user's session, with the option "--auto_startup". Main thread.
namespace Autostart {

/// Whether the session starts exactly this file with exactly this option. An entry of another copy of the
/// program, or one that was switched off, does not count.
bool isEnabled();
/// Replaces whatever entry there is, or removes it. A failure is logged; isEnabled() tells how it ended.
void setEnabled(bool isEnabled);

/// The command of the registry's Run key: the quoted file with backslashes, a blank, the option.
QString registryCommand(const QString& programFile);
/// Whether the user has switched the registry's entry off in the system's own list. `approval` is what stands
/// beside it there, binary data as settings read it.
bool isDisapproved(const QString& approval);

/// The value of the key Exec for the program, quoted by the rules of desktop entries.
QString desktopExec(const QString& programFile);
/// The whole desktop entry.
QByteArray desktopEntry(const QString& programFile);
/// Whether an entry starts this file with this option and has not been switched off by the desktop.
bool isStartedBy(const QByteArray& desktopEntry, const QString& programFile);

} // namespace Autostart
