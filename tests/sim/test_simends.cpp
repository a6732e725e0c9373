// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/sim/simulation.h"
#include "tests/support/posix.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTimer>
#include <QtTest>

#include <memory>
#include <vector>

namespace simulation = support::simulation;
using support::RunningWorker;

/// Every way in which a simulation can end, and a device that misbehaves before that.
class TestSimEnds : public QObject
{
    Q_OBJECT

private slots:
    void silenceAtAnyLine();
    void everyArrivalKeepsItAlive();
    void vanishingAtAnyLine_data();
    void vanishingAtAnyLine();
    void vanishingWhileAnAnswerIsDue_data();
    void vanishingWhileAnAnswerIsDue();
    void whatComesBeforeTheAnswer_data();
    void whatComesBeforeTheAnswer();
    void answersOfAllKinds_data();
    void answersOfAllKinds();
    void noticesForeverAndStop();
    void stopBetweenNoticeAndAnswer();
    void stopLeavesASlowDeviceItsTime_data();
    void stopLeavesASlowDeviceItsTime();
    void lateAnswersFromBefore();
    void aBabblingLineIsNotWaitedForForever();
    void leavingAtAnyLine_data();
    void leavingAtAnyLine();
    void leavingBeforeTheWork();
    void leavingASilentDevice_data();
    void leavingASilentDevice();
    void leavingAmidNotices();
    void leavingASlowDeviceInOneMoment();
    void answersTooManyDoNotSwallowTheLeave();

private:
    static constexpr int linesOfOneCycle =
        simulation::linesToBegin + simulation::linesInCycle + 2; // with the end

    static void anyLine()
    {
        QTest::addColumn<int>("line");
        for (int line = 1; line <= linesOfOneCycle; ++line) {
            QTest::addRow("line %d", line) << line;
        }
    }

    static void linesOfEachKind()
    {
        QTest::addColumn<int>("line");
        QTest::newRow("first") << 1;
        QTest::newRow("surface pressure") << 4;
        QTest::newRow("first value") << 5;
        QTest::newRow("last value") << 12;
        QTest::newRow("pressure") << 17;
        QTest::newRow("last of the cycle") << 21;
        QTest::newRow("leave") << 22;
        QTest::newRow("last") << 23;
    }

    /// From the eighth line on it is answered by notices only, again and again.
    static void startWithNotices(RunningWorker& run, QTimer& notices)
    {
        connect(&notices, &QTimer::timeout, &run, [&run] { run.peer().send("! still here\r\n"); });
        run.setAnswer([&run, &notices](const QByteArray& line) {
            if (run.lines().size() < 8) {
                return simulation::answering(1013)(line);
            }
            notices.start(5);
            return QByteArray();
        });
        run.start();
    }

    /// More than a terminal takes at once goes in pieces, with time to read each.
    static void sendInPieces(support::Peer& peer, const QByteArray& bytes)
    {
        constexpr int piece = 1024;
        for (int sent = 0; sent < bytes.size(); sent += piece) {
            peer.send(bytes.mid(sent, piece));
            QThread::usleep(500);
        }
    }
};

void TestSimEnds::silenceAtAnyLine()
{
    // All at once: each takes three seconds.
    std::vector<std::unique_ptr<RunningWorker>> runs;
    QElapsedTimer clock;
    clock.start();
    for (int line = 1; line <= linesOfOneCycle; ++line) {
        runs.push_back(std::make_unique<RunningWorker>());
        RunningWorker* run = runs.back().get();
        run->setAnswer([run, line](const QByteArray& text) {
            return run->lines().size() < line ? simulation::answering(1013)(text) : QByteArray();
        });
        run->stopInCycle(1);
        run->start();
    }
    for (const auto& run : runs) {
        QVERIFY(run->waitForEnd());
    }
    QVERIFY(clock.elapsed() >= cMyLineChannel::answerPatience);
    for (int line = 1; line <= linesOfOneCycle; ++line) {
        const RunningWorker& run = *runs.at(static_cast<std::size_t>(line - 1));
        QCOMPARE(run.ends(), QVector<bool>{false});
        const QStringList all = simulation::begin() + simulation::cycle() + simulation::end();
        QCOMPARE(run.lines(), all.mid(0, line));
    }
}

