#include "ProgramUnderTest.h"
#include "effects/AbsWorkerWidget.h"
#include "ui/ControlPage.h"
#include "ui/Languagemanager.h"
#include "ui/StripPreview.h"

#include <QtTest>
#include <QtWidgets>

/// Tells each value that it is given back, as the real options do.
class EchoOption : public AbsWorkerWidget
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit EchoOption(QWidget* parent)
        : AbsWorkerWidget(parent)
    {
        setMinimumHeight(60);
        (new QComboBox(this))->view(); // whose list is a window of its own
    }
    void setEffectProperty(const QString& key, const QJsonValue& val) override
    {
        m_value = val;
        emit effectPropertyChanged(key, val);
        m_value = val; // touches the object, which the receiver may have replaced
    }
    QJsonValue effectProperty(const QString&) override { return m_value; }

private:
    QJsonValue m_value;
};

/// Shows itself while it is told that there is something to set.
class ShyOption : public EchoOption
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ShyOption(QWidget* parent)
        : EchoOption(parent)
    {
        hide();
    }
    void setEffectProperty(const QString& key, const QJsonValue& val) override
    {
        EchoOption::setEffectProperty(key, val);
        setVisible(val.toBool());
        emit visibleStatusChanged(val.toBool());
    }
};

namespace {

constexpr auto kGroups = "workGroupContainer";
constexpr auto kEffects = "workerContainer";

WorkGroupModel group(const QString& name, int order, const QString& tip = {})
{
    return {name, tip, order, {}};
}

WorkerModel worker(const QString& name, int order, const QString& sOpt = {}, const QString& lOpt = {})
{
    return {name, {}, order, {}, sOpt, lOpt, {}};
}

const QMap<QString, WorkGroupModel> kTwoGroups{{"a", group("A", 1)}, {"b", group("B", 0)}};
const QMap<QString, WorkerModel> kTwoWorkers{{"a", worker("A", 0, "EchoOption")},
                                             {"b", worker("B", 1, "ShyOption", "EchoOption")}};

QMap<QString, WorkerModel> numberedWorkers(int count)
{
    QMap<QString, WorkerModel> workers;
    for (int i = 1; i <= count; ++i)
        workers[QString::number(i)] = worker(QString::number(i), i, "EchoOption");
    return workers;
}

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
    /// The visible buttons of groups or effects, row by row.
    QList<QAbstractButton*> buttons(const char* container) const
    {
        QMap<QPair<int, int>, QAbstractButton*> found;
        for (auto* button : part<QWidget>(container)->findChildren<QAbstractButton*>()) {
            if (button->isVisible())
                found[{button->y(), button->x()}] = button;
        }
        return found.values();
    }
    QStringList texts(const char* container) const
    {
        QStringList result;
        for (const auto* button : buttons(container))
            result += button->text().replace('\n', ' ');
        return result;
    }
    auto* effect(const char* text) const { return buttons(kEffects).value(texts(kEffects).indexOf(text)); }
    auto* sOpt() const { return part<QWidget>("otherOptionsWidget")->findChild<AbsWorkerWidget*>(); }
    auto* lOpt() const { return qobject_cast<AbsWorkerWidget*>(lOptPage()); }
    bool isInSight(const QWidget* button) const
    {
        settle();
        return m_page->rect().contains(QRect(button->mapTo(m_page.get(), QPoint()), button->size()));
    }
    void grow(int height) const
    {
        sOpt()->setMinimumHeight(height);
        emit sOpt()->miniHeightChanged(height);
    }
    QWidget* lOptPage() const { return part<QStackedWidget>("lOperateWidConatiner")->currentWidget(); }
    int contentHeight() const { return part<QWidget>("scrollAreaWidgetContents_3")->height(); }
    void resize(int width, int height) const
    {
        m_page->resize(width, height);
        settle();
    }
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
        qRegisterMetaType<ShyOption*>();
        qApp->setStyleSheet(ProgramUnderTest::readFile(":/styles/default.qss"));
        QVERIFY(!qApp->styleSheet().isEmpty());
    }
    void init()
    {
        m_page = std::make_unique<ControlPage>();
        m_page->resize(1000, 590);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void isSilentWhenToldAndTellsWhatTheUserDoes()
    {
        const QSignalSpy lights(m_page.get(), &ControlPage::enableChanged);
        QSignalSpy told(m_page.get(), &ControlPage::brightnessChanged);
        m_page->setEnable(false);
        for (int percent = 0; percent <= 100; ++percent) { // 0.53 is a little less as a float
            m_page->setBrightness(static_cast<float>(percent / 100.0));
            QCOMPARE(part<QSlider>("brightnessSlider")->value(), percent);
        }
        QVERIFY(lights.isEmpty() && told.isEmpty());
        auto* button = part<QRadioButton>("LEDEnableButton"); // reacts up to its edge
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(button->width() - 4, button->height() / 2));
        part<QSlider>("brightnessSlider")->setValue(57);
        QCOMPARE(lights, QList<QVariantList>{{true}});
        QCOMPARE(told, QList<QVariantList>{{0.57F}});
    }

    void groupsStandInTheirOrder()
    {
        QSignalSpy picked(m_page.get(), &ControlPage::workGoupChanged);
        m_page->hide(); // what has no place must not appear with the page
        m_page->setWorkGroups({{"a", group("first of 3", 3)},
                               {"b", group("R&B <b>", 1, "<b>tip</b>")},
                               {"c", group("last", 9)},
                               {"d", group("second of three, a long name", 3)},
                               {"e", group("zero", 0)}},
                              "b");
        m_page->show();
        settle();
        // Of two with one order the later has the place; a name shows as it is.
        const auto shown = buttons(kGroups);
        QCOMPARE(texts(kGroups), (QStringList{"zero", "R&&B <b>", "second of three, a long name", "last"}));
        QVERIFY(shown.at(0)->y() == shown.at(2)->y() && shown.at(3)->y() > shown.at(2)->y());
        QVERIFY(shown.at(1)->toolTip().contains("&lt;b&gt;tip"));
        QVERIFY(shown.at(1)->isChecked() && picked.isEmpty());
        QTest::mouseClick(shown.at(2), Qt::LeftButton);
        QVERIFY(picked.value(0).value(0) == "d" && m_page->currentGroup() == "d");

        // Of two effects with one order both stay.
        m_page->setWorkers({{"a", worker("three", 3)}, {"tie", worker("tie", 3)}, {"d", worker("one", 1)}});
        settle();
        QCOMPARE(texts(kEffects), (QStringList{"one", "three", "tie"}));
    }

    void sameOptionClassStaysAndAnotherReplacesIt()
    {
        auto workers = kTwoWorkers;
        workers["c"] = worker("C", 2, "EchoOption");
        workers["d"] = worker("D", 3, "NobodyKnows", "Neither");
        const QSignalSpy active(m_page.get(), &ControlPage::optWidActived);
        m_page->setWorkers(workers, "a");
        const QPointer<AbsWorkerWidget> first = sOpt();
        m_page->setCurrentWorker("c");
        QVERIFY(sOpt() == first && active.count() == 2);
        m_page->setCurrentWorker("b");
        QVERIFY(qobject_cast<ShyOption*>(sOpt()));
        QTRY_VERIFY(first.isNull());
        m_page->setCurrentWorker("d");
        QVERIFY(!shows("otherOptRegion") && !sOpt() && !lOpt() && active.count() == 3);
        m_page->setCurrentWorker("gone"); // leaves nothing chosen
        QVERIFY(!effect("D")->isChecked() && m_page->currentWorker().isEmpty());
        m_page->setWorkers({{"a", worker("A", 0, "EchoOption")}}, "a"); // one is no choice
        QVERIFY(!shows("workersRegion") && shows("otherOptRegion") && sOpt());
    }

    void largeOptionGoesWithItsEffect()
    {
        connect(m_page.get(), &ControlPage::optWidActived, m_page.get(), [this] {
            m_page->setLOptWidProperty("", "filled");
            m_page->setSOptWidProperty("captures", true);
        });
        m_page->setWorkers(kTwoWorkers, "b");
        const int height = contentHeight();
        grow(160); // 100 more
        QCOMPARE(contentHeight(), height + 100);

        QSignalSpy told(m_page.get(), &ControlPage::lOptWidPropertyChanged);
        const QMap<QString, WorkerModel> others{{"c", worker("C", 0, {}, "EchoOption")}};
        const std::function<void()> changes[] = {
            [this] { m_page->setCurrentWorker("b"); }, // the same again
            [this] { m_page->setCurrentWorker("a"); }, [&] { m_page->setWorkers(others, "c"); },
            [&] { m_page->setWorkers(others); }, // nothing is chosen there
            [this] { m_page->dropOptionWidgets(); }};
        for (const auto& change : changes) {
            m_page->setWorkers(kTwoWorkers, "b");
            const QPointer<AbsWorkerWidget> old = lOpt();
            QCOMPARE(old->effectProperty(""), QJsonValue("filled"));
            const int before = told.size();
            m_page->setLOptWidProperty("", 1); // no event of its own
            QCOMPARE(told.size(), before);
            connect(m_page.get(), &ControlPage::lOptWidPropertyChanged, old.data(), change);
            old->setEffectProperty("k", 1); // it goes while it stands in its own signal
            QVERIFY(old && old->isHidden() && lOptPage() != old);
            emit old->effectPropertyChanged("late", 1);
            QCOMPARE(told.size(), before + 1);
            QTRY_VERIFY(!old);
            QVERIFY(part<QStackedWidget>("lOperateWidConatiner")->count() <= 2);
            QVERIFY(!lOpt() || lOpt()->effectProperty("") == QJsonValue("filled"));
        }
        QVERIFY(!shows("otherOptRegion") && !sOpt()); // the small one has gone along
    }

    void optionWithNothingToSetAppearsWhenThereIs()
    {
        m_page->setWorkers({{"a", worker("A", 0, "ShyOption")}, {"b", worker("B", 1, "ShyOption")}});
        for (const char* id : {"a", "b"}) {
            m_page->setCurrentWorker(id); // the second keeps it
            settle();
            QVERIFY(sOpt() && !shows("otherOptRegion"));
            m_page->setSOptWidProperty("captures", true);
            QVERIFY(shows("otherOptRegion") && sOpt()->isVisible());
            m_page->setSOptWidProperty("captures", false);
        }
    }

    void listsMayBeReplacedFromTheirOwnSignals()
    {
        ControlPage* page = m_page.get();
        const auto giveTwo = [page] {
            page->setWorkGroups(kTwoGroups, "b");
            page->setWorkers(kTwoWorkers, "a");
        };
        const QMap<QString, WorkerModel> another{{"x", worker("X", 0, "ShyOption")}};
        connect(page, &ControlPage::workGoupChanged, page, giveTwo);
        connect(page, &ControlPage::workerChanged, page, [=] { page->setWorkers(another, "x"); });
        connect(page, &ControlPage::sOptWidPropertyChanged, page, giveTwo);
        m_page->setWorkGroups(kTwoGroups, "a");
        settle();
        QTest::mouseClick(buttons(kGroups).at(0), Qt::LeftButton);
        settle();
        QCOMPARE(texts(kGroups) + texts(kEffects), (QStringList{"B", "A", "A", "B"}));
        for (const bool byMouse : {true, false}) {
            effect("A")->setFocus();
            byMouse ? QTest::mouseClick(effect("B"), Qt::LeftButton)
                    : QTest::keyClick(effect("A"), Qt::Key_Right);
            QCOMPARE(m_page->currentWorker(), "x");
            m_page->setSOptWidProperty("k", 1);
            settle();
            QCOMPARE(m_page->currentWorker(), "a");
        }
    }

    void discShowsTheFileOfItsEffectAndReactsToMouseAndKeys()
    {
        const QTemporaryDir folder;
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path()) && QDir().mkpath("images/icons"));
        QPixmap picture(300, 300);
        picture.fill(Qt::blue);
        QVERIFY(picture.save("images/icons/id_a.png"));
        m_page->setWorkers({{"id.a", worker("A", 0)}, {"id.b", worker("B", 1)}}, "id.a");
        QVERIFY(QDir::setCurrent(before));
        settle();
        QCOMPARE(effect("A")->grab().toImage().pixelColor(50, 50), QColor(Qt::blue)); // not tinted
        QSignalSpy picked(m_page.get(), &ControlPage::workerChanged);
        QTest::mouseClick(effect("B"), Qt::LeftButton, {}, QPoint(2, 2)); // in the square, off the disc
        QTest::keyClick(effect("B"), Qt::Key_Return);
        QCOMPARE(picked.count(), 1);
    }

    void longNamesAndNoticesKeepThePageInShape()
    {
        const int column = part<QWidget>("modelImage")->width();
        m_page->setControllerName("<b>\U0001F600 name</b>\n" + QString(200, 'x'));
        settle();
        QCOMPARE(part<QWidget>("modelImage")->width(), column);
        const auto* header = part<QLabel>("modelImageHeader");
        QVERIFY(header->text().contains(u'\u2026') && header->textFormat() == Qt::PlainText);

        const auto* notice = part<QLabel>("noticeLabel");
        const auto* button = part<QWidget>("noticeButton");
        m_page->setWorkers(kTwoWorkers, "a");
        resize(640, 590);
        const int before = contentHeight();
        for (const QString action : {"", "Connect"}) {
            m_page->setNotice("<b>The screen is gone</b> " + QString("connect it again ").repeated(8),
                              action);
            settle();
            QVERIFY(notice->isVisible() && notice->textFormat() == Qt::PlainText);
            QVERIFY(notice->height() >= notice->heightForWidth(notice->width()));
            QVERIFY(action.isEmpty() || button->y() > notice->geometry().bottom());
            QCOMPARE(button->isVisible(), !action.isEmpty());
            QVERIFY(part<QWidget>("workersRegion")->y() > part<QWidget>("noticeRegion")->geometry().bottom());
        }
        m_page->setNotice({});
        settle();
        QVERIFY(!notice->isVisible() && contentHeight() == before);
    }

    void firstRowOfEffectsShowsWithoutScrollingInAnyLanguage()
    {
        QMap<QString, WorkGroupModel> groups;
        for (const char* name : {"单色模式", "幻彩模式", "同屏模式", "音乐模式", "图形模式", "跑马灯模式"})
            groups[name] = group(name, groups.size());
        const auto* area = part<QScrollArea>("scrollArea");
        m_page->setControlModeVisible(true);
        m_page->setWorkGroups(groups, "音乐模式");
        m_page->setWorkers(numberedWorkers(8), "1");
        grow(80); // of the music effects
        for (const QString language : {"en", "de", "ru", "ar", "vi", "zh"}) {
            LanguageManager::instance()->switchLanguage(language);
            // What the title bar leaves of 80 % of a screen of 1366x768, and of the window's own size.
            for (const QSize size : {QSize(1090, 562), QSize(1178, 798)}) {
                resize(size.width(), size.height());
                QVERIFY2(isInSight(effect("1")), qPrintable(language));
                QVERIFY(part<QWidget>("productImgWid")->width() > size.width() / 3); // gives way, but stays
            }
            // On a small screen nothing is cut at the sides, and the rest is reached by scrolling.
            resize(640, 428);
            QVERIFY(area->verticalScrollBar()->maximum() > 0 && area->horizontalScrollBar()->maximum() == 0);
        }
    }

    void lightIsShownAtItsPlaceWhateverTheDirectionOfTheText()
    {
        StripPreview& preview = m_page->stripPreview();
        preview.setImg(QImage());               // the frame of light stands alone
        const auto lightAt = [&](int channel) { // from left to right, -1 without any
            const QImage picture = preview.grab().toImage();
            uint most = 0x40; // more than what is no light has
            double place = -1;
            for (int i = 0; i < picture.width() * picture.height(); ++i) {
                const int x = i % picture.width();
                const uint value = picture.pixel(x, i / picture.width()) >> channel & 0xFF;
                place = value > most ? double(x) / picture.width() : place;
                most = qMax(most, value);
            }
            return place;
        };
        constexpr int kRed = 16, kGreen = 8, kBlue = 0;
        for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            m_page->setLayoutDirection(direction);
            preview.setPlaces({{0, 0.5}, {1, 0.5}, {0.5, 0.5}}, 2);
            preview.setColors({{255, 0, 0}, {0, 30, 0}});
            QVERIFY(lightAt(kRed) > 0 && lightAt(kRed) < 0.4 && lightAt(kGreen) > 0.6);
            preview.setColors({{}, {}, {0, 0, 255}}); // what was lit before is gone
            QVERIFY(qAbs(lightAt(kBlue) - 0.5) < 0.1 && lightAt(kRed) < 0 && lightAt(kGreen) < 0);
            preview.setPlaces({{1, 0.5}}, 2);
            QVERIFY(lightAt(kBlue) < 0); // has no place any more
            const QImage dark = preview.grab().toImage();
            preview.setPlaces({{0, 0.5}}, 2);
            QVERIFY(preview.grab().toImage() != dark); // where a dark one stands shows
        }
        preview.setPlaces({{0.5, 0.5}}, 2);
        preview.setColors({{255, 56, 56}}); // the light of which a screen makes (255, 128, 128)
        const QColor middle(preview.grab().toImage().pixel(preview.rect().center())); // and a dark LED
        QVERIFY2(middle.red() > 250 && qAbs(middle.green() - 150) < 25, qPrintable(middle.name()));
        for (const int side : {1, 20, 60}) { // no room for all that light
            preview.setPlaces(QVector<QPointF>(10000, {1, 1}), 9);
            preview.setColors(QVector<LV_RGB>(20000, {255, 255, 255}));
            preview.setFixedSize(side, side);
            QCOMPARE(preview.grab().size(), QSize(side, side));
        }
    }

    void whatIsChosenCanBeSeenAndUsedOnASmallPage()
    {
        auto effects = numberedWorkers(12);
        effects["12"].lOptWidget = "EchoOption";
        const auto* bar = part<QScrollArea>("scrollArea")->verticalScrollBar();
        m_page->resize(1000, 450);
        const auto opensAt = [&](const char* chosen) {
            m_page->setControllerId("next");
            m_page->setWorkers(effects, chosen);
            return isInSight(effect(chosen)) ? bar->value() : -1;
        };
        QVERIFY(opensAt("11") > 0);
        QCOMPARE(opensAt("1"), 0);
        QVERIFY(opensAt("11") > 0);
        m_page->setWorkers(effects, "1"); // of another group: the page stays under the mouse
        QVERIFY(isInSight(effect("11")));
        QCOMPARE(opensAt("12"), -1); // its options show instead
        QCOMPARE(bar->value(), 0);

        lOptPage()->setMinimumWidth(260); // more than is left
        resize(640, 428);
        const QRect controls = part<QWidget>("optAreaWidget")->geometry();
        QVERIFY(!controls.intersects(part<QWidget>("modelImage")->geometry()));
        QVERIFY(part<QScrollArea>("scrollArea")->horizontalScrollBar()->maximum() > 0);
    }
};

QTEST_MAIN(TestControlPage)
#include "tst_control_page.moc"
