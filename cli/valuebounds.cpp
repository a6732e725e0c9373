// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/valuebounds.h"

#include "cli/rule.h"
#include "editor/fieldtext.h"
#include "emulator/devicememories.h"
#include "emulator/divemodel.h"
#include "emulator/ruleconditions.h"
#include "image/memoryarea.h"

#include <algorithm>

namespace {

constexpr int lastOfSensor = emulator::Greatest;

int numberOf(const cMyMemoryArea& image, const char* name)
{
    return editor::storedNumber(image, editor::settingsField(QString::fromLatin1(name)));
}

bool isOfSensor(int value, int reading)
{
    return value >= reading && value <= reading + lastOfSensor;
}

/// Densities by statistics of the dive let the depth that is judged differ from the one measured.
int centimetresAstray(const cMyMemoryArea& image)
{
    const auto source = static_cast<TemperatureSource>(numberOf(image, "temperatureSource"));
    const bool isAstray =
        source == TemperatureSource::Minimum || source == TemperatureSource::Average;
    return isAstray ? 1 : 0;
}

QString metres(int centimetres)
{
    return editor::withUnit(editor::shownNumber(centimetres / 100.0, 100), QStringLiteral("m"));
}

void keepBelow(cMyValueBounds& bounds, int threshold, const QString& why, int astray)
{
    bounds.maximum = std::max(bounds.minimum, (threshold - 1 + astray) / 100.0);
    bounds.why = why.arg(metres(threshold));
}

void narrowDepth(const cMyMemoryArea& image, RuleCondition condition, cMyValueBounds& bounds)
{
    const int dive = numberOf(image, "diveThreshold");
    const int surfacing = std::min(dive, numberOf(image, "surfacingThreshold"));
    const int astray = centimetresAstray(image);
    const QString begins = QStringLiteral("a dive begins at %1");
    const QString ends = QStringLiteral("a dive ends above %1");
    const auto keepIn = [&bounds, astray](int threshold, const QString& why) {
        bounds.minimum = std::max(bounds.minimum, (threshold - astray) / 100.0);
        bounds.why = why.arg(metres(threshold));
    };
    switch (condition) {
    case RuleCondition::OnSurface:
        keepBelow(bounds, dive, begins, astray);
        return;
    case RuleCondition::DiveEnds:
        keepBelow(bounds, surfacing, ends, astray);
        return;
    case RuleCondition::DiveBegins:
        keepIn(dive, begins);
        return;
    case RuleCondition::Underwater:
    case RuleCondition::Descending:
    case RuleCondition::OnBottom:
    case RuleCondition::Ascending:
        keepIn(surfacing, ends);
        return;
    default:
        return;
    }
}

void narrowTimer(int timer, int condition, int longest, cMyValueBounds& bounds)
{
    const QString name =
        timer == 0 ? QStringLiteral("stopwatch 0") : QStringLiteral("timer %1").arg(timer);
    bounds.maximum = std::min(bounds.maximum, double(longest));
    if (longest == 0) {
        bounds.why = QStringLiteral("no rule starts %1").arg(name);
    } else if (timer == 0) {
        return;
    } else if (emulator::timerOf(condition, static_cast<int>(RuleCondition::TimerPassed)) ==
               timer) {
        bounds.maximum = 0;
        bounds.why = QStringLiteral("nothing remains of a timer that passed");
    } else {
        const bool counts =
            emulator::timerOf(condition, static_cast<int>(RuleCondition::TimerCounts)) == timer;
        bounds.minimum = counts ? 1 : 0;
        bounds.why = QStringLiteral("no rule starts %1 with more than %2 s").arg(name).arg(longest);
    }
}

} // namespace

namespace cli {

cMyValueBounds widestBounds(const cMyMemoryArea& image, const cMyRule& rule)
{
    const cMyThresholdScale scale = editor::numberScale(image, rule.field("threshold"));
    cMyValueBounds bounds{scale.minimum, scale.maximum, {}};
    const int value = rule.stored("measuredValue");
    switch (value) {
    // Rising is negative: no ascent's speed is above 0, and no descent's below.
    case emulator::AscentSpeedMaximum:
    case emulator::AscentSpeedAverage:
    case emulator::GreatestAscentSpeed:
        bounds.maximum = 0;
        break;
    case emulator::DescentSpeedMaximum:
    case emulator::DescentSpeedAverage:
    case emulator::GreatestDescentSpeed:
        bounds.minimum = 0;
        break;
    default:
        break;
    }
    const bool isAir = isOfSensor(value, emulator::AtmosphericPressure);
    if (isAir || isOfSensor(value, emulator::AbsolutePressure)) {
        bounds.minimum = thinnestAir;
    }
    if (isAir) {
        bounds.maximum = thickestAir;
    }
    return bounds;
}

cMyValueBounds valueBounds(const cMyMemoryArea& image, const cMyRule& rule,
                           const cMyTimerTimes& times)
{
    cMyValueBounds bounds = widestBounds(image, rule);
    const int value = rule.stored("measuredValue");
    const int condition = rule.stored("condition");
    if (value == emulator::Depth) {
        narrowDepth(image, static_cast<RuleCondition>(condition), bounds);
    } else if (const auto timer = emulator::timerOf(value, emulator::Stopwatch0)) {
        narrowTimer(*timer, condition, times.at(static_cast<std::size_t>(*timer)), bounds);
    }
    return bounds;
}

int depthPassedAtSurface(const cMyMemoryArea& image)
{
    constexpr int fastest = 300; // in cm/s, of a diver
    constexpr int samplingBase = 150;
    const int divider = numberOf(image, "depthSamplingRate");
    const int step = fastest * (divider == 0 ? samplingBase : divider) / samplingBase;
    return std::max(numberOf(image, "diveThreshold"), numberOf(image, "surfacingThreshold") + step);
}

} // namespace cli