void TestSimEnds::everyArrivalKeepsItAlive()
{
    RunningWorker run;
    // A notice every two seconds, and the answer after more than one patience.
    run.setAnswer([&run](const QByteArray& line) {
        if (run.lines().size() != 2) {
            return simulation::answering(1013)(line);
        }
        QTimer::singleShot(2000, &run, [&run] { run.peer().send("! wait\r\n"); });
        QTimer::singleShot(4000, &run, [&run] { run.peer().send("#R"); });
        QTimer::singleShot(6000, &run, [&run] { run.peer().send("AM\r\n"); });
        return QByteArray();
    });
    run.stopInCycle(1);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(run.lines().size(), linesOfOneCycle);
}

void TestSimEnds::vanishingAtAnyLine_data()
{
    anyLine();
}

void TestSimEnds::vanishingAtAnyLine()
{
    QFETCH(int, line);
    RunningWorker run;
    run.stopInCycle(1);
    connect(&run.peer(), &support::Peer::lineTaken, &run, [&run, line](int count) {
        if (count == line) {
            run.peer().hangUp();
        }
    });
    run.start();
    QVERIFY(run.waitForEnd());
    // The answer to the last line of all may have got through.
    QCOMPARE(run.ends(), QVector<bool>{line == linesOfOneCycle && run.ends().first()});
    QCOMPARE(run.lines().size(), line);
}

void TestSimEnds::vanishingWhileAnAnswerIsDue_data()
{
    linesOfEachKind();
}

void TestSimEnds::vanishingWhileAnAnswerIsDue()
{
    QFETCH(int, line);
    RunningWorker run;
    run.stopInCycle(1);
    QElapsedTimer sinceHangUp;
    run.setAnswer([&](const QByteArray& text) {
        if (run.lines().size() < line) {
            return simulation::answering(1013)(text);
        }
        QTimer::singleShot(30, &run, [&] {
            run.peer().hangUp();
            sinceHangUp.start();
        });
        return QByteArray();
    });
    run.start();
    QVERIFY(run.waitForEnd());
    // Far from the three seconds that an answer may take.
    QVERIFY(sinceHangUp.isValid());
    QVERIFY(sinceHangUp.elapsed() < cMyLineChannel::answerPatience / 3);
    QCOMPARE(run.ends(), QVector<bool>{false});
}

void TestSimEnds::whatComesBeforeTheAnswer_data()
{
    QTest::addColumn<QByteArrayList>("packets"); // around the answer, which is "%"
    QTest::newRow("a notice") << QByteArrayList{"! battery low\r\n", "%"};
    QTest::newRow("several notices") << QByteArrayList{"!a\r\n", "!b\r\n!c\r\n", "%"};
    QTest::newRow("notice and answer in one packet") << QByteArrayList{"! battery low\r\n%"};
    QTest::newRow("a notice in pieces") << QByteArrayList{"!", " bat", "tery\r", "\n%"};
    QTest::newRow("notice behind NULs") << QByteArrayList{QByteArray("\0\0!a\r\n%", 7)};
    QTest::newRow("answer behind NULs") << QByteArrayList{QByteArray("\0\0%", 3)};
    QTest::newRow("a notice longer than any line") << QByteArrayList{
        QByteArray("!") + QByteArray(3 * cMyLineAssembler::longestLine, 'x') + "\r\n%"};
    QTest::newRow("an empty notice") << QByteArrayList{"!\n%"};
}

void TestSimEnds::whatComesBeforeTheAnswer()
{
    QFETCH(QByteArrayList, packets);
    RunningWorker run;
    run.setAnswer([&](const QByteArray& line) {
        const QByteArray answer = simulation::answering(1013)(line);
        for (QByteArray packet : packets) {
            sendInPieces(run.peer(), packet.replace('%', answer));
        }
        return QByteArray();
    });
    run.stopInCycle(2);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(run.lines(),
             simulation::begin() + simulation::cycle() + simulation::cycle() + simulation::end());
    for (const QVector<QString>& block : run.blocks()) {
        QCOMPARE(block.first(), simulation::cycle().first() + QStringLiteral("\r\n"));
    }
}

