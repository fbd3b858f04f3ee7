#include "ui/HotKeyEditDialog.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/Languagemanager.h"

#include <QtTest>
#include <QtWidgets>

static QString text(const HotkeyCombine& combine)
{
    return QString("%1%2%3 %4").arg(combine.ctrl).arg(combine.alt).arg(combine.shift).arg(combine.key);
}

class TestHotkeyEditors : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { LanguageManager::instance()->switchLanguage("en"); }
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_page = new HotKeyEditWidget(m_window.get());
        m_page->setHotkeys({{"id.off", {"F10", true, true, true}},
                            {"id.next", {"Right", true, true, true}},
                            {"id.darker", {"Down", true, false, false}}});
        m_page->setDescriptions(
            {{"id.off", "全开全关切换"}, {"id.next", "切换到下一个模式"}, {"id.darker", "降低亮度"}});
        m_page->setApplyHotkey([this](const QString& id, const HotkeyCombine& combine) {
            m_applied = id + ' ' + text(combine);
            return m_isGranted;
        });
        m_table = m_page->findChild<QTableWidget*>("tableWidget");
        m_isGranted = true;
        m_window->resize(700, 400);
        m_window->show();
        QVERIFY(isActive(*m_window));
    }
    void cleanup()
    {
        m_window.reset();
        QVERIFY(!m_dialog); // goes with the page that opened it
    }

    void rowOpensByKeysAndButton()
    {
        m_table->setCurrentCell(1, 0);
        auto* button = m_page->findChild<QPushButton*>("editButton");
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2, Qt::Key_Space}) {
            QVERIFY(isActive(*m_window));
            QTest::keyClick(key == Qt::Key_Space ? static_cast<QWidget*>(button) : m_table, key);
            QVERIFY(takeDialog());
            QCOMPARE(text(m_dialog->combine()), "111 Right");
            click("quitButton");
            QTRY_VERIFY(!m_dialog);
        }
    }

    void confirmedCombinationStandsInTheTableIfItCouldBeTaken()
    {
        for (const bool granted : {false, true}) {
            m_isGranted = granted;
            QVERIFY(openEditor(1));
            press(Qt::Key_F9);
            click("shiftCBX");
            click("okButton");
            QCOMPARE(m_applied, "id.next 110 F9");
            QCOMPARE(cell(1, 1), granted ? "Ctrl+Alt+F9" : "Ctrl+Alt+Shift+Right");
        }
        QVERIFY(openEditor(1));
        QCOMPARE(text(m_dialog->combine()), "110 F9");
        press(Qt::Key_F8);
        click("cancelButton");
        QVERIFY(m_applied == "id.next 110 F9" && cell(1, 1) == "Ctrl+Alt+F9");
        // An edited key is in capitals, and shows like one that is not.
        const auto* cells = qobject_cast<QStyledItemDelegate*>(m_table->itemDelegateForColumn(1));
        for (const char* same : {"Ctrl+RIGHT", "Ctrl+Right"})
            QVERIFY(cells->displayText(same, {}).contains("Ctrl+Right"));
    }

    void onlyAValidCombinationCanBeConfirmed()
    {
        QVERIFY(openEditor(0));
        QString asked;
        m_page->setCheckHotkey([&](const QString& id, const HotkeyCombine& combine) {
            asked = id + ' ' + text(combine);
            return !combine.alt;
        });
        const auto* ok = part<QPushButton>("okButton");
        const auto* status = part<QLabel>("statusLabel");
        const QAction* mark = keyField()->actions().first();
        click("ctrlCBX");
        QCOMPARE(asked, "id.off 011 F10");
        QVERIFY(!ok->isEnabled() && mark->isVisible() && status->text().contains("Red>无效组合<"));
        QTest::keyClick(m_dialog, Qt::Key_Return);
        QVERIFY(m_dialog->isVisible());
        click("altCBX");
        QVERIFY(ok->isEnabled() && !mark->isVisible() && status->text().contains("Green>有效<"));
        click("altCBX");
        QTRY_VERIFY_WITH_TIMEOUT(!status->isVisible(), 30000);
        QVERIFY(!ok->isEnabled() && mark->isVisible()); // outlasts the words
    }

    void fieldShowsTheKeyPressedAndNothingElse()
    {
        QVERIFY(openEditor(0));
        QTRY_VERIFY(keyField()->hasFocus()); // the key can be pressed at once
        QVERIFY(!keyField()->testAttribute(Qt::WA_InputMethodEnabled));
        QSignalSpy changes(m_dialog, &HotKeyEditDialog::combineChanged);
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_F10})
            press(key);
        QKeyEvent heldDown(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x", true);
        QCoreApplication::sendEvent(keyField(), &heldDown);
        QVERIFY(changes.isEmpty());

        auto* rival = new QAction(m_dialog); // a shortcut of the program does not take the key away
        rival->setShortcut(Qt::CTRL + Qt::Key_V);
        m_dialog->addAction(rival);
        constexpr int kAll = Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier;
        const QMap<QString, int> presses{{"V", Qt::CTRL + Qt::Key_V},     {"RIGHT", kAll | Qt::Key_Right},
                                         {"TAB", Qt::CTRL + Qt::Key_Tab}, {"ESC", Qt::ALT + Qt::Key_Escape},
                                         {"RETURN", Qt::Key_Return},      {"ß", Qt::Key_ssharp}};
        for (auto each = presses.begin(); each != presses.end(); ++each) {
            const int key = each.value() & int(~Qt::KeyboardModifierMask);
            press(Qt::Key(key), Qt::KeyboardModifiers(each.value() - key));
            QCOMPARE(text(m_dialog->combine()), "111 " + each.key());
            QCOMPARE(QKeySequence(each.key())[0], key);
        }
        // Alone these two lead out of it.
        press(Qt::Key_Tab);
        QTRY_VERIFY(part<QPushButton>("cancelButton")->hasFocus());
        keyField()->setFocus();
        press(Qt::Key_Backtab, Qt::ShiftModifier);
        QTRY_VERIFY(part<QCheckBox>("shiftCBX")->hasFocus());
        keyField()->setFocus();
        press(Qt::Key_Escape);
        QTRY_VERIFY(!m_dialog);
        QCOMPARE(changes.count(), 6);
    }

    void rowThatDoesNotWorkSaysWhyUntilItDoes()
    {
        const auto* notice = m_page->findChild<QLabel*>("notAllowedNotice");
        const auto isMarked = [this](int row) { return !m_table->item(row, 1)->icon().isNull(); };
        const auto reason = [this](int row) { return m_table->item(row, 1)->toolTip(); };
        const auto spoken = [this] { return m_table->item(0, 1)->data(Qt::AccessibleTextRole).toString(); };
        m_page->setTrouble("id.off", HotkeyTrouble::Taken);
        m_page->setTrouble("id.next", HotkeyTrouble::NoSuchKey);
        QVERIFY(isMarked(0) && isMarked(1) && !isMarked(2) && !notice->isVisible());
        QVERIFY(reason(0).startsWith("Another program") && reason(1).contains("keyboard"));
        QVERIFY(spoken().startsWith(cell(0, 1)) && spoken().endsWith(reason(0)));
        QVERIFY(openEditor(0));
        for (const char* language : {"de", "en"}) {
            LanguageManager::instance()->switchLanguage(language);
            QTRY_COMPARE(cell(0, 0), QCoreApplication::translate("HotkeyDescription", "全开全关切换"));
            QTRY_COMPARE(part<QLabel>("cmdNameLabel")->text(), cell(0, 0));
            QCOMPARE(part<QPushButton>("okButton")->text(), "确认"); // in every language
            QCOMPARE(reason(0).startsWith("Ein anderes Programm"), language == QString("de"));
        }

        m_page->setTrouble("id.darker", HotkeyTrouble::NotAllowed);
        QVERIFY(notice->isVisible() && notice->text().contains("does not let programs"));
        m_page->setTrouble("id.darker", HotkeyTrouble::NotGranted);
        QVERIFY(notice->isVisible() && notice->text().contains("ask again"));
        m_page->setTrouble("id.darker", HotkeyTrouble::None);
        QVERIFY(isMarked(0) && !isMarked(2) && !notice->isVisible());
        click("okButton");
        QVERIFY(!isMarked(0) && reason(0).isEmpty() && spoken().isEmpty());
    }

