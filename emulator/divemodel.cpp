// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divemodel.h"

#include "editor/fieldcodec.h"
#include "emulator/waterdensity.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>

using namespace emulator;

namespace {

constexpr int samplingBase = 150; ///< in Hz; also the divider of one sample in a second
constexpr qint64 second = 1000;   ///< in ms
constexpr double tenths = 10;

qint16 saturated(double number)
{
    using Limits = std::numeric_limits<qint16>;
    return static_cast<qint16>(
        std::lround(std::clamp<double>(number, Limits::min(), Limits::max())));
}

qint16 wholeSeconds(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / second;
    return saturated(static_cast<double>(seconds));
}

template <typename Array, typename Number>
auto& at(Array& array, Number number)
{
    return array.at(static_cast<std::size_t>(number));
}

int setting(const cMyMemoryArea& area, const char* name)
{
    return editor::storedNumber(area, editor::settingsField(QString::fromLatin1(name)));
}

/// In m/s^2. What no planet's surface has is taken for a setting that was never made.
double gravitySetting(const cMyMemoryArea& area)
{
    constexpr double least = 1;
    const cMySettingsField& field = editor::settingsField(QStringLiteral("gravity"));
    const double gravity = editor::storedNumber(area, field) / field.factor;
    if (gravity >= least) {
        return gravity;
    }
    const auto low = static_cast<quint8>(field.defaultBytes.at(0));
    const auto high = static_cast<quint8>(field.defaultBytes.at(1));
    return (low | (high << 8)) / field.factor;
}

} // namespace

void cMyValueRange::add(qint16 value)
{
    m_minimum = m_count == 0 ? value : std::min(m_minimum, value);
    m_maximum = m_count == 0 ? value : std::max(m_maximum, value);
    m_sum += value;
    ++m_count;
}

qint16 cMyValueRange::average() const
{
    return m_count == 0 ? qint16(0)
                        : saturated(static_cast<double>(m_sum) / static_cast<double>(m_count));
}

cMyDiveModel::Settings::Settings(const cMyMemoryArea& area)
    : samplingDivider(setting(area, "depthSamplingRate")),
      diveThreshold(setting(area, "diveThreshold")),
      surfacingThreshold(std::min(diveThreshold, setting(area, "surfacingThreshold"))),
      ascentThreshold(setting(area, "ascentThreshold")),
      bottomThreshold(setting(area, "bottomThreshold")), salinity(setting(area, "salinity")),
      temperatureSource(static_cast<TemperatureSource>(setting(area, "temperatureSource"))),
      fixedTemperature(setting(area, "fixedTemperature")), gravity(gravitySetting(area))
{
    if (samplingDivider == 0) {
        samplingDivider = samplingBase;
    }
}

std::size_t cMyDiveModel::Settings::samplesInASecond() const
{
    const long samples = std::lround(static_cast<double>(samplingBase) / samplingDivider);
    return static_cast<std::size_t>(std::max(samples, 1L));
}

cMyDiveModel::cMyDiveModel(const cMyMemoryArea& settings, const cMyDiveValues& start)
    : m_settings(settings), m_greatest(start), m_totalBeforeDive(start.at(TotalDiveTime))
{
}

qint64 cMyDiveModel::sampleTime(qint64 index) const
{
    return index * m_settings.samplingDivider * second / samplingBase;
}

cMyDiveMoment cMyDiveModel::sample(qint64 index, const cMyDiveValues& values)
{
    cMyDiveMoment moment;
    moment.time = sampleTime(index);
    moment.elapsed = m_past.empty() ? 0 : moment.time - m_lastTime;
    moment.values = values;
    countTime(moment.elapsed);
    const double exact = m_isUnderwater ? stayUnderwater(moment) : stayOnSurface(moment);
    const qint16 speed = saturated(verticalSpeed({index, exact}));
    moment.values.at(Depth) = saturated(exact);
    moment.values.at(VerticalSpeed) = speed;
    if (m_isUnderwater) {
        addMotion(saturated(exact), speed);
    }
    if (m_isUnderwater && !moment.diveBegins) {
        changePhase(speed);
    }
    setSensorValues(moment.values, AbsolutePressure, m_statistics.absolutePressure);
    setSensorValues(moment.values, AtmosphericPressure, m_statistics.atmosphericPressure);
    setSensorValues(moment.values, Temperature, m_statistics.temperature);
    setDiveValues(moment.values);
    setGreatestValues(moment.values);
    moment.phase = m_phase;
    moment.isUnderwater = m_isUnderwater;
    m_lastTime = moment.time;
    return moment;
}

