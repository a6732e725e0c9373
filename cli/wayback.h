// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_WAYBACK_H
#define MIOLKA_CLI_WAYBACK_H

#include "cli/outcome.h"

#include <optional>

/// What is said and known of ways back from a write that was cut off.
namespace cli {

/// The outcome of a write that failed before the device could have taken anything.
[[nodiscard]] cMyOutcome unchanged(cMyOutcome outcome);

/// Stands where a command would, if the device was one inside this program.
[[nodiscard]] QString virtualDeviceIsGone();

/// The serial number of the device in the name of a backup of its settings; none if the file has
/// another name.
[[nodiscard]] std::optional<int> serialNumberInName(const QString& path);

} // namespace cli

#endif
