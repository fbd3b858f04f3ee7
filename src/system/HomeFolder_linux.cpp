#include "system/HomeFolder.h"

#include <QByteArray>
#include <pwd.h>
#include <unistd.h>

// In the environment, because other libraries look there as well; without it Qt takes the root folder.
void provideHomeFolder()
{
    if (!qEnvironmentVariableIsEmpty("HOME"))
        return;
    if (const passwd* entry = getpwuid(getuid()))
        qputenv("HOME", QByteArray(entry->pw_dir));
}
