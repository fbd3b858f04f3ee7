// What an entry consists of; where it stands is each system's own.
#include "ui/Autostart.h"

#include <QList>

namespace {

const QLatin1String kOption("--auto_startup");

} // namespace

QString Autostart::registryCommand(const QString& programFile)
{
    return QStringLiteral("\"%1\" %2").arg(QString(programFile).replace(u'/', u'\\'), kOption);
}

bool Autostart::isDisapproved(const QString& approval)
{
    return !approval.isEmpty() && (approval.front().unicode() & 1) != 0;
}

QString Autostart::desktopExec(const QString& programFile)
{
    QString quoted;
    for (const QChar c : programFile) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += u'\\';
        else if (c == u'%')
            quoted += u'%'; // else it would begin a field code
        quoted += c;
    }
    // The file's own escapes come on top of the quoting.
    quoted.replace(u'\\', QLatin1String("\\\\"));
    quoted.replace(u'\n', QLatin1String("\\n")).replace(u'\r', QLatin1String("\\r"));
    quoted.replace(u'\t', QLatin1String("\\t"));
    return u'"' + quoted + QLatin1String("\" ") + kOption;
}

QByteArray Autostart::desktopEntry(const QString& programFile)
{
    return "[Desktop Entry]\nType=Application\nName=Lumivar\nExec=" + desktopExec(programFile).toUtf8() +
           "\nTerminal=false\n";
}

bool Autostart::isStartedBy(const QByteArray& desktopEntry, const QString& programFile)
{
    const QByteArray exec = desktopExec(programFile).toUtf8();
    bool isInGroup = false;
    bool isStarted = false;
    for (const QByteArray& text : desktopEntry.split('\n')) {
        const QByteArray line = text.trimmed();
        if (line.startsWith('['))
            isInGroup = line == "[Desktop Entry]";
        const int sign = line.indexOf('=');
        if (!isInGroup || sign < 0)
            continue;
        const QByteArray key = line.left(sign).trimmed();
        const QByteArray value = line.mid(sign + 1).trimmed();
        if (key == "Exec")
            isStarted = value == exec;
        // How the desktops' own settings switch an entry off.
        if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false"))
            return false;
    }
    return isStarted;
}
