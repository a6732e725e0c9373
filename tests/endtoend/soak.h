// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_SOAK_H
#define MIOLKA_ENDTOEND_SOAK_H

#include "tests/endtoend/divework.h"
#include "tests/endtoend/session.h"
#include "tests/endtoend/soaktable.h"

#include <QRandomGenerator>
#include <QTextStream>

/// Simulations without an end in one running program: started, steered and stopped at random, with
/// all that a restless user does in between. What the program holds between them must stay.
class Soak
{
public:
    Soak(int seconds, quint32 seed);

    /// Prints a table; false if something did not come off or the program holds more than before.
    bool run();

private:
    QString prepare();
    QString simulate();
    QString begin(support::DiveLog& log);
    QString disturb();
    QString end(support::DiveLog& log);
    QString unplug();
    QString takeSample(const char* name);
    /// One of that many, counted from 0.
    int any(int count) { return static_cast<int>(m_random.bounded(count)); }
    void rest(int milliseconds);

    int m_seconds;
    QRandomGenerator m_random;
    support::Session m_session;
    QTextStream m_out;
    SoakTable m_table;
    int m_simulations = 0;
    int m_unpluggings = 0;
    qint64 m_cycles = 0;
    bool m_isHasty = false; ///< the next simulation is started as soon as this one lets it
};

#endif
