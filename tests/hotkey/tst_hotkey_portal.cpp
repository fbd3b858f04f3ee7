// Shortcuts by the desktop's portal: what it is asked, when, and what becomes of them.
#include "FakeShortcutsPortal.h"
#include "hotkey/PortalTrigger_linux.h"
#include "hotkey/QHotkeyPrivate.h"

#include <QGuiApplication>
#include <QtTest>

namespace {

constexpr Qt::KeyboardModifiers kHeld(Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier);
const QString kBoth("a=CTRL+ALT+SHIFT+F10 b=CTRL+ALT+SHIFT+Right");
const QString kChanged("a=CTRL+ALT+SHIFT+F1 b=CTRL+ALT+SHIFT+Right");
const QStringList kLooks{"CreateSession", "ListShortcuts"};

} // namespace

class tst_HotkeyPortal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_bus.start());
        m_bus.useAsSession();
        qputenv("XDG_SESSION_TYPE", "wayland");
    }
    // Each case has an application of its own, and with it a platform.
    void init()
    {
        static int count = 1;
        static char name[] = "tst_hotkey_portal";
        static char* names[] = {name, nullptr};
        m_app = std::make_unique<QGuiApplication>(count, names);
        m_portal = std::make_unique<FakeShortcutsPortal>(m_bus.connection("portal"));
        m_decided.clear();
        connect(&platform(), &QHotkeyPrivate::userDecided, [this](bool is) { m_decided += is ? '1' : '0'; });
        connect(&platform(), &QHotkeyPrivate::servesAgain, [this] {
            for (QHotkey* each : {m_a.get(), m_b.get()})
                if (platform().obstacleTo(Qt::Key(each->shortcut()[0] & ~kHeld), kHeld) ==
                    HotkeyTrouble::None)
                    each->setRegistered(true);
        });
    }
    void cleanup()
    {
        m_a.reset();
        m_b.reset();
        m_portal.reset();
        QDBusConnection::disconnectFromBus("portal");
        m_app.reset();
    }

    void allAreBoundOnceAndChangedTogether()
    {
        m_portal->answers["ListShortcuts"] = m_portal->answers["BindShortcuts"] = FakeShortcutsPortal::Twice;
        m_portal->chosen["b"] = "Press <Super>F7";
        QVERIFY(m_portal->appear());
        registerBoth(); // at an autostart nobody would know what the desktop asks for
        QTRY_COMPARE(m_portal->calls, kLooks);
        platform().allowQuestions();
        QTRY_COMPARE(m_decided, "1");
        QVERIFY(m_portal->calls.mid(2) == QStringList{"BindShortcuts"} && asked() == kBoth);
        QCOMPARE(m_portal->asked[0].second["description"].toString(), "what it does");

        QSignalSpy pressed(m_a.get(), &QHotkey::activated), released(m_a.get(), &QHotkey::released);
        for (const QString& session : {QString("/an/old/session"), m_portal->session}) {
            m_portal->tell("Activated", "nobody", session);
            m_portal->tell("Activated", "a", session);
        }
        m_portal->tell("Deactivated", "a", m_portal->session);
        QTRY_COMPARE(released.count(), 1);
        QCOMPARE(pressed.count(), 1);

        QCOMPARE(m_b->desktopKeys(), "Press <Super>F7"); // which the user is to be told
        QCOMPARE(platform().obstacleTo(Qt::Key_F1, kHeld), HotkeyTrouble::None); // looks, asks nobody
        const QString before = m_portal->session;
        m_portal->calls.clear();
        m_a = makeHotkey("a", Qt::Key_F1); // before the old one goes
        QTRY_COMPARE(asked(), kChanged);
        QCOMPARE(m_portal->calls, (QStringList{"CreateSession", "BindShortcuts"}));
        QCOMPARE(m_portal->closed, QStringList{before});

        const auto change = [this](const QString& id, const QString& keys, const QString& session) {
            const PortalShortcuts changed{{id, {{"trigger_description", keys}}}};
            m_portal->tell("ShortcutsChanged", QVariant::fromValue(changed), session);
        };
        change("b", "", before);
        change("a", "", m_portal->session);
        QTRY_COMPARE(m_a->trouble(), HotkeyTrouble::NoKeysYet);
        QVERIFY(m_a->isRegistered() && !m_b->desktopKeys().isEmpty());
        change("a", "Ctrl+Alt+Shift+F1", m_portal->session);
        QTRY_COMPARE(m_a->trouble(), HotkeyTrouble::None);

        m_portal->calls.clear();
        m_portal->bound.clear();
        m_portal->endSession(); // then nobody is asked until the user looks
        QTRY_VERIFY(!m_a->isRegistered());
        retryTimer().start(1); // instead of half a minute
        QTRY_COMPARE(m_portal->calls, kLooks);
        QTRY_VERIFY(m_a->isRegistered());
        platform().allowQuestions();
        QTRY_COMPARE(m_portal->bound.size(), 2);
        m_portal->vanish();
        QTRY_VERIFY(!m_a->isRegistered() && m_b->trouble() == HotkeyTrouble::NotAllowed);
        m_portal->calls.clear();
        QVERIFY(m_portal->appear());
        QTRY_VERIFY(m_portal->calls == kLooks && m_a->isRegistered());
        m_a = makeHotkey("a", Qt::Key_F10); // what it remembers is not what the user has chosen since
        QTRY_COMPARE(asked(), kBoth);
    }

    void theUserIsNotAskedAgainForWhatHeRefused()
    {
        m_portal->bound = {{"b", {}}}; // in an earlier run
        QVERIFY(m_portal->appear());
        platform().allowQuestions();
        registerBoth();
        QTRY_COMPARE(m_a->trouble(), HotkeyTrouble::NotGranted);
        QVERIFY(m_portal->calls == kLooks && m_b->isRegistered());
        m_portal->bound.clear(); // nor where the desktop has forgotten all
        m_portal->vanish();
        QVERIFY(m_portal->appear());
        QTRY_COMPARE(asked(), "b=CTRL+ALT+SHIFT+Right");

        m_portal->refused = "b";
        m_a->setRegistered(true); // who wants one again may want all
        QTRY_COMPARE(asked(), kBoth);
        QTRY_VERIFY(!m_b->isRegistered());
        m_portal->answers["BindShortcuts"] = FakeShortcutsPortal::Refuse;
        m_a = makeHotkey("a", Qt::Key_F1);
        QTRY_COMPARE(m_decided.right(2), "10");
        m_portal->calls.clear();
        platform().allowQuestions();
        QCOMPARE(platform().obstacleTo(Qt::Key_F1, kHeld), HotkeyTrouble::NotGranted);
        QCoreApplication::processEvents();
        QVERIFY(m_portal->calls.isEmpty());
    }

    void aPortalThatFailsIsTriedAgainUnlessItWouldAsk()
    {
        platform().allowQuestions();
        registerBoth(); // there is no portal
        QTRY_VERIFY(!m_a->isRegistered() && !m_b->isRegistered());
        QVERIFY(!retryTimer().isActive() && !m_a->setRegistered(true));
        for (const char* method : {"CreateSession", "ListShortcuts"}) {
            m_portal->answers = {{method, FakeShortcutsPortal::End}};
            m_portal->vanish();
            QVERIFY(m_portal->appear());
            QTRY_VERIFY(m_portal->calls.contains(method) && retryTimer().isActive() && !m_a->isRegistered());
        }
        m_portal->answers = {{"BindShortcuts", FakeShortcutsPortal::End}};
        retryTimer().start(1);
        QTRY_COMPARE(asked(), kBoth);
        QTRY_VERIFY(!m_a->isRegistered());
        QVERIFY(!retryTimer().isActive());
    }

    void triggersAreSpelledAsThePortalDoes()
    {
        QCOMPARE(portalTrigger(platform().nativeShortcut(Qt::Key_A, Qt::MetaModifier)), "LOGO+a");
        const auto keypad = platform().nativeShortcut(Qt::Key_4, Qt::KeypadModifier | Qt::AltModifier);
        QCOMPARE(portalTrigger(keypad), "ALT+KP_4");
        const auto pageUp = platform().nativeShortcut(Qt::Key_PageUp, kHeld);
        for (const char* words : {"Ctrl+Alt+Shift+PgUp", "Press <Control><Shift><Alt>Prior"})
            QVERIFY2(meansSameKeys(words, pageUp), words);
        for (const char* words : {"", "PgUp", "Meta+Ctrl+Alt+Shift+PgUp", "Ctrl+Alt+Shift+Up"})
            QVERIFY2(!meansSameKeys(words, pageUp), words);
    }

private:
    static QHotkeyPrivate& platform() { return *QHotkeyPrivate::instance(); }
    static std::unique_ptr<QHotkey> makeHotkey(const QString& id, Qt::Key key)
    {
        auto hotkey = std::make_unique<QHotkey>();
        hotkey->setAction(id, "what it does");
        hotkey->setShortcut(key, kHeld, true);
        return hotkey;
    }
    void registerBoth()
    {
        m_b = makeHotkey("b", Qt::Key_Right);
        m_a = makeHotkey("a", Qt::Key_F10);
    }
    static QTimer& retryTimer() { return *platform().findChild<QTimer*>(); }
    QString asked() const
    {
        QStringList parts;
        for (const auto& [id, properties] : m_portal->asked)
            parts += id + '=' + properties["preferred_trigger"].toString();
        return parts.join(' ');
    }

    PrivateBus m_bus;
    std::unique_ptr<QGuiApplication> m_app;
    std::unique_ptr<FakeShortcutsPortal> m_portal;
    std::unique_ptr<QHotkey> m_a, m_b;
    QString m_decided; ///< a 1 for each grant, a 0 for each refusal
};

QTEST_APPLESS_MAIN(tst_HotkeyPortal)
#include "tst_hotkey_portal.moc"