void cMyDiveModel::clearStatistics()
{
    m_statistics = {};
    m_greatest = {};
    m_surfaceTime = 0;
    m_totalBeforeDive = 0;
}

void cMyDiveModel::countTime(qint64 elapsed)
{
    (m_isUnderwater ? at(m_statistics.phaseTime, m_phase) : m_surfaceTime) += elapsed;
}

double cMyDiveModel::stayUnderwater(cMyDiveMoment& moment)
{
    const double standing = depth(m_statistics, moment.values);
    if (saturated(standing) < m_settings.surfacingThreshold) {
        moment.diveEnds = true;
        m_isUnderwater = false;
        m_surfaceTime = 0;
        return standing;
    }
    addReadings(m_statistics, moment.values);
    return depth(m_statistics, moment.values);
}

double cMyDiveModel::stayOnSurface(cMyDiveMoment& moment)
{
    Statistics restarted;
    addReadings(restarted, moment.values);
    const double beginning = depth(restarted, moment.values);
    if (saturated(beginning) < m_settings.diveThreshold) {
        return depth(m_statistics, moment.values);
    }
    moment.diveBegins = true;
    m_isUnderwater = true;
    m_phase = DivePhase::Descent;
    m_totalBeforeDive = m_greatest.at(TotalDiveTime);
    m_statistics = restarted;
    return beginning;
}

void cMyDiveModel::addReadings(Statistics& statistics, const cMyDiveValues& values)
{
    statistics.absolutePressure.add(values.at(AbsolutePressure));
    statistics.atmosphericPressure.add(values.at(AtmosphericPressure));
    statistics.temperature.add(values.at(Temperature));
}

double cMyDiveModel::densityTemperature(const Statistics& statistics,
                                        const cMyDiveValues& values) const
{
    const qint16 now = values.at(Temperature);
    const cMyValueRange& range = statistics.temperature;
    switch (m_settings.temperatureSource) {
    case TemperatureSource::Minimum:
        return (range.isEmpty() ? now : range.minimum()) / tenths;
    case TemperatureSource::Average:
        return (range.isEmpty() ? now : range.average()) / tenths;
    case TemperatureSource::Current:
        return now / tenths;
    default:
        return m_settings.fixedTemperature / tenths;
    }
}

double cMyDiveModel::pressurePerMetre(const Statistics& statistics,
                                      const cMyDiveValues& values) const
{
    constexpr double pascalInMbar = 100;
    const double density =
        waterDensity(densityTemperature(statistics, values), m_settings.salinity);
    return density * m_settings.gravity / pascalInMbar;
}

double cMyDiveModel::depth(const Statistics& statistics, const cMyDiveValues& values) const
{
    constexpr double centimetres = 100;
    const int pressure = values.at(AbsolutePressure) - values.at(AtmosphericPressure);
    return std::max(0.0, pressure / pressurePerMetre(statistics, values) * centimetres);
}

double cMyDiveModel::pressureAt(double depth, const cMyDiveValues& values) const
{
    Statistics withSample = m_isUnderwater ? m_statistics : Statistics();
    addReadings(withSample, values);
    return std::round(values.at(AtmosphericPressure) +
                      depth * pressurePerMetre(withSample, values));
}

double cMyDiveModel::verticalSpeed(const PastDepth& now)
{
    m_past.push_back(now);
    if (m_past.size() > m_settings.samplesInASecond() + 1) {
        m_past.pop_front();
    }
    const PastDepth& before = m_past.front();
    const auto ticks = static_cast<double>((now.index - before.index) * m_settings.samplingDivider);
    return ticks > 0 ? (now.depth - before.depth) * samplingBase / ticks : 0;
}

