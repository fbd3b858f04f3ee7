#include "support/config/ConfigurationManager.h"
#include "ui/FeedbackProgress.h"
#include "ui/HelpDialog.h"
#include "ui/Languagemanager.h"
#include "viewModels/HelpDialogViewModel.h"
#include "widgets/SliderBar.h"

#include <QtTest>
#include <QtWidgets>

namespace {

using Model = QSharedPointer<HelpDialogViewModel>;

void speak(const QString& language)
{
    LanguageManager::instance()->switchLanguage(language);
    QCoreApplication::processEvents();
}

Model makeModel(bool isOnline = true, const QString& mail = "a@b.example", const QString& site = "b.example")
{
    auto model = Model::create();
    model->isOnline = isOnline;
    model->supportMail = mail;
    model->webSite = site;
    return model;
}

struct OpenDialog : HelpDialog
{
    explicit OpenDialog(const Model& model)
        : HelpDialog(model)
    {
        show();
    }
    template <typename Widget = QWidget>
    Widget* part(const char* name) const
    {
        return findChild<Widget*>(name);
    }
    bool has(const char* name) const { return !part(name)->isHidden(); }
    QString text(const char* name) const { return part(name)->property("text").toString(); }
    void click(const char* name) const { QTest::mouseClick(part(name), Qt::LeftButton, {}, {8, 9}); }
    void turnTo(int page) const { part<SliderBar>("sliderBar")->moveTo(page); }
};

} // namespace

class TestHelpDialog : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void takeUrl(const QUrl& url) { m_opened << url.toString(); }

