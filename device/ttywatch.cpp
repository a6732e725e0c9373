// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/ttywatch.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

#ifdef Q_OS_LINUX
#include <dirent.h>
#include <memory>
#endif

using namespace std::chrono_literals;

namespace {

constexpr auto restlessTime = 3s;
constexpr auto longestRest = 10s;

#ifdef Q_OS_LINUX
struct CloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

/// Names and node numbers only: anything that also looks at the entries takes ten times as long.
/// Nothing if the list is there and cannot be read; a system without one has no ports.
std::optional<std::vector<cMyTtyWatch::Entry>> ttyEntries()
{
    std::vector<cMyTtyWatch::Entry> entries;
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
#endif

} // namespace

cMyTtyWatch::cMyTtyWatch() : m_restless(restlessTime), m_nextLook(0) {}

bool cMyTtyWatch::isWorthLooking()
{
#ifdef Q_OS_LINUX
    auto entries = ttyEntries();
    if (!entries) {
        return true;
    }
    if (entries != m_entries) {
        m_entries = std::move(entries);
        m_restless.setRemainingTime(restlessTime);
    }
    if (m_restless.hasExpired() && !m_nextLook.hasExpired()) {
        return false;
    }
    m_nextLook.setRemainingTime(longestRest);
#endif
    return true;
}
