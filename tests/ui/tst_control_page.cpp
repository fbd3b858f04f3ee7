#include "LogCapture.h"
#include "effects/AbsWorkerWidget.h"
#include "support/config/ConfigKeys.h"
#include "support/config/ConfigurationManager.h"
#include "ui/ControlPage.h"
#include "ui/controls/EffectWorkerButton.h"
#include "ui/controls/LineWrappedRadioButton.h"
#include "ui/controls/StackLayout.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSlider>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

/// Tells each value that it is given back, as the real options do.
class EchoOption : public AbsWorkerWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit EchoOption(QWidget* parent)
        : AbsWorkerWidget(parent)
    {
        setMinimumHeight(60);
        setFocusPolicy(Qt::StrongFocus);
    }
    void setEffectProperty(const QString& key, const QJsonValue& val) override
    {
        m_value = val;
        emit effectPropertyChanged(key, val);
        m_afterEmit = true; // touches the object, which the receiver may have replaced
    }
    QJsonValue effectProperty(const QString&) override { return m_value; }

private:
    QJsonValue m_value;
    bool m_afterEmit = false;
};

class OtherOption : public EchoOption
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit OtherOption(QWidget* parent)
        : EchoOption(parent)
    {
    }
};

namespace {

using Groups = QMap<QString, WorkGroupModel>;
using Workers = QMap<QString, WorkerModel>;

WorkGroupModel group(const QString& name, int order)
{
    WorkGroupModel model;
    model.name = name;
    model.order = order;
    return model;
}

WorkerModel worker(const QString& name, int order, const QString& sOpt = {}, const QString& lOpt = {})
{
    WorkerModel model;
    model.name = name;
    model.order = order;
    model.sOptWidget = sOpt;
    model.lOptWidget = lOpt;
    return model;
}

Workers twoWorkers()
{
    return {{"a", worker("A", 0, "EchoOption")}, {"b", worker("B", 1, "OtherOption", "EchoOption")}};
}

/// Gives every text a length that no column was made for.
class LongTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override
    {
        return QString::fromUtf8(source) + " Bildschirmsynchronisation von links nach rechts";
    }
};

} // namespace

