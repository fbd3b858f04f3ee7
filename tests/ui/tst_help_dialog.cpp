#include "support/config/ConfigurationManager.h"
#include "ui/HelpDialog.h"
#include "ui/Languagemanager.h"
#include "viewModels/HelpDialogViewModel.h"
#include "widgets/SliderBar.h"

#include <QtTest>
#include <QtWidgets>

class TestHelpDialog : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void takeUrl(const QUrl& url) { m_calls << url.toString(); }

private slots:
    void init()
    {
        QCoreApplication::setApplicationVersion("1.2.1");
        ConfigurationManager::instance()->reset();
        speak("zh");
        m_calls.clear();
        m_model.reset(new HelpDialogViewModel);
        m_model->isOnline = true;
        m_model->supportMail = "a@b.example";
        m_model->webSite = "b.example";
        m_model->setLatestVersion("9");
    }

    void newerVersionIsOfferedOrderedOnceAndEndedByTheMenuAlone()
    {
        m_model->setRequestUpdate([this] { m_calls << "order"; });
        m_model->setCancelUpdate([this] { m_calls << "cancel"; });
        open(0);
        for (const QString latest : {"", "1.2.1.1", "1.2", "1.3"}) {
            m_model->setLatestVersion(latest);
            const bool isNewer = latest == "1.2.1.1" || latest == "1.3";
            QVERIFY(has("updateBtn") == isNewer && has("latestVerDescLabel"));
            QCOMPARE(text("latestVerLabel"), isNewer ? latest : QString());
        }
        for (const bool isOffered : {false, true}) {
            m_model->setUpdateOffered(isOffered);
            QVERIFY(has("latestVerLabel") && has("updateBtn") == isOffered);
        }
        m_model->setDownloadPercent(42);
        speak("en");
        QCOMPARE(text("updateBtn"), "42 %");
        m_model->setDownloadPercent(0); // it has begun
        click("updateBtn");
        QVERIFY(m_calls.isEmpty());
        QApplication::activePopupWidget()->actions().constFirst()->trigger();
        QApplication::activePopupWidget()->close();
        m_model->setDownloadPercent(-1);
        QCOMPARE(text("updateBtn"), "Click Update");
        click("updateBtn");
        QCOMPARE(m_calls, QStringList({"cancel", "order"}));
    }

    void whatNobodyCanFillIsLeftOutAndTheRestFitsInEveryLanguage()
    {
        m_model->webSite.clear();
        for (const bool isOnline : {true, false}) {
            m_model->isOnline = isOnline;
            m_model->supportMail = isOnline ? "a@b.example" : "";
            open(1);
            for (const char* language : {"ar", "de"}) {
                speak(language);
                QCOMPARE(part<SliderBar>("sliderBar")->items().count(';'), isOnline ? 2 : 1);
                QVERIFY(part<SliderBar>("sliderBar")->currentIndex() == 1 && part("page_2")->isVisible());
                for (const char* row : {"latestVerLabel", "updateBtn", "usageSection", "pushButton_send"})
                    QCOMPARE(has(row), isOnline);
                QVERIFY(has("saveReportBtn") && !has("label_website"));
                m_dialog->resize(350, 350); // the rest is scrolled
                QVERIFY(m_dialog->size() == QSize(350, 350) && part("userMsgEdit")->height() >= 80);
            }
        }
    }

    void contactTakesTheKnownCharactersFourToTwentyOfThem()
    {
        m_model->setUserContactInfo("old@b.example");
        open(1);
        auto* edit = part<QLineEdit>("userContactInfoEdit");
        QCOMPARE(edit->text(), "old@b.example");
        edit->setText("a@."); // no whole one yet
        QVERIFY(!edit->hasAcceptableInput());
        edit->clear();
        for (const QChar typed :
             QStringLiteral(u"\u4E2D\u00BA\u00FE-_ aZ09@.\u00D2\u00BB\u00FD\u009B%1").arg(QString(20, 'x')))
            edit->insert(typed);
        QVERIFY(edit->hasAcceptableInput());
        QCOMPARE(m_model->userContactInfo(), QStringLiteral(u"aZ09@.\u00D2\u00BB\u00FD\u009Bxxxxxxxxxx"));
    }

    void consentIsStoredByTheUsersClickAlone()
    {
        const auto stored = [] { return ConfigurationManager::instance()->appConfig("online.reportUsage"); };
        for (const bool wanted : {true, false}) {
            const QJsonValue before = stored();
            open(0);
            QVERIFY(part<QCheckBox>("reportUsageCbx")->isChecked() != wanted && stored() == before);
            click("reportUsageCbx");
            QCOMPARE(stored(), QJsonValue(wanted));
        }
    }

    void reportIsSentOnceOrSavedWhereTheUserWants()
    {
        m_model->setSendFeedback([this](QString message, QString contact) { m_calls << message << contact; });
        m_model->setSaveReport([this](QString text, QString, QString file) { m_calls << text << file; });
        open(1);
        click("pushButton_send"); // an empty form
        QTest::keyClicks(part("userMsgEdit"), "hi");
        click("pushButton_send");
        const QTemporaryDir folder;
        for (const int result : {QDialog::Rejected, QDialog::Accepted, QDialog::Rejected}) {
            click("saveReportBtn");
            auto* files = part<QFileDialog>({});
            QVERIFY(files->directory() != QDir::current()); // the program's own
            files->selectFile(folder.filePath("r"));
            result == QDialog::Accepted ? static_cast<QDialog*>(files)->accept() : files->reject();
            QTRY_VERIFY(!part<QFileDialog>({}));
        }
        QCOMPARE(m_calls, QStringList({"hi", "", "hi", folder.filePath("r.zip")}));
        click("saveReportBtn"); // and goes with the dialog
    }

    void keysReachEverythingInOrderAndOpenTheLinks()
    {
        m_model->setUserContactInfo("abcd");
        QString walked;
        for (const char* scheme : {"mailto", "http"})
            QDesktopServices::setUrlHandler(scheme, this, "takeUrl");
        for (int page = 0; page < 3; ++page) {
            open(page);
            QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
            for (QWidget* at = nullptr; at != part("sliderBar");) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                at = QApplication::focusWidget();
                walked += at->objectName() + ' ';
                if (page == 2)
                    QTest::keyClick(at, Qt::Key_Return);
                QTest::keyClick(at, Qt::Key_Backtab, Qt::ShiftModifier);
                QVERIFY(QApplication::focusWidget() != at);
                at->setFocus();
            }
        }
        QCOMPARE(walked, "updateBtn reportUsageCbx sliderBar "
                         "userMsgEdit userContactInfoEdit saveReportBtn pushButton_send sliderBar "
                         "label_email label_website sliderBar ");
        QCOMPARE(m_calls, QStringList({"mailto:a@b.example", "http://b.example"}));
    }

private:
    static void speak(const QString& language)
    {
        LanguageManager::instance()->switchLanguage(language);
        QCoreApplication::processEvents();
    }
    void open(int page)
    {
        m_dialog = std::make_unique<HelpDialog>(m_model);
        m_dialog->show();
        part<SliderBar>("sliderBar")->moveTo(page);
    }
    template <typename Widget = QWidget>
    Widget* part(const QString& name) const
    {
        return m_dialog->findChild<Widget*>(name);
    }
    bool has(const char* name) const { return !part(name)->isHidden(); }
    QString text(const char* name) const { return part(name)->property("text").toString(); }
    void click(const char* name) const { QTest::mouseClick(part(name), Qt::LeftButton, {}, {8, 9}); }

    QStringList m_calls;
    QSharedPointer<HelpDialogViewModel> m_model;
    std::unique_ptr<HelpDialog> m_dialog;
};

QTEST_MAIN(TestHelpDialog)
#include "tst_help_dialog.moc"
