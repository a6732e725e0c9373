// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/interruption.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <sys/select.h>

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
    if (descriptor < 0 || descriptor >= FD_SETSIZE) {
        return !isInterrupted();
    }
    // Held back from the look to the wait: in between a signal would be noticed, but end no wait.
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    for (const int number : signalNumbers) {
        sigaddset(&held, number);
    }
    pthread_sigmask(SIG_BLOCK, &held, &before);
    bool isReady = false;
    while (!isReady && !isInterrupted()) {
        fd_set inputs;
        FD_ZERO(&inputs);
        FD_SET(descriptor, &inputs);
        const int count = pselect(descriptor + 1, &inputs, nullptr, nullptr, nullptr, &before);
        // What cannot be waited for is for the reading to find out.
        isReady = count > 0 || (count < 0 && errno != EINTR);
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return isReady && !isInterrupted();
}

} // namespace cli