private slots:
    void init()
    {
        QCoreApplication::setApplicationVersion("1.2.1");
        ConfigurationManager::instance()->reset();
        speak("zh");
    }

    void newerVersionIsOfferedOrderedOnceAndShownWhileItComes()
    {
        const Model model = makeModel();
        int orders = 0;
        model->setRequestUpdate([&] { ++orders; });
        const OpenDialog dialog(model);
        for (const QString latest : {"", "1.2.1.1", "1.2", "1.3"}) {
            model->setLatestVersion(latest);
            const bool isNewer = latest == "1.2.1.1" || latest == "1.3";
            QVERIFY(dialog.has("updateBtn") == isNewer && dialog.has("latestVerDescLabel"));
            QCOMPARE(dialog.text("latestVerDescLabel"), isNewer ? "最新版本号：" : "已是最新版本");
            QCOMPARE(dialog.text("latestVerLabel"), isNewer ? latest : QString());
        }
        for (const int percent : {42, -1}) {
            model->setDownloadPercent(percent);
            speak(percent < 0 ? "zh" : "en");
            QCOMPARE(dialog.text("updateBtn"), percent < 0 ? "点击更新" : "42 %");
            dialog.click("updateBtn");
        }
        QCOMPARE(orders, 1);
    }

    void whatNobodyCanFillIsLeftOutInEveryLanguage()
    {
        for (const bool isOnline : {true, false}) {
            const Model model = makeModel(isOnline, isOnline ? "a@b.example" : "", {});
            model->setLatestVersion("9");
            const OpenDialog dialog(model);
            dialog.turnTo(1);
            for (const char* language : {"ar", "en"}) {
                speak(language);
                const auto* bar = dialog.part<SliderBar>("sliderBar");
                QCOMPARE(bar->items().count(';'), isOnline ? 2 : 1);
                QVERIFY(bar->currentIndex() == 1 && dialog.part("page_2")->isVisible());
                for (const char* row :
                     {"latestVerDescLabel", "latestVerLabel", "updateBtn", "usageSection", "pushButton_send"})
                    QCOMPARE(dialog.has(row), isOnline);
                QVERIFY(dialog.has("saveReportBtn") && !dialog.has("label_website"));
            }
        }
    }

    void contactTakesTheKnownCharactersFourToTwentyOfThem()
    {
        const Model model = makeModel();
        model->setUserContactInfo("old@b.example");
        const OpenDialog dialog(model);
        auto* edit = dialog.part<QLineEdit>("userContactInfoEdit");
        QCOMPARE(edit->text(), "old@b.example");
        edit->setText("a@."); // no whole one yet
        QVERIFY(!edit->hasAcceptableInput());
        edit->clear();
        for (const QChar typed :
             QStringLiteral(u"\u4E2D\u00BA\u00FE-_ aZ09@.\u00D2\u00BB\u00FD\u009B%1").arg(QString(20, 'x')))
            edit->insert(typed);
        QVERIFY(edit->hasAcceptableInput());
        QCOMPARE(model->userContactInfo(), QStringLiteral(u"aZ09@.\u00D2\u00BB\u00FD\u009Bxxxxxxxxxx"));
    }

    void consentIsStoredByTheUsersClickAlone()
    {
        const auto stored = [] { return ConfigurationManager::instance()->appConfig("online.reportUsage"); };
        for (const bool wanted : {true, false, true}) {
            const QJsonValue before = stored();
            const OpenDialog dialog(makeModel());
            QCOMPARE(dialog.part<QCheckBox>("reportUsageCbx")->isChecked(), before.toBool());
            speak(wanted ? "de" : "zh");
            QCOMPARE(stored(), before);
            dialog.click("reportUsageCbx");
            QCOMPARE(stored(), QJsonValue(wanted));
        }
    }

    void reportIsSentOnceOrSavedWhereTheUserWants()
    {
        const Model model = makeModel();
        QStringList calls;
        model->setSendFeedback([&](QString message, QString contact) { calls << message << contact; });
        model->setSaveReport(
            [&](QString message, QString contact, QString file) { calls << message << contact << file; });
        const OpenDialog dialog(model);
        dialog.turnTo(1);
        dialog.click("pushButton_send"); // an empty form
        QTest::keyClicks(dialog.part("userMsgEdit"), "hi");
        dialog.click("pushButton_send");
        QCOMPARE(calls, QStringList({"hi", ""}));
        const QTemporaryDir folder;
        for (const QString file : {"", "r.zip"}) {
            calls.clear();
            dialog.click("saveReportBtn");
            auto* files = dialog.findChild<QFileDialog*>();
            files->selectFile(folder.filePath(file));
            file.isEmpty() ? files->reject() : static_cast<QDialog*>(files)->accept();
            QCOMPARE(calls, file.isEmpty() ? QStringList() : QStringList({"hi", "", folder.filePath(file)}));
            QTRY_VERIFY(!dialog.findChild<QFileDialog*>());
        }
        dialog.click("saveReportBtn"); // and goes with the dialog
    }

    void keysReachEverythingInOrderAndOpenTheLinks()
    {
        const Model model = makeModel();
        model->setLatestVersion("9");
        model->setUserContactInfo("abcd");
        OpenDialog dialog(model);
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const QStringList orders[]{{"updateBtn", "reportUsageCbx"},
                                   {"userMsgEdit", "userContactInfoEdit", "saveReportBtn", "pushButton_send"},
                                   {"label_email", "label_website"}};
        for (const char* scheme : {"mailto", "http"})
            QDesktopServices::setUrlHandler(scheme, this, "takeUrl");
        for (int page = 0; page < 3; ++page) {
            dialog.turnTo(page);
            dialog.part("sliderBar")->setFocus();
            for (const QString& name : orders[page]) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                QWidget* at = QApplication::focusWidget();
                QCOMPARE(at->objectName(), name);
                QVERIFY(!QAccessible::queryAccessibleInterface(at)->text(QAccessible::Name).isEmpty());
                if (page == 2)
                    QTest::keyClick(at, Qt::Key_Return);
                QTest::keyClick(at, Qt::Key_Backtab, Qt::ShiftModifier);
                QVERIFY(QApplication::focusWidget() != at);
                at->setFocus();
            }
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), dialog.part("sliderBar"));
        }
        QCOMPARE(m_opened, QStringList({"mailto:a@b.example", "http://b.example"}));
    }

    void progressIsCancelledByTheUserAlone()
    {
        FeedbackProgress box;
        const QSignalSpy cancels(&box, &FeedbackProgress::cancelled);
        box.show();
        box.setStep(FeedbackProgress::Step::Sending);
        speak("en");
        QCOMPARE(box.findChild<QLabel*>("stepLabel")->text(), "Sending the feedback...");
        box.hide();
        QCOMPARE(cancels.count(), 0);
        box.show();
        QTest::keyClick(&box, Qt::Key_Escape);
        box.show();
        box.findChild<QPushButton*>()->click();
        QVERIFY(cancels.count() == 2 && !box.isVisible());
    }

private:
    QStringList m_opened;
};

QTEST_MAIN(TestHelpDialog)
#include "tst_help_dialog.moc"