void cMyDiveModel::addMotion(qint16 depth, qint16 speed)
{
    m_statistics.depth.add(depth);
    if (speed < 0) {
        m_statistics.ascentSpeed.add(speed);
    } else if (speed > 0) {
        m_statistics.descentSpeed.add(speed);
    }
}

void cMyDiveModel::changePhase(int speed)
{
    if (speed <= m_settings.ascentThreshold) {
        m_phase = DivePhase::Ascent;
    } else if (m_phase != DivePhase::Descent) {
        const bool descends = speed > std::abs(m_settings.bottomThreshold);
        m_phase = descends ? DivePhase::Descent : m_phase;
    } else if (speed <= m_settings.bottomThreshold) {
        m_phase = DivePhase::Bottom;
    }
}

void cMyDiveModel::setSensorValues(cMyDiveValues& values, int sensor, const cMyValueRange& range)
{
    const qint16 reading = at(values, sensor);
    const bool hasDived = !range.isEmpty();
    at(values, sensor + Minimum) = hasDived ? range.minimum() : reading;
    at(values, sensor + Maximum) = hasDived ? range.maximum() : reading;
    at(values, sensor + Average) = hasDived ? range.average() : reading;
    qint16& least = at(m_greatest, sensor + Least);
    qint16& greatest = at(m_greatest, sensor + Greatest);
    const bool isSet = least != 0 || greatest != 0;
    least = isSet ? std::min(least, reading) : reading;
    greatest = isSet ? std::max(greatest, reading) : reading;
    at(values, sensor + Least) = least;
    at(values, sensor + Greatest) = greatest;
}

qint64 cMyDiveModel::diveTime() const
{
    const auto& times = m_statistics.phaseTime;
    return std::accumulate(times.cbegin(), times.cend(), qint64(0));
}

void cMyDiveModel::setDiveValues(cMyDiveValues& values) const
{
    const auto phaseTime = [this](DivePhase phase) {
        return wholeSeconds(at(m_statistics.phaseTime, phase));
    };
    values.at(DepthMaximum) = m_statistics.depth.maximum();
    values.at(DepthAverage) = m_statistics.depth.average();
    values.at(DiveTime) = wholeSeconds(diveTime());
    values.at(SurfaceTime) = wholeSeconds(m_surfaceTime);
    values.at(DescentTime) = phaseTime(DivePhase::Descent);
    values.at(BottomTime) = phaseTime(DivePhase::Bottom);
    values.at(AscentTime) = phaseTime(DivePhase::Ascent);
    values.at(AscentSpeedMaximum) = m_statistics.ascentSpeed.minimum();
    values.at(DescentSpeedMaximum) = m_statistics.descentSpeed.maximum();
    values.at(AscentSpeedAverage) = m_statistics.ascentSpeed.average();
    values.at(DescentSpeedAverage) = m_statistics.descentSpeed.average();
}

void cMyDiveModel::setGreatestValues(cMyDiveValues& values)
{
    const auto raise = [this, &values](ValueNumber kept, ValueNumber ofDive) {
        m_greatest.at(kept) = std::max(m_greatest.at(kept), values.at(ofDive));
    };
    raise(GreatestDepth, DepthMaximum);
    raise(GreatestDiveTime, DiveTime);
    raise(GreatestDescentSpeed, DescentSpeedMaximum);
    m_greatest.at(GreatestAscentSpeed) =
        std::min(m_greatest.at(GreatestAscentSpeed), values.at(AscentSpeedMaximum));
    m_greatest.at(TotalDiveTime) = saturated(m_totalBeforeDive + values.at(DiveTime));
    for (const ValueNumber kept : {GreatestDepth, GreatestDiveTime, TotalDiveTime,
                                   GreatestAscentSpeed, GreatestDescentSpeed}) {
        values.at(kept) = m_greatest.at(kept);
    }
    values.at(StatusDiveTime) = values.at(GreatestDiveTime);
}
