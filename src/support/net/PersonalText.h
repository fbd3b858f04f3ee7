#pragma once

#include <QHash>
#include <QJsonValue>
#include <QRegularExpression>
#include <QStringList>

/// What tells who uses this machine. Every list may hold variants of the same thing.
struct PersonalFacts
{
    QStringList users; ///< login and real name
    QStringList hosts; ///< also with the domain
    QStringList homes; ///< absolute paths
    QStringList contacts;
    QStringList machineIds;
};

/// Those of this user on this machine; the contact is not among them. Main thread.
PersonalFacts personalFacts();

/// Takes such facts out of texts, and with them all mail and hardware addresses, and what follows the log's
/// word on the contact. Whole words only, whatever their case; names that everybody has (root, localhost, the
/// system's own) and single characters stay. Any thread.
class PersonalText
{
public:
    explicit PersonalText(const PersonalFacts& facts = {});

    QString removedFrom(QString text) const;
    /// From all texts inside, keys as well; numbers, truth values and the shape stay.
    QJsonValue removedFrom(const QJsonValue& value) const;

private:
    void addWords(const QStringList& words, const QString& replacement);
    void addHome(const QString& path);
    void addNeedle(const QString& needle, const QString& replacement);

    QHash<QString, QString> m_replacements; // by what is looked for, in lower case
    QRegularExpression m_pattern;
};
