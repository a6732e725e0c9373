// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_BENCH_PROCESS_H
#define MIOLKA_BENCH_PROCESS_H

#include <string>
#include <vector>

namespace bench {

/// What a finished process used.
struct Usage
{
    double seconds = 0; ///< from start to end, as a clock on the wall shows it
    long peakKiB = 0;   ///< the most memory it held
    bool succeeded = false;
};

/// Runs a command without a shell and waits for its end, twenty seconds at most; its output is
/// thrown away.
Usage run(const std::vector<std::string>& command);

} // namespace bench

#endif
