// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_BENCH_ECHOPEER_H
#define MIOLKA_BENCH_ECHOPEER_H

#include <string>
#include <sys/types.h>
#include <vector>

namespace bench {

/// What a peer answers to a record of 16 bytes; every other line it answers with that line.
enum class Values {
    Same,    ///< the record itself
    Counted, ///< other numbers each time
};

/// A process that answers every line on a pseudo-terminal, on a processor of its own where there
/// is one.
class EchoPeer
{
public:
    /// Each answer comes that many microseconds after its line.
    explicit EchoPeer(long delay, Values values = Values::Same);
    ~EchoPeer();
    EchoPeer(const EchoPeer&) = delete;
    EchoPeer& operator=(const EchoPeer&) = delete;
    EchoPeer(EchoPeer&&) = delete;
    EchoPeer& operator=(EchoPeer&&) = delete;

    /// The end for the program under test.
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    std::string m_path;
    int m_master = -1;
    int m_slave = -1; ///< keeps the line up while nobody else has it open
    pid_t m_process = -1;
};

/// Ties the calling thread, and those that it starts from then on, to one processor, counted from
/// 0.
void pinTo(unsigned processor);

/// What writing lines costs without any framework: each is written and its answer polled for, and
/// all of them count times. In seconds; negative if the line broke.
double bareExchange(const std::string& path, const std::vector<std::string>& lines, int count);

} // namespace bench

#endif
