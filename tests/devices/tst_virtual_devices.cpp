#include "controllers/VTController.h"
#include "controllers/VTControllerEnumerator.h"
#include "support/config/ConfigurationManager.h"

#include <QTest>
#include <QUdpSocket>

class VirtualDevicesTest : public QObject
{
    Q_OBJECT

private slots:
    void threeDevicesComeAndOneSends()
    {
        QUdpSocket listener;
        QVERIFY(listener.bind(QHostAddress::LocalHost, 65330));
        auto* config = ConfigurationManager::instance();
        config->reset();
        config->setAppConfig("runtime.gama", 2.0);
        QList<AbsRGBControllerPtr> devices;
        VTControllerEnumerator enumerator;
        connect(&enumerator, &IDeviceEnumerator::deviceEnabled, this,
                [&](const AbsRGBControllerPtr& device) { devices.append(device); });
        QTRY_COMPARE(devices.size(), 3);
        for (const auto& device : qAsConst(devices))
            QCOMPARE(device->options().gama, 2.0F); // as every device
        QCOMPARE(devices.at(2)->options().id, "LV0N03:0987654321");
        QVERIFY(devices.at(2)->options().nbLeds == 253U && devices.at(2)->options().brightness == 0.6F);

        // Each has its own colour, so that a datagram tells whose it is.
        for (int i = 0; i < devices.size(); ++i)
            devices.at(i)->writeColors({{static_cast<uint8_t>(i), 7, 255}, {1, 2, 3}});
        QTRY_VERIFY(listener.hasPendingDatagrams());
        QByteArray bytes(listener.pendingDatagramSize() > 0 ? 1024 : 0, 0);
        bytes.resize(static_cast<int>(listener.readDatagram(bytes.data(), bytes.size())));
        QCOMPARE(bytes.toHex(), QByteArray("0207ff010203")); // not padded to the LED count
        QVERIFY(!listener.hasPendingDatagrams());
    }
};

QTEST_GUILESS_MAIN(VirtualDevicesTest)
#include "tst_virtual_devices.moc"
