// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/portsearch.h"
#include "cli/system/systemlook.h"
#include "device/protocol.h"
#include "tests/cli/systemtree.h"

#include <QtTest>

/// Serial ports come from the system that the test runs on, which has none of ours; those are met
/// in tests of the program behind mocked ports.
class TestPortSearch : public QObject
{
    Q_OBJECT

private slots:
    void aBootLoaderIsFoundOnUsb();
    void aBootLoaderWithAPortIsFoundOnce();
    void otherDevicesAreNotOurs_data();
    void otherDevicesAreNotOurs();
    void withoutTheSystemsFilesThereIsNothing();
    void aDevicesPortIsFoundBelowIt();
};

void TestPortSearch::aBootLoaderIsFoundOnUsb()
{
    support::SystemTree tree;
    tree.putUsbDevice("2-1.3", "03eb", "2ff0", {}, "A12");
    const QVector<cMyFoundPort> found = cli::findPorts(cMySystemLook(tree.root()));
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().name, QStringLiteral("2-1.3"));
    QCOMPARE(found.first().path, QString());
    QCOMPARE(found.first().product, device::bootLoaderProductId);
    QCOMPARE(found.first().serialNumber, QStringLiteral("A12"));
    QVERIFY(found.first().isBootLoader);
}

void TestPortSearch::aBootLoaderWithAPortIsFoundOnce()
{
    support::SystemTree tree;
    tree.putUsbDevice("1-1", "03eb", "2ff0", "ttyACM7");
    // Its port is for the list of serial ports to tell of.
    QCOMPARE(cli::findPorts(cMySystemLook(tree.root())).size(), 0);
}

void TestPortSearch::otherDevicesAreNotOurs_data()
{
    QTest::addColumn<QByteArray>("vendor");
    QTest::addColumn<QByteArray>("product");
    QTest::newRow("other vendor") << QByteArray("1d6b") << QByteArray("2ff0");
    QTest::newRow("other product") << QByteArray("03eb") << QByteArray("2ff1");
    QTest::newRow("no number") << QByteArray("03eb") << QByteArray("zz");
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void TestPortSearch::otherDevicesAreNotOurs()
{
    QFETCH(QByteArray, vendor);
    QFETCH(QByteArray, product);
    support::SystemTree tree;
    tree.putUsbDevice("1-1", vendor, product);
    QCOMPARE(cMySystemLook(tree.root()).usbDevices().size(), 0);
}

void TestPortSearch::withoutTheSystemsFilesThereIsNothing()
{
    const support::SystemTree tree;
    QCOMPARE(cMySystemLook(tree.root()).usbDevices().size(), 0);
}

void TestPortSearch::aDevicesPortIsFoundBelowIt()
{
    support::SystemTree tree;
    tree.putUsbDevice("1-2", "03eb", "2018", "ttyACM3");
    tree.putUsbDevice("1-1", "03EB", "2018");
    const QVector<cMyUsbDevice> devices = cMySystemLook(tree.root()).usbDevices();
    QCOMPARE(devices.size(), 2);
    QCOMPARE(devices.first().portName, QString());
    QCOMPARE(devices.last().name, QStringLiteral("1-2"));
    QCOMPARE(devices.last().portName, QStringLiteral("ttyACM3"));
}

QTEST_GUILESS_MAIN(TestPortSearch)
#include "test_portsearch.moc"
