#include "OnlineServer.h"
#include "ServiceFolder.h"
#include "SigningKey.h"
#include "UnixSignals.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#include <csignal>
#include <cstdio>

namespace {

const QString kAbout = QStringLiteral(
    "A server of the online service on the loopback address; docs/online.md tells what it speaks.\n\n"
    "--folder names what it offers: version.json, advertisement.json and, below files, what these name.\n"
    "Feedback is kept below feedback there. Without it there is a sample.");

constexpr int kMostPath = 100; // of one line

void addOptions(QCommandLineParser& parser)
{
    const auto add = [&parser](const char* name, const QString& description, const char* value = "",
                               const char* fallback = "") {
        parser.addOption(QCommandLineOption(QLatin1String(name), description, QLatin1String(value),
                                            QLatin1String(fallback)));
    };
    add("port", QStringLiteral("Listen there; a free port by default."), "number", "0");
    add("folder", QStringLiteral("What the server offers."), "folder");
    add("key-file",
        QStringLiteral("The secret key, in base64; made when there is none. By default a new one each time."),
        "file");
    add("product",
        QStringLiteral("Write the settings with which the program finds this server, for LUMIVAR_PRODUCT."),
        "file");
    add("certificate", QStringLiteral("Speak TLS with this certificate, in PEM."), "file");
    add("certificate-key", QStringLiteral("Its key, in PEM."), "file");
    add("fault",
        QStringLiteral("Go wrong where the path begins so: ") + serverFaultNames().join(QStringLiteral(", ")),
        "path=name");
    add("redirect-to", QStringLiteral("Where the fault redirect leads."), "address");
    add("check", QStringLiteral("Fail unless version and advertisement were asked for."));
}

int fail(const QString& why)
{
    std::fprintf(stderr, "online-server: %s\n", qPrintable(why));
    return 2;
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Whole or not at all, because somebody may wait for it; readable for the user alone.
bool writeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(bytes) == bytes.size() && file.commit();
}

/// Uses the key that is kept there, or keeps a new one; false when that cannot be done.
bool useKey(OnlineServer& server, const QString& path)
{
    if (!QFile::exists(path)) {
        const SigningKey key;
        server.setKey(key);
        return writeFile(path, key.seed().toBase64() + '\n');
    }
    const QByteArray seed = QByteArray::fromBase64(readFile(path));
    if (seed.size() != SigningKey::kSeedBytes)
        return false;
    server.setKey(SigningKey(seed));
    return true;
}

bool useCertificate(OnlineServer& server, const QString& path, const QString& keyPath)
{
    const QSslCertificate certificate(readFile(path));
    for (const QSsl::KeyAlgorithm kind : {QSsl::Rsa, QSsl::Ec}) {
        const QSslKey key(readFile(keyPath), kind);
        if (!certificate.isNull() && !key.isNull()) {
            server.setCertificate(certificate, key);
            return true;
        }
    }
    return false;
}

bool useFault(OnlineServer& server, const QString& text)
{
    const auto fault = serverFault(text.section(u'=', -1));
    if (fault)
        server.setFault(text.section(u'=', 0, -2), *fault);
    return fault.has_value();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(kAbout);
    parser.addHelpOption();
    addOptions(parser);
    parser.process(app);
    const auto value = [&parser](const char* name) { return parser.value(QLatin1String(name)); };

    OnlineServer server;
    if (!value("key-file").isEmpty() && !useKey(server, value("key-file")))
        return fail(QStringLiteral("No key of 32 bytes, in base64, in ") + value("key-file"));
    if (!value("certificate").isEmpty() &&
        !useCertificate(server, value("certificate"), value("certificate-key")))
        return fail(
            QStringLiteral("Can't use %1 with %2").arg(value("certificate"), value("certificate-key")));
    for (const QString& fault : parser.values(QStringLiteral("fault"))) {
        if (!useFault(server, fault))
            return fail(QStringLiteral("--fault does not understand \"%1\"").arg(fault));
    }
    server.redirectTo = QUrl(value("redirect-to"));
    bool isPort = false;
    if (const quint16 port = value("port").toUShort(&isPort); !isPort || !server.listen(port))
        return fail(QStringLiteral("Can't listen on port ") + value("port"));

    const QString folder = value("folder");
    QString error;
    if (folder.isEmpty())
        serveSample(server);
    else if (!serveFolder(server, folder, &error))
        return fail(error);

    QElapsedTimer clock;
    clock.start();
    const auto say = [&clock](const QString& what) {
        std::printf("%6.1f s  service  %s\n", double(clock.elapsed()) / 1000, qPrintable(what));
        std::fflush(stdout);
    };
    QObject::connect(&server, &OnlineServer::answered, &app,
                     [&say](const QByteArray& method, const QByteArray& path, int status, qint64 bytes) {
                         say(QStringLiteral("%1 %2  %3, %4 bytes")
                                 .arg(QString::fromLatin1(method), QString::fromLatin1(path.left(kMostPath)))
                                 .arg(status)
                                 .arg(bytes));
                     });
    QObject::connect(&server, &OnlineServer::feedbackReceived, &app, [&](const QByteArray& archive) {
        const QString kept = folder.isEmpty() ? QString() : keepFeedback(folder, archive);
        say(QStringLiteral("feedback of %1 bytes, %2")
                .arg(archive.size())
                .arg(kept.isEmpty() ? QStringLiteral("not kept") : QStringLiteral("kept as ") + kept));
    });
    const UnixSignals unixSignals({SIGINT, SIGTERM, SIGHUP});
    QObject::connect(&unixSignals, &UnixSignals::received, &app, &QCoreApplication::quit);

    say(QStringLiteral("at %1, version %2")
            .arg(server.address().toString(), server.version()["version"].toString(QStringLiteral("none"))));
    const QJsonObject product{{"service", server.address().toString()},
                              {"serviceKey", QString::fromLatin1(server.publicKey().toBase64())},
                              {"supportMail", "support@lumivar.example"},
                              {"webSite", "lumivar.example"}};
    if (!value("product").isEmpty() && !writeFile(value("product"), QJsonDocument(product).toJson()))
        return fail(QStringLiteral("Can't write ") + value("product"));
    QCoreApplication::exec();

    const bool wasAsked = server.requestCount(QStringLiteral("/app/version")) > 0 &&
                          server.requestCount(QStringLiteral("/app/get_advertisement_info.php")) > 0;
    if (!parser.isSet(QStringLiteral("check")) || wasAsked)
        return 0;
    say(QStringLiteral("nobody asked for both version and advertisement"));
    return 1;
}
