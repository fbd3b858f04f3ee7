#include "FakeController.h"
#include "LogCapture.h"
#include "ProgramUnderTest.h"
#include "app/LumivarApp.h"
#include "support/capture/DeskCaptureOption.h"
#include "support/config/ConfigurationManager.h"
#include "ui/Autostart.h"
#include "ui/HotKeyEditWidget.h"
#include "ui/Languagemanager.h"
#include "ui/SettingsDialog.h"
#include "widgets/SliderBar.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString kGamaKey = "runtime.gama";

ConfigurationManager* config()
{
    return ConfigurationManager::instance();
}

QMessageBox* openBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

template <typename Widget = QWidget>
Widget* part(const QWidget& dialog, const QString& name)
{
    return dialog.findChild<Widget*>(name);
}

void tick(const QWidget& dialog, const QString& box)
{
    QTest::mouseClick(part(dialog, box), Qt::LeftButton, {}, {8, 12});
}

bool isTicked(const QWidget& dialog, const QString& box)
{
    return part<QCheckBox>(dialog, box)->isChecked();
}

struct OpenDialog : SettingsDialog
{
    OpenDialog() { show(); }
};

} // namespace

class TestSettingsDialog : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void takeUrl(const QUrl& url) { m_opened = url; }

private slots:
    void init()
    {
        QApplication::setFont(QFont("Arial")); // as the program does
        config()->reset();
        LanguageManager::instance()->switchLanguage("zh");
        qApp->setProperty("isAdvanced", true);
    }

    void startCommandIsQuotedForEachSystem()
    {
        const QStringList rows[]{
            {"/100%u/l", "\"/100%%u/l\" --auto_startup"},
            {"/a$b`c\"d\\e f/l", "\"/a\\\\$b\\\\`c\\\\\"d\\\\\\\\e f/l\" --auto_startup"},
            {"/a\nb/灯", "\"/a\\nb/灯\" --auto_startup"}};
        for (const QStringList& row : rows) {
            const QString& file = row.first();
            QCOMPARE(Autostart::desktopExec(file), row.last());
            const QByteArray entry = Autostart::desktopEntry(file);
            QVERIFY(Autostart::isStartedBy(entry, file) && !Autostart::isStartedBy(entry, file + "2"));
            for (int cut = 0; cut < entry.indexOf("--auto_startup") + 14; ++cut)
                QVERIFY(!Autostart::isStartedBy(entry.left(cut), file));
            for (const char* off : {"Hidden=true", "X-GNOME-Autostart-enabled = false"})
                QVERIFY(!Autostart::isStartedBy(entry + off, file));
            QVERIFY(!Autostart::isStartedBy("[Desktop Action x]\n" + entry.mid(entry.indexOf("Exec")), file));
        }
        QCOMPARE(Autostart::registryCommand("C:/My Apps/l.exe"), "\"C:\\My Apps\\l.exe\" --auto_startup");
        for (const ushort first : {2, 3, 6, 7}) // odd: switched off in the system's own list
            QCOMPARE(Autostart::isDisapproved(QString(QChar(first)) + QChar(0) + QChar(77)), first % 2 == 1);
        QVERIFY(!Autostart::isDisapproved({}));
    }

    void boxStartsTheProgramWithTheSystem()
    {
        QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/autostart");
        const QFile file(folder.filePath("lumivar.desktop"));
        ProgramUnderTest::writeFile(file.fileName(), Autostart::desktopEntry("/elsewhere/l"));
        const OpenDialog dialog;
        QVERIFY(!isTicked(dialog, "chkStartup")); // another copy's
        for (const bool isOn : {true, false, true, false}) {
            tick(dialog, "chkStartup");
            QVERIFY(file.exists() == isOn && Autostart::isEnabled() == isOn);
            QCOMPARE(isTicked(OpenDialog(), "chkStartup"), isOn);
        }
        QVERIFY(folder.removeRecursively());
        ProgramUnderTest::writeFile(folder.path(), {}); // in the way
        tick(dialog, "chkStartup");
        QVERIFY(!isTicked(dialog, "chkStartup")); // what cannot be written does not count
        QVERIFY(QFile::remove(folder.path()));
    }

    void openingStoresNothingButTheButtonsFirstUse()
    {
        config()->setAppConfig(kGamaKey, 4.5); // more than the slider has
        const QJsonObject before = config()->AppConfigJsonObj();
        for (const bool isOn : {true, false}) {
            qApp->setProperty("isAdvanced", isOn);
            qApp->setProperty("enableCrashTest", isOn);
            const OpenDialog dialog;
            QVERIFY(!part(dialog, "M46View")->isVisible()); // nobody has been asked
            QVERIFY(!isTicked(dialog, "phyBtnSingleCtrllMode"));
            QCOMPARE(part(dialog, "btnCrashTest")->isVisible(), isOn);
            for (int page = 0; page < 2; ++page)
                QTest::keyClick(part(dialog, "sliderBar"), Qt::Key_Right);
            QCOMPARE(part(dialog, "advancedOptWidget")->isVisible(), isOn);
        }
        QJsonObject after = config()->AppConfigJsonObj();
        QVERIFY(after.take("runtime.phyBtnSingleCtrlMode") == true &&
                after.take("runtime.phyBtnAction") == 0);
        QCOMPARE(after, before);
    }

    void eachControlStoresItsChoiceAndTakesItBack()
    {
        const auto check = [](const QString& box, const QString& name, const QJsonValue& ticked,
                              const QJsonValue& cleared) {
            const QString key = name.contains("locked", Qt::CaseInsensitive) ? name : "runtime." + name;
            config()->setAppConfig(key, cleared);
            for (const QJsonValue& wanted : {ticked, cleared, ticked}) {
                const OpenDialog dialog; // shows what was stored before
                part<SliderBar>(dialog, "sliderBar")->moveTo(box.endsWith("CheckBox") ? 2 : 0);
                const LogCapture log;
                tick(dialog, box);
                QVERIFY2(config()->appConfig(key) == wanted && log.contains(key + " changed to "),
                         qPrintable(box));
            }
        };
        check("phyBtnSingleCtrllMode", "phyBtnSingleCtrlMode", false, true);
        check("chkLightsOffWhileLocked", "lightsOffWhileLocked", true, false);
        check("closeBtnActCbx", "closeButtonAction", "Minimize to the system tray", "Quit the application");
        for (const QString name : {"screenEdit", "screenshot", "loopLog"})
            check(name + "CheckBox", name + "Enable", true, false);

        config()->setAppConfig("runtime.phyBtnAction", 1);
        OpenDialog dialog;
        auto* box = part<QComboBox>(dialog, "phyBtnActionCbx");
        QCOMPARE(box->currentText(), "切换下一个工作模式");
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(config()->appConfig("runtime.phyBtnAction"), QJsonValue(0));
        dialog.setFocus();
        QWheelEvent wheel({5, 5}, box->mapToGlobal({5, 5}), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), 0); // that was for the page
    }

    void gammaIsStoredInAPaceAndAtTheEnd()
    {
        config()->setAppConfig(kGamaKey, 0.29);
        {
            OpenDialog dialog;
            auto* slider = part<QSlider>(dialog, "gamaSliderBar");
            QVERIFY(slider->value() == 29 && part<QLabel>(dialog, "gamaValueLabel")->text() == "0.29");
            const QSignalSpy stored(config(), &ConfigurationManager::appConfigChanged);
            for (int value = 150; value > 1; --value)
                slider->setValue(value);
            QTRY_COMPARE(config()->appConfig(kGamaKey), QJsonValue(0.02));
            QCOMPARE(stored.count(), 1);
            slider->setValue(1);
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible() && config()->appConfig(kGamaKey) == 0.01);
            slider->setValue(70);
        }
        QCOMPARE(config()->appConfig(kGamaKey), QJsonValue(0.7)); // however it went
    }

    void captureModeIsOfferedWhereThereIsSomethingToCapture()
    {
        QVERIFY(!part(OpenDialog(), "screenCaptureModeView")->isVisible());
        const QList<CaptureMode> modes{{"x11", {}, false, "first"}, {"portal", {}, true}, {"other"}};
        auto option = std::make_unique<DeskCaptureOption>(modes);
        option->setCurMode(2);
        const OpenDialog dialog;
        auto* box = part<QComboBox>(dialog, "screenCaptureModeComboBox");
        QVERIFY(box->isVisible() && box->count() == 3 && box->currentText() == "模式 3");
        QVERIFY(box->accessibleDescription().contains("模式 1：first"));
        box->setCurrentIndex(0);
        QCOMPARE(option->curMode(), 0);
        option.reset(); // the engine goes first at the end
        box->setCurrentIndex(1);
    }

    void captureModeIsTheSessionsOwnUntilTheUserChooses()
    {
        const auto modes = [](int own) {
            return QList<CaptureMode>{{"x11", {}, own == 0}, {"portal", {}, own == 1}};
        };
        const auto start = [&](int own) { return DeskCaptureOption(modes(own)).curMode(); };
        for (const int own : {0, 1}) {
            DeskCaptureOption(modes(own)).setCurMode(1 - own);
            QCOMPARE(config()->appConfig("runtime.captureMode").toString(), modes(own).at(1 - own).name);
            QVERIFY(start(0) == 1 - own && start(1) == 1 - own);
            DeskCaptureOption(modes(own)).setCurMode(own); // back: no choice any more
            QVERIFY(start(0) == 0 && start(1) == 1 && start(-1) == 0);
        }
        config()->setAppConfig("runtime.captureMode", "of another system");
        QVERIFY(start(0) == 0 && start(1) == 1);
        QCOMPARE(config()->appConfig("runtime.captureMode"), QJsonValue("of another system"));
    }

    void folderIsOpenedAndResetIsAskedForAndQuits()
    {
        QDesktopServices::setUrlHandler("file", this, "takeUrl");
        part<QPushButton>(OpenDialog(), "btnOpenConfigDir")->click();
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(m_opened, QUrl::fromLocalFile(config()->configPath()));
        config()->setGlobalValue("cleanStartup", false);
        for (const auto answer : {QMessageBox::NoButton, QMessageBox::No, QMessageBox::Yes}) {
            const OpenDialog dialog;
            QTimer::singleShot(0, &dialog, [&] {
                part<QPushButton>(dialog, "btnDefaultSettings")->click();
                QMessageBox* box = openBox();
                QVERIFY(box && box->text() == "清理配置文件需要重启应用程序, 这个操作将退出Lumivar.");
                QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
                answer ? box->button(answer)->click() : QTest::keyClick(box, Qt::Key_Escape);
            });
            QCOMPARE(QCoreApplication::exec() != 7, answer == QMessageBox::Yes);
            QCOMPARE(config()->globalValue("cleanStartup").toBool(), answer == QMessageBox::Yes);
            QTRY_VERIFY(!openBox());
        }
    }

    void openDialogFollowsEveryLanguageFitsAndIsReachedByKeys()
    {
        const DeskCaptureOption modes;
        config()->setAppConfig("runtime.closeButtonAction", "Quit the application");
        MainWindow window; // has the style
        window.move(5000, 300);
        SettingsDialog dialog(&window);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        auto* bar = part<SliderBar>(dialog, "sliderBar");
        QCOMPARE(QApplication::focusWidget(), bar);
        auto* languages = part<QComboBox>(dialog, "cbxLanguage");
        QVERIFY(languages->count() == 10 && languages->findData("fr") < 0);
        for (const QString language : {"ar", "de", "en", "es", "ja", "ko", "pt", "ru", "vi", "zh"}) {
            languages->setCurrentIndex(languages->findData(language));
            QTRY_COMPARE(part<QLabel>(dialog, "cbxLanguageLabel")->text(), SettingsDialog::tr("语言"));
            QVERIFY(languages->currentData() == language && config()->appConfig("language") == language);
            QCOMPARE(bar->items(), SettingsDialog::tr("通用设置;快捷键设置;高级设置"));
            QCoreApplication::processEvents();
            QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
            const QSize netbook(683, 600); // its screen, the width at 150 %
            QCOMPARE(dialog.size().boundedTo(netbook), dialog.size());
            for (auto* area :
                 dialog.findChildren<QScrollArea*>(QRegularExpression("^(general|advanced)Area$"))) {
                bar->moveTo(area->objectName() == "generalArea" ? 0 : 2);
                QTRY_COMPARE(area->horizontalScrollBar()->maximum(), 0);
                int unreached = 0;
                for (auto* each : area->widget()->findChildren<QWidget*>()) {
                    if (!each->isVisible())
                        continue;
                    QVERIFY2(each->width() >= each->minimumSizeHint().width(), qPrintable(language));
                    if (each->hasHeightForWidth())
                        QTRY_VERIFY(each->height() >= each->heightForWidth(each->width()));
                    unreached += each->focusPolicy() & Qt::TabFocus ? 1 : 0;
                }
                QTest::keyClick(bar, Qt::Key_Tab);
                int lowest = -1;
                for (QWidget* at = QApplication::focusWidget(); at != bar; at = QApplication::focusWidget()) {
                    const int above = std::exchange(lowest, at->mapTo(area->widget(), QPoint()).y());
                    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(at);
                    QVERIFY2(area->isAncestorOf(at) && --unreached >= 0 && lowest > above &&
                                 !spoken->text(QAccessible::Name).isEmpty() &&
                                 !spoken->text(QAccessible::Description).isEmpty() &&
                                 at->visibleRegion().boundingRect().contains(at->rect().center()),
                             qPrintable(language + at->objectName()));
                    QTest::keyClick(at, Qt::Key_Tab);
                }
                QCOMPARE(unreached, 0);
            }
            bar->moveTo(0);
        }
    }

    void programOpensOneDialogThatMayStayOpenToTheEnd()
    {
        const LogCapture log;
        auto app = std::make_unique<LumivarApp>(nullptr);
        auto* strip = new FakeController;
        QMetaObject::invokeMethod(&app->deviceManager(), "addController",
                                  Q_ARG(AbsRGBControllerPtr, AbsRGBControllerPtr(strip)));
        for (int opened = 1; opened <= 2; ++opened) {
            QTest::mouseClick(part(app->mainWindow(), "pushButton_settings"), Qt::LeftButton);
            app->showSettingsDialog();
            auto* dialog = app->mainWindow().findChild<SettingsDialog*>();
            QVERIFY(dialog->isModal() && dialog->isVisible());
            QCOMPARE(log.count("SettingsDialog openning"), opened);
            QVERIFY(part(*dialog, "screenCaptureModeView")->isVisible()); // nothing captures yet
            QCOMPARE(dialog->hotkeyEditWidget()->findChild<QTableWidget*>()->rowCount(), 5);
            // The strip follows at once, long before it is stored.
            const double gama = opened * 0.75;
            part<QSlider>(*dialog, "gamaSliderBar")->setValue(opened * 75);
            QCoreApplication::sendPostedEvents();
            QCOMPARE(strip->options().gama, static_cast<float>(gama));
            QVERIFY(config()->appConfig(kGamaKey) != gama);
            // A box stays before the dialog, and goes with it.
            tick(*dialog, "screenSyncAdvanedModeCBX");
            QCOMPARE(config()->appConfig("runtime.isEnableScreenSyncAdvanedMode"), QJsonValue(opened == 1));
            QCOMPARE(openBox()->text(), "您的设置已经保存，请重新启动软件");
            dialog->installEventFilter(this);
            openBox()->installEventFilter(this);
            app->showSettingsDialog();
            QCOMPARE(m_front, openBox());
            if (opened == 1)
                part<QToolButton>(*dialog, "toolButton")->click();
            else
                app.reset();
            QCOMPARE(log.count("SettingsDialog Closing, exit code:  0"), opened);
            QCOMPARE(config()->appConfig(kGamaKey), QJsonValue(gama));
            QTRY_VERIFY(!openBox());
        }
    }

protected:
    bool eventFilter(QObject* window, QEvent* event) override
    {
        if (event->type() == QEvent::ZOrderChange)
            m_front = window;
        return false;
    }

private:
    QUrl m_opened;
    QObject* m_front = nullptr; ///< raised last
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settings_dialog.moc"
