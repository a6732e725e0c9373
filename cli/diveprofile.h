// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIVEPROFILE_H
#define MIOLKA_CLI_DIVEPROFILE_H

#include <QString>
#include <QVector>

#include <optional>

/// Where a diver is at one time.
struct cMyProfilePoint
{
    double time = 0;                   ///< in s since the device was switched on
    double depth = 0;                  ///< in m
    std::optional<double> temperature; ///< in degrees Celsius, where it is known
};

/// The way of a diver through the water: straight lines between points. Whatever is in it keeps its
/// bounds: times do not go back, all numbers are finite, and depths lie in the water. Two points of
/// one time are a step. A value.
class cMyDiveProfile
{
public:
    static constexpr int leastPoints = 2;
    static constexpr int mostPoints = 1000000;
    static constexpr double longestTime = 24 * 60 * 60; ///< in s
    static constexpr double greatestDepth = 330; ///< in m; what 16 bits of mbar reach in any sea
    static constexpr double surfaceError = 1;    ///< in m; what a sensor may show in the air
    static constexpr double coldest = -10;       ///< in degrees Celsius, as the next one
    static constexpr double warmest = 60;

    /// Whether water may be that warm, in degrees Celsius; a number that is none is not.
    [[nodiscard]] static bool isWarmthOfWater(double temperature);

    /// In s on the surface before a rehearsal ends, so that what is said after a dive is heard.
    static constexpr double timeAfterDive = 60;
    /// In m/s, for profiles that end in the water: nine metres in a minute.
    static constexpr double ascentSpeed = 9.0 / 60;

    /// The point behind all others. Returns what is wrong with it, and then it was not added; else
    /// an empty text. What lies above the surface by no more than a sensor's error is at it.
    [[nodiscard]] QString add(const cMyProfilePoint& point);

    /// In the order of their times.
    [[nodiscard]] const QVector<cMyProfilePoint>& points() const { return m_points; }

    /// What the profile lacks to be one; empty if nothing.
    [[nodiscard]] QString fault() const;

    /// Time of the last point, in s; 0 if there is none.
    [[nodiscard]] double duration() const;

    /// In m; 0 without points.
    [[nodiscard]] double maximumDepth() const;

    /// The depth in m, between points on the straight line. Before the first and behind the last
    /// point it is theirs; at a step it is the second one's.
    [[nodiscard]] double depthAt(double time) const;

    /// The temperature of the point at that time or before it; of a completed profile, the last one
    /// known, or else the first one. Nothing if there is none.
    [[nodiscard]] std::optional<double> temperatureAt(double time) const;

    /// The dive from switch-on to its end: down from the surface at 0 s unless the first point is
    /// at 0 s itself, up at the speed of an ascent from where it ends, and a minute there unless
    /// that is in it. Temperatures last until the next one. May be longer than the longest profile
    /// by all that.
    [[nodiscard]] cMyDiveProfile completed() const;

private:
    [[nodiscard]] int firstBehind(double time) const;

    QVector<cMyProfilePoint> m_points;
};

#endif
