// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/interruption.h"

#include <array>
#include <csignal>

#include <poll.h>

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

constexpr std::array<int, 3> signalNumbers{SIGINT, SIGTERM, SIGHUP};

} // namespace

namespace cli {

void catchInterruptions()
{
    struct sigaction action = {};
    action.sa_handler = noteInterruption;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART a question is not waited for any longer.
    for (const int number : signalNumbers) {
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

bool waitForInput(int descriptor)
{
    // Held back from the look to the wait: in between a signal would be noticed, but end no wait.
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    for (const int number : signalNumbers) {
        sigaddset(&held, number);
    }
    pthread_sigmask(SIG_BLOCK, &held, &before);
    pollfd input = {descriptor, POLLIN, 0};
    bool isReady = false;
    while (!isReady && !isInterrupted()) {
        isReady = ppoll(&input, 1, nullptr, &before) > 0;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return isReady && !isInterrupted();
}

} // namespace cli