private:
    QString cell(int row, int column) const { return m_table->item(row, column)->text(); }
    /// Itself and not just its parent, as a window under the pointer of a user is.
    static bool isActive(QWidget& window)
    {
        window.activateWindow();
        return QTest::qWaitFor([&window] { return window.isActiveWindow(); });
    }
    /// The editor that is open.
    bool takeDialog()
    {
        m_dialog = qobject_cast<HotKeyEditDialog*>(QApplication::activeModalWidget());
        return m_dialog && isActive(*m_dialog);
    }
    bool openEditor(int row)
    {
        const QPoint place = m_table->visualItemRect(m_table->item(row, 1)).center();
        QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {}, place);
        return takeDialog();
    }
    template <typename Part>
    Part* part(const char* name) const
    {
        return m_dialog->findChild<Part*>(name);
    }
    QLineEdit* keyField() const { return part<QLineEdit>("keyLineEdit"); }
    void press(Qt::Key key, Qt::KeyboardModifiers held = {}) { QTest::keyClick(keyField(), key, held); }
    void click(const char* button) { QTest::mouseClick(part<QAbstractButton>(button), Qt::LeftButton); }

    std::unique_ptr<QWidget> m_window;
    HotKeyEditWidget* m_page = nullptr;
    QTableWidget* m_table = nullptr;
    QPointer<HotKeyEditDialog> m_dialog;
    bool m_isGranted = true;
    QString m_applied; ///< "id combination"
};

QTEST_MAIN(TestHotkeyEditors)
#include "tst_hotkey_editors.moc"
