// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/mockedports.h"

#include <unistd.h>

namespace support {

void MockedPorts::becomeMocked(char* argv[])
{
    const QByteArray library = "libumockdev-preload.so.0";
    if (qgetenv("LD_PRELOAD").contains(library)) {
        return;
    }
    qputenv("LD_PRELOAD", library);
    // A sanitizer wants to be the first library; it works as the second.
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":verify_asan_link_order=0");
    execv("/proc/self/exe", argv);
    qFatal("cannot start anew");
}

} // namespace support
