// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/systemlook.h"
#include "tests/cli/systemtree.h"

#include <QtTest>

namespace {

const QString node = QStringLiteral("/dev/ttyACM0");

} // namespace

class TestSystemLook : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aNodeTellsItsMode_data();
    void aNodeTellsItsMode();
    void noNodeIsNone();
    void aLockFileNamesItsProcess_data();
    void aLockFileNamesItsProcess();
    void aProcessWithTheNodeOpenIsFound();
    void aProcessIsToldOnce();
    void thisProcessIsNoHolder();
    void whoServesATerminalIsNoHolder_data();
    void whoServesATerminalIsNoHolder();
    void aHolderHasAnOwner();
    void locksAreFoundAsTheyAreNamed();
    void aLockOfAGoneProcessIsStale_data();
    void aLockOfAGoneProcessIsStale();
    void aLockInALinkedDirectoryIsToldOnce();
    void linksLeadToThePort_data();
    void linksLeadToThePort();
    void aServiceIsFoundByItsName();
    void rulesHideAPort_data();
    void rulesHideAPort();
    void theDriverIsSeen();

private:
    void putProcess(int id, const QByteArray& name)
    {
        m_tree->put(QStringLiteral("/proc/%1/comm").arg(id), name + '\n');
    }
    [[nodiscard]] cMySystemLook look() const { return cMySystemLook(m_tree->root()); }

    std::unique_ptr<support::SystemTree> m_tree;
};

void TestSystemLook::init()
{
    m_tree = std::make_unique<support::SystemTree>();
    m_tree->put(node, {});
}

void TestSystemLook::aNodeTellsItsMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::newRow("group") << 0660 << "rw-rw----";
    QTest::newRow("nobody") << 0000 << "---------";
    QTest::newRow("everybody") << 0777 << "rwxrwxrwx";
    QTest::newRow("owner reads, others write") << 0402 << "r------w-";
}

void TestSystemLook::aNodeTellsItsMode()
{
    QFETCH(int, mode);
    QCOMPARE(chmod(QFile::encodeName(m_tree->path(node)).constData(), static_cast<mode_t>(mode)),
             0);
    const std::optional<cMyNode> found = look().node(node);
    QVERIFY(found);
    QTEST(found->mode, "text");
    QCOMPARE(found->owner, QFileInfo(m_tree->path(node)).owner());
    QVERIFY(!found->group.isEmpty());
}

void TestSystemLook::noNodeIsNone()
{
    QVERIFY(!look().node(QStringLiteral("/dev/ttyACM1")));
}

void TestSystemLook::aLockFileNamesItsProcess_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<int>("count");
    const QString usual = QStringLiteral("/var/lock/LCK..ttyACM0");
    QTest::newRow("with program and host") << usual << QByteArray("42\nprog\nhost\n") << 1;
    QTest::newRow("padded") << usual << QByteArray("        42\n") << 1;
    QTest::newRow("newer place") << "/run/lock/LCK..ttyACM0" << QByteArray("42\n") << 1;
    QTest::newRow("process is gone") << usual << QByteArray("43\n") << 0;
    QTest::newRow("other port") << "/var/lock/LCK..ttyACM1" << QByteArray("42\n") << 0;
    QTest::newRow("empty") << usual << QByteArray() << 0;
    QTest::newRow("no number") << usual << QByteArray("../42\n") << 0;
}

void TestSystemLook::aLockFileNamesItsProcess()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, contents);
    putProcess(42, "gps daemon");
    m_tree->put(file, contents);
    const QVector<cMyProcess> holders = look().holders(node);
    QTEST(static_cast<int>(holders.size()), "count");
    if (!holders.isEmpty()) {
        QCOMPARE(holders.first().id, qint64{42});
        QCOMPARE(holders.first().name, QStringLiteral("gps daemon"));
    }
}

void TestSystemLook::aProcessWithTheNodeOpenIsFound()
{
    putProcess(7, "terminal");
    putProcess(8, "other");
    m_tree->put("/dev/ttyACM1", {});
    m_tree->link("/proc/7/fd/5", m_tree->path(node));
    m_tree->link("/proc/8/fd/5", m_tree->path("/dev/ttyACM1"));
    const QVector<cMyProcess> holders = look().holders(node);
    QCOMPARE(holders.size(), 1);
    QCOMPARE(holders.first().name, QStringLiteral("terminal"));
}

void TestSystemLook::aProcessIsToldOnce()
{
    putProcess(7, "terminal");
    m_tree->link("/proc/7/fd/5", m_tree->path(node));
    m_tree->link("/proc/7/fd/6", m_tree->path(node));
    m_tree->put("/run/lock/LCK..ttyACM0", "7\n");
    QCOMPARE(look().holders(node).size(), 1);
}

void TestSystemLook::thisProcessIsNoHolder()
{
    const int self = static_cast<int>(QCoreApplication::applicationPid());
    putProcess(self, "test");
    m_tree->link(QStringLiteral("/proc/%1/fd/5").arg(self), m_tree->path(node));
    QCOMPARE(look().holders(node).size(), 0);
}

void TestSystemLook::whoServesATerminalIsNoHolder_data()
{
    QTest::addColumn<QByteArray>("farEnd");
    QTest::addColumn<int>("count");
    QTest::newRow("of this terminal") << QByteArray("pos:\t0\ntty-index:\t3\n") << 0;
    QTest::newRow("of another terminal") << QByteArray("pos:\t0\ntty-index:\t33\n") << 1;
    QTest::newRow("of none") << QByteArray("pos:\t0\n") << 1;
}

