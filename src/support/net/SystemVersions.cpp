#include "support/net/SystemVersions.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QJsonArray>
#include <QLocale>
#include <QScreen>
#include <QSslSocket>
#include <QSysInfo>
#include <QVariant>
#include <log4cplus/version.h>
#include <sodium.h>

namespace {

QJsonArray screens()
{
    QJsonArray result;
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return result;
    const auto all = QGuiApplication::screens();
    for (const QScreen* screen : all) {
        const QRect area = screen->geometry();
        result.append(QJsonObject{{"x", area.x()},
                                  {"y", area.y()},
                                  {"width", area.width()},
                                  {"height", area.height()},
                                  {"scale", screen->devicePixelRatio()},
                                  {"dotsPerInch", screen->logicalDotsPerInch()},
                                  {"refreshHz", screen->refreshRate()},
                                  {"isPrimary", screen == QGuiApplication::primaryScreen()}});
    }
    return result;
}

} // namespace

QJsonObject systemVersions()
{
    const QJsonObject libraries{{"qt", qVersion()},
                                {"qtBuiltWith", QT_VERSION_STR},
                                {"log4cplus", LOG4CPLUS_VERSION_STR},
                                {"libsodium", sodium_version_string()},
                                {"tls", QSslSocket::sslLibraryVersionString()}};
    return {{"application", QCoreApplication::applicationVersion()},
            {"commit", QCoreApplication::instance()->property("buildCommit").toString()},
            {"processor", QSysInfo::currentCpuArchitecture()},
            {"buildAbi", QSysInfo::buildAbi()},
            {"system", QSysInfo::prettyProductName()},
            {"kernel", QString(QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion())},
            {"desktop", qEnvironmentVariable("XDG_CURRENT_DESKTOP")},
            {"session", qEnvironmentVariable("XDG_SESSION_TYPE")},
            {"platform", QGuiApplication::platformName()},
            {"locale", QLocale::system().name()},
            {"screens", screens()},
            {"libraries", libraries}};
}
