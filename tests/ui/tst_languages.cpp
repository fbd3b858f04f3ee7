#include "LogCapture.h"
#include "effects/EffectCatalogue.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/Languagemanager.h"
#include "ui/MainWindow.h"
#include "ui/TrayMenu.h"

#include <QApplication>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>
#include <memory>

namespace {

/// The locale is read once, before the first test. The character set stays, for the log.
const bool isSystemPortuguese =
    qunsetenv("LC_ALL") && qputenv("LC_CTYPE", "C.UTF-8") && qputenv("LANG", "pt_BR.UTF-8");

/// The finished translation of "context: source"; empty when it is not finished.
using Catalogue = QMap<QString, QString>;

Catalogue readCatalogue(const QString& path)
{
    Catalogue result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return result;
    QXmlStreamReader xml(&file);
    QString context;
    QString source;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            const bool isFinished = !xml.attributes().hasAttribute(QLatin1String("type"));
            const QString text = xml.readElementText();
            result.insert(context + QLatin1String(": ") + source, isFinished ? text : QString());
        }
    }
    return result;
}

/// What a translation may not change: placeholders, and how many lines and list items there are.
QStringList fixedParts(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("%\\d|\\n|;"));
    QStringList parts;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        parts += it.next().captured();
    parts.sort();
    return parts;
}

/// What a widget and those in it tell the user.
QStringList allTexts(const QObject& widget)
{
    QStringList texts;
    const auto children = widget.findChildren<QObject*>();
    for (const QObject* each : children) {
        for (const char* name :
             {"text", "toolTip", "accessibleName", "accessibleDescription", "placeholderText"})
            texts << each->property(name).toString();
    }
    return texts;
}

QJsonValue storedLanguage()
{
    return ConfigurationManager::instance()->appConfig(QLatin1String(ConfigKeys::kLanguage.key));
}

void store(const QJsonValue& language)
{
    ConfigurationManager::instance()->setAppConfig(QLatin1String(ConfigKeys::kLanguage.key), language);
}

QString quitText()
{
    return QCoreApplication::translate("MainWindow", "退出");
}

} // namespace

