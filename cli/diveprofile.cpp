// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diveprofile.h"

#include <algorithm>
#include <cmath>

namespace {

QString number(double value)
{
    return QString::number(value, 'g', 9);
}

QString outside(const char* what, double value, const char* unit, double least, double most)
{
    return QStringLiteral("the %1 is %2 %3, and must be between %4 and %5 %3")
        .arg(QLatin1String(what), number(value), QLatin1String(unit), number(least), number(most));
}

bool isWithin(double value, double least, double most)
{
    return value >= least && value <= most; // which what is no number is not
}

} // namespace

bool cMyDiveProfile::isWarmthOfWater(double temperature)
{
    return isWithin(temperature, coldest, warmest);
}

QString cMyDiveProfile::add(const cMyProfilePoint& measured)
{
    cMyProfilePoint point = measured;
    if (isWithin(point.depth, -surfaceError, 0)) {
        point.depth = 0;
    }
    if (!isWithin(point.time, 0, longestTime)) {
        return outside("time", point.time, "s", 0, longestTime);
    }
    if (!isWithin(point.depth, 0, greatestDepth)) {
        return outside("depth", point.depth, "m", 0, greatestDepth);
    }
    if (point.temperature && !isWarmthOfWater(*point.temperature)) {
        return outside("temperature", *point.temperature, "degrees Celsius", coldest, warmest);
    }
    if (!m_points.isEmpty() && point.time < m_points.last().time) {
        return QStringLiteral("the time goes back from %1 s to %2 s")
            .arg(number(m_points.last().time), number(point.time));
    }
    if (m_points.size() == mostPoints) {
        return QStringLiteral("there are more than %1 points").arg(mostPoints);
    }
    m_points.append(point);
    return {};
}

QString cMyDiveProfile::fault() const
{
    if (m_points.size() < leastPoints) {
        return QStringLiteral("a profile needs at least %1 points, and here are %2")
            .arg(leastPoints)
            .arg(m_points.size());
    }
    return {};
}

double cMyDiveProfile::duration() const
{
    return m_points.isEmpty() ? 0 : m_points.last().time;
}

double cMyDiveProfile::maximumDepth() const
{
    double depth = 0;
    for (const cMyProfilePoint& point : m_points) {
        depth = std::max(depth, point.depth);
    }
    return depth;
}

int cMyDiveProfile::firstBehind(double time) const
{
    const auto found = std::upper_bound(
        m_points.cbegin(), m_points.cend(), time,
        [](double sought, const cMyProfilePoint& point) { return sought < point.time; });
    return static_cast<int>(found - m_points.cbegin());
}

double cMyDiveProfile::depthAt(double time) const
{
    if (m_points.isEmpty()) {
        return 0;
    }
    const int behind = firstBehind(time);
    if (behind == 0 || behind == m_points.size()) {
        return m_points.at(std::max(behind - 1, 0)).depth;
    }
    const cMyProfilePoint& from = m_points.at(behind - 1);
    const cMyProfilePoint& to = m_points.at(behind);
    const double share = (time - from.time) / (to.time - from.time);
    return from.depth + share * (to.depth - from.depth);
}

std::optional<double> cMyDiveProfile::temperatureAt(double time) const
{
    if (m_points.isEmpty()) {
        return std::nullopt;
    }
    return m_points.at(std::max(firstBehind(time) - 1, 0)).temperature;
}

cMyDiveProfile cMyDiveProfile::completed() const
{
    cMyDiveProfile whole;
    if (m_points.isEmpty()) {
        return whole;
    }
    if (m_points.first().time > 0) {
        whole.m_points.append({0, 0, {}});
    }
    whole.m_points += m_points;
    double surfaced = duration();
    for (auto point = m_points.crbegin(); point != m_points.crend() && point->depth <= 0; ++point) {
        surfaced = point->time;
    }
    const cMyProfilePoint last = m_points.last();
    if (last.depth > 0) {
        surfaced = last.time + last.depth / ascentSpeed;
        whole.m_points.append({surfaced, 0, {}});
    }
    if (surfaced + timeAfterDive > whole.duration()) {
        whole.m_points.append({surfaced + timeAfterDive, 0, {}});
    }
    const auto known = std::find_if(whole.m_points.cbegin(), whole.m_points.cend(),
                                    [](const auto& point) { return point.temperature; });
    std::optional<double> temperature =
        known == whole.m_points.cend() ? std::nullopt : known->temperature;
    for (cMyProfilePoint& point : whole.m_points) {
        temperature = point.temperature ? point.temperature : temperature;
        point.temperature = temperature;
    }
    return whole;
}
