#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// Which ports are new since the last look.
class PortSnapshot
{
public:
    void reset(const QStringList& present) { m_known = QSet<QString>(present.begin(), present.end()); }

    /// The names that appeared; `recreated` are those whose node was made anew, which counts even when the
    /// name was there before, because a quick replug lies between two looks.
    QStringList update(const QStringList& present, const QSet<QString>& recreated)
    {
        QStringList fresh;
        for (const QString& name : present) {
            if (!m_known.contains(name) || recreated.contains(name))
                fresh.append(name);
        }
        reset(present);
        return fresh;
    }

private:
    QSet<QString> m_known;
};
