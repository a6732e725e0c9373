// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/differencesjson.h"

#include <QJsonObject>

namespace cli {

QJsonArray differencesJson(const QVector<cMySettingsDifference>& differences)
{
    QJsonArray array;
    for (const cMySettingsDifference& each : differences) {
        array.append(QJsonObject{{QStringLiteral("name"), each.name},
                                 {QStringLiteral("before"), each.before},
                                 {QStringLiteral("after"), each.after},
                                 {QStringLiteral("isCounted"), !each.isVersion}});
    }
    return array;
}

} // namespace cli
