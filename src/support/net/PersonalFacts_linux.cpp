#include "support/net/PersonalText.h"

#include <QDir>
#include <QSysInfo>
#include <pwd.h>
#include <unistd.h>

PersonalFacts personalFacts()
{
    PersonalFacts facts;
    facts.users = QStringList{qEnvironmentVariable("USER"), qEnvironmentVariable("LOGNAME")};
    facts.homes = QStringList{QDir::homePath()};
    if (const passwd* entry = getpwuid(getuid())) {
        facts.users << QString::fromLocal8Bit(entry->pw_name);
        // The entry goes on with room and telephone; its "&" stands for the login name.
        QString realName = QString::fromLocal8Bit(entry->pw_gecos).section(u',', 0, 0);
        facts.users << realName.replace(u'&', facts.users.constLast());
        facts.homes << QString::fromLocal8Bit(entry->pw_dir);
    }
    for (const QString& home : QStringList(facts.homes))
        facts.homes << QDir(home).canonicalPath();
    facts.hosts = QStringList{QSysInfo::machineHostName()};
    facts.machineIds = QStringList{QString::fromLatin1(QSysInfo::machineUniqueId())};
    return facts;
}
