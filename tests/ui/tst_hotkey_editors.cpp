#include "LogCapture.h"
#include "ui/HotKeyEditDialog.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/Languagemanager.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>
#include <memory>

namespace {

const HotkeyCombine kFirst{"F10", true, true, true};

QString text(const HotkeyCombine& combine)
{
    return QString("%1%2%3 %4").arg(combine.ctrl).arg(combine.alt).arg(combine.shift).arg(combine.key);
}

void click(const QWidget& window, const char* button)
{
    QTest::mouseClick(window.findChild<QAbstractButton*>(button), Qt::LeftButton);
}

QVector<HotkeyModel> actions()
{
    return {{"id.off", kFirst},
            {"id.next", {"Right", true, true, true}},
            {"id.darker", {"Down", true, false, false}}};
}

} // namespace

class TestHotkeyEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { LanguageManager::instance()->switchLanguage("en"); }
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_page = new HotKeyEditWidget(m_window.get());
        m_page->setHotkeys(actions());
        m_page->setDescriptions(
            {{"id.off", "全开全关切换"}, {"id.next", "切换到下一个模式"}, {"id.darker", "降低亮度"}});
        m_table = m_page->findChild<QTableWidget*>("tableWidget");
        m_applied.clear();
        m_window->resize(700, 400);
        m_window->show();
        QVERIFY(isActive(*m_window));
    }
    void cleanup() { m_window.reset(); }

    void tableListsTheActionsInTheLanguageOfTheMoment()
    {
        QCOMPARE(m_table->rowCount(), 3);
        QCOMPARE(m_table->horizontalHeaderItem(1)->text(), "Shortcut");
        QCOMPARE(cell(1, 1), "Ctrl+Alt+Shift+Right");
        QCOMPARE(cell(2, 1), "Ctrl+Down");
        QCOMPARE(cell(0, 0), "Full open full concern replacement");
        QVERIFY(openEditor(0));
        for (const char* language : {"ar", "de", "en"}) {
            LanguageManager::instance()->switchLanguage(language);
            QTRY_COMPARE(cell(0, 0), QCoreApplication::translate("HotkeyDescription", "全开全关切换"));
            QTRY_COMPARE(m_dialog->findChild<QLabel*>("cmdNameLabel")->text(), cell(0, 0));
            QCOMPARE(m_dialog->findChild<QPushButton*>("okButton")->text(), "确认"); // in every language
            QCOMPARE(cell(1, 1), "Ctrl+Alt+Shift+Right");
        }
        QCOMPARE(cell(0, 0), "Full open full concern replacement");
    }

    void rowOpensByMouseKeysAndButton()
    {
        QVERIFY(openEditor(1));
        QCOMPARE(text(m_dialog->combine()), "111 Right");
        QTest::keyClick(keyField(), Qt::Key_Escape);
        QTRY_VERIFY(!m_dialog);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) {
            QVERIFY(isActive(*m_window));
            m_table->setFocus();
            QTest::keyClick(m_table, Qt::Key_Down);
            QTest::keyClick(m_table, Qt::Key_Up);
            QTest::keyClick(m_table, key);
            QVERIFY2(takeDialog(), qPrintable(QKeySequence(key).toString()));
            QCOMPARE(text(m_dialog->combine()), "111 Right");
            click(*m_dialog, "quitButton");
            QTRY_VERIFY(!m_dialog);
        }
        click(*m_page, "editButton");
        QVERIFY(takeDialog());
        QCOMPARE(text(m_dialog->combine()), "111 Right");
    }

    void confirmedCombinationStandsInTheTableIfItCouldBeTaken()
    {
        LogCapture log;
        bool isGranted = false;
        m_page->setApplyHotkey([&](const QString& id, const HotkeyCombine& combine) {
            m_applied += id + ' ' + text(combine);
            return isGranted;
        });
        for (const bool granted : {false, true}) {
            isGranted = granted;
            QVERIFY(openEditor(1));
            QTest::keyClick(keyField(), Qt::Key_F9);
            click(*m_dialog, "shiftCBX");
            click(*m_dialog, "okButton");
            QCOMPARE(m_applied.takeLast(), "id.next 110 F9");
            QCOMPARE(cell(1, 1), granted ? "Ctrl+Alt+F9" : "Ctrl+Alt+Shift+Right");
        }
        QVERIFY(openEditor(1));
        QCOMPARE(text(m_dialog->combine()), "110 F9");
        QTest::keyClick(keyField(), Qt::Key_F8);
        click(*m_dialog, "cancelButton");
        QVERIFY(m_applied.isEmpty());
        QCOMPARE(cell(1, 1), "Ctrl+Alt+F9");
        // An edited key is in capitals, and shows like one that is not.
        const auto* cells =
            qobject_cast<QStyledItemDelegate*>(m_table->itemDelegate(m_table->model()->index(0, 1)));
        for (const char* same : {"Ctrl+RIGHT", "Ctrl+Right"})
            QVERIFY(cells->displayText(same, {}).contains("Ctrl+Right"));
        QCOMPARE(log.count("Openning HotkeyEditDialog, command 切换到下一个模式"), 3);
        QCOMPARE(log.count("Accepted to apply hotkey: 切换到下一个模式"), 2);
        QCOMPARE(log.count("Cancelled to apply hotkey: 切换到下一个模式"), 1);
    }

    void listThatChangesUnderTheEditorGetsTheAnswerInTheRightRow()
    {
        m_page->setApplyHotkey([](const QString&, const HotkeyCombine&) { return true; });
        QVERIFY(openEditor(0));
        QVector<HotkeyModel> list = actions();
        std::reverse(list.begin(), list.end());
        m_page->setHotkeys(list);
        QTest::keyClick(keyField(), Qt::Key_F9);
        click(*m_dialog, "okButton");
        QCOMPARE(cell(0, 1), "Ctrl+Down");
        QCOMPARE(cell(2, 1), "Ctrl+Alt+Shift+F9");

        QVERIFY(openEditor(2));
        m_page->setHotkeys({});
        click(*m_dialog, "okButton"); // of an action that is gone
        QCOMPARE(m_table->rowCount(), 0);
        QTest::keyClick(m_table, Qt::Key_F2);
        QVERIFY(!takeDialog());
    }

    void editorGoesWithThePageThatOpenedIt()
    {
        QVERIFY(openEditor(0));
        delete m_page;
        QVERIFY(!m_dialog);
    }

    void onlyAValidCombinationCanBeConfirmed()
    {
        QVERIFY(openEditor(0));
        QTest::keyClick(keyField(), Qt::Key_F9); // nobody asked to check
        auto* ok = m_dialog->findChild<QPushButton*>("okButton");
        auto* status = m_dialog->findChild<QLabel*>("statusLabel");
        QVERIFY(ok->isEnabled() && !status->isVisible());
        QStringList asked;
        m_page->setCheckHotkey([&](const QString& id, const HotkeyCombine& combine) {
            asked += id + ' ' + text(combine);
            return !combine.alt;
        });
        auto* alt = m_dialog->findChild<QCheckBox*>("altCBX");
        const QAction* mark = keyField()->actions().first();
        QVERIFY(!mark->isVisible());

        click(*m_dialog, "ctrlCBX");
        QCOMPARE(asked.takeLast(), "id.off 011 F9");
        QVERIFY(!ok->isEnabled() && mark->isVisible() && status->text().contains("Red>无效组合<"));
        QVERIFY(!keyField()->accessibleDescription().isEmpty());
        QTest::keyClick(m_dialog, Qt::Key_Return);
        QVERIFY(m_dialog->isVisible());
        // A second answer, given while the first is still shown, has its whole time.
        QElapsedTimer shown;
        QTimer::singleShot(1500, m_dialog, [&] {
            shown.start();
            QTest::mouseClick(alt, Qt::LeftButton);
        });
        QTRY_VERIFY(shown.isValid());
        QVERIFY(ok->isEnabled() && !mark->isVisible() && status->text().contains("Green>有效<"));
        QVERIFY(keyField()->accessibleDescription().isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!status->isVisible(), 30000);
        QVERIFY(shown.elapsed() > 2500); // three seconds of a coarse timer
        // One given after the time of another is shown again, and leaves the button as it said.
        QTest::mouseClick(alt, Qt::LeftButton);
        QVERIFY(status->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!status->isVisible(), 30000);
        QVERIFY(!ok->isEnabled() && mark->isVisible());
    }

    void fieldShowsTheKeyPressedAndNothingElse()
    {
        HotKeyEditDialog dialog("降低亮度", kFirst);
        QSignalSpy changes(&dialog, &HotKeyEditDialog::combineChanged);
        dialog.show();
        QVERIFY(isActive(dialog));
        auto* field = dialog.findChild<QLineEdit*>("keyLineEdit");
        QTRY_VERIFY(field->hasFocus()); // the key can be pressed at once
        QVERIFY(!field->testAttribute(Qt::WA_InputMethodEnabled));
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_F10})
            QTest::keyClick(field, key);
        QCOMPARE(changes.count(), 0);

        QAction rival(&dialog); // a shortcut of the program does not take the key away
        rival.setShortcut(Qt::CTRL + Qt::Key_V);
        dialog.addAction(&rival);
        QSignalSpy rivals(&rival, &QAction::triggered);
        const struct
        {
            Qt::Key key;
            Qt::KeyboardModifiers held;
            const char* name;
        } presses[] = {{Qt::Key_B, Qt::NoModifier, "B"},
                       {Qt::Key_V, Qt::ControlModifier, "V"},
                       {Qt::Key_Right, Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier, "RIGHT"},
                       {Qt::Key_Tab, Qt::ControlModifier, "TAB"},
                       {Qt::Key_Escape, Qt::AltModifier, "ESC"},
                       {Qt::Key_Return, Qt::NoModifier, "RETURN"},
                       {Qt::Key_ssharp, Qt::NoModifier, "ß"},
                       {Qt::Key_Comma, Qt::NoModifier, ","}};
        for (const auto& press : presses) {
            QTest::keyClick(field, press.key, press.held);
            QCOMPARE(field->text(), QString::fromUtf8(press.name));
            QCOMPARE(QKeySequence(field->text())[0], int(press.key));
            QCOMPARE(text(dialog.combine()), "111 " + field->text());
        }
        QCOMPARE(changes.count(), 8);
        QCOMPARE(rivals.count(), 0);
        for (int i = 0; i < 50; ++i) {
            QKeyEvent held(QEvent::KeyPress, i % 2 ? Qt::Key_X : Qt::Key_Y, Qt::NoModifier, "x", true);
            QCoreApplication::sendEvent(field, &held);
        }
        QCOMPARE(changes.count(), 8);
        QVERIFY(dialog.isVisible());
    }

    void tabLeavesTheFieldAndEscapeTheDialog()
    {
        HotKeyEditDialog dialog("降低亮度", kFirst);
        dialog.show();
        QVERIFY(isActive(dialog));
        auto* field = dialog.findChild<QLineEdit*>("keyLineEdit");
        QTest::keyClick(field, Qt::Key_Tab);
        QTRY_VERIFY(dialog.findChild<QPushButton*>("cancelButton")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QTRY_VERIFY(field->hasFocus());
        QTest::keyClick(field, Qt::Key_Backtab, Qt::ShiftModifier);
        QTRY_VERIFY(dialog.findChild<QCheckBox*>("shiftCBX")->hasFocus());
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(text(dialog.combine()), "111 F10");
    }

    void rowThatDoesNotWorkSaysWhyUntilItDoes()
    {
        const auto* notice = m_page->findChild<QLabel*>("notAllowedNotice");
        const auto isMarked = [this](int row) { return !m_table->item(row, 1)->icon().isNull(); };
        const auto reason = [this](int row) { return m_table->item(row, 1)->toolTip(); };
        m_page->setTrouble("id.off", HotkeyTrouble::Taken);
        m_page->setTrouble("id.next", HotkeyTrouble::NoSuchKey);
        m_page->setTrouble("id.unknown", HotkeyTrouble::Taken);
        QVERIFY(isMarked(0) && isMarked(1) && !isMarked(2) && !notice->isVisible());
        QVERIFY(reason(0).startsWith("Another program") && reason(1).contains("keyboard"));
        for (const int column : {0, 1}) {
            const QString spoken = m_table->item(0, column)->data(Qt::AccessibleTextRole).toString();
            QVERIFY(spoken.startsWith(cell(0, column)) && spoken.endsWith(reason(0)));
        }
        LanguageManager::instance()->switchLanguage("de");
        QTRY_VERIFY(reason(0).startsWith("Ein anderes Programm"));
        LanguageManager::instance()->switchLanguage("en");

        m_page->setTrouble("id.darker", HotkeyTrouble::NotAllowed);
        QVERIFY(notice->isVisible() && !notice->text().isEmpty());
        m_page->setTrouble("id.darker", HotkeyTrouble::None);
        m_page->setTrouble("id.next", HotkeyTrouble::None);
        QVERIFY(isMarked(0) && !isMarked(1) && !isMarked(2) && !notice->isVisible());
        m_page->setApplyHotkey([](const QString&, const HotkeyCombine&) { return true; });
        QVERIFY(openEditor(0));
        click(*m_dialog, "okButton");
        QVERIFY(!isMarked(0) && reason(0).isEmpty());
        QVERIFY(m_table->item(0, 1)->data(Qt::AccessibleTextRole).isNull());
    }

    void everyOpeningOfThePageIsTold()
    {
        QSignalSpy openings(m_page, &HotKeyEditWidget::shown);
        for (int i = 1; i <= 2; ++i) {
            m_page->hide();
            m_page->show();
            QCOMPARE(openings.count(), i);
        }
    }

private:
    QString cell(int row, int column) const { return m_table->item(row, column)->text(); }
    /// Itself and not just its parent, as a window under the pointer of a user is.
    static bool isActive(QWidget& window)
    {
        window.activateWindow();
        return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
    }
    QLineEdit* keyField() const { return m_dialog->findChild<QLineEdit*>("keyLineEdit"); }
    /// The editor that is open.
    bool takeDialog()
    {
        m_dialog = qobject_cast<HotKeyEditDialog*>(QApplication::activeModalWidget());
        return m_dialog && isActive(*m_dialog);
    }
    bool openEditor(int row)
    {
        const QPoint place = m_table->visualItemRect(m_table->item(row, 1)).center();
        QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        return takeDialog();
    }

    std::unique_ptr<QWidget> m_window;
    QPointer<HotKeyEditWidget> m_page;
    QTableWidget* m_table = nullptr;
    QPointer<HotKeyEditDialog> m_dialog;
    QStringList m_applied; ///< "id combination"
};

QTEST_MAIN(TestHotkeyEditors)
#include "tst_hotkey_editors.moc"
