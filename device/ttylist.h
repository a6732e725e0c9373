// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_TTYLIST_H
#define MIOLKA_DEVICE_TTYLIST_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace device {

/// A port in the system's cheap list of them: its name, and the number of the list's entry, which
/// is another one when a port goes and comes back between two looks.
using TtyEntry = std::pair<std::string, std::uint64_t>;

/// That list, sorted. Nothing if the system keeps none, or if it is there and cannot be read.
[[nodiscard]] std::optional<std::vector<TtyEntry>> ttyEntries();

} // namespace device

#endif
