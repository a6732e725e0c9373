// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/ttywatch.h"

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto restlessTime = 3s;
constexpr auto longestRest = 10s;

} // namespace

cMyTtyWatch::cMyTtyWatch() : m_restless(restlessTime), m_nextLook(0) {}

bool cMyTtyWatch::isWorthLooking()
{
    auto entries = device::ttyEntries();
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
    return true;
}
