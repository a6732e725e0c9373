// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divetimers.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 second = 1000; ///< in ms
constexpr qint64 greatestShown = std::numeric_limits<qint16>::max();

} // namespace

void cMyDiveTimers::advance(qint64 elapsed)
{
    Timer& watch = m_timers[stopwatch];
    if (watch.state == State::Counting) {
        watch.time += elapsed;
    }
    for (int number = stopwatch + 1; number < count; ++number) {
        Timer& timer = m_timers.at(index(number));
        if (timer.state != State::Counting) {
            continue;
        }
        timer.time = std::max(timer.time - elapsed, qint64(0));
        if (timer.time == 0) {
            enter(timer, State::Passed);
        }
    }
}

void cMyDiveTimers::start(int timer, int seconds)
{
    Timer& started = m_timers.at(index(timer));
    started.time = timer == stopwatch ? 0 : seconds * second;
    const bool isOver = timer != stopwatch && seconds == 0;
    enter(started, isOver ? State::Passed : State::Counting);
}

void cMyDiveTimers::stop(int timer)
{
    Timer& stopped = m_timers.at(index(timer));
    if (stopped.state == State::Counting) {
        enter(stopped, State::Stopped);
    }
}

void cMyDiveTimers::resume(int timer)
{
    Timer& resumed = m_timers.at(index(timer));
    if (resumed.state == State::Stopped && (timer == stopwatch || resumed.time > 0)) {
        enter(resumed, State::Counting);
    }
}

qint16 cMyDiveTimers::shown(int timer) const
{
    const qint64 time = m_timers.at(index(timer)).time;
    const qint64 seconds = timer == stopwatch ? time / second : (time + second - 1) / second;
    return static_cast<qint16>(std::min(seconds, greatestShown));
}

void cMyDiveTimers::enter(Timer& timer, State state)
{
    // Started while it counts, a timer goes on counting; passed, it passes once more.
    if (timer.state != state || state == State::Passed) {
        timer.state = state;
        ++timer.changes;
    }
}
