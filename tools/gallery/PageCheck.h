#pragma once

#include <QStringList>

class QWidget;

/// Finds on a page that is shown what a user would stumble over. Each fault is a line with the widget's name.
namespace PageCheck {

/// Texts that have less room than they need, widgets that lie on each other or stick out of their parent.
QStringList cutOff(const QWidget& page);

/// Controls that Tab does not come to, or not in the order of reading, both ways, or that look the same with
/// the focus. The page is a window, which becomes the active one.
QStringList unreachable(QWidget& page);

/// Controls that tell a screen reader no name, no role or no value.
QStringList unspoken(const QWidget& page);

} // namespace PageCheck
