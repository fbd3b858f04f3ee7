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

    void newVersionIsAskedAboutAndItsDownloadEndedByItsMenuAlone()
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
            const auto lightAt = [&](int eighth) {
                return QColor(picture.pixel(picture.width() * eighth / 8, picture.height() / 2)).value();
            };
            QVERIFY(isOffered ? lightAt(7) > lightAt(1) : lightAt(1) > lightAt(7));
            press(window, "newVersionBtn");
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QCOMPARE(ends.count(), int(isOffered));
            menu->actions().constFirst()->trigger();
            menu->close();
            QCOMPARE(ends.count(), int(isOffered) + 1);
            window.setDownloadProgress(-1);
            QVERIFY(button->isVisible() == isOffered && button->text() == MainWindow::tr("new"));
        }
        QVERIFY(!QApplication::activeModalWidget());
        for (const int choice : {1, 0}) { // no, then yes
            press(window, "newVersionBtn");
            LanguageManager::instance()->switchLanguage("en"); // the question waits
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(orders.isEmpty());
            box->buttons().at(choice)->click();
            QCOMPARE(button->isVisible(), choice == 1);
        }
        QCOMPARE(orders.count(), 1);
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
                const bool isWhole = button->width() >= button->minimumSizeHint().width();
                QVERIFY2(isWhole && !placeOf(button).isEmpty(), qPrintable(file + button->objectName()));
            }
            for (const auto* notice : {window.findChild<QLabel*>("noticeLabel", Qt::FindDirectChildrenOnly),
                                       window.homePage()->findChild<QLabel*>("noticeLabel")}) {
                QVERIFY(!placeOf(notice).isEmpty() && notice->textFormat() == Qt::PlainText);
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
        using R = WindowRegion;
        const int right = window.width() - 3, bottom = window.height() - 3;
        const QVector<QPair<QPoint, R>> borders{
            {{2, 300}, R::Left},
            {{right, 25}, R::Right},
            {{400, bottom}, R::Bottom},
            {{middleOf(window, "toolButton_close").x(), 2}, R::Top}, // over the button
            {{2, 2}, R::TopLeft},
            {{right, 2}, R::TopRight},
            {{2, bottom}, R::BottomLeft},
            {{right, bottom}, R::BottomRight}};
        for (const auto& [point, region] : borders)
            QCOMPARE(window.regionAt(point), region);
        QTest::mouseMove(window.windowHandle(), {2, 200});
        QVERIFY(QGuiApplication::overrideCursor()); // of what a drag would resize
        QTest::mouseMove(window.windowHandle(), {300, 300});
        QVERIFY(!QGuiApplication::overrideCursor());

        const QPoint close = middleOf(window, "toolButton_close");
        QApplication::setLayoutDirection(Qt::RightToLeft);
        QTRY_VERIFY(middleOf(window, "toolButton_close").x() < 100);
        QCOMPARE(window.regionAt(middleOf(window, "toolButton_close")), WindowRegion::None);
        QCOMPARE(window.regionAt(close), WindowRegion::Caption);
    }

    void closeButtonAsksOnce()
    {
        const QJsonValue none, quit("Quit the application"), hide("Minimize to the system tray");
        const struct
        {
            QJsonValue stored, kept;
            QString answer; // a button of the dialog, a key or the program's end; not asked: empty, session
            bool remember, isQuit;
        } rows[] = {{none, hide, "miniActBtn", true, false},
                    {none, quit, "exitActBtn", true, true},
                    {none, none, "miniActBtn", false, false},
                    {none, none, "toolButton", true, false},
                    {none, none, "Escape", true, false},
                    {none, none, "quit", true, true},
                    {quit, quit, "", false, true},
                    {none, none, "session", false, true}};
        for (const auto& row : rows) {
            auto* config = ConfigurationManager::instance();
            config->setAppConfig(kCloseKey, row.stored);
            MainWindow window;
            window.show();
            const bool hasTray = row.answer != "Escape";
            window.setTrayAvailable(hasTray);
            const bool isSession = row.answer == "session"; // whose manager ends it
            QString offered;
            const auto answer = [&] {
                auto* dialog = qobject_cast<QuitAskDialog*>(QApplication::activeModalWidget());
                if (!dialog)
                    return;
                offered = dialog->findChild<QAbstractButton*>("miniActBtn")->text();
                dialog->findChild<QCheckBox*>("rememberCbx")->setChecked(row.remember);
                if (auto* button = dialog->findChild<QAbstractButton*>(row.answer))
                    button->click();
                else
                    hasTray ? QCoreApplication::quit() : QTest::keyClick(dialog, Qt::Key_Escape);
            };
            constexpr int kStays = 7;
            QObject still; // its event is not reached by a loop that ends
            QTimer::singleShot(0, &window, [&] {
                QTimer::singleShot(0, qApp, answer);
                QEvent end(QEvent::Quit);
                isSession ? void(QCoreApplication::sendEvent(qApp, &end)) : press(window, "toolButton_close");
                QMetaObject::invokeMethod(
                    &still, [] { QCoreApplication::exit(kStays); }, Qt::QueuedConnection);
            });
            const bool hasQuit = QCoreApplication::exec() != kStays;
            QVERIFY2(hasQuit == row.isQuit, qPrintable(row.answer));
            QCOMPARE(offered, row.answer.isEmpty() || isSession ? "" : hasTray ? "最小化到托盘" : "最小化");
            const bool isHidden = row.answer == "miniActBtn"; // it goes with the program
            QVERIFY2(window.isHidden() == isHidden, qPrintable(row.answer));
            QCOMPARE(config->appConfig(kCloseKey), row.kept);
        }
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
            QVERIFY(!isCaption(close.center()) &&
                    isCaption({dialog.width() - 1 - close.center().x(), close.center().y()}));
            QVERIFY(!isCaption({dialog.width() / 2, dialog.headerSize()}));
        }
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

    void windowOpensLargeAndIsFittedOnlyWhenItLeavesItsScreen()
    {
        const QSize wanted(1280, 880);
        QCOMPARE(openingSize(wanted, {1920, 1080}), wanted);
        QCOMPARE(openingSize(wanted, {1024, 728}), QSize(992, 696)); // below a panel
        const QRect screen(1920, 0, 1366, 769);
        const QSize least(500, 400);
        const auto fitted = [&](QRect window, QSize smallest) {
            return fittedGeometry(window, screen, smallest);
        };
        QCOMPARE(fitted({1920, 0, 800, 600}, least), QRect(1920, 0, 800, 600));
        QCOMPARE(fitted({1900, 0, 800, 600}, least).size(), QSize(1092, 615)); // 1092.8 by 615.2
        QCOMPARE(fitted({1900, 0, 800, 600}, least).center(), screen.center());
        QCOMPARE(fitted({0, 0, 800, 600}, {1200, 700}).size(), QSize(1200, 700));    // cannot be 80 %
        QCOMPARE(fitted({0, 0, 800, 600}, {1500, 800}).topLeft(), screen.topLeft()); // the title bar stays
    }

    void maximisedWindowShowsNothingBeyondItsScreen()
    {
        const QRect work(1920, 0, 2560, 1392); // at 150 %
        QCOMPARE(maximisedClient(work.adjusted(-11, -11, 11, 11), work, {}), work);
        QCOMPARE(maximisedClient(work, work, {}), work);
        QCOMPARE(maximisedClient(work, work, Qt::BottomEdge | Qt::LeftEdge), work.adjusted(2, 0, 0, -2));
        QCOMPARE(maximisedClient({0, 0, 800, 600}, work, Qt::TopEdge),
                 QRect(0, 0, 800, 600)); // not there yet
    }

    void systemPositionIsRoundedFromTheScreensCorner()
    {
        const QPoint corner(1920, -100);
        QCOMPARE(logicalPosition(corner + QPoint(301, 302), corner, 2.0), corner + QPoint(151, 151));
        QCOMPARE(logicalPosition(corner - QPoint(301, 303), corner, 2.0), corner - QPoint(150, 151));
        // A press on the button at 150 %: taken in the system's pixels it would lie right of it.
        QCOMPARE(logicalPosition(QPoint(1065, 45), {0, 0}, 1.5), QPoint(710, 30));
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
