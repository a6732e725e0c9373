// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/echopeer.h"

#include "image/hexcodec.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sched.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace bench {

namespace {

using Buffer = std::array<char, 4096>;

/// Fills the record that stands in the text, if it is one of values, with the next numbers.
void countUp(Buffer& text, std::size_t size)
{
    constexpr int valuesSize = 16;
    static quint8 number = 0;
    cMyRecordFields fields;
    const auto fault = image::decodeRecord(std::string_view(text.data(), size), fields);
    if (fault != image::RecordFault::None || fields.size != valuesSize) {
        return;
    }
    ++number;
    fields.data.fill(number);
    cMyRecordLine line;
    line.count = valuesSize;
    line.offset = fields.offset;
    line.type = fields.type;
    line.payload = fields.data.data();
    line.payloadSize = valuesSize;
    line.checksum = image::recordChecksum(line.offset, line.type, 0, line.payload, valuesSize);
    image::encodeRecord(line, text.data());
}

[[noreturn]] void echo(int line, long delay, Values values)
{
    constexpr long nanosecondsEach = 1000;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    pinTo(1);
    Buffer buffer{};
    std::size_t size = 0;
    for (;;) {
        const auto count = read(line, std::next(buffer.data(), static_cast<std::ptrdiff_t>(size)),
                                buffer.size() - size);
        if (count <= 0) {
            std::_Exit(EXIT_SUCCESS);
        }
        size += static_cast<std::size_t>(count);
        if (std::memchr(buffer.data(), '\n', size) == nullptr) {
            continue;
        }
        if (delay > 0) {
            const timespec pause{0, delay * nanosecondsEach};
            nanosleep(&pause, nullptr);
        }
        if (values == Values::Counted) {
            countUp(buffer, size);
        }
        if (write(line, buffer.data(), size) < 0) {
            std::_Exit(EXIT_FAILURE);
        }
        size = 0;
    }
}

} // namespace

EchoPeer::EchoPeer(long delay, Values values)
{
    termios settings{};
    cfmakeraw(&settings);
    std::array<char, 128> name{};
    if (openpty(&m_master, &m_slave, name.data(), &settings, nullptr) != 0) {
        std::perror("no pseudo-terminal");
        std::exit(EXIT_FAILURE);
    }
    m_path = name.data();
    m_process = fork();
    if (m_process == 0) {
        close(m_slave);
        echo(m_master, delay, values);
    }
}

EchoPeer::~EchoPeer()
{
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    close(m_master);
    close(m_slave);
}

namespace {

/// Those that this process may use.
std::vector<unsigned> allowedProcessors()
{
    std::vector<unsigned> allowed;
    cpu_set_t processors;
    CPU_ZERO(&processors);
    sched_getaffinity(0, sizeof processors, &processors);
    for (unsigned each = 0; each < CPU_SETSIZE; ++each) {
        if (CPU_ISSET(each, &processors)) {
            allowed.push_back(each);
        }
    }
    return allowed;
}

} // namespace

void pinTo(unsigned processor)
{
    static const std::vector<unsigned> allowed = allowedProcessors();
    if (allowed.empty()) {
        return;
    }
    cpu_set_t processors;
    CPU_ZERO(&processors);
    // Where there is only one processor, both ends share it.
    CPU_SET(allowed.at(processor % allowed.size()), &processors);
    sched_setaffinity(0, sizeof processors, &processors);
}

namespace {

/// Writes one line and waits for its answer; false if the line broke.
bool exchange(int port, const std::string& line)
{
    if (write(port, line.data(), line.size()) != static_cast<ssize_t>(line.size())) {
        return false;
    }
    static Buffer buffer{};
    std::size_t size = 0;
    while (size == 0 || buffer.at(size - 1) != '\n') {
        pollfd ready{port, POLLIN, 0};
        poll(&ready, 1, -1);
        const auto got = read(port, std::next(buffer.data(), static_cast<std::ptrdiff_t>(size)),
                              buffer.size() - size);
        if (got <= 0) {
            return false;
        }
        size += static_cast<std::size_t>(got);
    }
    return true;
}

} // namespace

double bareExchange(const std::string& path, const std::vector<std::string>& lines, int count)
{
    const int port = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios settings{};
    cfmakeraw(&settings);
    tcsetattr(port, TCSANOW, &settings);
    const auto start = std::chrono::steady_clock::now();
    bool isRight = port >= 0;
    for (int i = 0; i < count && isRight; ++i) {
        isRight = std::all_of(lines.cbegin(), lines.cend(),
                              [port](const std::string& line) { return exchange(port, line); });
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    close(port);
    return isRight ? seconds.count() : -1;
}

} // namespace bench
