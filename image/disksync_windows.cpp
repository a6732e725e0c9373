// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/disksync.h"

#include <windows.h>

#include <io.h>

namespace image {

bool syncDescriptor(int descriptor)
{
    const auto file = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    return file != INVALID_HANDLE_VALUE && FlushFileBuffers(file) != FALSE;
}

} // namespace image
