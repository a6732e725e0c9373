// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"

namespace {

struct BuiltInProfile
{
    const char* name;
    QVector<cMyProfilePoint> points;
};

const QVector<BuiltInProfile>& profiles()
{
    static const QVector<BuiltInProfile> table = {
        {"freedive", {{0, 0, {}}, {20, 0, {}}, {50, 30, {}}, {80, 0, {}}, {200, 0, {}}}},
        {"square",
         {{0, 0, {}}, {60, 18, {}}, {2400, 18, {}}, {2490, 5, {}}, {2670, 5, {}}, {2730, 0, {}}}},
        {"sawtooth",
         {{0, 0, {}},
          {120, 20, {}},
          {240, 8, {}},
          {360, 20, {}},
          {480, 8, {}},
          {600, 20, {}},
          {720, 8, {}},
          {840, 20, {}},
          {960, 5, {}},
          {1140, 5, {}},
          {1200, 0, {}}}},
    };
    return table;
}

} // namespace

namespace cli {

QStringList builtInProfiles()
{
    QStringList names;
    for (const BuiltInProfile& profile : profiles()) {
        names.append(QLatin1String(profile.name));
    }
    return names;
}

cMyDiveProfile builtInProfile(const QString& name)
{
    cMyDiveProfile profile;
    for (const BuiltInProfile& row : profiles()) {
        if (name != QLatin1String(row.name)) {
            continue;
        }
        for (const cMyProfilePoint& point : row.points) {
            const QString fault = profile.add(point);
            Q_ASSERT(fault.isEmpty());
            Q_UNUSED(fault)
        }
    }
    return profile;
}

} // namespace cli
