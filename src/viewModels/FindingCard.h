#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// What keeps a device from being found, for its reader: texts in the language of the moment.
struct FindingCard
{
    /// The one thing that the program can do about it, by a button.
    enum class Access {
        None, ///< it is not about permissions, or there is nothing to press
        Offered,
        Pending ///< asked for; the button rests
    };

    QString title;
    QString advice;
    QStringList commands{}; ///< for a terminal, to copy
    Access access = Access::None;

    bool operator==(const FindingCard& other) const
    {
        return title == other.title && advice == other.advice && commands == other.commands &&
               access == other.access;
    }
};

using FindingCards = QVector<FindingCard>;
