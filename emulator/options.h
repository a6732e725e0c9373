// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_OPTIONS_H
#define MIOLKA_EMULATOR_OPTIONS_H

#include "emulator/faults.h"

#include <QString>
#include <QStringList>

/// What the emulator was asked to do on its command line.
struct cMyEmulatorOptions
{
    bool help = false;
    bool version = false;
    bool terminals = false; ///< serve bare pseudo-terminals; no program is run
    bool unplugged = false;
    bool foreign = false;
    int latency = 0;  ///< ms
    int lineTime = 0; ///< ms; 0 for the real time
    int count = 1;
    quint32 seed = 0;
    QString settings; ///< paths; empty where there is none
    QString state;
    QString trace;
    QString control;
    cMyFaults faults;
    QStringList program; ///< its name and its arguments
    QString helpText;    ///< for --help
    QString error;       ///< what is wrong with the command line; empty if nothing is
};

namespace emulator {

/// Longest latency that can be asked for, in ms.
constexpr int longestLatency = 60000;

/// Longest time that a line can be said to take, in ms.
constexpr int longestLineTime = 60000;

/// A latency as text; nothing if it is none.
[[nodiscard]] std::optional<int> parseLatency(const QString& text);

/// Arguments begin with the emulator's own name.
[[nodiscard]] cMyEmulatorOptions parseOptions(const QStringList& arguments);

} // namespace emulator

#endif
