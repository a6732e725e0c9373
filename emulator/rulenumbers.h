// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_RULENUMBERS_H
#define MIOLKA_EMULATOR_RULENUMBERS_H

#include <QtGlobal>

/// When a rule applies, as the settings number it; resources/models/msgCb1.csv has the names.
enum class RuleCondition : quint8 {
    Underwater = 0,
    OnSurface = 1,
    DiveBegins = 2,
    DiveEnds = 3,
    Descending = 4,
    OnBottom = 5,
    Ascending = 6,
    SwitchesOn = 7,
    SwitchesOff = 8,
    ChargingBegins = 9,
    Charging = 10,
    ChargingEnds = 11,
    TimerCounts = 16,    ///< stopwatch 0; timers 1 to 3 follow
    TimerIsStopped = 24, ///< stopwatch 0; timers 1 to 3 follow
    TimerPassed = 32,    ///< stopwatch 0, which never does; timers 1 to 3 follow
    Never = 254,
    Anytime = 255,
};

/// How a rule compares a measured value with its threshold; resources/models/msgCb3.csv.
enum class RuleComparison : quint8 { AtLeast = 0, AtMost = 1 };

/// What a timer rule does; resources/models/timCb4.csv.
enum class RuleAction : quint8 {
    Start = 128,    ///< stopwatch 0; timers 1 to 3 follow
    Stop = 136,     ///< stopwatch 0; timers 1 to 3 follow
    Continue = 144, ///< stopwatch 0; timers 1 to 3 follow
};

/// How often a message rule speaks; resources/models/msgCb6.csv.
enum class RuleRepetition : quint8 {
    Once = 0,
    EveryPeriod = 1,   ///< A; B to D follow
    EveryDistance = 5, ///< E; F to H follow
    Still = 255,
};

namespace emulator {

/// The action and the message of a rule that does nothing.
constexpr int doNothing = 127;

/// Caption, value with its decimals, and unit; resources/models/msgCb5.csv.
constexpr int fullForm = 5;

} // namespace emulator

#endif
