// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_RULECHECK_H
#define MIOLKA_CLI_RULECHECK_H

#include "cli/settingscheck.h"

namespace cli {

/// Rules that can never do anything, or will never stop, and thresholds without effect; by the
/// virtual device's understanding of rules. Rules that are switched off are not looked at.
[[nodiscard]] QVector<cMySettingsDoubt> ruleDoubts(const cMyMemoryArea& image);

} // namespace cli

#endif
