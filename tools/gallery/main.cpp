// Renders every page, option widget and dialog of the program to PNG files, so that anyone can look at the
// whole interface in one go. Touches no settings and needs no display.
#include "Gallery.h"
#include "PageCheck.h"
#include "effects/ColorStrapManager.h"
#include "strapPicture.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/Languagemanager.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMenu>
#include <QTemporaryDir>
#include <cstdio>

namespace {

/// The value that follows an option; the scale has to be known before there is an application object.
QByteArray argumentAfter(int argc, char** argv, const char* option)
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], option) == 0)
            return argv[i + 1];
    }
    return {};
}

QStringList catalogues()
{
    QStringList codes;
    for (const QString& file : QDir(QStringLiteral(":/languages")).entryList({QStringLiteral("*.qm")}))
        codes << file.section(u'_', 1).section(u'.', 0, 0);
    return codes;
}

QSize toSize(const QString& text)
{
    return {text.section(u'x', 0, 0).toInt(), text.section(u'x', 1).toInt()};
}

/// A menu, or what a combo box drops down: there the keys are the toolkit's own.
bool isMenu(const QWidget& page)
{
    return qobject_cast<const QMenu*>(&page) || page.inherits("QComboBoxPrivateContainer");
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(name, home.path().toLocal8Bit());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QByteArray scale = argumentAfter(argc, argv, "--scale");
    if (!scale.isEmpty())
        qputenv("QT_SCALE_FACTOR", scale);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Lumivar"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.1.261121"));
    QApplication::setFont(QFont(QStringLiteral("Arial")));

    QCommandLineParser parser;
    parser.addOptions({{"language", "Code of a language, or all (the default)", "code", "all"},
                       {"scale", "Scale factor of the display", "factor", "1"},
                       {"size", "Size of the window in logical pixels", "size", "1100x720"},
                       {"out", "Folder of the pictures", "folder", "gallery"},
                       {"check", "Writes no pictures, but what a user would stumble over"},
                       {"list", "Writes no pictures, but what the pages consist of"}});
    parser.addHelpOption();
    parser.process(app);
    const QDir folder(QDir::current().absoluteFilePath(parser.value("out")));
    QDir::setCurrent(QCoreApplication::applicationDirPath());

    // So that every option widget has its page; kept nowhere, as the home folder is a temporary one.
    ConfigurationManager::instance()->setAppConfig(ConfigKeys::kScreenSyncAdvancedMode.key, true);
    int total = 0;
    int faults = 0;
    bool isFirstOfDirection = false;
    QString language;
    const bool isCheck = parser.isSet("check");
    const bool isListed = parser.isSet("list");
    QHash<QString, QString> seen;
    QSet<int> directions; // of which the way of the keyboard has been checked
    Gallery gallery(toSize(parser.value("size")), isCheck || isListed,
                    [&](QWidget& page, const QString& name) {
                        ++total;
                        const QString path = QStringLiteral("%1/%2").arg(language, name);
                        if (isListed) {
                            std::printf("%s: %s\n", qPrintable(name),
                                        qPrintable(PageCheck::contents(page, seen).join(u'\n')));
                        } else if (isCheck) {
                            QStringList found = PageCheck::cutOff(page);
                            if (!isMenu(page))
                                found += PageCheck::unspoken(page);
                            if (!isMenu(page) && isFirstOfDirection)
                                found += PageCheck::unreachable(page);
                            for (const QString& fault : found) {
                                std::printf("%s: %s\n", qPrintable(path), qPrintable(fault));
                                ++faults;
                            }
                        } else if (!page.grab().save(folder.filePath(path + QLatin1String(".png")))) {
                            std::fprintf(stderr, "gallery: %s could not be written\n", qPrintable(path));
                            ++faults;
                        }
                    });
    const QString wanted = parser.value("language");
    for (const QString& code : wanted == QLatin1String("all") ? catalogues() : QStringList{wanted}) {
        language = code;
        folder.mkpath(code);
        LanguageManager::instance()->switchLanguage(code);
        QCoreApplication::processEvents(); // it turns the layout as well
        isFirstOfDirection = !directions.contains(QGuiApplication::layoutDirection());
        directions.insert(QGuiApplication::layoutDirection());
        gallery.showAll();
    }
    if (isListed)
        return 0;
    if (isCheck) {
        std::printf("%d pages, %d faults\n", total, faults);
        return faults == 0 ? 0 : 1;
    }
    ColorStrapManager straps(nullptr); // the home is empty, so these are the shipped ones
    if (!strapPicture(straps).save(folder.filePath(QStringLiteral("straps.png")))) {
        std::fputs("gallery: the picture of the colour straps could not be written\n", stderr);
        return 1;
    }
    ++total;
    std::printf("%d pictures in %s\n", total, qPrintable(folder.path()));
    return faults == 0 ? 0 : 1;
}
