// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/sim/simulation.h"
#include "tests/support/posix.h"

#include <QSerialPort>
#include <QtTest>

#include <atomic>
#include <termios.h>

namespace simulation = support::simulation;
using support::RunningWorker;

/// The exchange of a simulation, line by line, and the pressure that it writes.
class TestSimWorker : public QObject
{
    Q_OBJECT

private slots:
    void linesFromStartToStop();
    void theLineIsSetUpForTheDevice();
    void aBlockIsToldAsItCame();
    void speedZeroWritesTheSurfacePressureAgainAndAgain();
    void ascendingEndsAtTheSurface();
    void descendingEndsAtTheGreatestPressure();
    void theFirstIntervalBeginsWithTheReading();
    void timeIsThatOfTheClock();
    void theSpeedIsReadAfterTheInterval();
    void fractionsOfThePressureAreKept();
    void thePressureIsCutAndNotRounded();
    void surfacePressures_data();
    void surfacePressures();
    void stopFinishesTheCycle_data();
    void stopFinishesTheCycle();
    void aStopBeforeTheWorkIsNotLost();
    void aSpeedBeforeTheWorkIsOverwritten();
    void noPortName();
    void aPortThatCannotBeOpened();
    void thePortIsClosedBeforeTheEndIsTold();
    void aWorkerCanWorkAgain();
};

void TestSimWorker::linesFromStartToStop()
{
    RunningWorker run;
    run.stopInCycle(2);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lines(),
             simulation::begin() + simulation::cycle() + simulation::cycle() + simulation::end());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QVERIFY(run.errors().isEmpty());
}

void TestSimWorker::theLineIsSetUpForTheDevice()
{
    RunningWorker run;
    run.start();
    QVERIFY(run.waitForLines(1));
    const termios settings = run.peer().settings();
    QCOMPARE(cfgetispeed(&settings), speed_t(B9600));
    QCOMPARE(cfgetospeed(&settings), speed_t(B9600));
    QCOMPARE(settings.c_cflag & tcflag_t(CSIZE), tcflag_t(CS8));
    QCOMPARE(settings.c_cflag & tcflag_t(PARENB | CSTOPB | CRTSCTS), tcflag_t(0));
    QCOMPARE(settings.c_iflag & tcflag_t(IXON | IXOFF), tcflag_t(0));
}

void TestSimWorker::aBlockIsToldAsItCame()
{
    RunningWorker run;
    QVector<QString> expected;
    for (int i = 0; i < 8; ++i) {
        expected.append(QStringLiteral("block %1\r\n").arg(i));
    }
    int next = 0;
    const auto usual = simulation::answering(1013);
    run.setAnswer([&](const QByteArray& line) {
        return line.startsWith(":10") ? expected.at(next++ % 8).toLatin1() : usual(line);
    });
    run.stopInCycle(2);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.blocks(), QVector<QVector<QString>>({expected, expected}));
}

void TestSimWorker::speedZeroWritesTheSurfacePressureAgainAndAgain()
{
    RunningWorker run;
    run.stopInCycle(20);
    run.start(0);
    QVERIFY(run.waitForEnd());
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>(20, 1013));
}

void TestSimWorker::ascendingEndsAtTheSurface()
{
    RunningWorker run;
    run.stopInCycle(20);
    run.start(-5);
    QVERIFY(run.waitForEnd());
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>(20, 1013));
}

void TestSimWorker::descendingEndsAtTheGreatestPressure()
{
    RunningWorker run;
    // Close to it, so that 5 m/s get there.
    run.setAnswer(simulation::answering(32700));
    run.start(5);
    QVERIFY(support::waitFor(
        [&run] { return simulation::pressures(run.lines()).endsWith(32767) || run.hasEnded(); }));
    const int until = static_cast<int>(run.lines().size());
    QVERIFY(run.waitForLines(until + 5 * simulation::linesInCycle));
    const QVector<int> afterwards = simulation::pressures(run.lines().mid(until));
    QVERIFY(afterwards.size() >= 4);
    QCOMPARE(afterwards, QVector<int>(afterwards.size(), 32767));
}

