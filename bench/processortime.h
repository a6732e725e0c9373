// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_BENCH_PROCESSORTIME_H
#define MIOLKA_BENCH_PROCESSORTIME_H

#include <ctime>

namespace bench {

/// What a thread or a process has had of its processor, in seconds, by one of the system's clocks
/// for that.
inline double processorTime(clockid_t clock)
{
    constexpr double nanosecondsPerSecond = 1e9;
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) +
           static_cast<double>(time.tv_nsec) / nanosecondsPerSecond;
}

} // namespace bench

#endif