class TestLanguages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(isSystemPortuguese);
        QVERIFY(m_folder.isValid());
        const QString list = m_folder.filePath(QStringLiteral("list.ts"));
        qputenv("LUPDATE", LUPDATE);
        QProcess script;
        script.setProcessChannelMode(QProcess::ForwardedChannels);
        script.start(QStringLiteral(UPDATE_SCRIPT), {list});
        QVERIFY(script.waitForFinished(60000));
        QCOMPARE(script.exitCode(), 0);
        m_texts = readCatalogue(list).keys();
        QVERIFY(m_texts.contains(QStringLiteral("GroupInformation: 让音乐动起来！")));
        QVERIFY(m_texts.contains(QStringLiteral("EffectNames: 音乐1")));
        ConfigurationManager::instance()->reset();
    }

    void catalogueIsWhole_data()
    {
        QTest::addColumn<QString>("language");
        for (const char* language : {"ar", "de", "en", "es", "ja", "ko", "pt", "ru", "vi", "zh"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }
    void catalogueIsWhole()
    {
        QFETCH(QString, language);
        const Catalogue catalogue = readCatalogue(QStringLiteral(CATALOGUES "/lumivar_%1.ts").arg(language));
        QCOMPARE(catalogue.keys(), m_texts); // else call scripts/update-languages.sh and translate
        const bool writesHan = language == QLatin1String("zh") || language == QLatin1String("ja");
        static const QRegularExpression han(QStringLiteral("\\p{Han}"));
        for (auto it = catalogue.begin(); it != catalogue.end(); ++it) {
            const QString source = it.key().section(QLatin1String(": "), 1);
            const QString where = it.key() + " -> " + it.value();
            QVERIFY2(!it.value().isEmpty(), qPrintable(where));
            // One broken text is known as it is to those who read logs.
            QVERIFY2(fixedParts(it.value()) == fixedParts(source) ||
                         it.value() == QLatin1String("Failed to register% 1. Error:% 2"),
                     qPrintable(where));
            if (source.startsWith(QLatin1String("Alt+")))
                QVERIFY2(it.value() == source, qPrintable(where));
            if (!writesHan && source.contains(han))
                QVERIFY2(it.value() != source, qPrintable(where));
        }
    }

    void startsInTheLanguageOfTheSystemElseInEnglish()
    {
        LanguageManager* manager = LanguageManager::instance();
        const QList<QStringList> rows{
            {"pt_BR", "pt", "Sair"}, {"zh_TW", "zh", "退出"}, {"nl_NL", "en", "Exit"}, {"C", "en", "Exit"}};
        for (const QStringList& row : rows) {
            manager->loadSavedLanguage(row.at(0));
            QCOMPARE((QStringList{row.at(0), manager->currentLanguage(), quitText()}), row);
            QCOMPARE(storedLanguage(), QJsonValue(QJsonValue::Undefined)); // it is nobody's choice
        }
    }

    void userChoosesAndTheSystemFollowsOnlyWithoutAChoice()
    {
        LanguageManager* manager = LanguageManager::instance();
        MainWindow window;
        const auto localeChanges = [&window] {
            QEvent change(QEvent::LocaleChange);
            QCoreApplication::sendEvent(&window, &change);
        };
        manager->loadSavedLanguage("C");
        localeChanges();
        QCOMPARE(manager->currentLanguage(), "pt");
        manager->switchLanguage("pt"); // shows already, and is a choice from now on
        QCOMPARE(storedLanguage(), QJsonValue("pt"));
        for (const char* chosen : {"zh", "de"}) {
            manager->switchLanguage(chosen);
            localeChanges();
            QCOMPARE(manager->currentLanguage(), chosen);
            QCOMPARE(storedLanguage(), QJsonValue(chosen));
        }
        QCOMPARE(quitText(), "Beenden");
        // The catalogue of the choice is gone for a while: the choice stays.
        store("xx");
        manager->loadSavedLanguage("nl_NL");
        QCOMPARE(manager->currentLanguage(), "en");
        QCOMPARE(quitText(), "Exit");
        localeChanges();
        QCOMPARE(manager->currentLanguage(), "pt");
        QCOMPARE(storedLanguage(), QJsonValue("xx"));
        store("de");
        localeChanges();
        QCOMPARE(manager->currentLanguage(), "de");
        manager->switchLanguage("vi");
        store("de");
        manager->loadSavedLanguage("nl_NL");
        QCOMPARE(quitText(), "Beenden");
        store({});
        localeChanges();
        QCOMPARE(manager->currentLanguage(), "pt");
    }

    void arabicMirrorsAndNothingElseDoes()
    {
        QFile sheet(QStringLiteral(":/styles/default.qss"));
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
        QWidget window;
        QSlider slider(Qt::Horizontal, &window);
        slider.resize(200, 20);
        slider.setValue(50);
        const auto isFilled = [&slider](int x) {
            return slider.grab().toImage().pixelColor(x, 10).red() > 200;
        };
        QVERIFY(isFilled(50) && !isFilled(150));

        for (const char* language : {"ar", "en", "ar"}) {
            const bool isArabic = qstrcmp(language, "ar") == 0;
            LanguageManager::instance()->switchLanguage(language);
            QTRY_COMPARE(window.isRightToLeft(), isArabic);
            QTRY_VERIFY(isFilled(150) == isArabic && isFilled(50) != isArabic);
        }
    }

    void trayMenuFollowsUnseen()
    {
        TrayMenu menu(true);
        for (const char* code : {"de", "ar"}) {
            LanguageManager::instance()->switchLanguage(code);
            QTRY_COMPARE(menu.actions().last()->text(), quitText());
            QVERIFY(quitText() != "退出");
        }
    }

    void optionsThatAreOpenReadAsThoseOpenedNow()
    {
        QSet<const QMetaObject*> classes;
        for (const EffectRow& row : effectCatalogue())
            classes << row.sOptWidget.meta << row.advancedLOptWidget.meta;
        classes.remove(nullptr);
        QVERIFY(classes.size() >= 9);
        QWidget* const noParent = nullptr;
        for (const QMetaObject* meta : qAsConst(classes)) {
            LanguageManager::instance()->switchLanguage("zh");
            const auto make = [&] {
                return std::unique_ptr<QObject>(meta->newInstance(Q_ARG(QWidget*, noParent)));
            };
            const auto open = make();
            QVERIFY2(open, meta->className());
            const QStringList before = allTexts(*open);
            LanguageManager::instance()->switchLanguage("de");
            QTRY_VERIFY2(allTexts(*open) != before, meta->className());
            QCOMPARE(allTexts(*open), allTexts(*make()));
        }
    }

    void languageWithoutCatalogueChangesNothing()
    {
        LanguageManager* manager = LanguageManager::instance();
        manager->switchLanguage("ar");
        const QString text = quitText();
        QSignalSpy changes(manager, &LanguageManager::languageChanged);
        for (const char* language : {"xx", ""}) {
            LogCapture log;
            manager->switchLanguage(language);
            QVERIFY(log.contains(QString("Failed to load translation file for language: ") + language));
            QCOMPARE(quitText(), text);
            QCOMPARE(QGuiApplication::layoutDirection(), Qt::RightToLeft);
            QCOMPARE(manager->currentLanguage(), "ar");
            QCOMPARE(storedLanguage(), QJsonValue("ar"));
        }
        QCOMPARE(changes.count(), 0);
    }

    void toolkitSpeaksTheLanguageToo()
    {
        LanguageManager::instance()->switchLanguage(QStringLiteral("zh"));
        const QMessageBox box(QMessageBox::Question, QString(), QString(), QMessageBox::Cancel);
        QCOMPARE(box.button(QMessageBox::Cancel)->text(), QStringLiteral("取消"));
        QLineEdit edit;
        const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
        for (const QAction* action : menu->actions())
            QVERIFY2(action->isSeparator() || action->text().at(0).script() == QChar::Script_Han,
                     action->text().toUtf8().constData());
    }

private:
    QTemporaryDir m_folder;
    QStringList m_texts; ///< of program, forms and data: "context: source"
};

QTEST_MAIN(TestLanguages)
#include "tst_languages.moc"
