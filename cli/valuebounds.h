// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_VALUEBOUNDS_H
#define MIOLKA_CLI_VALUEBOUNDS_H

#include "emulator/divetimers.h"

#include <QString>

#include <array>

class cMyMemoryArea;
class cMyRule;

/// What a measured value can be while the condition of its rule holds, in displayed units.
struct cMyValueBounds
{
    double minimum = 0;
    double maximum = 0;
    QString why; ///< what keeps it there; empty if the value is like that anyway
};

/// The greatest number in s that each of the timers can show; 0 if nothing starts it.
using cMyTimerTimes = std::array<int, cMyDiveTimers::count>;

namespace cli {

constexpr double thinnestAir = 300;  ///< in mbar, on the highest mountain
constexpr double thickestAir = 1200; ///< in mbar, in the deepest valley

/// Bounds of the value that a rule compares, whatever the rule's condition.
[[nodiscard]] cMyValueBounds widestBounds(const cMyMemoryArea& image, const cMyRule& rule);

/// Those bounds narrowed by the rule's condition, the thresholds of dives, and the timers.
[[nodiscard]] cMyValueBounds valueBounds(const cMyMemoryArea& image, const cMyRule& rule,
                                         const cMyTimerTimes& times);

/// In cm; a step of a diver between two samples that ends on the surface never leads across it or
/// what is deeper.
[[nodiscard]] int depthPassedAtSurface(const cMyMemoryArea& image);

} // namespace cli

#endif