void TestSimEnds::answersOfAllKinds_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("empty") << QByteArray("\r\n");
    QTest::newRow("a line feed alone") << QByteArray("\n");
    QTest::newRow("NULs") << QByteArray("\0\0\r\n", 4);
    QTest::newRow("garbage") << QByteArray("\x80\xff\x7f garbage\n");
    QTest::newRow("not understood") << QByteArray("?\r\n");
    QTest::newRow("a short record") << QByteArray(":0101000055A9\r\n");
    QTest::newRow("a cut record") << QByteArray(":10010000AA\r\n");
    QTest::newRow("an end record") << QByteArray(":00000001FF\r\n");
    QTest::newRow("a wrong type") << QByteArray(":020000040800F2\r\n");
    QTest::newRow("a notice later in the line") << QByteArray("a!\r\n");
    QTest::newRow("longer than any line")
        << QByteArray(3 * cMyLineAssembler::longestLine, 'x') + "\r\n";
}

void TestSimEnds::answersOfAllKinds()
{
    QFETCH(QByteArray, answer);
    RunningWorker run;
    run.setAnswer([&](const QByteArray& line) {
        const bool isSurfacePressure = line == ":020110000000ED";
        sendInPieces(run.peer(), isSurfacePressure ? simulation::answering(1013)(line) : answer);
        return QByteArray();
    });
    run.stopInCycle(2);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>(2, 1013));
}

void TestSimEnds::noticesForeverAndStop()
{
    RunningWorker run;
    QTimer notices;
    startWithNotices(run, notices);
    QVERIFY(run.waitForLines(8));
    // Longer than the patience: as long as anything comes, an answer may.
    QTest::qWait(cMyLineChannel::answerPatience + 500);
    QVERIFY(!run.hasEnded());
    QElapsedTimer sinceStop;
    sinceStop.start();
    run.worker().stopWork();
    QVERIFY(run.waitForEnd());
    QVERIFY(sinceStop.elapsed() < cMyLineChannel::stopPatience + cMyLineChannel::answerPatience);
    QCOMPARE(run.ends(), QVector<bool>{false});
    QCOMPARE(run.lines().size(), 8);
}

void TestSimEnds::stopBetweenNoticeAndAnswer()
{
    RunningWorker run;
    run.setAnswer([&run](const QByteArray& line) {
        if (run.lines().size() != 8) {
            return simulation::answering(1013)(line);
        }
        run.worker().stopWork();
        run.peer().send("! wait\r\n");
        QTimer::singleShot(100, &run, [&run, line] { run.peer().send(line + "\r\n"); });
        return QByteArray();
    });
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(run.lines(), simulation::begin() + simulation::cycle() + simulation::end());
}

void TestSimEnds::stopLeavesASlowDeviceItsTime_data()
{
    QTest::addColumn<QByteArray>("first"); // comes at once; the answer, or its rest, follows
    QTest::addColumn<int>("pause");
    QTest::newRow("behind a notice") << QByteArray("! wait\r\n") << 1500;
    QTest::newRow("in two pieces, each in time") << QByteArray() << 2000;
}

void TestSimEnds::stopLeavesASlowDeviceItsTime()
{
    QFETCH(QByteArray, first);
    QFETCH(int, pause);
    RunningWorker run;
    run.setAnswer([&](const QByteArray& line) {
        if (run.lines().size() != 8) {
            return simulation::answering(1013)(line);
        }
        run.worker().stopWork();
        const QByteArray answer = line + "\r\n";
        const auto half = first.isEmpty() ? answer.size() / 2 : 0;
        run.peer().send(first);
        if (half > 0) {
            QTimer::singleShot(pause, &run,
                               [&run, answer, half] { run.peer().send(answer.left(half)); });
        }
        QTimer::singleShot(half > 0 ? 2 * pause : pause, &run,
                           [&run, answer, half] { run.peer().send(answer.mid(half)); });
        return QByteArray();
    });
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(run.lines(), simulation::begin() + simulation::cycle() + simulation::end());
}

void TestSimEnds::lateAnswersFromBefore()
{
    RunningWorker run;
    // An exchange was cut off just before; its answers are still on their way.
    run.peer().send(":02011000FF7F6F\r\n");
    QTimer::singleShot(20, &run, [&run] { run.peer().send("#ROOT\r\n"); });
    run.stopInCycle(1);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(simulation::pressures(run.lines()), QVector<int>{1013});
}

