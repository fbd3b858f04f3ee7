// What other programs of the same machine send.
#include "Fuzz.h"

#include "LightGrid.h"
#include "LightReceiver.h"
#include "hotkey/KeySymbols_x11.h"
#include "hotkey/PortalTrigger_linux.h"
#include "system/RuntimeFile.h"
#include "system/WakeUp.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QRect>

/// Lines of pieces to the socket of the running program, each piece in a turn of its own.
FUZZ_TARGET(wake_up)
{
    static int asked = 0;
    static WakeUpServer* const server = [] {
        auto* made = new WakeUpServer;
        QObject::connect(made, &WakeUpServer::wakeUpRequested, [] { ++asked; });
        QObject::connect(made, &WakeUpServer::quitRequested, [] { asked += 100; });
        REQUIRE(made->listen());
        return made;
    }();
    Q_UNUSED(server)
    asked = 0;
    QLocalSocket socket;
    socket.connectToServer(runtimeFile(QStringLiteral("lumivar-wakeup")));
    REQUIRE(socket.waitForConnected(60000));
    FuzzInput input(bytes.left(300));
    const int pieceBytes = 1 + input.number(80);
    const QByteArray all = input.rest();
    for (int at = 0; at < all.size() && socket.state() == QLocalSocket::ConnectedState; at += pieceBytes) {
        socket.write(all.mid(at, pieceBytes));
        socket.flush();
        QCoreApplication::processEvents();
    }
    const QByteArray first = all.left(all.indexOf('\n') + 1);
    const int wanted = first == "13137\n" ? 1 : first == "13138\n" ? 100 : 0;
    const bool isLine = !first.isEmpty() || all.size() >= 64;
    QElapsedTimer patience;
    for (patience.start(); isLine && socket.state() == QLocalSocket::ConnectedState;) {
        REQUIRE(patience.elapsed() < 60000); // whoever says too much or something else is hung up on
        QCoreApplication::processEvents();
    }
    socket.abort();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    REQUIRE(asked == wanted);
}

/// Datagrams to the viewer: a length each, then its bytes.
FUZZ_TARGET(light_datagrams)
{
    LightReceiver receiver;
    QVector<LV_RGB> seen;
    QObject::connect(&receiver, &LightReceiver::received, [&seen](const auto& colors) { seen = colors; });
    int leds = 0;
    for (FuzzInput input(bytes); !input.isOver();) {
        const QByteArray datagram = input.line();
        receiver.take(datagram);
        leds = datagram.size() >= 3 ? datagram.size() / 3 : leds;
        REQUIRE(seen.size() == leds);
        const LightGrid grid = LightGrid::of(leds);
        for (int i = 0; i < leds; ++i)
            REQUIRE(QRect(0, 0, grid.columns, grid.rows).contains(grid.cellOf(i)));
    }
}

/// The desktop's words for keys, and the words that we ask it for keys by.
FUZZ_TARGET(portal_trigger)
{
    FuzzInput input(bytes);
    const quint32 modifiers = (quint32(input.number(32)) << 25) &
                              (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const int key = input.number() | input.number() << 8;
    const int special = input.number(2) * 0x01000000;
    const QHotkey::NativeShortcut shortcut(symbolOfKey(key | special), modifiers);
    const QString words = QString::fromUtf8(input.rest());
    meansSameKeys(words, shortcut);
    meansSameKeys(words, {quint32(key), modifiers});
    if (shortcut.key != XKB_KEY_NoSymbol)
        REQUIRE(meansSameKeys(portalTrigger(shortcut), shortcut));
}
