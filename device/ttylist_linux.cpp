// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/ttylist.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>

namespace {

struct CloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

} // namespace

namespace device {

/// Names and node numbers only: anything that also looks at the entries takes ten times as long.
/// A system without the directory has no ports.
std::optional<std::vector<TtyEntry>> ttyEntries()
{
    std::vector<TtyEntry> entries;
    const std::unique_ptr<DIR, CloseDirectory> directory(opendir("/sys/class/tty"));
    if (directory == nullptr) {
        return errno == ENOENT ? std::make_optional(entries) : std::nullopt;
    }
    // The stream is ours alone.
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    while (const dirent* const entry = readdir(directory.get())) {
        entries.emplace_back(static_cast<const char*>(entry->d_name), entry->d_ino);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace device
