#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/MainWindow.h"
#include "ui/QuitAskDialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

namespace {

constexpr int kStays = 7;
const QLatin1String kCloseKey(ConfigKeys::kCloseButtonAction.key);

void press(const MainWindow& window, const char* button)
{
    QTest::mouseClick(window.findChild<QAbstractButton*>(button), Qt::LeftButton);
}

QPoint middleOf(const MainWindow& window, const char* button)
{
    const auto* widget = window.findChild<QAbstractButton*>(button);
    return widget->mapTo(&window, widget->rect().center());
}

/// What the user does to the dialog that the next press opens, if it opens one.
template <typename Dialog, typename Answer>
void answerNext(Answer answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
            answer(*dialog);
    });
}

/// Whether the close button ends the event loop, with this answer to its question.
template <typename Answer>
bool quitsOnClose(const MainWindow& window, Answer answer)
{
    QObject still; // its event is not reached by a loop that ends
    QTimer::singleShot(0, &window, [&] {
        answerNext<QuitAskDialog>(answer);
        press(window, "toolButton_close");
        QMetaObject::invokeMethod(
            &still, [] { QCoreApplication::exit(kStays); }, Qt::QueuedConnection);
    });
    return QCoreApplication::exec() != kStays;
}

void drag(QWindow* window, QPoint from, QPoint distance)
{
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, from + distance);
    QTest::mouseRelease(window, Qt::LeftButton, {}, from);
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QApplication::setLayoutDirection(Qt::LeftToRight);
        ConfigurationManager::instance()->reset();
        LanguageManager::instance()->switchLanguage("zh"); // the widths of its texts are known
    }

    void titleBarTellsWhatIsOrdered()
    {
        MainWindow window;
        window.show();
        window.switchToControlPage();
        press(window, "pushButton_home");
        QVERIFY(window.isHomePage());
        QSignalSpy switches(&window, &MainWindow::allStrapOnOff);
        press(window, "pushButton_on");
        QVERIFY(QTest::qWaitForWindowActive(&window));        // shortcuts belong to the active window
        QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier); // all off
        QTRY_COMPARE(switches.count(), 2);                    // the button shows the press first
        QCOMPARE(switches, QList<QVariantList>({{true}, {false}}));
    }

    void everyButtonIsInReachOnASmallScreenInEveryLanguage()
    {
        QApplication::setFont(QFont("Arial")); // as the program does
        const QStringList files = QDir(":/languages").entryList({"*.qm"});
        QVERIFY(files.size() > 1);
        for (const QString& file : files) {
            LanguageManager::instance()->switchLanguage(file.section('_', 1).section('.', 0, 0));
            MainWindow window;
            window.showNewVersionBtn();
            window.setNotice(QString("<b>one & two</b> ").repeated(9));
            window.homePage()->setNotice(QString("<b>one & two</b> ").repeated(9));
            QMap<QString, DeviceModel> devices;
            for (int i = 0; i < 7; ++i)
                devices.insert(QString::number(i), DeviceModel());
            window.homePage()->setControllerList(devices);
            window.resize(640, 480);
            window.show();
            QCOMPARE(window.size(), QSize(640, 480));
            const auto placeOf = [&window](const QWidget* part) {
                const QRect place(part->mapTo(&window, QPoint()), part->size());
                return part->isVisible() && window.rect().contains(place) ? place : QRect();
            };
            for (const auto* button :
                 window.findChild<QWidget*>("titleBar")->findChildren<QAbstractButton*>()) {
                const QString where = file + ' ' + button->objectName();
                QVERIFY2(!placeOf(button).isEmpty(), qPrintable(where));
                QVERIFY2(button->width() >= button->minimumSizeHint().width(), qPrintable(where));
            }
            for (const auto* notice : {window.findChild<QLabel*>("noticeLabel", Qt::FindDirectChildrenOnly),
                                       window.homePage()->findChild<QLabel*>("noticeLabel")}) {
                QVERIFY(!placeOf(notice).isEmpty() && notice->textFormat() == Qt::PlainText);
                QVERIFY(notice->height() > 2 * notice->fontMetrics().height()); // is wrapped
                QTRY_VERIFY(notice->height() >= notice->heightForWidth(notice->width()));
            }
            const auto* list = window.findChild<QScrollArea*>("controllerButtonScrollArea");
            const auto* picture = window.findChild<QWidget*>("ADBox1");
            QTRY_COMPARE(list->horizontalScrollBar()->maximum(), 0); // no device beside the list
            QVERIFY(!placeOf(list).isEmpty() && !placeOf(picture).isEmpty());
            QVERIFY(!placeOf(list).intersects(placeOf(picture)));
            window.switchToControlPage();
            QVERIFY(!placeOf(window.controlPage()).isEmpty());
        }
    }

    void captionIsWhereNoButtonLeadsAnywhere()
    {
        MainWindow window;
        window.show();
        const QPoint settings = middleOf(window, "pushButton_settings");
        QCOMPARE(window.regionAt(settings), WindowRegion::None);
        window.hideUnusedButtons();
        QCOMPARE(window.regionAt(settings), WindowRegion::Caption);

        const QPoint right = middleOf(window, "toolButton_close");
        QApplication::setLayoutDirection(Qt::RightToLeft);
        QTRY_VERIFY(middleOf(window, "toolButton_close").x() < 100);
        QCOMPARE(window.regionAt(middleOf(window, "toolButton_close")), WindowRegion::None);
        QCOMPARE(window.regionAt(right), WindowRegion::Caption);
    }

    void closeButtonAsksOnce_data()
    {
        QTest::addColumn<QJsonValue>("stored");
        QTest::addColumn<QString>("answer"); // a button of the dialog, a key or the tray; empty: not asked
        QTest::addColumn<bool>("remember");
        QTest::addColumn<bool>("isQuit");
        QTest::addColumn<QJsonValue>("kept");
        const QJsonValue none;
        const QJsonValue quit("Quit the application");
        const QJsonValue hide("Minimize to the system tray");
        QTest::newRow("hide, for good") << none << "miniActBtn" << true << false << hide;
        QTest::newRow("quit, for good") << none << "exitActBtn" << true << true << quit;
        QTest::newRow("hide, this time") << none << "miniActBtn" << false << false << none;
        QTest::newRow("header") << none << "toolButton" << true << false << none;
        QTest::newRow("Escape") << none << "Escape" << true << false << none;
        QTest::newRow("the program ends meanwhile") << none << "tray" << true << true << none;
        QTest::newRow("stored quit") << quit << "" << false << true << quit;
    }
    void closeButtonAsksOnce()
    {
        QFETCH(QJsonValue, stored);
        QFETCH(QString, answer);
        QFETCH(bool, remember);
        QFETCH(bool, isQuit);
        auto* config = ConfigurationManager::instance();
        config->setAppConfig(kCloseKey, stored);
        MainWindow window;
        window.show();
        bool isAsked = false;
        const bool hasQuit = quitsOnClose(window, [&](QuitAskDialog& dialog) {
            isAsked = true;
            dialog.findChild<QCheckBox*>("rememberCbx")->setChecked(remember);
            if (auto* button = dialog.findChild<QAbstractButton*>(answer))
                button->click();
            else if (answer == "Escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                QCoreApplication::quit();
        });
        QCOMPARE(hasQuit, isQuit);
        QCOMPARE(isAsked, !answer.isEmpty());
        const bool isCancelled = answer == "toolButton" || answer == "Escape";
        QCOMPARE(window.isVisible(), isQuit || isCancelled); // it goes with the program
        QTEST(config->appConfig(kCloseKey), "kept");
    }

    void questionSpeaksOfATrayOnlyWhereThereIsOne()
    {
        MainWindow window;
        window.show();
        for (const bool hasTray : {true, false, true}) {
            window.setTrayAvailable(hasTray);
            QString offered;
            QVERIFY(!quitsOnClose(window, [&](QuitAskDialog& dialog) {
                offered = dialog.findChild<QAbstractButton*>("miniActBtn")->text();
                dialog.reject();
            }));
            QCOMPARE(offered, hasTray ? "最小化到托盘" : "最小化");
        }
    }

    void updateIsOrderedOnlyOnYes()
    {
        MainWindow window;
        window.showNewVersionBtn();
        window.show();
        QSignalSpy orders(&window, &MainWindow::requestUpdateAppVersion);
        auto* button = window.findChild<QPushButton*>("newVersionBtn");
        for (const int choice : {1, 0}) { // no, then yes
            answerNext<QMessageBox>([choice](QMessageBox& box) { box.buttons().at(choice)->click(); });
            press(window, "newVersionBtn");
            QCOMPARE(button->isVisible(), choice == 1);
        }
        QCOMPARE(orders.count(), 1);
    }

    void windowIsMovedAndResizedWithoutAWindowManager()
    {
        MainWindow window;
        QPushButton child(window.homePage());
        child.setGeometry(0, 0, 300, 300);
        QSignalSpy presses(&child, &QPushButton::pressed);
        window.setGeometry(100, 100, 900, 600);
        window.show();
        QWindow* handle = window.windowHandle();

        drag(handle, {400, 25}, {30, 40});
        QCOMPARE(window.geometry(), QRect(130, 140, 900, 600));
        drag(handle, {2, 200}, {-30, 7}); // over the child
        QCOMPARE(window.geometry(), QRect(100, 140, 930, 600));
        QCOMPARE(presses.count(), 0);
        drag(handle, {50, 200}, {30, 40});
        QCOMPARE(presses.count(), 1);
        drag(handle, middleOf(window, "pushButton_home"), {30, 40});
        drag(handle, {400, 25}, {3, 3}); // a click that shakes
        QCOMPARE(window.geometry(), QRect(100, 140, 930, 600));

        QTest::mouseMove(handle, {2, 200});
        QVERIFY(QGuiApplication::overrideCursor() &&
                QGuiApplication::overrideCursor()->shape() == Qt::SizeHorCursor);
        QTest::mouseMove(handle, {300, 300});
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void doubleClickMaximises()
    {
        MainWindow window;
        window.show();
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, {400, 25});
        QTRY_VERIFY(window.isMaximized());
        QCOMPARE(window.regionAt({window.width() - 1, 300}), WindowRegion::None);
        QCOMPARE(window.regionAt({400, 0}), WindowRegion::Caption); // up to the screen's edge
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, {400, 0});
        QTRY_VERIFY(!window.isMaximized());
        QCOMPARE(window.regionAt({400, 0}), WindowRegion::Top);
    }

    void dialogIsDraggedByItsHeaderButNotByItsCloseButton()
    {
        for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            QApplication::setLayoutDirection(direction);
            QuitAskDialog dialog;
            dialog.show();
            const QRect close = dialog.findChild<QAbstractButton*>("toolButton")->geometry();
            const auto isCaption = [&](QPoint at) {
                return BaseDialog::isCaption(at, dialog.width(), dialog.headerSize(), direction);
            };
            QVERIFY(!isCaption(close.center()));
            QVERIFY(isCaption({dialog.width() - 1 - close.center().x(), close.center().y()}));
            QVERIFY(!isCaption({dialog.width() / 2, dialog.headerSize()}));
        }
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
