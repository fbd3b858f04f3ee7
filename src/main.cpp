#include "LumivarApp.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    LumivarApp lumivar(nullptr);
    return QApplication::exec();
}
