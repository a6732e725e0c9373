// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_SKIPPED_H
#define MIOLKA_TESTS_SUPPORT_SKIPPED_H

namespace support {

/// What a test program that may skip something ends with, so that the summary tells of it; see
/// miolka_may_skip() in tests/CMakeLists.txt.
inline int exitStatus(int failures, bool wasSkipped)
{
    constexpr int skipped = 77;
    return failures == 0 && wasSkipped ? skipped : failures;
}

} // namespace support

#endif
