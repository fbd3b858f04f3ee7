#include "Languagemanager.h"

#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLocale>

namespace {

const QLatin1String kFolder("languages"); ///< relative to the program's folder
const QLatin1String kSeparator("_");
const QLatin1String kSuffix(".qm");

QString systemLanguage()
{
    const QString name = QLocale::system().name();
    return name.left(name.lastIndexOf(QLatin1Char('_'))).toLower();
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

void LanguageManager::loadSavedLanguage()
{
    const QJsonValue saved =
        ConfigurationManager::instance()->AppConfigJsonObj().value(QLatin1String(ConfigKeys::kLanguage.key));
    QString language;
    if (saved.isNull() || saved.isUndefined()) {
        language = systemLanguage();
        qInfo().noquote() << "No saved language settings,OS language is" << language;
    } else {
        language = saved.toString(QLatin1String(ConfigKeys::kLanguage.fallback));
        qInfo().noquote() << "Get saved language settings:" << language;
    }
    switchLanguage(language);
}

void LanguageManager::switchLanguage(const QString& language)
{
    if (language == m_currentLanguage)
        return;
    const Qt::LayoutDirection before = QGuiApplication::layoutDirection();
    QCoreApplication::removeTranslator(&m_translator);
    if (!m_translator.load(QStringLiteral(":/languages/lumivar_%1.qm").arg(language))) {
        setDirection(Qt::LeftToRight, before); // that of the source language
        qDebug().noquote() << "Failed to load translation file for language:" << language;
        return;
    }
    QCoreApplication::installTranslator(&m_translator);
    // Not before: the application itself answers a new translator by a direction of its own. The windows hear
    // of the language later, from the event loop.
    setDirection(QLocale(language).textDirection(), before);
    m_currentLanguage = language;
    ConfigurationManager* config = ConfigurationManager::instance();
    config->AppConfigJsonObj().insert(QLatin1String(ConfigKeys::kLanguage.key), language);
    config->saveAppConfigJsonObj();
    emit languageChanged(language);
    qDebug().noquote() << "InstallTranslator:" << language;
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
