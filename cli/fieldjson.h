// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_FIELDJSON_H
#define MIOLKA_CLI_FIELDJSON_H

#include "editor/settingslayout.h"

#include <QJsonObject>

class cMyMemoryArea;
class cMyRule;

namespace cli {

/// A field for other programs: "bytes" as hexadecimal text, "value" as a number or a text (of a
/// choice, the stored number; of other numbers, in the unit), "unit" and "label" or null.
[[nodiscard]] QJsonObject fieldJson(const cMyMemoryArea& image, const cMySettingsField& field);

/// A rule as a whole: "isOff" and "sentence".
[[nodiscard]] QJsonObject ruleJson(const cMyRule& rule);

} // namespace cli

#endif
