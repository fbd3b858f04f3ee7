#include "LogCapture.h"
#include "ui/AD1ImageWidget.h"
#include "ui/AD2ImageWidget.h"
#include "ui/HomePage.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QPoint kBody(50, 50);
const QPoint kStripTop(50, 112); // 130 less 18

QImage redPicture(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::red);
    return picture;
}

/// What a red picture covers of a widget.
QRect redPart(QWidget& widget)
{
    const QImage mask = widget.grab().toImage().createMaskFromColor(QColor(Qt::red).rgb(), Qt::MaskOutColor);
    return QRegion(QBitmap::fromImage(mask)).boundingRect();
}

} // namespace

class TestHomePage : public QObject
{
    Q_OBJECT

public slots:
    void takeUrl(const QUrl& url) { m_urls.append(url.toString()); }

private slots:
    void init()
    {
        m_page = std::make_unique<HomePage>();
        m_page->resize(1000, 650);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }
    void cleanup() { m_page.reset(); }

    void manyDevicesFillTheRowsThereIsRoomForAndScroll()
    {
        auto* hint = m_page->findChild<QWidget*>("findingList");
        show(50);
        QVERIFY(!hint->isVisible());
        auto* area = m_page->findChild<QScrollArea*>("controllerButtonScrollArea");
        QTRY_VERIFY(area->verticalScrollBar()->isVisible());
        for (const int columns : {6, 3, 6}) { // in the order of the keys
            m_page->resize(columns == 6 ? QSize(1000, 650) : QSize(640, 480));
            QTRY_COMPARE(button(columns)->pos() - button(0)->pos(), QPoint(0, 150));
            QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
            button(5)->setFocus(Qt::TabFocusReason);
            QTest::keyClick(button(5), Qt::Key_Down);
            QVERIFY(button(5 + columns)->hasFocus());
        }
        show(12);
        QVERIFY(button(11)->hasFocus());
        show(0);
        QVERIFY(hint->isVisible());
    }

    void withoutADeviceThePageSaysWhyAndWhatToDo()
    {
        const auto offered = [this] { return m_page->findChild<QPushButton*>("accessButton"); };
        const auto texts = [this] {
            QStringList all;
            for (const QLabel* label : m_page->findChild<QWidget*>("findingList")->findChildren<QLabel*>())
                all += label->isVisible() ? QStringList(label->text()) : QStringList();
            return all;
        };
        QCOMPARE(texts().size(), 2); // nothing is connected
        FindingCard card{"<b>ttyUSB0", "try", {"sudo a", "sudo b"}, FindingCard::Access::Offered};
        QSignalSpy ordered(m_page.get(), &HomePage::accessOrdered);
        // As the answer to an order is: the button that is just pressed goes.
        connect(m_page.get(), &HomePage::accessOrdered, this, [this, card]() mutable {
            card.access = FindingCard::Access::Pending;
            m_page->setFindings({card, {"second", "wait"}});
        });
        m_page->setFindings({card, {"second", "wait"}});
        QTRY_COMPARE(texts(), QStringList({"<b>ttyUSB0", "try", "sudo a\nsudo b", "second", "wait"}));
        QPointer<QPushButton> pressed(offered());
        m_page->setFindings({card, {"second", "wait"}}); // nothing new
        QCOMPARE(offered(), pressed);
        QTest::mouseClick(pressed, Qt::LeftButton);
        QCOMPARE(ordered.count(), 1);
        QTRY_VERIFY(!pressed);
        QVERIFY(!offered()->isEnabled());
        QTest::mouseClick(m_page->findChild<QPushButton*>("copyButton"), Qt::LeftButton);
        QCOMPARE(QGuiApplication::clipboard()->text(), "sudo a\nsudo b");
    }

