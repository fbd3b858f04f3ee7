#include "support/net/PersonalText.h"

#include <QDir>
#include <QSysInfo>
#include <qt_windows.h>
#define SECURITY_WIN32
#include <security.h>

namespace {

QString realName()
{
    wchar_t name[256] = {};
    ULONG size = 256;
    return GetUserNameExW(NameDisplay, name, &size) ? QString::fromWCharArray(name) : QString();
}

} // namespace

PersonalFacts personalFacts()
{
    PersonalFacts facts;
    facts.users = QStringList{qEnvironmentVariable("USERNAME"), realName()};
    facts.homes = QStringList{QDir::homePath(), QDir(QDir::homePath()).canonicalPath()};
    facts.hosts = QStringList{QSysInfo::machineHostName(), qEnvironmentVariable("COMPUTERNAME")};
    facts.machineIds = QStringList{QString::fromLatin1(QSysInfo::machineUniqueId())};
    return facts;
}
