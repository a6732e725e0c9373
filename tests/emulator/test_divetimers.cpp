// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divetimers.h"

#include <QtTest>

/// The stopwatch and the timers.
class TestDiveTimers : public QObject
{
    Q_OBJECT

private slots:
    void nothingRunsBeforeItIsStarted();
    void stopwatchCountsUp();
    void stopwatchHaltsAndGoesOn();
    void stopwatchGoesOnThatNeverRan();
    void stopwatchStaysAtItsGreatest();
    void timerCountsDown_data();
    void timerCountsDown();
    void timerHaltsAndGoesOn();
    void passedTimerWaitsForItsStart();
    void timerWithoutTimePassesAtOnce();
    void longTimerIsShownAtItsGreatest();
    void timersRunOnTheirOwn_data();
    void timersRunOnTheirOwn();
    void changesTellWhatCameBack();
};

namespace {

using State = cMyDiveTimers::State;

constexpr int stopwatch = 0;

} // namespace

Q_DECLARE_METATYPE(cMyDiveTimers::State)

void TestDiveTimers::nothingRunsBeforeItIsStarted()
{
    cMyDiveTimers timers;
    timers.advance(5000);
    for (int timer = 0; timer < cMyDiveTimers::count; ++timer) {
        QCOMPARE(timers.state(timer), State::Stopped);
        QCOMPARE(timers.shown(timer), qint16(0));
        timers.stop(timer);
        QCOMPARE(timers.state(timer), State::Stopped);
        QCOMPARE(timers.changes(timer), 0);
    }
}

void TestDiveTimers::stopwatchCountsUp()
{
    cMyDiveTimers timers;
    timers.start(stopwatch, 77);
    QCOMPARE(timers.shown(stopwatch), qint16(0));
    timers.advance(999);
    QCOMPARE(timers.shown(stopwatch), qint16(0));
    timers.advance(1);
    QCOMPARE(timers.shown(stopwatch), qint16(1));
    QCOMPARE(timers.state(stopwatch), State::Counting);
    timers.start(stopwatch, 0);
    QCOMPARE(timers.shown(stopwatch), qint16(0));
    QCOMPARE(timers.state(stopwatch), State::Counting);
}

void TestDiveTimers::stopwatchHaltsAndGoesOn()
{
    cMyDiveTimers timers;
    timers.start(stopwatch, 0);
    timers.advance(2600);
    timers.stop(stopwatch);
    QCOMPARE(timers.state(stopwatch), State::Stopped);
    timers.advance(9000);
    QCOMPARE(timers.shown(stopwatch), qint16(2));
    timers.resume(stopwatch);
    QCOMPARE(timers.state(stopwatch), State::Counting);
    timers.advance(400);
    QCOMPARE(timers.shown(stopwatch), qint16(3));
}

void TestDiveTimers::stopwatchGoesOnThatNeverRan()
{
    cMyDiveTimers timers;
    timers.resume(stopwatch);
    timers.advance(1000);
    QCOMPARE(timers.state(stopwatch), State::Counting);
    QCOMPARE(timers.shown(stopwatch), qint16(1));
}

void TestDiveTimers::stopwatchStaysAtItsGreatest()
{
    cMyDiveTimers timers;
    timers.start(stopwatch, 0);
    timers.advance(32766999);
    QCOMPARE(timers.shown(stopwatch), qint16(32766));
    timers.advance(1);
    QCOMPARE(timers.shown(stopwatch), qint16(32767));
    timers.advance(5000000);
    QCOMPARE(timers.shown(stopwatch), qint16(32767));
    QCOMPARE(timers.state(stopwatch), State::Counting);
}

void TestDiveTimers::timerCountsDown_data()
{
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<int>("shown");
    QTest::addColumn<State>("state");
    QTest::newRow("at once") << 0 << 60 << State::Counting;
    QTest::newRow("a begun second counts") << 1 << 60 << State::Counting;
    QTest::newRow("half a second") << 500 << 60 << State::Counting;
    QTest::newRow("a second") << 1000 << 59 << State::Counting;
    QTest::newRow("nearly passed") << 59999 << 1 << State::Counting;
    QTest::newRow("passed") << 60000 << 0 << State::Passed;
    QTest::newRow("long passed") << 90000 << 0 << State::Passed;
}