void TestSimWorker::theFirstIntervalBeginsWithTheReading()
{
    RunningWorker run;
    const auto usual = simulation::answering(1013);
    run.setAnswer([&](const QByteArray& line) {
        if (run.lines().size() == simulation::linesToBegin + 1) {
            QThread::msleep(200);
        }
        return usual(line);
    });
    run.stopInCycle(1);
    run.start(5);
    QVERIFY(run.waitForEnd());
    const QVector<int> pressures = simulation::pressures(run.lines());
    QCOMPARE(pressures.size(), 1);
    // A metre for the 0.2 s in which the first of the records was awaited.
    QVERIFY(pressures.first() >= 1013 + 100);
}

void TestSimWorker::timeIsThatOfTheClock()
{
    RunningWorker run;
    run.worker().setClock([time = qint64(5)]() mutable { return time += 1000000000; });
    run.stopInCycle(3);
    run.start(2);
    QVERIFY(run.waitForEnd());
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>({1213, 1413, 1613}));
}

void TestSimWorker::theSpeedIsReadAfterTheInterval()
{
    RunningWorker run;
    const auto usual = simulation::answering(1013);
    constexpr int lastLineOfInterval = 4 + 17 + 12;
    run.setAnswer([&](const QByteArray& line) {
        if (run.lines().size() == lastLineOfInterval) {
            QThread::msleep(200);
            run.worker().setSpeed(500);
        }
        return usual(line);
    });
    run.stopInCycle(2);
    run.start();
    QVERIFY(run.waitForEnd());
    const QVector<int> pressures = simulation::pressures(run.lines());
    QCOMPARE(pressures.size(), 2);
    QCOMPARE(pressures.first(), 1013);
    // 5 m/s for 0.2 s are a metre, though they were chosen at its end.
    QVERIFY(pressures.last() >= 1013 + 100);
}

void TestSimWorker::fractionsOfThePressureAreKept()
{
    RunningWorker run;
    // A cycle of a few milliseconds at 1 cm/s is far below one mbar.
    run.start(0.01);
    const auto isDeeper = [&run] {
        const QVector<int> pressures = simulation::pressures(run.lines());
        return !pressures.isEmpty() && pressures.last() >= 1013 + 2;
    };
    QVERIFY(support::waitFor([&] { return isDeeper() || run.hasEnded(); }));
    QVERIFY(isDeeper());
}

void TestSimWorker::thePressureIsCutAndNotRounded()
{
    RunningWorker run;
    run.setAnswer([&run](const QByteArray& line) {
        if (run.lines().size() == simulation::linesToBegin + simulation::pressureInCycle - 1) {
            QThread::sleep(1);
        }
        return simulation::answering(1013)(line);
    });
    run.stopInCycle(1);
    // 0.6 mbar in that second, and not a whole one in half a second more.
    run.start(0.006);
    QVERIFY(run.waitForEnd());
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>{1013});
}

void TestSimWorker::surfacePressures_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("pressure"); // -1: the simulation fails
    QTest::newRow("usual") << QByteArray(":02011000F503F5") << 1013;
    QTest::newRow("0") << QByteArray(":020110000000ED") << 0;
    QTest::newRow("32767") << QByteArray(":02011000FF7F6F") << 32767;
    QTest::newRow("beyond 32767") << QByteArray(":02011000FFFFEF") << 32767;
    QTest::newRow("more bytes than asked for") << QByteArray(":03011000F50301F3") << 1013;
    QTest::newRow("wrong checksum") << QByteArray(":02011000F50300") << 1013;
    QTest::newRow("wrong address") << QByteArray(":02020000F50304") << 1013;
    QTest::newRow("text behind it") << QByteArray(":02011000F503F5 mbar") << 1013;
    QTest::newRow("one byte") << QByteArray(":01011000F5F9") << -1;
    QTest::newRow("no bytes") << QByteArray(":00011000EF") << -1;
    QTest::newRow("end record") << QByteArray(":00000001FF") << -1;
    QTest::newRow("cut off") << QByteArray(":0201100") << -1;
    QTest::newRow("garbage") << QByteArray("\xff\x80\x01 garbage") << -1;
    QTest::newRow("not understood") << QByteArray("?") << -1;
    QTest::newRow("empty") << QByteArray() << -1;
    QTest::newRow("NULs") << QByteArray(3, '\0') << -1;
}

