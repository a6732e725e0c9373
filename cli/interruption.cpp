// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/interruption.h"

#include <array>
#include <csignal>

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterruption(int /*number*/)
{
    interrupted = 1;
}

} // namespace

namespace cli {

void catchInterruptions()
{
    struct sigaction action = {};
    action.sa_handler = noteInterruption;
    sigemptyset(&action.sa_mask);
    // The second one is not caught. Without SA_RESTART a question is not waited for any longer.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : std::array<int, 3>{SIGINT, SIGTERM, SIGHUP}) {
        sigaction(number, &action, nullptr);
    }
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace cli