void TestSimEnds::aBabblingLineIsNotWaitedForForever()
{
    RunningWorker run;
    QTimer babble;
    connect(&babble, &QTimer::timeout, &run, [&run] { run.peer().send("! hello\r\n"); });
    babble.start(5);
    run.stopInCycle(1);
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QCOMPARE(run.lines().size(), linesOfOneCycle);
}

void TestSimEnds::leavingAtAnyLine_data()
{
    anyLine();
}

void TestSimEnds::leavingAtAnyLine()
{
    QFETCH(int, line);
    RunningWorker run;
    run.stopInCycle(1);
    run.setAnswer([&run, line](const QByteArray& text) {
        if (run.lines().size() == line) {
            run.thread().requestInterruption();
        }
        return simulation::answering(1013)(text);
    });
    run.start();
    QVERIFY(run.waitForEnd());
    // The line under way is the last before the device is sent back to its root mode.
    const QStringList all = simulation::begin() + simulation::cycle() + simulation::end();
    const bool isClosing = line > linesOfOneCycle - 2;
    QCOMPARE(run.lines(), isClosing ? all : all.mid(0, line) + simulation::end());
}

void TestSimEnds::leavingBeforeTheWork()
{
    RunningWorker run;
    run.start();
    run.thread().requestInterruption();
    run.thread().quit();
    QVERIFY(run.thread().wait(10000));
    QCOMPARE(support::openDescriptors(run.peer().terminal()), 1);
}

void TestSimEnds::leavingASilentDevice_data()
{
    linesOfEachKind();
}

void TestSimEnds::leavingASilentDevice()
{
    QFETCH(int, line);
    RunningWorker run;
    run.stopInCycle(1);
    QElapsedTimer sinceRequest;
    run.setAnswer([&](const QByteArray& text) {
        if (run.lines().size() < line) {
            return simulation::answering(1013)(text);
        }
        sinceRequest.start();
        run.thread().requestInterruption();
        return QByteArray();
    });
    run.start();
    QVERIFY(run.waitForEnd());
    // It is half a second on a machine with time to spare.
    QVERIFY(sinceRequest.elapsed() < cMyLineChannel::answerPatience / 2);
    QCOMPARE(run.ends(), QVector<bool>{false});
    QCOMPARE(run.lines().size(), line);
}

void TestSimEnds::leavingAmidNotices()
{
    RunningWorker run;
    QTimer notices;
    startWithNotices(run, notices);
    QVERIFY(run.waitForLines(8));
    QElapsedTimer sinceRequest;
    sinceRequest.start();
    run.thread().requestInterruption();
    QVERIFY(run.waitForEnd());
    QVERIFY(sinceRequest.elapsed() < cMyLineChannel::answerPatience / 2);
    QCOMPARE(run.lines().size(), 8);
}

void TestSimEnds::leavingASlowDeviceInOneMoment()
{
    RunningWorker run;
    constexpr int slow = 250; // ms for each answer, two of which are more than there is time for
    run.setAnswer([&](const QByteArray& line) {
        if (run.lines().size() < 8) {
            return simulation::answering(1013)(line);
        }
        run.thread().requestInterruption();
        QTimer::singleShot(slow, &run, [&run, line] { run.peer().send(line + "\r\n"); });
        return QByteArray();
    });
    run.start();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{false});
    QVERIFY(!run.lines().contains(QStringLiteral("#CLEAR")));
}

void TestSimEnds::answersTooManyDoNotSwallowTheLeave()
{
    RunningWorker run;
    run.setAnswer([&run](const QByteArray& line) {
        const QByteArray answer = simulation::answering(1013)(line);
        return run.lines().size() > simulation::linesToBegin ? answer + "\r\n" : answer;
    });
    run.start();
    QVERIFY(run.waitForLines(linesOfOneCycle));
    run.worker().stopWork();
    QVERIFY(run.waitForEnd());
    QCOMPARE(run.ends(), QVector<bool>{true});
    QVERIFY(support::waitFor([&run] { return run.lines().contains(QStringLiteral("#CLEAR")); }));
    QCOMPARE(run.lines().mid(run.lines().size() - 2), simulation::end());
}

QTEST_GUILESS_MAIN(TestSimEnds)
#include "test_simends.moc"
