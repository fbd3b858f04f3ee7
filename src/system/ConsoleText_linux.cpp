#include "system/ConsoleText.h"

#include <QTextCodec>
#include <QTextStream>

void printText(const QString& text)
{
    QTextStream out(stdout);
    if (!QTextCodec::codecForLocale()->canEncode(text))
        out.setCodec("UTF-8"); // better than question marks
    out << text;
}
