// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DIVETIMERS_H
#define MIOLKA_EMULATOR_DIVETIMERS_H

#include <QtGlobal>

#include <array>

/// The stopwatch, number 0, and the timers 1 to 3 that a diver's rules start and stop. They count
/// in ms, at samples. For any one thread.
class cMyDiveTimers
{
public:
    /// What a stopwatch or timer is doing. The stopwatch never passes.
    enum class State {
        Stopped,  ///< halted, or never started
        Counting, ///< up in the stopwatch, down in a timer
        Passed,   ///< a timer that has come down to 0; it stays so until it is started anew
    };

    static constexpr int count = 4;

    /// All that count go on by that many ms.
    void advance(qint64 elapsed);

    /// The stopwatch counts from 0, a timer from that many seconds down. A timer without any has
    /// passed at once.
    void start(int timer, int seconds);

    /// Halts what is counting.
    void stop(int timer);

    /// What was halted goes on; a timer only if something remains of it.
    void resume(int timer);

    /// Of the stopwatch, 0, or a timer, 1 to 3, since the last advance().
    [[nodiscard]] State state(int timer) const { return m_timers.at(index(timer)).state; }

    /// How often the state was entered anew. Tells a state that lasts from one that ended and came
    /// back in between.
    [[nodiscard]] int changes(int timer) const { return m_timers.at(index(timer)).changes; }

    /// What is measured, in s: how long the stopwatch has run, or what remains of a timer, begun
    /// seconds counting as whole ones, so that 0 is shown only where nothing remains. Never more
    /// than 32767.
    [[nodiscard]] qint16 shown(int timer) const;

private:
    struct Timer
    {
        State state = State::Stopped;
        qint64 time = 0; ///< in ms; has run in the stopwatch, remains in a timer
        int changes = 0;
    };

    static constexpr int stopwatch = 0;

    [[nodiscard]] static std::size_t index(int timer) { return static_cast<std::size_t>(timer); }
    static void enter(Timer& timer, State state);

    std::array<Timer, count> m_timers;
};

#endif