void TestSystemLook::whoServesATerminalIsNoHolder()
{
    QFETCH(QByteArray, farEnd);
    putProcess(7, "emulator");
    m_tree->put("/dev/pts/3", {});
    m_tree->link("/proc/7/fd/5", m_tree->path("/dev/pts/3"));
    m_tree->put("/proc/7/fdinfo/6", farEnd);
    QTEST(static_cast<int>(look().holders("/dev/pts/3").size()), "count");
}

void TestSystemLook::aHolderHasAnOwner()
{
    putProcess(7, "terminal");
    m_tree->link("/proc/7/fd/5", m_tree->path(node));
    QCOMPARE(look().holders(node).first().owner, QFileInfo(m_tree->path("/proc/7")).owner());
    QVERIFY(!look().holders(node).first().owner.isEmpty());
}

void TestSystemLook::locksAreFoundAsTheyAreNamed()
{
    putProcess(42, "gps daemon");
    m_tree->put("/run/lock/LCK..pts_3", "42\n");
    QCOMPARE(look().holders("/dev/pts/3").size(), 1);
    QCOMPARE(look().holders("/dev/3").size(), 0);
}

void TestSystemLook::aLockOfAGoneProcessIsStale_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("isStale");
    // Numbers above the greatest that the system gives to processes.
    QTest::newRow("gone") << QByteArray("   4194305\nprog\nhost\n") << true;
    QTest::newRow("no number of a process") << QByteArray("99999999999\n") << true;
    QTest::newRow("seen in the files") << QByteArray("42\n") << false;
    QTest::newRow("hidden in the files")
        << QByteArray::number(QCoreApplication::applicationPid()) << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("no number") << QByteArray("prog\n") << false;
}

void TestSystemLook::aLockOfAGoneProcessIsStale()
{
    QFETCH(QByteArray, contents);
    QFETCH(bool, isStale);
    putProcess(42, "gps daemon");
    const QString file = QStringLiteral("/run/lock/LCK..ttyACM0");
    m_tree->put(file, contents);
    QCOMPARE(look().staleLocks(node), isStale ? QStringList{file} : QStringList());
    QCOMPARE(look().staleLocks("/dev/ttyACM1"), QStringList());
}

void TestSystemLook::aLockInALinkedDirectoryIsToldOnce()
{
    m_tree->put("/run/lock/LCK..ttyACM0", "4194305\n");
    m_tree->link("/var/lock", m_tree->path("/run/lock"));
    QCOMPARE(look().staleLocks(node), QStringList{"/run/lock/LCK..ttyACM0"});
}

void TestSystemLook::linksLeadToThePort_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("none") << node << node << true;
    QTest::newRow("link") << "/dev/miolka" << node << true;
    QTest::newRow("link to a link") << "/home/jan/miolka" << node << true;
    QTest::newRow("relative") << "/dev/serial/by-id/usb-1" << node << true;
    QTest::newRow("to another port") << "/dev/other"
                                     << "/dev/ttyACM1" << false;
    QTest::newRow("to itself") << "/dev/loop"
                               << "/dev/loop" << false;
    QTest::newRow("nothing there") << "/dev/nothing"
                                   << "/dev/nothing" << false;
}

void TestSystemLook::linksLeadToThePort()
{
    QFETCH(QString, path);
    m_tree->put("/dev/ttyACM1", {});
    m_tree->link("/dev/miolka", m_tree->path(node));
    m_tree->link("/home/jan/miolka", m_tree->path("/dev/miolka"));
    m_tree->link("/dev/serial/by-id/usb-1", "../../ttyACM0");
    m_tree->link("/dev/other", m_tree->path("/dev/ttyACM1"));
    m_tree->link("/dev/loop", m_tree->path("/dev/loop"));
    QTEST(look().target(path), "target");
    QTEST(look().isSamePort(node, path), "isSame");
}

void TestSystemLook::aServiceIsFoundByItsName()
{
    putProcess(9, "ModemManager");
    QVERIFY(look().isRunning("ModemManager"));
    QVERIFY(!look().isRunning("Modem"));
}

void TestSystemLook::rulesHideAPort_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("nothing known") << "/run/udev/data/c1:1" << QByteArray() << false;
    QTest::newRow("port") << "/run/udev/data/c166:0"
                          << QByteArray("I:12\nE:ID_MM_DEVICE_IGNORE=1\n") << true;
    QTest::newRow("usb device") << "/run/udev/data/c189:3"
                                << QByteArray("E:ID_MM_DEVICE_IGNORE=1\n") << true;
    QTest::newRow("not") << "/run/udev/data/c166:0" << QByteArray("E:ID_MM_DEVICE_IGNORE=0\n")
                         << false;
    QTest::newRow("other property")
        << "/run/udev/data/c166:0" << QByteArray("E:XID_MM_DEVICE_IGNORE=1\n") << false;
}

void TestSystemLook::rulesHideAPort()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, contents);
    m_tree->putUsbDevice("1-1", "03eb", "2018", "ttyACM0");
    m_tree->put("/sys/devices/usb1/1-1/dev", "189:3\n");
    m_tree->put("/sys/class/tty/ttyACM0/dev", "166:0\n");
    m_tree->put(file, contents);
    QTEST(look().isHiddenFromModems("ttyACM0"), "isHidden");
}

void TestSystemLook::theDriverIsSeen()
{
    QVERIFY(!look().hasSerialDriver());
    m_tree->put("/sys/bus/usb/drivers/cdc_acm/uevent", {});
    QVERIFY(look().hasSerialDriver());
}

QTEST_GUILESS_MAIN(TestSystemLook)
#include "test_systemlook.moc"
