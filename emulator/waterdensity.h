// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_WATERDENSITY_H
#define MIOLKA_EMULATOR_WATERDENSITY_H

namespace emulator {

/// Density of water at one atmosphere, in kg/m^3, by the International Equation of State of
/// Seawater (UNESCO 1980, EOS-80), which is made for -2 to 40 degrees Celsius and 0 to 42 permille
/// of salt.
///
/// It is carried on to 60 degrees and 100 permille, which is what can be set. What lies outside
/// counts as the nearest bound, and no number as the upper one, so that the result is always
/// between 980 and 1090.
[[nodiscard]] double waterDensity(double temperatureC, double salinityPermille);

} // namespace emulator

#endif