void TestSimWorker::surfacePressures()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, pressure);
    RunningWorker run;
    run.setAnswer([&reply](const QByteArray& line) {
        return (line == ":020110000000ED" ? reply : line) + "\r\n";
    });
    run.stopInCycle(3);
    run.start(-1);
    QVERIFY(run.waitForEnd());
    if (pressure < 0) {
        QCOMPARE(run.lines(), simulation::begin());
        QCOMPARE(run.ends(), QVector<bool>{false});
    } else {
        QCOMPARE(simulation::pressures(run.lines()), QVector<int>(3, pressure));
        QCOMPARE(run.ends(), QVector<bool>{true});
    }
}

void TestSimWorker::stopFinishesTheCycle_data()
{
    QTest::addColumn<int>("line");
    for (int line = 1; line <= simulation::linesInCycle; ++line) {
        QTest::addRow("at line %d of a cycle", line) << line;
    }
}

void TestSimWorker::stopFinishesTheCycle()
{
    QFETCH(int, line);
    RunningWorker run;
    run.stopAt(simulation::linesToBegin + simulation::linesInCycle + line);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lines(),
             simulation::begin() + simulation::cycle() + simulation::cycle() + simulation::end());
    QCOMPARE(run.ends(), QVector<bool>{true});
}

void TestSimWorker::aStopBeforeTheWorkIsNotLost()
{
    RunningWorker run;
    run.worker().stopWork();
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.lines(), simulation::begin() + simulation::end());
    QCOMPARE(run.ends(), QVector<bool>{true});
}

void TestSimWorker::aSpeedBeforeTheWorkIsOverwritten()
{
    RunningWorker run;
    run.worker().setSpeed(500);
    run.stopInCycle(10);
    run.start(0);
    QVERIFY(run.waitForEnd());
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>(10, 1013));
}

void TestSimWorker::noPortName()
{
    RunningWorker run;
    run.startAt(QString());
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{false});
    QVERIFY(run.errors().isEmpty());
}

void TestSimWorker::aPortThatCannotBeOpened()
{
    QSerialPort port;
    port.setPortName(QStringLiteral("/dev/no-such-port"));
    QVERIFY(!port.open(QIODevice::ReadWrite));
    RunningWorker run;
    run.startAt(port.portName());
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{false});
    QCOMPARE(run.errors(), QStringList(port.errorString()));
}

void TestSimWorker::thePortIsClosedBeforeTheEndIsTold()
{
    RunningWorker run;
    std::atomic<int> portsOpen{-1};
    connect(
        &run.worker(), &cMySimWorker::finished, &run.worker(),
        [&] { portsOpen = support::openDescriptors(run.peer().terminal()); }, Qt::DirectConnection);
    run.stopInCycle(1);
    run.start();
    QVERIFY(support::waitFor([&portsOpen] { return portsOpen >= 0; }));
    QCOMPARE(portsOpen.load(), 1); // the peer keeps its own line up
}

void TestSimWorker::aWorkerCanWorkAgain()
{
    RunningWorker run;
    run.stopInCycle(1);
    run.start();
    QVERIFY(run.waitForEnd());
    run.peer().forgetLines();
    run.start();
    QVERIFY(support::waitFor([&run] { return run.ends().size() == 2; }));
    QCOMPARE(run.lines(), simulation::begin() + simulation::cycle() + simulation::end());
    QCOMPARE(run.ends(), QVector<bool>({true, true}));
}

QTEST_GUILESS_MAIN(TestSimWorker)
#include "test_simworker.moc"
