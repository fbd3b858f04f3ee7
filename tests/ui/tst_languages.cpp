#include "LogCapture.h"
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
#include <algorithm>
#include <iterator>
#include <memory>

namespace {

/// The locale is read once, before the first test. The character set stays, for the log.
const bool isSystemPortuguese =
    qunsetenv("LC_ALL") && qputenv("LC_CTYPE", "C.UTF-8") && qputenv("LANG", "pt_BR.UTF-8");

/// Counts the language changes that reach a window.
class Window : public QWidget
{
public:
    int changes = 0;

protected:
    void changeEvent(QEvent* event) override
    {
        changes += event->type() == QEvent::LanguageChange ? 1 : 0;
        QWidget::changeEvent(event);
    }
};

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

/// The texts that are not among the others; named in the log.
QStringList lacking(const QStringList& texts, const QStringList& others)
{
    QStringList result;
    std::set_difference(texts.begin(), texts.end(), others.begin(), others.end(), std::back_inserter(result));
    if (!result.isEmpty())
        qWarning().noquote() << result.join(QLatin1Char('\n'));
    return result;
}

/// What a translation may not change: placeholders, and how many lines and list items there are.
QStringList fixedParts(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("%\\d|\\n|;"));
    QStringList parts;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        parts += it.next().captured();
    std::sort(parts.begin(), parts.end());
    return parts;
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
        QVERIFY2(lacking(m_texts, catalogue.keys()).isEmpty(),
                 "call scripts/update-languages.sh and translate");
        QVERIFY2(lacking(catalogue.keys(), m_texts).isEmpty(), "call scripts/update-languages.sh");
        const bool writesHan = language == QLatin1String("zh") || language == QLatin1String("ja");
        static const QRegularExpression han(QStringLiteral("\\p{Han}"));
        for (auto it = catalogue.begin(); it != catalogue.end(); ++it) {
            const QString source = it.key().section(QLatin1String(": "), 1);
            const QByteArray entry = it.key().toUtf8() + " -> " + it.value().toUtf8();
            const char* const where = entry.constData();
            QVERIFY2(!it.value().isEmpty(), where);
            QVERIFY2(fixedParts(it.value()) == fixedParts(source), where);
            if (source.startsWith(QLatin1String("Alt+")))
                QVERIFY2(it.value() == source, where);
            if (!writesHan && source.contains(han))
                QVERIFY2(it.value() != source, where);
        }
    }

    void startsInTheLanguageOfTheSystemElseInEnglish_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("text");
        QTest::newRow("a catalogue of the language") << "pt_BR"
                                                     << "pt"
                                                     << "Sair";
        QTest::newRow("the source language") << "zh_TW"
                                             << "zh"
                                             << "退出";
        QTest::newRow("no catalogue") << "nl_NL"
                                      << "en"
                                      << "Exit";
        QTest::newRow("C") << "C"
                           << "en"
                           << "Exit";
        QTest::newRow("POSIX") << "POSIX"
                               << "en"
                               << "Exit";
        QTest::newRow("nothing") << ""
                                 << "en"
                                 << "Exit";
    }
    void startsInTheLanguageOfTheSystemElseInEnglish()
    {
        QFETCH(QString, locale);
        LogCapture log;
        LanguageManager* manager = LanguageManager::instance();
        manager->loadSavedLanguage(locale);
        QVERIFY(log.contains("No saved language settings,OS language is"));
        QTEST(manager->currentLanguage(), "language");
        QTEST(quitText(), "text");
        QCOMPARE(storedLanguage(), QJsonValue(QJsonValue::Undefined)); // it is nobody's choice
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
        store({});
        localeChanges();
        QCOMPARE(manager->currentLanguage(), "pt");
    }

    void switchingReachesWindowsAndStore()
    {
        LanguageManager* manager = LanguageManager::instance();
        LogCapture log;
        Window window;
        QSignalSpy changes(manager, &LanguageManager::languageChanged);
        store("de");
        manager->loadSavedLanguage();
        QVERIFY(log.contains(QStringLiteral("Get saved language settings: de")));
        QTRY_COMPARE(window.changes, 1);
        QCOMPARE(quitText(), QStringLiteral("Beenden"));

        manager->switchLanguage(QStringLiteral("de"));
        manager->switchLanguage(QStringLiteral("vi"));
        QTRY_COMPARE(window.changes, 2);
        QCOMPARE(quitText(), QStringLiteral("Thoát"));
        QCOMPARE(manager->currentLanguage(), QStringLiteral("vi"));
        QCOMPARE(storedLanguage(), QJsonValue(QStringLiteral("vi")));
        QCOMPARE(changes, QList<QVariantList>({{QStringLiteral("de")}, {QStringLiteral("vi")}}));
    }

    void arabicMirrorsAndNothingElseDoes()
    {
        QFile sheet(QStringLiteral(":/styles/default.qss"));
        QVERIFY(sheet.open(QIODevice::ReadOnly));
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
        Window window;
        QSlider slider(Qt::Horizontal, &window);
        slider.resize(200, 20);
        slider.setValue(50);
        const auto isFilled = [&slider](int x) {
            return slider.grab().toImage().pixelColor(x, 10).red() > 200;
        };
        QVERIFY(isFilled(50) && !isFilled(150));

        LanguageManager* manager = LanguageManager::instance();
        for (const char* language : {"ar", "en", "ar"}) {
            const bool isArabic = qstrcmp(language, "ar") == 0;
            window.changes = 0;
            manager->switchLanguage(QLatin1String(language));
            QTRY_COMPARE(window.changes, 1);
            QCOMPARE(window.isRightToLeft(), isArabic);
            QCOMPARE(isFilled(150), isArabic);
            QCOMPARE(isFilled(50), !isArabic);
        }
    }

    void trayMenuFollowsUnseen()
    {
        TrayMenu menu(true);
        for (const char* code : {"de", "ar"}) { // the last one stays for the next case
            LanguageManager::instance()->switchLanguage(code);
            QTRY_COMPARE(menu.actions().last()->text(), quitText());
            QVERIFY(quitText() != "退出");
        }
    }

    void languageWithoutCatalogueChangesNothing()
    {
        LanguageManager* manager = LanguageManager::instance();
        manager->switchLanguage("ar");
        QSignalSpy changes(manager, &LanguageManager::languageChanged);
        for (const char* language : {"xx", "", "pt_BR"}) {
            LogCapture log;
            const QString text = quitText();
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
