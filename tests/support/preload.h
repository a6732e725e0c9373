// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_PRELOAD_H
#define MIOLKA_TESTS_SUPPORT_PRELOAD_H

#include <QtGlobal>

namespace support {

/// A sanitizer wants to be the first library of a program; it works as the second, behind the one
/// that mocks ports. For the programs that are started from now on.
inline void allowPreloadedLibraries()
{
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0");
}

} // namespace support

#endif
