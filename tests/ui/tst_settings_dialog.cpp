#include "FakeController.h"
#include "LogCapture.h"
#include "app/LumivarApp.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/Autostart.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/Languagemanager.h"
#include "ui/SettingsDialog.h"
#include "widgets/SliderBar.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTableWidget>
#include <QToolButton>
#include <QtTest>

namespace {

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

QString autostartFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/autostart/lumivar.desktop";
}

void writeAutostart(const QByteArray& entry)
{
    QDir().mkpath(QFileInfo(autostartFile()).path());
    QFile file(autostartFile());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(entry) == entry.size());
}

QMessageBox* openBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

template <typename Widget>
Widget* part(const QWidget& dialog, const QString& name)
{
    return dialog.findChild<Widget*>(name);
}

void tick(const QWidget& dialog, const QString& box)
{
    QTest::mouseClick(part<QCheckBox>(dialog, box), Qt::LeftButton, {}, {8, 12});
}

/// Takes what the desktop is asked to open.
class UrlTaker : public QObject
{
    Q_OBJECT
public:
    UrlTaker() { QDesktopServices::setUrlHandler("file", this, "take"); }
    ~UrlTaker() override { QDesktopServices::unsetUrlHandler("file"); }
    QList<QUrl> taken;
public slots:
    void take(const QUrl& url) { taken << url; }
};

} // namespace

class TestSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QApplication::setFont(QFont("Arial")); // as the program does
        config()->reset();
        config()->setGlobalValue(ConfigKeys::kCleanStartup.key, false);
        LanguageManager::instance()->switchLanguage("zh");
        qApp->setProperty("isAdvanced", true);
        qApp->setProperty("enableCrashTest", false);
        QFile::remove(autostartFile());
    }

    void startCommandIsQuotedForEachSystem_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("exec");
        QTest::newRow("plain") << "/opt/lumivar/lumivar"
                               << "\"/opt/lumivar/lumivar\" --auto_startup";
        QTest::newRow("blank") << "/my apps/lumivar"
                               << "\"/my apps/lumivar\" --auto_startup";
        QTest::newRow("field code") << "/100%u/l"
                                    << "\"/100%%u/l\" --auto_startup";
        QTest::newRow("shell") << "/a$b`c\"d\\e/l"
                               << "\"/a\\\\$b\\\\`c\\\\\"d\\\\\\\\e/l\" --auto_startup";
        QTest::newRow("line") << "/a\nb/灯"
                              << "\"/a\\nb/灯\" --auto_startup";
    }
    void startCommandIsQuotedForEachSystem()
    {
        QFETCH(QString, file);
        QTEST(Autostart::desktopExec(file), "exec");
        const QByteArray entry = Autostart::desktopEntry(file);
        QVERIFY(Autostart::isStartedBy(entry, file));
        QVERIFY(!Autostart::isStartedBy(entry, file + "2"));
        for (int cut = 0; cut < entry.indexOf("--auto_startup") + 14; ++cut)
            QVERIFY(!Autostart::isStartedBy(entry.left(cut), file));
        for (const char* off : {"Hidden=true", "X-GNOME-Autostart-enabled = false"})
            QVERIFY(!Autostart::isStartedBy(entry + off, file));
        QVERIFY(!Autostart::isStartedBy("[Desktop Action x]\n" + entry.mid(entry.indexOf("Exec")), file));
        QCOMPARE(Autostart::registryCommand("C:/My Apps/lumivar.exe"),
                 "\"C:\\My Apps\\lumivar.exe\" --auto_startup");
    }

    void boxStartsTheProgramWithTheSystem()
    {
        writeAutostart(Autostart::desktopEntry("/elsewhere/lumivar"));
        SettingsDialog dialog;
        dialog.show();
        auto* box = part<QCheckBox>(dialog, "chkStartup");
        QVERIFY(!box->isChecked()); // another copy's
        for (const bool isOn : {true, false, true}) {
            tick(dialog, "chkStartup");
            QVERIFY(box->isChecked() == isOn &&
                    SettingsDialog().findChild<QCheckBox*>("chkStartup")->isChecked() == isOn);
            QCOMPARE(QFile::exists(autostartFile()), isOn);
        }
        QFile file(autostartFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), Autostart::desktopEntry(QCoreApplication::applicationFilePath()));

        tick(dialog, "chkStartup");
        QDir folder = QFileInfo(autostartFile()).dir();
        QVERIFY(folder.removeRecursively());
        QFile inTheWay(folder.path());
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        tick(dialog, "chkStartup");
        QVERIFY(!box->isChecked()); // what cannot be written does not count
        QVERIFY(inTheWay.remove());
    }

    void openingStoresNothingButTheButtonsFirstUse()
    {
        const QJsonObject before = config()->AppConfigJsonObj();
        {
            SettingsDialog dialog;
            dialog.show();
            QVERIFY(!part<QWidget>(dialog, "M46View")->isVisible()); // nobody has been asked
            QVERIFY(!part<QCheckBox>(dialog, "phyBtnSingleCtrllMode")->isChecked());
        }
        QJsonObject after = config()->AppConfigJsonObj();
        QCOMPARE(after.take("runtime.phyBtnSingleCtrlMode"), QJsonValue(true));
        QCOMPARE(after.take("runtime.phyBtnAction"), QJsonValue(0));
        QCOMPARE(after, before);
    }

    void eachBoxStoresItsChoiceAndTakesItBack_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QJsonValue>("ticked");
        QTest::addColumn<QJsonValue>("cleared");
        QTest::newRow("button") << "phyBtnSingleCtrllMode"
                                << "runtime.phyBtnSingleCtrlMode" << QJsonValue(false) << QJsonValue(true);
        QTest::newRow("close") << "closeBtnActCbx"
                               << "runtime.closeButtonAction" << QJsonValue("Minimize to the system tray")
                               << QJsonValue("Quit the application");
        for (const char* name : {"screenEdit", "screenshot", "loopLog"})
            QTest::newRow(name) << QString(name) + "CheckBox" << QString("runtime.%1Enable").arg(name)
                                << QJsonValue(true) << QJsonValue(false);
    }
    void eachBoxStoresItsChoiceAndTakesItBack()
    {
        QFETCH(QString, box);
        QFETCH(QString, key);
        QFETCH(QJsonValue, ticked);
        QFETCH(QJsonValue, cleared);
        config()->setAppConfig(key, cleared);
        for (const QJsonValue& wanted : {ticked, cleared, ticked}) {
            SettingsDialog dialog; // shows what was stored before
            dialog.show();
            part<SliderBar>(dialog, "sliderBar")->moveTo(box.endsWith("CheckBox") ? 2 : 0);
            LogCapture log;
            tick(dialog, box);
            QCOMPARE(config()->appConfig(key), wanted);
            QVERIFY(log.contains(key + " changed to "));
        }
    }

    void deviceButtonActionIsChosenByKeys()
    {
        config()->setAppConfig("runtime.phyBtnAction", 1);
        SettingsDialog dialog;
        dialog.show();
        auto* box = part<QComboBox>(dialog, "phyBtnActionCbx");
        QCOMPARE(box->currentText(), "切换下一个工作模式");
        for (const int wanted : {0, 1}) {
            QTest::keyClick(box, wanted == 0 ? Qt::Key_Up : Qt::Key_Down);
            QCOMPARE(config()->appConfig("runtime.phyBtnAction"), QJsonValue(wanted));
        }
        dialog.setFocus();
        QWheelEvent wheel({5, 5}, box->mapToGlobal({5, 5}), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), 1); // that was for the page
    }

    void gammaIsStoredInAPaceAndAtTheEnd()
    {
        config()->setAppConfig("runtime.gama", 0.29);
        QSignalSpy stored(config(), &ConfigurationManager::appConfigChanged);
        {
            SettingsDialog dialog;
            dialog.show();
            auto* slider = part<QSlider>(dialog, "gamaSliderBar");
            QCOMPARE(slider->value(), 29);
            QCOMPARE(part<QLabel>(dialog, "gamaValueLabel")->text(), "0.29");
            stored.clear();
            for (int value = 150; value > 1; --value)
                slider->setValue(value);
            QVERIFY(stored.count() < 20); // a slow machine may have passed a pause
            QTRY_COMPARE(config()->appConfig("runtime.gama"), QJsonValue(0.02));
            slider->setValue(200);
            slider->setValue(1);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
            QCOMPARE(config()->appConfig("runtime.gama"), QJsonValue(0.01));
            slider->setValue(100);
            slider->setValue(70);
        }
        QCOMPARE(config()->appConfig("runtime.gama"), QJsonValue(0.7)); // however it went
        config()->setAppConfig("runtime.gama", 4.5);
        QCOMPARE(part<QSlider>(SettingsDialog(), "gamaSliderBar")->value(), 200);
        QCOMPARE(config()->appConfig("runtime.gama"), QJsonValue(4.5));
    }

    void languageChangesWhileTheDialogIsOpen()
    {
        const DeskCaptureOption modes(1);
        SettingsDialog dialog;
        dialog.show();
        auto* box = part<QComboBox>(dialog, "cbxLanguage");
        auto* bar = part<SliderBar>(dialog, "sliderBar");
        QCOMPARE(box->count(), 10);
        QVERIFY(box->findData("fr") < 0 && box->currentText() == "中文");
        const QList<QStringList> rows{{"de", "Allgemein;Tastenkürzel;Erweitert", "Sprache", "Modus 1"},
                                      {"ar", "عام;الاختصارات;متقدم", "اللغة", "الطريقة 1"},
                                      {"zh", "通用设置;快捷键设置;高级设置", "语言", "模式 1"}};
        const QRect place = dialog.geometry();
        for (const QStringList& row : rows) {
            box->setCurrentIndex(box->findData(row.at(0)));
            QTRY_COMPARE(bar->items(), row.at(1));
            QCOMPARE(bar->currentItem(), row.at(1).section(';', 0, 0));
            QCOMPARE(box->currentData().toString(), row.at(0));
            QCOMPARE(part<QLabel>(dialog, "cbxLanguageLabel")->text(), row.at(2));
            QCOMPARE(part<QComboBox>(dialog, "screenCaptureModeComboBox")->currentText(), row.at(3));
            QCOMPARE(config()->appConfig("language"), QJsonValue(row.at(0)));
            QCoreApplication::processEvents();
            QCOMPARE(dialog.geometry(), place);
        }
        QCOMPARE(box->itemText(box->findData("vi")), "Tiếng Việt");
    }

    void captureModeIsOfferedWhereThereIsSomethingToCapture()
    {
        LogCapture log;
        SettingsDialog without;
        without.show();
        QVERIFY(!part<QWidget>(without, "screenCaptureModeView")->isVisible());
        QVERIFY(log.contains("[SettingsDialog]: Cannot found deskCaptureOption instance."));

        auto option = std::make_unique<DeskCaptureOption>(3);
        option->setCurMode(2);
        SettingsDialog dialog;
        dialog.show();
        auto* box = part<QComboBox>(dialog, "screenCaptureModeComboBox");
        QVERIFY(box->isVisible() && box->count() == 3 && box->currentText() == "模式 3");
        for (const int mode : {0, 2}) {
            box->setCurrentIndex(mode);
            QCOMPARE(option->curMode(), mode);
        }
        option.reset(); // the engine goes first at the end
        box->setCurrentIndex(1);
    }

    void resetIsAskedForAndQuits()
    {
        qApp->setProperty("isAdvanced", false);
        for (const int answer : {int(Qt::Key_Escape), int(QMessageBox::No), int(QMessageBox::Yes)}) {
            SettingsDialog dialog;
            dialog.show();
            QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
            QTimer::singleShot(0, &dialog, [&] {
                part<QPushButton>(dialog, "btnDefaultSettings")->click();
                QMessageBox* box = openBox();
                QVERIFY(box && box->text() == "清理配置文件需要重启应用程序, 这个操作将退出Lumivar.");
                QCOMPARE(box->button(QMessageBox::No)->text(), "否");
                QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
                if (answer == Qt::Key_Escape)
                    QTest::keyClick(box, Qt::Key_Escape);
                else
                    box->button(QMessageBox::StandardButton(answer))->click();
            });
            const bool hasQuit = QCoreApplication::exec() != 7;
            QCOMPARE(hasQuit, answer == QMessageBox::Yes);
            QCOMPARE(config()->globalValue("cleanStartup").toBool(), hasQuit);
            QTRY_VERIFY(!openBox());
        }
    }

    void boxGoesWithTheDialog()
    {
        QWidget window;
        window.show();
        auto dialog = std::make_unique<SettingsDialog>(&window);
        dialog->show();
        for (const bool isOn : {true, false}) {
            tick(*dialog, "screenSyncAdvanedModeCBX");
            QCOMPARE(config()->appConfig("runtime.isEnableScreenSyncAdvanedMode"), QJsonValue(isOn));
            QVERIFY(openBox() && openBox()->parentWidget() == &window);
            QCOMPARE(openBox()->text(), "您的设置已经保存，请重新启动软件");
            QCOMPARE(window.findChildren<QMessageBox*>().size(), 1);
        }
        dialog.reset();
        QVERIFY(!openBox());
        SettingsDialog other(&window);
        other.show();
        part<QPushButton>(other, "btnDefaultSettings")->click();
        QVERIFY(openBox());
        other.reject();
        QTRY_VERIFY(!openBox());
    }

    void configurationFolderIsOpened()
    {
        UrlTaker desktop;
        SettingsDialog dialog;
        dialog.show();
        QTest::mouseClick(part<QPushButton>(dialog, "btnOpenConfigDir"), Qt::LeftButton);
        QCOMPARE(desktop.taken, QList<QUrl>{QUrl::fromLocalFile(config()->configPath())});
    }

    void developersPartsAreForDevelopers()
    {
        for (const bool isOn : {false, true}) {
            qApp->setProperty("isAdvanced", isOn);
            qApp->setProperty("enableCrashTest", isOn);
            SettingsDialog dialog;
            dialog.show();
            QCOMPARE(part<QPushButton>(dialog, "btnCrashTest")->isVisible(), isOn);
            auto* bar = part<SliderBar>(dialog, "sliderBar");
            QTest::keyClick(bar, Qt::Key_Right);
            QVERIFY(dialog.hotkeyEditWidget()->isVisible());
            QTest::keyClick(bar, Qt::Key_Right);
            QCOMPARE(part<QWidget>(dialog, "advancedOptWidget")->isVisible(), isOn);
        }
    }

    void everythingFitsAndIsReachedByKeysInEveryLanguage_data()
    {
        QTest::addColumn<QString>("language");
        for (const QString& file : QDir(":/languages").entryList({"*.qm"}))
            QTest::newRow(qPrintable(file)) << file.section('_', 1).section('.', 0, 0);
    }
    void everythingFitsAndIsReachedByKeysInEveryLanguage()
    {
        QFETCH(QString, language);
        LanguageManager::instance()->switchLanguage(language);
        const DeskCaptureOption modes(2);
        config()->setAppConfig("runtime.closeButtonAction", "Quit the application");
        MainWindow window; // has the style
        window.move(5000, 300);
        SettingsDialog dialog(&window);
        dialog.show();
        QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        QVERIFY(dialog.width() <= 683 && dialog.height() <= 600); // a netbook's screen, the width at 150 %
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* bar = part<SliderBar>(dialog, "sliderBar");
        QCOMPARE(QApplication::focusWidget(), bar);
        for (const int page : {0, 2}) {
            bar->moveTo(page);
            auto* area =
                qobject_cast<QScrollArea*>(part<QStackedWidget>(dialog, "stackedWidget")->currentWidget());
            QTRY_COMPARE(area->horizontalScrollBar()->maximum(), 0);
            int controls = 0;
            for (auto* each : area->widget()->findChildren<QWidget*>()) {
                const QString where = each->objectName() + ' ' + QString::number(each->width());
                if (!each->isVisible())
                    continue;
                QVERIFY2(each->width() >= each->minimumSizeHint().width(), qPrintable(where));
                if (each->hasHeightForWidth())
                    QTRY_VERIFY2(each->height() >= each->heightForWidth(each->width()), qPrintable(where));
                if (each->focusPolicy() & Qt::TabFocus)
                    ++controls;
            }
            int reached = 0;
            int lowest = -1;
            QTest::keyClick(bar, Qt::Key_Tab);
            for (QWidget* at = QApplication::focusWidget(); at != bar; at = QApplication::focusWidget()) {
                const QString where = at->objectName();
                QVERIFY2(area->isAncestorOf(at) && ++reached <= controls, qPrintable(where));
                const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(at);
                QVERIFY2(!spoken->text(QAccessible::Name).isEmpty(), qPrintable(where));
                QVERIFY2(!spoken->text(QAccessible::Description).isEmpty(), qPrintable(where));
                QVERIFY2(at->visibleRegion().boundingRect().contains(at->rect().center()), qPrintable(where));
                const int y = at->mapTo(area->widget(), QPoint()).y();
                QVERIFY2(y > lowest, qPrintable(where));
                lowest = y;
                QTest::keyClick(at, Qt::Key_Tab);
            }
            QCOMPARE(reached, controls);
        }
    }

    void programOpensOneDialogThatMayStayOpenToTheEnd()
    {
        LogCapture log;
        auto app = std::make_unique<LumivarApp>(nullptr);
        auto* strip = new FakeController;
        QMetaObject::invokeMethod(&app->deviceManager(), "addController",
                                  Q_ARG(AbsRGBControllerPtr, AbsRGBControllerPtr(strip)));
        const MainWindow& window = app->mainWindow();
        auto* button = window.findChild<QAbstractButton*>("pushButton_settings");
        QVERIFY(button->isVisible());
        for (int opened = 1; opened <= 2; ++opened) {
            QTest::mouseClick(button, Qt::LeftButton);
            app->showSettingsDialog();
            auto* dialog = window.findChild<SettingsDialog*>();
            QVERIFY(dialog && dialog->isModal() && dialog->isVisible());
            QCOMPARE(log.count("SettingsDialog openning"), opened);
            QVERIFY(part<QWidget>(*dialog, "screenCaptureModeView")->isVisible()); // nothing captures yet
            QCOMPARE(dialog->hotkeyEditWidget()->findChild<QTableWidget*>()->rowCount(), 5);
            if (opened == 2)
                break;
            QTest::mouseClick(dialog->findChild<QToolButton*>("toolButton"), Qt::LeftButton);
            QCOMPARE(log.count("SettingsDialog Closing, exit code:  0"), opened);
            QTRY_VERIFY(!window.findChild<SettingsDialog*>());
        }
        auto* dialog = window.findChild<SettingsDialog*>();
        // The strip follows at once, long before it is stored.
        for (const int value : {150, 149})
            part<QSlider>(*dialog, "gamaSliderBar")->setValue(value);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(strip->options().gama, 1.49F);
        QVERIFY(config()->appConfig("runtime.gama") != 1.49);
        // A box of its own stays in front.
        tick(*dialog, "screenSyncAdvanedModeCBX");
        dialog->installEventFilter(this);
        openBox()->installEventFilter(this);
        app->showSettingsDialog();
        QCOMPARE(m_front, openBox());
        app.reset();
        QCOMPARE(log.count("SettingsDialog Closing, exit code:  0"), 2);
    }

protected:
    bool eventFilter(QObject* window, QEvent* event) override
    {
        if (event->type() == QEvent::ZOrderChange)
            m_front = window;
        return false;
    }

private:
    QObject* m_front = nullptr; ///< raised last
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settings_dialog.moc"