class TestControlPage : public QObject
{
    Q_OBJECT

private:
    template <typename T>
    T* part(const char* name) const
    {
        return m_page->findChild<T*>(name);
    }
    bool shows(const char* name) const { return part<QWidget>(name)->isVisible(); }
    /// The visible buttons of a container from left to right and down.
    template <typename Button>
    QList<Button*> buttons() const
    {
        QList<Button*> found;
        for (Button* button : m_page->findChildren<Button*>()) {
            if (button->isVisible() && button->parentWidget()->objectName().endsWith("Container"))
                found += button;
        }
        std::sort(found.begin(), found.end(), [](const QWidget* a, const QWidget* b) {
            return a->y() != b->y() ? a->y() < b->y() : a->x() < b->x();
        });
        return found;
    }
    template <typename Button>
    QStringList texts() const
    {
        QStringList result;
        for (const Button* button : buttons<Button>())
            result += button->text();
        return result;
    }
    EffectWorkerButton* effect(const QString& text) const
    {
        for (EffectWorkerButton* button : buttons<EffectWorkerButton>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    AbsWorkerWidget* sOpt() const
    {
        const QLayoutItem* item = part<QWidget>("otherOptionsWidget")->layout()->itemAt(0);
        return item ? qobject_cast<AbsWorkerWidget*>(const_cast<QLayoutItem*>(item)->widget()) : nullptr;
    }
    QWidget* lOptPage() const { return part<QStackedWidget>("lOperateWidConatiner")->currentWidget(); }
    int contentHeight() const { return part<QWidget>("scrollAreaWidgetContents_3")->height(); }
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    std::unique_ptr<ControlPage> m_page;

private slots:
    void initTestCase()
    {
        qRegisterMetaType<EchoOption*>();
        qRegisterMetaType<OtherOption*>();
        QFile style(":/styles/default.qss");
        QVERIFY(style.open(QIODevice::ReadOnly));
        qApp->setStyleSheet(QString::fromUtf8(style.readAll()));
    }
    void init()
    {
        ConfigurationManager::instance()->setAppConfig(ConfigKeys::kEnableMultiDeviceControlView.key, false);
        m_page = std::make_unique<ControlPage>();
        m_page->resize(1000, 590);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }
    void cleanup() { m_page.reset(); }

    void isSilentWhenToldAndTellsWhatTheUserDoes()
    {
        QSignalSpy dirs(m_page.get(), &ControlPage::dirChanged);
        QSignalSpy lights(m_page.get(), &ControlPage::enableChanged);
        QSignalSpy levels(m_page.get(), &ControlPage::brightnessChanged);
        QSignalSpy modes(m_page.get(), &ControlPage::controlModeChanged);
        m_page->setDir(1);
        m_page->setEnable(false);
        m_page->setBrightness(0.999f);
        m_page->setSingleDevCtrlMode(true);
        QCOMPARE(m_page->dir(), 1);
        QVERIFY(!m_page->isLightEnabled());
        QCOMPARE(part<QSlider>("brightnessSlider")->value(), 99);
        QVERIFY(part<QRadioButton>("singleDevControlCheckBox")->isChecked());
        QCOMPARE(dirs.count() + lights.count() + levels.count() + modes.count(), 0);

        m_page->setControlModeVisible(true);
        settle();
        const auto clickFarEdge = [this](const char* name) {
            auto* button = part<QRadioButton>(name);
            QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(button->width() - 4, button->height() / 2));
        };
        clickFarEdge("installDirectionLTRButton");
        clickFarEdge("LEDEnableButton");
        clickFarEdge("multDevControlCheckBox");
        part<QSlider>("brightnessSlider")->setValue(57);
        QCOMPARE(dirs.value(0).value(0).toInt(), 0);
        QCOMPARE(lights.value(0).value(0).toBool(), true);
        QCOMPARE(levels.value(0).value(0).toFloat(), 0.57f);
        QCOMPARE(modes.count(), 1);
        QCOMPARE(modes.value(0).value(0).toBool(), false);
        m_page->setSingleDevCtrlMode(true); // differs from what the user chose
        QVERIFY(part<QRadioButton>("singleDevControlCheckBox")->isChecked());
        QCOMPARE(modes.count(), 1);
    }

    void groupsStandInTheirOrder()
    {
        QSignalSpy picked(m_page.get(), &ControlPage::workGoupChanged);
        m_page->setWorkGroups({{"a", group("first of 3", 3)},
                               {"b", group("R&B <b>", 1)},
                               {"c", group("last", 9)},
                               {"d", group("second of 3", 3)},
                               {"e", group("zero", 0)}},
                              "b");
        settle();
        // Of two with one order the later has the place; a name shows as it is.
        QCOMPARE(texts<LineWrappedRadioButton>(), (QStringList{"zero", "R&&B <b>", "second of 3", "last"}));
        const auto shown = buttons<LineWrappedRadioButton>();
        QVERIFY(shown.at(0)->y() == shown.at(2)->y() && shown.at(3)->y() > shown.at(2)->y());
        // 36 for the header, two margins of 20, two rows of 40, one spacing of -1
        QCOMPARE(part<QWidget>("workGroupRegion")->minimumHeight(), 36 + 40 + 80 - 1);
        QCOMPARE(m_page->currentGroup(), QString("b"));
        m_page->setCurrentGroup("unknown");
        QVERIFY(shown.at(1)->isChecked());
        QCOMPARE(picked.count(), 0);

        QTest::mouseClick(shown.at(2), Qt::LeftButton);
        QCOMPARE(picked.value(0).value(0).toString(), QString("d"));
        QTest::keyClick(shown.at(2), Qt::Key_Left);
        QCOMPARE(picked.value(1).value(0).toString(), QString("b"));
        QCOMPARE(m_page->currentGroup(), QString("b"));
    }

    void effectsStandInTheirOrder()
    {
        const QString tie = "id.effect.x.tie";
        QVERIFY(qHash(tie, 0) > 100);
        m_page->setWorkers({{"id.effect.x.a", worker("three", 3)},
                            {tie, worker("tie", 3)},
                            {"id.effect.x.b", worker("four", 4)},
                            {"id.effect.x.c", worker("five", 5)},
                            {"id.effect.x.d", worker("one", 1)}});
        settle();
        QCOMPARE(texts<EffectWorkerButton>(), (QStringList{"one", "three", "four", "five", "tie"}));
        const auto shown = buttons<EffectWorkerButton>();
        QVERIFY(shown.at(3)->y() == shown.at(0)->y() && shown.at(4)->y() > shown.at(0)->y());
        QVERIFY(shows("workersRegion"));
        const QWidget* region = part<QWidget>("workersRegion");
        QVERIFY(region->height() >= 36 + 2 * shown.at(0)->height() + 20);
        QVERIFY(contentHeight() >= region->geometry().bottom()); // nothing lies below the page

        m_page->setWorkers({{"a", worker("A", 0, "EchoOption")}}, "a"); // one is no choice
        settle();
        QVERIFY(!shows("workersRegion"));
        QVERIFY(shows("otherOptRegion") && sOpt());
    }

    void sameOptionClassStaysAndAnotherReplacesIt()
    {
        Workers workers = twoWorkers();
        workers["c"] = worker("C", 2, "EchoOption");
        workers["d"] = worker("D", 3, "NobodyKnows", "Neither");
        QSignalSpy active(m_page.get(), &ControlPage::optWidActived);
        m_page->setWorkers(workers, "a");
        const QPointer<AbsWorkerWidget> first = sOpt();
        m_page->setCurrentWorker("c");
        QCOMPARE(sOpt(), first.data());
        QCOMPARE(active.count(), 2);

        m_page->setCurrentWorker("b");
        QVERIFY(qobject_cast<OtherOption*>(sOpt()));
        QTRY_VERIFY(first.isNull());
        const QPointer<QWidget> large = lOptPage();
        m_page->setCurrentWorker("b");
        QVERIFY(lOptPage() != large);
        QVERIFY(large && large->isHidden()); // waits in the stack
        QCOMPARE(active.count(), 4);

        m_page->setCurrentWorker("d");
        settle();
        QVERIFY(!shows("otherOptRegion") && !sOpt());
        QCOMPARE(lOptPage()->objectName(), QString("productImgWid"));
        QCOMPARE(active.count(), 4);
    }

    void valuesReachTheOptionsAndOnlyTheSmallOneAnswers()
    {
        m_page->setWorkers(twoWorkers(), "b");
        QSignalSpy small(m_page.get(), &ControlPage::sOptWidPropertyChanged);
        QSignalSpy large(m_page.get(), &ControlPage::lOptWidPropertyChanged);
        m_page->setSOptWidProperty("k", 5);
        m_page->setLOptWidProperty("k", 6);
        QCOMPARE(sOpt()->effectProperty("k").toInt(), 5);
        QCOMPARE(static_cast<AbsWorkerWidget*>(lOptPage())->effectProperty("k").toInt(), 6);
        QCOMPARE(small.count(), 1);
        QCOMPARE(large.count(), 0);
        emit static_cast<AbsWorkerWidget*>(lOptPage())->effectPropertyChanged("k", 7);
        QCOMPARE(large.count(), 1);

        emit sOpt()->visibleStatusChanged(false);
        QVERIFY(!shows("otherOptRegion"));
        m_page->setSOptWidProperty("k", 8);
        QCOMPARE(sOpt()->effectProperty("k").toInt(), 5);
    }

    void contentFollowsTheHeightOfTheOptions()
    {
        m_page->setWorkers(twoWorkers(), "a");
        const int before = contentHeight();
        sOpt()->setMinimumHeight(160);
        emit sOpt()->miniHeightChanged(160);
        QCOMPARE(contentHeight(), before + 100);
        settle();
        QCOMPARE(sOpt()->height(), 160);
        emit sOpt()->visibleStatusChanged(false);
        QCOMPARE(contentHeight(), before - 60 - 36);
    }

    void listsMayBeReplacedFromTheirOwnSignals()
    {
        connect(m_page.get(), &ControlPage::workGoupChanged, m_page.get(), [this] {
            m_page->setWorkGroups({{"a", group("A", 0)}, {"b", group("B", 1)}}, "b");
            m_page->setWorkers(twoWorkers(), "a");
        });
        connect(m_page.get(), &ControlPage::workerChanged, m_page.get(), [this] {
            m_page->setWorkers({{"x", worker("X", 0, "OtherOption")}}, "x");
        });
        connect(m_page.get(), &ControlPage::sOptWidPropertyChanged, m_page.get(),
                [this] { m_page->setWorkers(twoWorkers(), "a"); });
        m_page->setWorkGroups({{"a", group("A", 0)}, {"b", group("B", 1)}}, "a");
        settle();
        QTest::mouseClick(buttons<LineWrappedRadioButton>().at(1), Qt::LeftButton);
        settle();
        QCOMPARE(texts<LineWrappedRadioButton>(), (QStringList{"A", "B"}));
        QCOMPARE(texts<EffectWorkerButton>(), (QStringList{"A", "B"}));
        QTest::mouseClick(effect("B"), Qt::LeftButton);
        QVERIFY(qobject_cast<OtherOption*>(sOpt()));
        QCOMPARE(m_page->currentWorker(), QString("x"));
        m_page->setSOptWidProperty("k", 1);
        settle();
        QCOMPARE(m_page->currentWorker(), QString("a"));
        effect("A")->setFocus();
        QTest::keyClick(effect("A"), Qt::Key_Right);
        QCOMPARE(m_page->currentWorker(), QString("x"));
        settle();
        QVERIFY(buttons<EffectWorkerButton>().isEmpty()); // the one effect offers no choice
    }

    void anEffectThatIsGoneLeavesNothingChosen()
    {
        m_page->setWorkers(twoWorkers(), "a");
        LogCapture log;
        m_page->setCurrentWorker("gone");
        QCOMPARE(log.count("Not found effect"), 1);
        settle();
        QVERIFY(!effect("A")->isChecked() && !shows("otherOptRegion"));
        QVERIFY(m_page->currentWorker().isEmpty() && m_page->sOptWidgetName().isEmpty());
        QTest::mouseClick(effect("B"), Qt::LeftButton);
        QCOMPARE(m_page->sOptWidgetName(), QString("OtherOption"));
    }

    void discReactsToMouseAndKeys()
    {
        m_page->setWorkers(twoWorkers());
        settle();
        QSignalSpy picked(m_page.get(), &ControlPage::workerChanged);
        EffectWorkerButton* button = effect("B");
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(2, 2)); // inside the square, outside the disc
        QTest::mouseClick(button, Qt::RightButton);
        QCOMPARE(picked.count(), 0);
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(50, 100));
        QCOMPARE(picked.count(), 1);
        QTest::keyClick(effect("A"), Qt::Key_Return);
        QTest::keyClick(effect("B"), Qt::Key_Space);
        QTest::keyClick(effect("B"), Qt::Key_Left);
        QCOMPARE(picked.count(), 4);
        QCOMPARE(picked.last().at(0).toString(), QString("a"));
    }

    void pictureComesFromTheFileOfTheEffect()
    {
        const QTemporaryDir folder;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()) && QDir().mkpath("images/icons"));
        QImage picture(300, 300, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QVERIFY(picture.save("images/icons/id_with.png"));
        m_page->setWorkers({{"id.with", worker("with", 0)}, {"id.without", worker("without", 1)}}, "id.with");
        QVERIFY(QDir::setCurrent(before));
        settle();
        const auto middle = [this](const char* name) {
            return effect(name)->grab(QRect(0, 0, 100, 100)).toImage().pixelColor(50, 50);
        };
        QCOMPARE(middle("with"), QColor(Qt::blue)); // chosen, yet not tinted
        QCOMPARE(middle("without"), QColor(211, 212, 211));
    }

    void titleOpensTheControlMode()
    {
        auto* config = ConfigurationManager::instance();
        auto* header = part<QLabel>("modelImageHeader");
        const auto stored = [config] {
            return config->appConfig(ConfigKeys::kEnableMultiDeviceControlView.key).toBool();
        };
        const int before = contentHeight();
        QTest::mousePress(header, Qt::RightButton);
        QVERIFY(!stored() && !shows("devControlModeRegion"));
        QTest::mousePress(header, Qt::LeftButton);
        QVERIFY(stored() && shows("devControlModeRegion"));
        QVERIFY(contentHeight() > before);
        QVERIFY(!ControlPage().findChild<QWidget*>("devControlModeRegion")->isHidden());
        QTest::mousePress(header, Qt::LeftButton);
        QVERIFY(!stored() && contentHeight() == before);
    }

    void aLongTitleWidensNothing()
    {
        const int column = part<QWidget>("modelImage")->width();
        m_page->setControllerName("<b>\U0001F600 name</b>\n" + QString(200, 'x'));
        settle();
        QCOMPARE(part<QWidget>("modelImage")->width(), column);
        const QString shown = part<QLabel>("modelImageHeader")->text();
        QVERIFY(shown.startsWith("<b>") && shown.contains(u'\u2026') && !shown.contains('\n'));
        QCOMPARE(part<QLabel>("modelImageHeader")->textFormat(), Qt::PlainText);
        m_page->setControllerName("short");
        QCOMPARE(part<QLabel>("modelImageHeader")->text(), QString("short"));
    }

    void longTranslationsAreWrappedNotCut()
    {
        Groups groups;
        for (int i = 0; i < 6; ++i)
            groups[QString::number(i)] = group("group " + QString::number(i), i);
        m_page->setWorkGroups(groups, "0");
        m_page->setWorkers(twoWorkers(), "a");
        m_page->setControllerName("name");
        m_page->setControlModeVisible(true);
        LongTranslator translator;
        QCoreApplication::installTranslator(&translator);
        for (const int width : {1920, 1000, 1203, 1001}) {
            m_page->resize(width, 590);
            settle();
            for (const auto* button : m_page->findChildren<LineWrappedRadioButton*>()) {
                QVERIFY2(button->width() + 1 >= button->sizeHint().width(), qPrintable(button->text()));
                QVERIFY2(button->height() >= button->sizeHint().height(), qPrintable(button->text()));
            }
            QVERIFY(contentHeight() >= part<QWidget>("workersRegion")->geometry().bottom());
        }
        QVERIFY(effect("A Bildschirmsynchronisation von links nach rechts"));
        QCOMPARE(part<QLabel>("modelImageHeader")->text(), QString("name"));
        QCoreApplication::removeTranslator(&translator);
        settle();
        QCOMPARE(texts<LineWrappedRadioButton>().value(5), QString("group 5"));
    }

    void wrapsAtBlanksOnly()
    {
        const QFontMetrics metrics(qApp->font());
        const auto wrap = [&metrics](const char* text, const char* limit) {
            return LineWrappedRadioButton::wrapped(text, metrics, metrics.horizontalAdvance(limit));
        };
        QCOMPARE(wrap("aa bb\ncc", "aa bb"), QString("aa bb\ncc"));
        QCOMPARE(wrap("aa\nbb cc", "aa bb cc"), QString("aa bb cc"));
        QCOMPARE(wrap("wwwwwwww i", "ii"), QString("wwwwwwww\ni"));
        QCOMPARE(wrap("幻彩模式幻彩模式", "ii"), QString("幻彩模式幻彩模式"));
    }

    void tabGoesDownThePage()
    {
        m_page->setWorkGroups({{"a", group("A", 1)}, {"b", group("B", 0)}}, "b");
        m_page->setWorkers(twoWorkers(), "b");
        settle();
        part<QWidget>("installDirectionLTRButton")->setFocus();
        const auto* content = part<QWidget>("scrollAreaWidgetContents_3");
        QList<int> heights;
        for (int i = 0; i < 6; ++i) {
            heights += QApplication::focusWidget()->mapTo(content, QPoint()).y();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        // direction, group, light, brightness, option, effect
        QVERIFY(std::is_sorted(heights.begin(), heights.end()));
        QVERIFY(QApplication::focusWidget() == lOptPage());
    }

    void stackSkipsHiddenWidgetsAndLeavesALine()
    {
        QWidget host;
        auto* stack = new StackLayout(&host);
        stack->setSpacing(2);
        stack->setContentsMargins(5, 5, 5, 5);
        QVector<QWidget*> widgets;
        for (const int height : {10, 20, 30}) {
            widgets += new QWidget(&host);
            widgets.last()->setFixedHeight(height);
            widgets.last()->setMinimumWidth(height * 2);
            stack->addWidget(widgets.last());
        }
        widgets.at(1)->hide();
        host.resize(100, 200);
        host.show();
        QCOMPARE(widgets.at(0)->geometry(), QRect(0, 0, 100, 10));
        QCOMPARE(widgets.at(2)->geometry(), QRect(0, 10 + 2 + 1, 100, 30));
        QCOMPARE(stack->sizeHint(), QSize(60 + 10, 10 + 30 + 10));
        QCOMPARE(stack->heightForWidth(50), 10 + 30 + 2 * 3);
        QVERIFY(!stack->itemAt(3) && !stack->takeAt(-1));
    }
};

QTEST_MAIN(TestControlPage)
#include "tst_control_page.moc"
