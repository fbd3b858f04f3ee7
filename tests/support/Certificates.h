#pragma once

#include <QDebug>
#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTemporaryDir>

/// Certificates of the test's own, made by the openssl program: an authority that nobody knows, and what it
/// has signed for this machine and for another host. They hold for a day.
class Certificates
{
public:
    struct Pair
    {
        QSslCertificate certificate;
        QSslKey key;
    };

    Pair authority;
    Pair local;   ///< for 127.0.0.1, ::1 and localhost
    Pair another; ///< for another.example

    /// False, with the reason told, when the openssl program is absent or fails, or the toolkit has no TLS.
    bool make()
    {
        if (!QSslSocket::supportsSsl())
            qWarning() << "No TLS; the toolkit was built with" << QSslSocket::sslLibraryBuildVersionString();
        return QSslSocket::supportsSsl() &&
               makePair("authority", "basicConstraints=critical,CA:TRUE\nkeyUsage=critical,keyCertSign\n",
                        authority) &&
               makePair("local", "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:::1\n", local) &&
               makePair("another", "subjectAltName=DNS:another.example\n", another);
    }

private:
    /// Signed by the authority, or by itself where it is that.
    bool makePair(const QString& name, const QByteArray& extensions, Pair& pair)
    {
        QFile settings(file(name + ".ext")), key(file(name + ".key"));
        if (!settings.open(QIODevice::WriteOnly) || settings.write(extensions) < 0 || !settings.flush() ||
            !openssl({"req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                      "-keyout", key.fileName(), "-out", file(name + ".csr"), "-subj", "/CN=Test " + name}))
            return false;
        QStringList sign{"x509", "-req", "-days", "1", "-extfile", settings.fileName()};
        sign += {"-in", file(name + ".csr"), "-out", file(name + ".pem")};
        if (name == "authority")
            sign += {"-signkey", key.fileName()};
        else
            sign += {"-CA", file("authority.pem"), "-CAkey", file("authority.key"), "-CAcreateserial"};
        if (!openssl(sign) || !key.open(QIODevice::ReadOnly))
            return false;
        pair = {QSslCertificate::fromPath(file(name + ".pem")).value(0), QSslKey(key.readAll(), QSsl::Ec)};
        return !pair.certificate.isNull() && !pair.key.isNull();
    }

    static bool openssl(const QStringList& arguments)
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start("openssl", arguments);
        const bool isDone = program.waitForFinished(60000) && program.exitStatus() == QProcess::NormalExit &&
                            program.exitCode() == 0;
        if (!isDone)
            qWarning() << "openssl" << arguments << "failed:" << program.errorString() << program.readAll();
        return isDone;
    }

    QString file(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};
