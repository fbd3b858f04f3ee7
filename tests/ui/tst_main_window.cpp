#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/HomePage.h"
#include "ui/Languagemanager.h"
#include "ui/MainWindow.h"
#include "ui/QuitAskDialog.h"

#include <QtTest>
#include <QtWidgets>

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

// Of the window of 800 by 600 with a button on its title bar, and at 1.5 pixels a unit.
constexpr QSize kWindow(800, 600);
constexpr QRect kButton(700, 0, 100, 50);

WindowRegion at(int x, int y)
{
    return windowRegionAt({x, y}, kWindow, 50, 5, {kButton});
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

        window.showNewVersionBtn();
        QSignalSpy orders(&window, &MainWindow::requestUpdateAppVersion);
        for (const int choice : {1, 0}) { // no, then yes
            press(window, "newVersionBtn");
            LanguageManager::instance()->switchLanguage("en"); // the question waits
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QCOMPARE(orders.count(), 0);
            box->buttons().at(choice)->click();
            QCOMPARE(window.findChild<QWidget*>("newVersionBtn")->isVisible(), choice == 1);
        }
        QCOMPARE(orders.count(), 1);
    }

    void downloadShowsOnItsButtonAndIsEndedByItsMenuAlone()
    {
        MainWindow window;
        window.show();
        auto* button = window.findChild<QPushButton*>("newVersionBtn");
        const QSignalSpy orders(&window, &MainWindow::requestUpdateAppVersion);
        const QSignalSpy ends(&window, &MainWindow::requestCancelDownload);
        for (const bool isOffered : {false, true}) {
            if (isOffered)
                window.showNewVersionBtn();
            window.setDownloadProgress(42);
            LanguageManager::instance()->switchLanguage(isOffered ? "ar" : "en");
            QVERIFY(button->isVisible() && button->text() == "42 %");
            const QImage picture = button->grab().toImage();
            const int y = button->height() / 2;
            const int fromEdge = button->width() / 8;
            const QColor left = picture.pixel(fromEdge, y);
            const QColor right = picture.pixel(picture.width() - fromEdge, y);
            QVERIFY(isOffered ? right.value() > left.value() : left.value() > right.value());
            press(window, "newVersionBtn");
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QCOMPARE(ends.count(), int(isOffered));
            menu->actions().constFirst()->trigger();
            menu->close();
            QCOMPARE(ends.count(), int(isOffered) + 1);
            window.setDownloadProgress(-1);
            QVERIFY(button->isVisible() == isOffered && button->text() == MainWindow::tr("new"));
        }
        QVERIFY(orders.isEmpty() && !QApplication::activeModalWidget());
    }

    void everyButtonIsInReachOnASmallScreenInEveryLanguage()
    {
        QApplication::setFont(QFont("Arial")); // as the program does
        const QStringList files = QDir(":/languages").entryList({"*.qm"});
        QVERIFY(files.size() > 1);
        for (const QString& file : files) {
            LanguageManager::instance()->switchLanguage(file.section('_', 1).section('.', 0, 0));
            MainWindow window;
            window.setDownloadProgress(100); // wider than what offers it
            window.setNotice(QString("<b>one & two</b> ").repeated(9));
            window.homePage()->setNotice(QString("<b>one & two</b> ").repeated(9));
            window.homePage()->setControllerList(
                {{"1", {}}, {"2", {}}, {"3", {}}, {"4", {}}, {"5", {}}, {"6", {}}, {"7", {}}});
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

    void captionIsWhereNoButtonLeadsAnywhereAndMaximises()
    {
        MainWindow window;
        window.show();
        const QPoint settings = middleOf(window, "pushButton_settings");
        QCOMPARE(window.regionAt(settings), WindowRegion::None);
        window.hideUnusedButtons();
        QCOMPARE(window.regionAt(settings), WindowRegion::Caption);
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, {400, 25});
        QTRY_VERIFY(window.isMaximized());
        QCOMPARE(window.regionAt({window.width() - 1, 300}), WindowRegion::None);
        QCOMPARE(window.regionAt({400, 0}), WindowRegion::Caption); // up to the screen's edge
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, {400, 0});
        QTRY_VERIFY(!window.isMaximized());
        QCOMPARE(window.regionAt({400, 0}), WindowRegion::Top);
        QTest::mouseMove(window.windowHandle(), {2, 200});
        QVERIFY(QGuiApplication::overrideCursor()); // of what a drag would resize
        QTest::mouseMove(window.windowHandle(), {300, 300});
        QVERIFY(!QGuiApplication::overrideCursor());

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
        const bool hasTray = answer != "Escape";
        window.setTrayAvailable(hasTray);
        QString offered;
        const bool hasQuit = quitsOnClose(window, [&](QuitAskDialog& dialog) {
            offered = dialog.findChild<QAbstractButton*>("miniActBtn")->text();
            dialog.findChild<QCheckBox*>("rememberCbx")->setChecked(remember);
            if (auto* button = dialog.findChild<QAbstractButton*>(answer))
                button->click();
            else if (answer == "Escape")
                QTest::keyClick(&dialog, Qt::Key_Escape);
            else
                QCoreApplication::quit();
        });
        QCOMPARE(hasQuit, isQuit);
        QCOMPARE(offered, answer.isEmpty() ? "" : hasTray ? "最小化到托盘" : "最小化");
        const bool isCancelled = answer == "toolButton" || answer == "Escape";
        QCOMPARE(window.isVisible(), isQuit || isCancelled); // it goes with the program
        QTEST(config->appConfig(kCloseKey), "kept");
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

    void everyPointHasItsRegion()
    {
        QCOMPARE(at(6, 49), WindowRegion::Caption);
        QCOMPARE(at(400, 5), WindowRegion::None); // the line between the border and the caption
        QCOMPARE(at(750, 25), WindowRegion::None);
        QCOMPARE(at(750, 4), WindowRegion::Top); // the border goes over the button
        QCOMPARE(at(4, 594), WindowRegion::Left);
        QCOMPARE(at(796, 25), WindowRegion::Right);
        QCOMPARE(at(400, 596), WindowRegion::Bottom);
        QCOMPARE(at(5, 5), WindowRegion::TopLeft);
        QCOMPARE(at(799, 5), WindowRegion::TopRight);
        QCOMPARE(at(5, 595), WindowRegion::BottomLeft);
        QCOMPARE(at(795, 595), WindowRegion::BottomRight);
    }

    void draggedEdgeStopsAtTheSmallestSize()
    {
        const QRect start(100, 200, 800, 600);
        const QSize least(500, 400);
        const auto drag = [&](WindowRegion region, int dx, int dy) {
            return draggedGeometry(start, edgesOf(region), {dx, dy}, least);
        };
        QCOMPARE(drag(WindowRegion::Caption, -30, 40), QRect(70, 240, 800, 600));
        QCOMPARE(drag(WindowRegion::Left, 9999, 0), QRect(400, 200, 500, 600)); // the right edge stays
        QCOMPARE(drag(WindowRegion::TopRight, 20, -10), QRect(100, 190, 820, 610));
        QCOMPARE(drag(WindowRegion::BottomRight, -9999, -9999), QRect(start.topLeft(), least));
    }

    void windowOpensLargeButInsideItsScreen()
    {
        const QSize wanted(1280, 880);
        QCOMPARE(openingSize(wanted, {1920, 1080}), wanted);
        QCOMPARE(openingSize(wanted, {1366, 728}), QSize(1280, 696)); // below a panel
        QCOMPARE(openingSize(wanted, {1024, 600}), QSize(992, 568));
    }

    void windowIsFittedOnlyWhenItLeavesItsScreen()
    {
        const QRect screen(1920, 0, 1366, 769);
        const QSize least(500, 400);
        QCOMPARE(fittedGeometry({1920, 0, 800, 600}, screen, least), QRect(1920, 0, 800, 600));
        const QRect fitted = fittedGeometry({1900, 0, 800, 600}, screen, least);
        QCOMPARE(fitted.size(), QSize(1092, 615)); // 1092.8 by 615.2
        QCOMPARE(fitted.center(), screen.center());
        // What cannot be 80 % keeps its own size.
        const QRect large = fittedGeometry({0, 0, 800, 600}, screen, {1200, 700});
        QCOMPARE(large.size(), QSize(1200, 700));
        // Larger than the screen: the title bar stays on it.
        QCOMPARE(fittedGeometry({0, 0, 800, 600}, screen, {1500, 800}).topLeft(), screen.topLeft());
    }

    void systemPositionIsRoundedFromTheScreensCorner()
    {
        const QPoint corner(1920, -100);
        QCOMPARE(logicalPosition(corner + QPoint(301, 302), corner, 2.0), corner + QPoint(151, 151));
        QCOMPARE(logicalPosition(corner - QPoint(301, 303), corner, 2.0), corner - QPoint(150, 151));
        // A press on the button at 150 %: taken in the system's pixels it would lie right of it.
        const QPoint press = logicalPosition(QPoint(1065, 45), {0, 0}, 1.5);
        QCOMPARE(press, QPoint(710, 30));
        QCOMPARE(at(press.x(), press.y()), WindowRegion::None);
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
