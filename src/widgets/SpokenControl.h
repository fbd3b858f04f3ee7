#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

/// What a self-painted control tells a screen reader, which cannot know what was painted. A widget derives
/// from this as well. Main thread.
class SpokenControl
{
public:
    virtual QAccessible::Role spokenRole() const = 0;
    /// What it stands at now, for the user.
    virtual QString spokenValue() const = 0;

protected:
    SpokenControl();
    ~SpokenControl() = default;
    /// Called after each change of the value.
    static void tellValue(QWidget* control);
};
