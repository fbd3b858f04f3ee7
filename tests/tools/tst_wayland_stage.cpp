// The program on a Wayland desktop's stage: what its user and the desktop do, and what the strips show then.
#include "ProgramUnderTest.h"
#include "StoredStrip.h"

#include <QtTest>

class TestWaylandStage : public QObject
{
    Q_OBJECT

private slots:
    void userConsentsOnceAndEveryStripFollows()
    {
        const QStringList strips{"LV0127:01020304", "LV0127:01020305"};
        const QJsonObject stored = storedStrip("id.effect.screenSync.fullScreen", 120);
        ProgramUnderTest folders;
        folders.writeConfig("controllers.json", {{strips[0], stored}, {strips[1], stored}});
        const QStringList arguments{"--plain", "--strips", "2", "--check", "--fault", "Start=Twice", "--"};
        m_stage = folders.startAnother(arguments + QStringList{QDir::currentPath() + "/lumivar"}, STAGE);
        const auto all = [&strips](const QString& state) {
            return QStringList{strips[0] + "  " + state, strips[1] + "  " + state};
        };
        const std::pair<QByteArray, QStringList> story[]{
            {"plug", {"yes or no?"}},
            {"no", all("black")},
            {"yes", {"asks nothing"}}, // he has said no
            {"restart", {"yes or no?"}},
            {"yes", all("lit")},
            {"restart", all("black") + all("lit") + QStringList{"by the consent"}},
            {"server", all("black")},
            {"server", all("lit") + QStringList{"by the consent"}},
            {"portal", all("black")},
            {"portal", all("lit") + QStringList{"by the consent"}},
            {"sleep", all("black") + QStringList{"may sleep"}},
            {"sleep", all("lit")},
            {"lock", all("black")},
            {"lock", all("lit")},
            {"end", all("black")},
            {"forget", {"has forgotten"}},
            {"restart", {"yes or no?"}},
            {"yes", all("lit")},
            {"quit", {"needs the screens no more", strips[0] + ": ", strips[1] + ": ", "black at the end"}},
        };
        for (const auto& [command, answers] : story) {
            m_told.clear();
            m_stage->write(command + '\n');
            for (const QString& answer : answers)
                QVERIFY2(QTest::qWaitFor([&] { return tells(answer); }, 30000), qPrintable(answer + m_told));
        }
        QVERIFY2(ProgramUnderTest::endsWell(*m_stage), qPrintable(folders.standardError()));
    }

private:
    bool tells(const QString& what)
    {
        m_told += QString::fromUtf8(m_stage->readAllStandardOutput());
        return m_told.contains(what);
    }

    std::unique_ptr<QProcess> m_stage;
    QString m_told; ///< since the last command
};

QTEST_GUILESS_MAIN(TestWaylandStage)
#include "tst_wayland_stage.moc"