    void theNameIsForRenamingAndTheRestForOpening()
    {
        QSignalSpy entered(m_page.get(), &HomePage::controllerEntryOrdered);
        QSignalSpy renamed(m_page.get(), &HomePage::controllerNameChanged);
        const QString odd = "<b>&amp; &x</b>" + QString("\U0001F4A1").repeated(100);
        show(1, odd);
        QVERIFY(button()->text() == odd && button()->toolTip().contains(odd.toHtmlEscaped()));
        QVERIFY(button()->shortcut().isEmpty() && button()->size() == QSize(110, 130));
        show(2);
        QTest::mouseClick(button(), Qt::LeftButton, {}, kStripTop - QPoint(0, 1));
        QTest::keyClick(button(), Qt::Key_Return);
        QTRY_COMPARE(entered, QList<QVariantList>({{"id00"}, {"id00"}}));

        openEditor();
        QTest::keyClick(editor(), Qt::Key_Return); // the same name is no new one
        openEditor();
        QTest::keyClicks(editor(), "s");
        QTest::keyClick(editor(), Qt::Key_Escape);
        QTest::keyClick(editor(), Qt::Key_Down);
        QFocusEvent menuOpens(QEvent::FocusOut, Qt::PopupFocusReason);
        QCoreApplication::sendEvent(editor(), &menuOpens);
        QVERIFY(editor()->isVisible());
        QTest::keyClick(editor(), Qt::Key_Enter);
        QVERIFY(button()->hasFocus());
        QTest::keyClick(button(), Qt::Key_F2);
        QTest::keyClicks(editor(), "x"); // replaces all
        button(1)->setFocus();
        openEditor();
        editor()->clear();
        QTest::mouseClick(m_page.get(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!editor()->isVisible());

        const QList<QVariantList> expected{{"id00", "strips"}, {"id00", "x"}, {"id00", ""}};
        QTRY_COMPARE(renamed, expected);
        QCOMPARE(entered.count(), 2);
        QCOMPARE(button()->text(), QString());
    }

    void settingsAreOfferedForAdjustableDevices()
    {
        QSignalSpy entered(m_page.get(), &HomePage::controllerEntryOrdered);
        QSignalSpy ordered(m_page.get(), &HomePage::controllerOptOrdered);
        show(2);
        for (int i : {0, 1}) {
            QEnterEvent enter(kBody, kBody, kBody);
            QCoreApplication::sendEvent(button(i), &enter);
            QCOMPARE(config(i)->isVisible(), i == 0);
        }
        QTest::mouseClick(config(), Qt::LeftButton);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(button(), &leave);
        QVERIFY(!config()->isVisible());

        m_page->setFocus();
        button()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(button(), Qt::Key_Tab);
        QVERIFY(config()->hasFocus());
        QTest::keyClick(config(), Qt::Key_Return);
        QTest::keyClick(config(), Qt::Key_Tab);
        QVERIFY(button(1)->hasFocus());
        QVERIFY(!config()->isVisible());
        QTRY_COMPARE(ordered, QList<QVariantList>({{"id00"}, {"id00"}}));
        QCOMPARE(entered.count(), 0);
    }

    void devicesMayGoWhileTheyAreUsed()
    {
        QSignalSpy renamed(m_page.get(), &HomePage::controllerNameChanged);
        show(2);
        openEditor();
        QTest::keyClicks(editor(), "x");
        show(3);
        QVERIFY(editor()->isHidden() && button()->hasFocus());
        show(2);
        QSignalSpy entered(m_page.get(), &HomePage::controllerEntryOrdered);
        QTest::mouseClick(button(), Qt::LeftButton, {}, kBody);
        QTest::mouseClick(button(1), Qt::LeftButton, {}, kBody);
        show(1);
        QTRY_COMPARE(entered, QList<QVariantList>{{"id00"}}); // not of a device that has gone
        QCOMPARE(renamed.count(), 0);

        openEditor();
        QTest::keyClicks(editor(), "x");
        QTest::keyClick(editor(), Qt::Key_Return);
        show(1); // with the old name, which nobody was told to change yet
        QTRY_COMPARE(renamed.count(), 1);
        QCOMPARE(button()->text(), renamed.at(0).at(1).toString());

        const auto lose = [this] { // as while a dialog runs
            show(0);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        };
        connect(m_page.get(), &HomePage::controllerEntryOrdered, this, lose);
        connect(m_page.get(), &HomePage::controllerOptOrdered, this, lose);
        QPointer<QToolButton> used(button());
        QTest::mouseClick(used, Qt::LeftButton, {}, kBody);
        QTRY_VERIFY(!used);
        show(1);
        used = button();
        config()->click();
        QTRY_VERIFY(!used);
    }

    void advertisementReplacesPictureAndAddress()
    {
        const QTemporaryDir dir;
        const QString file = dir.filePath("ad.png");
        QVERIFY(redPicture(QSize(64, 32)).save(file));
        auto* box = m_page->findChild<QWidget*>("ADBox1");
        const QStringList schemes{"https", "http", "file", "steam"};
        for (const QString& scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "takeUrl");
        LogCapture log;
        const auto deliver = [&](const QString& picture, const QString& url) {
            m_page->setADBox1(picture, url);
            QTest::mousePress(box, Qt::LeftButton);
        };
        const auto isOffered = [box] { return box->cursor().shape() == Qt::PointingHandCursor; };
        QTest::mousePress(box, Qt::LeftButton);
        deliver(file, "https://shown.invalid");
        QVERIFY(isOffered());
        deliver(dir.filePath("none.png"), "https://lost.invalid");
        for (const QString& scheme : schemes)
            deliver(file, scheme + "://x.invalid");
        deliver(file, "//x.invalid");
        for (const QString& scheme : schemes)
            QDesktopServices::unsetUrlHandler(scheme);
        deliver(file, {});
        QVERIFY(!isOffered());
        QCOMPARE(m_urls, QStringList({"https://shown.invalid", "https://shown.invalid", "https://x.invalid",
                                      "http://x.invalid"}));
        QCOMPARE(log.count("[HomePage]: Failed to open url: "), 3);
        const QSize shown(box->width(), box->width() / 2);
        QCOMPARE(redPart(*box).size(), shown);
        m_page->showMinimized(); // nobody sees it, and nothing is kept
        QCOMPARE(redPart(*box).size(), QSize(0, 0));
        m_page->showNormal();
        QCOMPARE(redPart(*box).size(), shown);
    }

    void picturesFitTheirBoxes()
    {
        const auto place = [](ImageWidget&& widget, QSize picture) {
            widget.resize(200, 150);
            widget.setImg(redPicture(QSize(50, 50)));
            widget.grab(); // what is kept of this is of no use for another picture ...
            widget.setImg(redPicture(picture));
            widget.grab(); // ... nor for another size
            widget.resize(100, 100);
            return redPart(widget);
        };
        const QSize endless(1, 30000);
        QCOMPARE(place(ImageWidget(), {300, 200}), QRect(0, 16, 100, 66));
        QCOMPARE(place(ImageWidget(), endless), QRect());
        QCOMPARE(place(AD1ImageWidget(), endless), QRect(0, 0, 100, 100));
        QCOMPARE(place(AD2ImageWidget(), {300, 200}), QRect(0, 0, 100, 100));
        QCOMPARE(place(AD2ImageWidget(), {15, 30}), QRect(25, 0, 50, 100));
    }

private:
    static QString idOf(int index) { return QStringLiteral("id%1").arg(index, 2, 10, QLatin1Char('0')); }
    /// Every second device is adjustable.
    void show(int count, const QString& name = QStringLiteral("strip"))
    {
        QMap<QString, DeviceModel> models;
        for (int i = 0; i < count; ++i) {
            DeviceModel& model = models[idOf(i)];
            model.id = idOf(i);
            model.name = name;
            model.flag = i % 2 == 0;
        }
        m_page->setControllerList(models);
    }
    QToolButton* button(int index = 0) const
    {
        const auto all = m_page->findChild<QWidget*>("devicesContainer")->findChildren<QToolButton*>();
        return *std::find_if(all.begin(), all.end(),
                             [=](auto* each) { return each->property("controllerId") == idOf(index); });
    }
    QLineEdit* editor() const { return button()->property("nameEdit").value<QLineEdit*>(); }
    QToolButton* config(int index = 0) const
    {
        return button(index)->property("configBtn").value<QToolButton*>();
    }
    void openEditor() const
    {
        QTest::mouseClick(button(), Qt::LeftButton, {}, kStripTop);
        QVERIFY(editor()->isVisible());
    }

    std::unique_ptr<HomePage> m_page;
    QStringList m_urls;
};

QTEST_MAIN(TestHomePage)
#include "tst_home_page.moc"
