// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIFFERENCESJSON_H
#define MIOLKA_CLI_DIFFERENCESJSON_H

#include "cli/differences.h"

#include <QJsonArray>

namespace cli {

/// Differences for other programs: "name", "before", "after" and "isCounted".
[[nodiscard]] QJsonArray differencesJson(const QVector<cMySettingsDifference>& differences);

} // namespace cli

#endif
