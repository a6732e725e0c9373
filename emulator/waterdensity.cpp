// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/waterdensity.h"

#include <array>
#include <cmath>

namespace emulator {

namespace {

/// Coefficients of the powers of the temperature, the highest first.
constexpr std::array<double, 6> pureWater = {6.536332e-9,  -1.120083e-6, 1.001685e-4,
                                             -9.095290e-3, 6.793952e-2,  999.842594};
constexpr std::array<double, 5> salt = {5.3875e-9, -8.2467e-7, 7.6438e-5, -4.0899e-3, 0.824493};
constexpr std::array<double, 3> saltToOneAndAHalf = {-1.6546e-6, 1.0227e-4, -5.72466e-3};
constexpr double saltSquared = 4.8314e-4;

template <std::size_t Size>
double polynomial(const std::array<double, Size>& coefficients, double variable)
{
    double sum = 0;
    for (const double coefficient : coefficients) {
        sum = sum * variable + coefficient;
    }
    return sum;
}

/// Unlike std::clamp() also a number if the given one is none.
double bounded(double number, double least, double most)
{
    return std::fmax(least, std::fmin(number, most));
}

} // namespace

double waterDensity(double temperatureC, double salinityPermille)
{
    constexpr double coldest = -2;
    constexpr double warmest = 60;
    constexpr double saltiest = 100;
    const double t = bounded(temperatureC, coldest, warmest);
    const double s = bounded(salinityPermille, 0, saltiest);
    return polynomial(pureWater, t) + s * polynomial(salt, t) +
           s * std::sqrt(s) * polynomial(saltToOneAndAHalf, t) + s * s * saltSquared;
}

} // namespace emulator
