// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <chrono>
#include <thread>

namespace {

/// A thread of Qt's that has been waited for still takes a moment to end. The leak check at the end
/// of a test must not meet one in the middle of that: it crashes then.
class Settle
{
public:
    Settle() = default;
    Settle(const Settle&) = delete;
    Settle& operator=(const Settle&) = delete;
    ~Settle() { std::this_thread::sleep_for(std::chrono::milliseconds(200)); }
};

const Settle settle;

} // namespace
