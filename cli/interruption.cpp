// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/interruption.h"

#include <array>
#include <csignal>

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void noteInterruption(int number)
{
    if (interrupted != 0) {
        // It is delivered once more when this returns, and then it ends the program.
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    interrupted = 1;
}

} // namespace

namespace cli {

void catchInterruptions()
{
    struct sigaction action = {};
    action.sa_handler = noteInterruption;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART a question is not waited for any longer.
    for (const int number : std::array<int, 3>{SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        // Whoever started the program may want it to outlive the terminal.
        if (before.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
}

bool isInterrupted()
{
    return interrupted != 0;
}

} // namespace cli
