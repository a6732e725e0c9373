// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/signalpipe.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Ends of the pipe: to read from, to write to. The handler has no other way to them.
std::array<int, 2> ends = {-1, -1};

extern "C" void writeNumber(int number)
{
    const int saved = errno;
    const auto byte = static_cast<unsigned char>(number);
    // A full pipe holds more than anyone meant to say.
    [[maybe_unused]] const ssize_t written = ::write(ends[1], &byte, 1);
    errno = saved;
}

/// Whoever started us may have had it ignored, as nohup does.
bool isIgnored(int number)
{
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

void handle(int number, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

} // namespace

cMySignalPipe::cMySignalPipe(std::initializer_list<int> numbers, QObject* parent) : QObject(parent)
{
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        qFatal("no pipe for signals");
    }
    auto* const reader = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(reader, &QSocketNotifier::activated, this, &cMySignalPipe::receive);
    for (const int number : numbers) {
        if (!isIgnored(number)) {
            m_numbers.append(number);
            handle(number, writeNumber);
        }
    }
}

cMySignalPipe::~cMySignalPipe()
{
    for (const int number : qAsConst(m_numbers)) {
        handle(number, SIG_DFL);
    }
    for (int& end : ends) {
        ::close(end);
        end = -1;
    }
}

void cMySignalPipe::receive()
{
    unsigned char number = 0;
    while (::read(ends[0], &number, 1) == 1) {
        emit received(number);
    }
}
