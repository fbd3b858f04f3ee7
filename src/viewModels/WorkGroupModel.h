#pragma once

#include <QSharedPointer>
#include <QString>

class LineWrappedRadioButton;

/// One effect group as the control page shows it; kept by group id.
struct WorkGroupModel
{
    QString name;    ///< source text in the translation context "GroupInformation"
    QString tooltip; ///< the same context
    int order = 0;   ///< place among the groups, ascending
    QSharedPointer<LineWrappedRadioButton> button; ///< filled by the page
};
