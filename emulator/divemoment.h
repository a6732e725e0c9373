// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_DIVEMOMENT_H
#define MIOLKA_EMULATOR_DIVEMOMENT_H

#include "emulator/devicememories.h"

#include <QMetaType>
#include <QString>

#include <array>

/// Parts of a dive, in the order in which they usually come.
enum class DivePhase { Descent, Bottom, Ascent };

/// All measured values by their numbers, each in its own unit.
using cMyDiveValues = std::array<qint16, emulator::valueCount>;

/// What the device knows when it has just taken a sample, and what its rules are judged by.
struct cMyDiveMoment
{
    qint64 time = 0;    ///< in ms since the simulation began
    qint64 elapsed = 0; ///< in ms since the sample before; 0 at the first
    cMyDiveValues values{};
    DivePhase phase = DivePhase::Descent; ///< of the dive; without meaning on the surface
    bool isUnderwater = false;            ///< a dive is on, its first sample included
    bool diveBegins = false;              ///< with this sample, which isUnderwater already
    bool diveEnds = false;                ///< with this sample, which is not any more
    bool switchesOn = false;
    bool switchesOff = false;
    bool isCharging = false;
    bool chargingBegins = false;
    bool chargingEnds = false; ///< isCharging is false already
};

/// A message as the device says it.
struct cMySpokenMessage
{
    qint64 time = 0; ///< in ms since the simulation began
    int depth = 0;   ///< in cm
    int rule = 0;    ///< that called for it, counted from 1
    QString text;    ///< in the words of the option tables, with the value in the chosen form
};

Q_DECLARE_METATYPE(cMySpokenMessage)

#endif
