// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/differencesjson.h"

#include <QJsonArray>
#include <QJsonObject>

namespace cli {

QJsonArray toJson(const QVector<cMySettingsDifference>& differences)
{
    QJsonArray array;
    for (const cMySettingsDifference& each : differences) {
        array.append(QJsonObject{{QStringLiteral("field"), each.name},
                                 {QStringLiteral("before"), each.before},
                                 {QStringLiteral("after"), each.after},
                                 {QStringLiteral("isCounted"), !each.isVersion}});
    }
    return array;
}

} // namespace cli
