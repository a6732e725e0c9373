// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_SOAKTABLE_H
#define MIOLKA_ENDTOEND_SOAKTABLE_H

#include "tests/endtoend/session.h"

#include <QElapsedTimer>
#include <QTextStream>
#include <QVector>

/// A program with a virtual device that holds docs/example.mio, unplugged, and with what counts its
/// objects. Its lines are not logged: hours of them would fill the disk.
[[nodiscard]] support::SessionOptions soakOptions(const QStringList& emulatorOptions = {});

/// Plugs the device in and waits until the status that the program then asks for is shown. Returns
/// why that did not come off; empty if it did, as does the next one.
[[nodiscard]] QString plugInForStatus(support::Session& session);

/// Unplugs it, and closes the box that tells of it.
[[nodiscard]] QString unplugAndCloseBox(support::Session& session);

/// What a process holds.
struct Holdings
{
    int memory = 0; ///< resident, in KiB
    int threads = 0;
    int files = 0; ///< open, without sockets
    int sockets = 0;
    int timers = 0;  ///< running ones of the GUI thread
    int objects = 0; ///< of Qt's kind; a notice, without a limit
};

/// What a program holds while it is put to work, as a table: a row at each of several moments, and
/// a verdict for each limit at the end.
class SoakTable
{
public:
    /// The names of what is counted besides, one column each.
    SoakTable(support::Session& session, QStringList counters);

    /// Prints the headings and starts the clock.
    void begin();

    /// In ms since begin().
    [[nodiscard]] qint64 elapsed() const { return m_clock.elapsed(); }

    /// To be called where the program has nothing to do. Prints a row if it is given a name. The
    /// first one counts as the start; what is held more than then is returned, if anything is.
    [[nodiscard]] QString takeSample(const char* name, const QVector<qint64>& counts);

    /// Memory may grow only a little from the last sample on.
    void warmedUp() { m_warm = m_last; }

    /// Prints the verdicts; false if a limit is broken.
    bool isSteady();

private:
    [[nodiscard]] Holdings holdings() const;
    [[nodiscard]] bool holdsAsMuchAsAtStart() const;
    void print(const char* name, const QVector<qint64>& counts);
    bool judge(const char* what, int before, int after, int mostGrowth);

    support::Session& m_session;
    QTextStream m_out;
    QStringList m_counters;
    QElapsedTimer m_clock;
    bool m_hasStarted = false;
    Holdings m_start;
    Holdings m_warm;
    Holdings m_last;
};

#endif
