// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/virtualport.h"

#include "emulator/trace.h"
#include "tests/emulator/terminalpeer.h"
#include "tests/support/posix.h"
#include "tests/support/serveddevice.h"

#include <QAbstractEventDispatcher>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>

using support::TerminalPeer;

/// A device in a thread of its own, as a program finds it.
class TestVirtualPort : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void answersEachLine();
    void severalLinesInOnePacket();
    void aLineInPieces();
    void bytesPassAsTheyAre();
    void hangUpWhenUnplugged();
    void linesAreCountedFromPlugging();
    void latencyOfEachLine();
    void latencyZeroIsFast();
    void faultsReachTheWire();
    void splitAnswersKeepTheirOrder();
    void silenceUntilPluggedAgain();
    void vanishes();
    void noDeviceNoAnswer();
    void aReaderThatDoesNotReadBlocksNothing();
    void closedPeerIsNoBusyLoop();
    void traceHasEveryLine();
    void escapes();

private:
    /// Runs in the port's thread, and waits for it.
    void inThread(std::function<void()> call) { m_device->inThread(std::move(call)); }
    cMyVirtualPort& port() { return m_device->port(); }
    void plug()
    {
        inThread([this] { port().plug(); });
        m_peer = std::make_unique<TerminalPeer>(m_device->path());
        QVERIFY(m_peer->isOpen());
    }
    void unplug()
    {
        inThread([this] { port().unplug(); });
    }
    void setFaults(const char* specs)
    {
        cMyFaults faults;
        QVERIFY(faults.add(QString::fromLatin1(specs)));
        inThread([this, faults] { port().setFaults(faults); });
    }

    // Counted in the port's thread, where the signals are emitted.
    std::atomic<int> m_served{0};
    std::atomic<int> m_lastCount{0};
    std::atomic<int> m_vanished{0};
    std::unique_ptr<support::ServedDevice> m_device;
    std::unique_ptr<TerminalPeer> m_peer;
};

void TestVirtualPort::init()
{
    m_device = std::make_unique<support::ServedDevice>();
    m_served = 0;
    m_vanished = 0;
    inThread([this] {
        connect(
            &port(), &cMyVirtualPort::lineServed, &port(),
            [this](int count) {
                m_lastCount = count;
                ++m_served;
            },
            Qt::DirectConnection);
        connect(
            &port(), &cMyVirtualPort::vanished, &port(), [this] { ++m_vanished; },
            Qt::DirectConnection);
    });
    m_peer = std::make_unique<TerminalPeer>(m_device->path());
    QVERIFY(m_peer->isOpen());
}

void TestVirtualPort::cleanup()
{
    unplug();
    m_device.reset();
    m_peer.reset();
}

