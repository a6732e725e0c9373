// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/mockedports.h"

#include "tests/support/preload.h"

#include <unistd.h>

namespace support {

void MockedPorts::becomeMocked(char* argv[])
{
    const QByteArray library = "libumockdev-preload.so.0";
    if (qgetenv("LD_PRELOAD").contains(library)) {
        return;
    }
    qputenv("LD_PRELOAD", library);
    allowPreloadedLibraries();
    execv("/proc/self/exe", argv);
    qFatal("cannot start anew");
}

} // namespace support