void TestDiveTimers::timerCountsDown()
{
    QFETCH(int, elapsed);
    QFETCH(State, state);
    for (const int timer : {1, 2, 3}) {
        cMyDiveTimers timers;
        timers.start(timer, 60);
        timers.advance(elapsed);
        QTEST(int(timers.shown(timer)), "shown");
        QCOMPARE(timers.state(timer), state);
    }
}

void TestDiveTimers::timerHaltsAndGoesOn()
{
    cMyDiveTimers timers;
    timers.start(1, 10);
    timers.advance(4000);
    timers.stop(1);
    QCOMPARE(timers.state(1), State::Stopped);
    timers.advance(60000);
    QCOMPARE(timers.shown(1), qint16(6));
    timers.resume(1);
    QCOMPARE(timers.state(1), State::Counting);
    timers.advance(5999);
    QCOMPARE(timers.state(1), State::Counting);
    timers.advance(1);
    QCOMPARE(timers.state(1), State::Passed);
    cMyDiveTimers neverStarted;
    neverStarted.resume(1);
    QCOMPARE(neverStarted.state(1), State::Stopped);
}

void TestDiveTimers::passedTimerWaitsForItsStart()
{
    cMyDiveTimers timers;
    timers.start(2, 1);
    timers.advance(1000);
    timers.stop(2);
    QCOMPARE(timers.state(2), State::Passed);
    timers.resume(2);
    timers.advance(1000);
    QCOMPARE(timers.state(2), State::Passed);
    timers.start(2, 3);
    QCOMPARE(timers.state(2), State::Counting);
    QCOMPARE(timers.shown(2), qint16(3));
}

void TestDiveTimers::timerWithoutTimePassesAtOnce()
{
    cMyDiveTimers timers;
    timers.start(3, 5);
    timers.start(3, 0);
    QCOMPARE(timers.state(3), State::Passed);
    QCOMPARE(timers.shown(3), qint16(0));
}

void TestDiveTimers::longTimerIsShownAtItsGreatest()
{
    cMyDiveTimers timers;
    timers.start(1, 65535);
    QCOMPARE(timers.shown(1), qint16(32767));
    timers.advance(32768 * 1000LL);
    QCOMPARE(timers.shown(1), qint16(32767));
    timers.advance(1000);
    QCOMPARE(timers.shown(1), qint16(32766));
    timers.advance(32766 * 1000LL);
    QCOMPARE(timers.state(1), State::Passed);
}

void TestDiveTimers::timersRunOnTheirOwn_data()
{
    QTest::addColumn<int>("started");
    QTest::newRow("stopwatch 0") << 0;
    QTest::newRow("timer 1") << 1;
    QTest::newRow("timer 2") << 2;
    QTest::newRow("timer 3") << 3;
}

void TestDiveTimers::timersRunOnTheirOwn()
{
    QFETCH(int, started);
    cMyDiveTimers timers;
    timers.start(started, 100);
    timers.advance(10000);
    for (int timer = 0; timer < cMyDiveTimers::count; ++timer) {
        QCOMPARE(timers.state(timer), timer == started ? State::Counting : State::Stopped);
        QCOMPARE(timers.shown(timer) != 0, timer == started);
    }
}

void TestDiveTimers::changesTellWhatCameBack()
{
    cMyDiveTimers timers;
    timers.start(1, 1);
    const int counting = timers.changes(1);
    timers.start(1, 2);
    QCOMPARE(timers.changes(1), counting);
    timers.stop(1);
    timers.resume(1);
    QCOMPARE(timers.changes(1), counting + 2);
    timers.advance(2000);
    const int passed = timers.changes(1);
    QCOMPARE(passed, counting + 3);
    timers.advance(2000);
    QCOMPARE(timers.changes(1), passed);
    timers.start(1, 0);
    QCOMPARE(timers.changes(1), passed + 1);
}

QTEST_GUILESS_MAIN(TestDiveTimers)
#include "test_divetimers.moc"
