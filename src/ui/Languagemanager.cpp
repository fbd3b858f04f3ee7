#include "ui/Languagemanager.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLocale>

namespace {

const QString kFallback = QStringLiteral("en"); ///< for systems that speak none of the catalogues' languages
const QLatin1String kFolder("languages");       ///< relative to the program's folder
const QLatin1String kSeparator("_");
const QLatin1String kSuffix(".qm");

QString storedChoice()
{
    return ConfigurationManager::instance()->appConfig(QLatin1String(ConfigKeys::kLanguage.key)).toString();
}

QString catalogueOf(const QString& language)
{
    return QStringLiteral(":/languages/lumivar_%1.qm").arg(language);
}

/// Exactly this one. A translator asked for "pt_BR" would take "pt".
bool hasCatalogue(const QString& language)
{
    return QFile::exists(catalogueOf(language));
}

void logMissing(const QString& language)
{
    qDebug().noquote() << "Failed to load translation file for language:" << language;
}

/// "pt" of "languages/lumivar_pt.qm".
QString languageOf(const QTranslator& translator)
{
    return QFileInfo(translator.filePath()).completeBaseName().section(kSeparator, 1);
}

/// The application's own answer to a translator may have changed the direction since `before`.
void setDirection(Qt::LayoutDirection direction, Qt::LayoutDirection before)
{
    QGuiApplication::setLayoutDirection(direction);
    // A style sheet asks for a property's value once, and rules of ours ask for the direction.
    if (direction != before)
        qApp->setStyleSheet(qApp->styleSheet());
}

} // namespace

LanguageManager* LanguageManager::instance()
{
    // Never destroyed: the last windows to go may still ask for it.
    static auto* const manager = new LanguageManager;
    return manager;
}

LanguageManager::LanguageManager(QObject* parent)
    : QObject(parent)
{
}

void LanguageManager::loadSavedLanguage(const QString& systemLocale)
{
    const QString chosen = storedChoice();
    if (!chosen.isEmpty()) {
        qInfo().noquote() << "Get saved language settings:" << chosen;
        if (show(chosen))
            return;
    }
    const QString system = systemLocale.left(systemLocale.lastIndexOf(QLatin1Char('_'))).toLower();
    if (chosen.isEmpty())
        qInfo().noquote() << "No saved language settings,OS language is" << system;
    if (!show(system))
        show(kFallback);
}

void LanguageManager::switchLanguage(const QString& language)
{
    if (!hasCatalogue(language)) {
        logMissing(language);
        return;
    }
    ConfigurationManager* config = ConfigurationManager::instance();
    const QLatin1String key(ConfigKeys::kLanguage.key);
    if (config->AppConfigJsonObj().value(key) != language) { // what ships is nobody's choice
        config->AppConfigJsonObj().insert(key, language);
        config->saveAppConfigJsonObj();
    }
    show(language);
}

bool LanguageManager::show(const QString& language)
{
    if (language == m_currentLanguage)
        return true;
    if (!hasCatalogue(language)) {
        logMissing(language);
        return false;
    }
    const Qt::LayoutDirection before = QGuiApplication::layoutDirection();
    QCoreApplication::removeTranslator(&m_translator);
    m_translator.load(catalogueOf(language));
    QCoreApplication::installTranslator(&m_translator);
    // Not before: the application itself answers a new translator by a direction of its own. The windows hear
    // of the language later, from the event loop.
    setDirection(QLocale(language).textDirection(), before);
    m_currentLanguage = language;
    emit languageChanged(language);
    qDebug().noquote() << "InstallTranslator:" << language;
    return true;
}

void LanguageManager::installENTranslator()
{
    const auto translator = QSharedPointer<QTranslator>::create();
    if (!translator->load(QStringLiteral("lumivar_en"), kFolder, kSeparator, kSuffix))
        return;
    QCoreApplication::installTranslator(translator.data());
    m_fileTranslators.append({QStringLiteral("en"), translator});
    qInfo() << "The en translator has been installed";
}

void LanguageManager::installDefaultLanguage()
{
    m_fileTranslators.clear(); // a translator that goes takes its texts off the application
    const auto translator = QSharedPointer<QTranslator>::create();
    if (!translator->load(QLocale(), QStringLiteral("lumivar"), kSeparator, kFolder, kSuffix)) {
        qInfo() << "The application could not find a system-specific translator";
        installENTranslator();
        return;
    }
    const QString language = languageOf(*translator);
    QCoreApplication::installTranslator(translator.data());
    m_fileTranslators.append({language, translator});
    qInfo().noquote() << "The" << language << "translator has been installed";
}

QStringList LanguageManager::availableLanguages() const
{
    return QDir(kFolder).entryList({QStringLiteral("lumivar_*.qm")}, QDir::Files, QDir::Name);
}
