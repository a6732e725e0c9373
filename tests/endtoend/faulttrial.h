// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_FAULTTRIAL_H
#define MIOLKA_ENDTOEND_FAULTTRIAL_H

#include "tests/endtoend/divelog.h"
#include "tests/endtoend/exchanges.h"

#include <QMetaType>

#include <optional>

namespace support {

/// What a fault of the wire can meet.
enum class Work { Status, Read, Write, Command, Upload, DiveStart, Dive };

constexpr Work everyWork[] = {Work::Status, Work::Read,      Work::Write, Work::Command,
                              Work::Upload, Work::DiveStart, Work::Dive};

/// Rows for every work need its name.
[[nodiscard]] const char* nameOf(Work work);

/// Whether it is a simulation, which meets the fault at its start or later.
[[nodiscard]] bool isDive(Work work);

/// How a work has to end.
enum class End {
    Completed, ///< every line is answered by something
    Silence,   ///< given up: by itself, a transfer by whoever waits for it
    Loss,      ///< told by one error box
    Stopped,   ///< a simulation: not before it is stopped, and with the device taken leave of
    Idle,      ///< a simulation: when it is stopped at the latest
    Refused,   ///< a simulation: at once by itself
};

/// One work that meets a fault, from its beginning until everything works again. Functions that
/// return a text tell by it what is wrong; it is empty if nothing is.
class FaultTrial
{
public:
    /// The start page must be in front, and nothing on its way.
    FaultTrial(Session& session, Work work);

    /// Everything before the fault is told to the device.
    [[nodiscard]] QString prepare();

    /// How many lines from then on are answered before the fault that comes with a line.
    [[nodiscard]] int linesUntilFault() const;

    /// What begins with the fault there already; nothing in a dive that goes on.
    [[nodiscard]] QString begin();

    [[nodiscard]] QString waitForEnd(End end);

    /// With the fault gone and the device plugged in: a clean status query, write, read and
    /// command, then the same work without a fault. The start page is in front afterwards.
    [[nodiscard]] QString recover();

    /// How it ended, for the table.
    [[nodiscard]] QString outcome() const { return m_outcome; }

    /// The longest time in milliseconds that the window did not react since prepare().
    [[nodiscard]] int longestGap();

private:
    QString waitForCompletion();
    QString waitForSurrender();
    QString waitForDiveSurrender();
    QString waitForLoss();
    QString waitForStop(End end);
    QString recoverDive();

    Session& m_session;
    Work m_work;
    std::optional<Operation> m_exchange; ///< unless it is a dive
    SentLines m_sent;
    DiveLog m_log;
    QString m_outcome;
    int m_gap = 0;
};

} // namespace support

Q_DECLARE_METATYPE(support::Work)
Q_DECLARE_METATYPE(support::End)

#endif
