#include "PageCheck.h"
#include "ProgramUnderTest.h"
#include "VirtualDisplay.h"
#include "ui/ControllerConfigDialog.h"
#include "ui/FeedbackProgress.h"
#include "ui/HelpDialog.h"
#include "ui/HotKeyEditDialog.h"
#include "ui/QuitAskDialog.h"
#include "ui/SettingsDialog.h"
#include "ui/WallColorDialog.h"
#include "viewModels/HelpDialogViewModel.h"

#include <QtTest>
#include <QtWidgets>
#include <functional>
#include <memory>

class TestPages : public QObject
{
    Q_OBJECT

private slots:
    // Texts are as large at 150 as at 200 %, in units of the layout, and a little different at 100 %; on a
    // screen of 1920 by 1080 the latter leaves the least room.
    void everyPageIsWholeReachableAndSpoken_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("100 %") << QStringList{"--check", "--size", "1100x720"};
        QTest::newRow("200 %") << QStringList{"--check", "--size", "960x500", "--scale", "2"};
        // What is new or other is looked at and kept where it is meant: gallery OPTIONS >tests/ui/pages.txt
        QTest::newRow("kept") << QStringList{"--list", "--language", "zh"};
    }

    void everyPageIsWholeReachableAndSpoken()
    {
        constexpr int kPatienceMs = 140000;
        QFETCH(QStringList, options);
        VirtualDisplay display;
        const bool needsScreen = options.contains("--scale"); // the toolkit's own has 800 by 800 pixels
        QVERIFY(!needsScreen || display.start());
        QProcess gallery;
        gallery.setStandardErrorFile(QProcess::nullDevice());
        qputenv("QT_QPA_PLATFORM", needsScreen ? "xcb" : "offscreen");
        qunsetenv("LUMIVAR_DEFAULTS");
        display.startProgram(gallery, GALLERY, options);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY(gallery.waitForFinished(kPatienceMs));
        const QByteArray told = gallery.readAllStandardOutput();
        if (options.contains("--check"))
            QVERIFY2(gallery.exitCode() == 0 && told.endsWith(" 0 faults\n"), told.constData());
        const QList<QByteArray> shown = told.split('\n'),
                                kept = ProgramUnderTest::readFile(PAGES).split('\n');
        for (int line = 0; options.contains("--list") && line < qMax(shown.size(), kept.size()); ++line)
            QCOMPARE(QString::fromUtf8(shown.value(line)), QString::fromUtf8(kept.value(line)));
    }

    void theCheckFindsWhatIsWrong()
    {
        qApp->setStyleSheet(ProgramUnderTest::readFile(":/styles/default.qss"));
        QDialog page;
        page.setWindowTitle("Page");
        auto* rows = new QVBoxLayout(&page);
        auto* first = new QPushButton("First");
        auto* icon = new QPushButton;
        auto* label = new QLabel("A text that needs its room");
        icon->setAccessibleName("Icon");
        for (auto* widget : std::initializer_list<QWidget*>{first, icon, label})
            rows->addWidget(widget);
        page.show();
        const auto faults = [&page] {
            QCoreApplication::processEvents();
            return (PageCheck::cutOff(page) + PageCheck::unreachable(page) + PageCheck::unspoken(page))
                .join('\n');
        };
        QCOMPARE(faults(), QString());
        struct Flaw
        {
            const char* fault;
            std::function<void()> plant, mend;
        };
        const auto layAgain = [rows] { rows->invalidate(); };
        const QVector<Flaw> flaws{
            {"needs", [&] { label->setFixedWidth(40); }, [&] { label->setFixedWidth(400); }},
            {"lies on", [&] { icon->move(first->pos()); }, layAgain},
            {"sticks out", [&] { label->move(300, label->y()); }, layAgain},
            {"does not come to", [&] { icon->setFocusPolicy(Qt::ClickFocus); },
             [&] { icon->setFocusPolicy(Qt::StrongFocus); }},
            {"goes back", [&] { rows->insertWidget(1, first); }, [&] { rows->insertWidget(0, first); }},
            {"does not show", [&] { first->setStyleSheet("border: none;"); },
             [&] { first->setStyleSheet({}); }},
            {"no name", [&] { icon->setAccessibleName({}); }, [&] { icon->setAccessibleName("Icon"); }}};
        for (const Flaw& flaw : flaws) {
            flaw.plant();
            QVERIFY2(faults().contains(flaw.fault), flaw.fault);
            flaw.mend();
            QCOMPARE(faults(), QString());
        }
    }

    void escapeLeavesADialogAndReturnTakesItsDefault()
    {
        const auto model = QSharedPointer<HelpDialogViewModel>::create();
        constexpr int kStays = -1;
        const QVector<QPair<std::function<QDialog*()>, int>> dialogs{
            {[] { return new QuitAskDialog; }, QDialog::Accepted},
            {[] { return new ControllerConfigDialog; }, QDialog::Accepted},
            {[] { return new SettingsDialog; }, kStays}, // each change counts at once
            {[] { return new WallColorDialog; }, kStays},
            {[&model] { return new HelpDialog(model); }, kStays},
            {[] { return new HotKeyEditDialog("Name", {}); }, kStays}, // it may be the key that is wanted
            {[] { return new FeedbackProgress; }, QDialog::Rejected}};
        for (const auto& [make, onReturn] : dialogs) {
            for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
                const std::unique_ptr<QDialog> dialog(make());
                QSignalSpy finished(dialog.get(), &QDialog::finished);
                dialog->show();
                QApplication::setActiveWindow(dialog.get());
                QWidget* focus = dialog->focusWidget();
                QTest::keyClick(focus ? focus : dialog.get(), key);
                const int result = finished.isEmpty() ? kStays : finished.takeFirst().at(0).toInt();
                QVERIFY2(result == (key == Qt::Key_Escape ? QDialog::Rejected : onReturn),
                         dialog->metaObject()->className());
            }
        }
    }
};

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
