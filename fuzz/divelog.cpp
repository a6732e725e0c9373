// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"

#include "fuzz/support.h"

#include <cmath>

using fuzz::expect;

namespace {

void checkPoints(const cMyDiveProfile& profile)
{
    double time = 0;
    for (const cMyProfilePoint& point : profile.points()) {
        expect(std::isfinite(point.time) && point.time >= time, "times do not go back");
        expect(point.depth >= 0 && point.depth <= cMyDiveProfile::greatestDepth,
               "depths lie in the water");
        expect(!point.temperature || (*point.temperature >= cMyDiveProfile::coldest &&
                                      *point.temperature <= cMyDiveProfile::warmest),
               "temperatures are those of water");
        time = point.time;
    }
}

void checkProfile(const cMyDiveProfile& profile)
{
    constexpr int looks = 7;
    expect(profile.points().size() >= cMyDiveProfile::leastPoints &&
               profile.points().size() <= cMyDiveProfile::mostPoints && profile.fault().isEmpty(),
           "a profile has the points that it needs");
    expect(profile.duration() <= cMyDiveProfile::longestTime, "a profile ends within a day");
    checkPoints(profile);
    const cMyDiveProfile whole = profile.completed();
    checkPoints(whole);
    expect(whole.duration() >= profile.duration() && whole.maximumDepth() == profile.maximumDepth(),
           "what completes a profile is neither before its end nor deeper");
    expect(whole.points().last().depth <= 0, "a completed profile ends at the surface");
    for (int i = 0; i <= looks; ++i) {
        const double depth = whole.depthAt(whole.duration() * i / looks);
        expect(depth >= 0 && depth <= whole.maximumDepth(), "the way lies between its points");
    }
}

void checkLog(const QByteArray& contents, const QString& file, int dive)
{
    cMyDiveLog log;
    const cMyOutcome outcome = cli::parseDiveLog(contents, file, dive, log);
    if (outcome.isDone()) {
        expect(outcome.reasons.isEmpty() && log.dive == dive && log.dives >= dive,
               "what was read is the dive that was asked for");
        checkProfile(log.profile);
        return;
    }
    expect(outcome.status == cli::ExitStatus::BadFile && outcome.reasons.size() == 1,
           "a fault is told once");
    expect(outcome.reasons.first().startsWith(file + QLatin1Char(':')),
           "a fault is told with its file");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray contents = fuzz::bytesOf(bytes, size);
    checkLog(contents, QStringLiteral("log"), 1);
    checkLog(contents, QStringLiteral("log.xml"), 2);
    return 0;
}
