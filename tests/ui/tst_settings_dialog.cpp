#include "ui/Autostart.h"

#include <QtTest>

class TestSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
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
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settings_dialog.moc"
