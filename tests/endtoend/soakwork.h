// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_SOAKWORK_H
#define MIOLKA_ENDTOEND_SOAKWORK_H

#include "tests/endtoend/divelog.h"
#include "tests/endtoend/exchanges.h"
#include "tests/endtoend/session.h"
#include "tests/endtoend/soaktable.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QStringList>
#include <QTextStream>

#include <memory>

/// Everything that is done with a device, again and again in one running program. A round is five
/// exchanges (status query, read, write and command in turn), a simulation, and the device
/// unplugged and plugged in again. Every fifth one also uploads a library and saves settings, and
/// five of them are more than 25,000 lines. Every answer is held against the line that it answers,
/// every read and write against what the device holds, and what the program holds must stay.
class SoakWork
{
public:
    SoakWork(int rounds, quint32 seed);

    /// Prints a table; false if something was wrong or the program holds more than before.
    bool run();

private:
    QString prepare();
    QString makeRound();
    QString takeSample(const char* name);
    QString exchange(support::Operation operation);
    /// Waits until that many lines more than before were sent, and the last was answered.
    QString complete(int before, int lines);
    QString begin(support::Operation operation, QStringList* records);
    QString checkStatus();
    QString read();
    QString write();
    QString changeSettings();
    /// What the window holds after an exchange is what the device holds.
    QString checkSettings();
    /// Rounds in which files are chosen. Qt keeps some 16 KiB of each file dialog, in a program
    /// that does nothing else as well, and a thousand of them would hide what our program kept.
    [[nodiscard]] bool hasFileDialogs() const;
    QString upload();
    QString simulate();
    /// With what the device then holds, which is written down when it is unplugged.
    QString unplug();
    QString takeAnswers();
    [[nodiscard]] bool areInDevice() const;

    int m_rounds;
    QRandomGenerator m_random;
    support::Session m_session;
    QTextStream m_out;
    SoakTable m_table;
    std::unique_ptr<support::DiveLog> m_log; ///< of this round
    QStringList m_settings;                  ///< the records that the device holds
    QByteArray m_library;
    QString m_language;
    QString m_version;
    QString m_title;
    qint64 m_lines = 0;
    int m_round = 0;
    int m_exchanges = 0;
    int m_uploads = 0;
    int m_simulations = 0;
    int m_unpluggings = 0;
};

#endif