void TestVirtualPort::answersEachLine()
{
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
    QVERIFY(m_peer->send("nonsense\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("?\r\n"));
}

void TestVirtualPort::severalLinesInOnePacket()
{
    QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n#EEPROM\r\n#READ\r\n:0100000000FF\r\n#RO"));
    QCOMPARE(m_peer->lines(5),
             QByteArray("#ROOT\r\n#HEX\r\n#EEPROM\r\n#READ\r\n:0100000001FE\r\n"));
    QVERIFY(m_peer->send("OT\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
}

void TestVirtualPort::aLineInPieces()
{
    for (const char piece : QByteArray("#EEPROM\r")) {
        QVERIFY(m_peer->send(QByteArray(1, piece)));
        QVERIFY(m_peer->packet(5).isEmpty());
    }
    QVERIFY(m_peer->send("\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#EEPROM\r\n"));
}

void TestVirtualPort::bytesPassAsTheyAre()
{
    // What a cooked terminal makes a signal, an end of file, an erased character or a line end of.
    QVERIFY(m_peer->send(QByteArray("\x03\x04\x7F\x11\x13\x1A\r#ROOT\r\n#HEX\r\n")));
    QCOMPARE(m_peer->lines(2), QByteArray("?\r\n#HEX\r\n"));
}

void TestVirtualPort::hangUpWhenUnplugged()
{
    const QString before = m_device->path();
    QVERIFY(!m_peer->isHungUp());
    // So that the system cannot give the same number again.
    const auto old = std::move(m_peer);
    unplug();
    QVERIFY(old->isHungUp());
    bool isPlugged = true;
    inThread([this, &isPlugged] { isPlugged = port().isPlugged(); });
    QVERIFY(!isPlugged);
    QVERIFY(m_device->path().isEmpty());
    plug();
    QVERIFY(m_device->path() != before);
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
}

void TestVirtualPort::linesAreCountedFromPlugging()
{
    QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n"));
    QTRY_COMPARE(m_served.load(), 2);
    QCOMPARE(m_lastCount.load(), 2);
    unplug();
    plug();
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QTRY_COMPARE(m_served.load(), 3);
    QCOMPARE(m_lastCount.load(), 1);
}

void TestVirtualPort::latencyOfEachLine()
{
    constexpr int latency = 60;
    inThread([this] { port().setLatency(latency); });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n#RAM\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
    QVERIFY(clock.elapsed() >= latency - 2);
    QCOMPARE(m_peer->lines(2), QByteArray("#HEX\r\n#RAM\r\n"));
    QVERIFY(clock.elapsed() >= 3 * latency - 2);
}

void TestVirtualPort::latencyZeroIsFast()
{
    constexpr int exchanges = 20000;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < exchanges; ++i) {
        QVERIFY(m_peer->send("#ROOT\r\n"));
        QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
    }
    // A timer for each line would take a millisecond or more for each of them.
    QVERIFY2(clock.elapsed() < exchanges, QByteArray::number(clock.elapsed()).constData());
}

void TestVirtualPort::faultsReachTheWire()
{
    setFaults("join");
    QVERIFY(m_peer->send("#ROOT\r\n"));
    const QByteArray joined = m_peer->lines(2);
    QVERIFY(joined.startsWith('!') && joined.endsWith("\r\n#ROOT\r\n"));
    setFaults("long=1");
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QCOMPARE(m_peer->lines(1).size(), cMyFaultInjector::longLineSize + 2);
}

void TestVirtualPort::splitAnswersKeepTheirOrder()
{
    setFaults("split");
    QByteArray sent;
    for (int i = 0; i < 50; ++i) {
        sent += i % 2 == 0 ? "#EEPROM\r\n" : "#WRITE\r\n";
    }
    QVERIFY(m_peer->send(sent));
    QCOMPARE(m_peer->lines(50), sent);
}

void TestVirtualPort::silenceUntilPluggedAgain()
{
    setFaults("silent-after=1");
    for (int plugged = 0; plugged < 2; ++plugged) {
        QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n"));
        QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
        QVERIFY(m_peer->packet(50).isEmpty());
        unplug();
        plug();
    }
}

void TestVirtualPort::vanishes()
{
    setFaults("vanish-at=2");
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
    QVERIFY(m_peer->send("#HEX\r\n#RAM\r\n"));
    QTRY_COMPARE(m_vanished.load(), 1);
    QTRY_VERIFY(m_peer->isHungUp());
    plug();
    QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n#RAM\r\n"));
    QCOMPARE(m_peer->lines(3), QByteArray("#ROOT\r\n#HEX\r\n#RAM\r\n"));
}

void TestVirtualPort::noDeviceNoAnswer()
{
    inThread([this] { port().setDevice(nullptr); });
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QVERIFY(m_peer->packet(100).isEmpty());
    inThread([this] { port().setDevice(&m_device->device()); });
    QVERIFY(m_peer->send("#HEX\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#HEX\r\n"));
}

void TestVirtualPort::aReaderThatDoesNotReadBlocksNothing()
{
    setFaults("long=1");
    constexpr int lines = 2000; // 200 MB, if they were kept
    for (int i = 0; i < lines; ++i) {
        QVERIFY(m_peer->send("#ROOT\r\n"));
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_served.load(), lines, 60000);
    constexpr qint64 bound = cMyVirtualPort::mostPending;
    qint64 kept = 0;
    for (QByteArray bytes = m_peer->packet(200); !bytes.isEmpty(); bytes = m_peer->packet(200)) {
        kept += bytes.size();
    }
    // What the port keeps and what the system does, in whole lines.
    QVERIFY2(kept < 2 * bound, QByteArray::number(kept).constData());
    QVERIFY(kept > bound / 2);
    QCOMPARE(kept % (cMyFaultInjector::longLineSize + 2), qint64(0));
    // And it is as good as new for the next program.
    setFaults("none");
    unplug();
    plug();
    QVERIFY(m_peer->send("#ROOT\r\n"));
    QCOMPARE(m_peer->lines(1), QByteArray("#ROOT\r\n"));
}

void TestVirtualPort::closedPeerIsNoBusyLoop()
{
    std::atomic<int> wakeUps{0};
    QMetaObject::Connection connection;
    inThread([this, &wakeUps, &connection] {
        connection = connect(
            QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &port(),
            [&wakeUps] { ++wakeUps; }, Qt::DirectConnection);
    });
    // The last answer is left behind unread, and more of them than the terminal holds.
    setFaults("long=1");
    QVERIFY(m_peer->send("#ROOT\r\n#HEX\r\n"));
    QTRY_COMPARE(m_served.load(), 2);
    m_peer->close();
    QTest::qWait(50);
    wakeUps = 0;
    QTest::qWait(500);
    QVERIFY2(wakeUps < 20, QByteArray::number(wakeUps).constData());
    QCOMPARE(m_served.load(), 2);
    inThread([&connection] { disconnect(connection); });
}

void TestVirtualPort::traceHasEveryLine()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("trace"));
    cMyTrace trace;
    QVERIFY(!trace.open(directory.path()));
    QVERIFY(trace.open(path));
    trace.setNumbered(true);
    inThread([this, &trace] { port().setTrace(&trace, 3); });
    setFaults("split,nul");
    QVERIFY(m_peer->send("#ROOT\r\n\xC3\\\r\n"));
    QCOMPARE(m_peer->lines(2).count('\n'), 2);
    QTRY_COMPARE(support::readFile(path).count('\n'), 4);
    const QList<QByteArray> lines = support::readFile(path).split('\n');
    const QRegularExpression form(QStringLiteral(R"(^\d+\.\d{3} [<>] 3 )"));
    QList<QByteArray> texts;
    for (const QByteArray& line : lines.mid(0, 4)) {
        QVERIFY2(form.match(QString::fromLatin1(line)).hasMatch(), line.constData());
        texts.append(line.mid(line.indexOf(' ') + 1));
    }
    QVERIFY(texts.contains(R"(> 3 #ROOT\r\n)"));
    QVERIFY(texts.contains(R"(> 3 \xc3\\\r\n)"));
    const auto isAnswer = [](const QByteArray& text) {
        return text.startsWith(R"(< 3 \x00)") && text.endsWith(R"(\r\n)");
    };
    QCOMPARE(std::count_if(texts.cbegin(), texts.cend(), isAnswer), 2);
    inThread([this] { port().setTrace(nullptr, 0); });
}

void TestVirtualPort::escapes()
{
    QCOMPARE(cMyTrace::escaped(QByteArray("a ~\\\r\n\0\x1F\x7F\xFF", 10)),
             QByteArray(R"(a ~\\\r\n\x00\x1f\x7f\xff)"));
}

QTEST_GUILESS_MAIN(TestVirtualPort)
#include "test_virtualport.moc"
