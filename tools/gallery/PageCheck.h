#pragma once

#include <QHash>
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

/// What the page consists of, a line with name, looks and state for each visible widget, without what depends
/// on fonts. Of a whole walk only what is new or other than on the page before is told: `seen` keeps it in
/// between.
QStringList contents(const QWidget& page, QHash<QString, QString>& seen);

} // namespace PageCheck
