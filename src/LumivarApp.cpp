#include "LumivarApp.h"

LumivarApp::LumivarApp(QObject* parent)
    : QObject(parent)
{
}

LumivarApp::~LumivarApp() = default;
