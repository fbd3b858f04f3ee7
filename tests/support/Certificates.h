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
///
///     Certificates certificates;
///     QVERIFY(certificates.make());
///     server.setCertificate(certificates.local.certificate, certificates.local.key);
///     trust(certificates.authority.certificate) // where the client should believe it
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
        if (!QSslSocket::supportsSsl()) {
            qWarning() << "The toolkit has no TLS; it was built with"
                       << QSslSocket::sslLibraryBuildVersionString();
            return false;
        }
        return makePair("authority", "basicConstraints=critical,CA:TRUE\nkeyUsage=critical,keyCertSign\n",
                        authority) &&
               makePair("local", "subjectAltName=DNS:localhost,IP:127.0.0.1,IP:::1\n", local) &&
               makePair("another", "subjectAltName=DNS:another.example\n", another);
    }

    /// The files, in PEM: authority.pem, authority.key and so on.
    QString file(const QString& name) const { return m_folder.filePath(name); }

private:
    /// Signed by the authority, or by itself where it is that.
    bool makePair(const QString& name, const QByteArray& extensions, Pair& pair)
    {
        const QString certificateFile = file(name + ".pem");
        const QString keyFile = file(name + ".key");
        if (!write(file(name + ".ext"), extensions) ||
            !openssl({"req", "-new", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
                      "-keyout", keyFile, "-out", file(name + ".csr"), "-subj", "/CN=Lumivar test " + name}))
            return false;
        QStringList sign{"x509",          "-req",  "-in", file(name + ".csr"), "-out",
                         certificateFile, "-days", "1",   "-extfile",          file(name + ".ext")};
        if (name == "authority")
            sign += {"-signkey", keyFile};
        else
            sign += {"-CA", file("authority.pem"), "-CAkey", file("authority.key"), "-CAcreateserial"};
        if (!openssl(sign))
            return false;
        QFile key(keyFile);
        pair.certificate = QSslCertificate::fromPath(certificateFile).value(0);
        pair.key = key.open(QIODevice::ReadOnly) ? QSslKey(key.readAll(), QSsl::Ec) : QSslKey();
        return !pair.certificate.isNull() && !pair.key.isNull();
    }

    static bool openssl(const QStringList& arguments)
    {
        constexpr int kMs = 60000;
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start("openssl", arguments);
        const bool isDone = program.waitForFinished(kMs) && program.exitStatus() == QProcess::NormalExit &&
                            program.exitCode() == 0;
        if (!isDone)
            qWarning() << "openssl" << arguments << "failed:" << program.errorString() << program.readAll();
        return isDone;
    }

    static bool write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }

    QTemporaryDir m_folder;
};
