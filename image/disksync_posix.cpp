// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/disksync.h"

#include <cerrno>

#include <unistd.h>

namespace image {

bool syncDescriptor(int descriptor)
{
    int result = -1;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    // A file system that does not know the call has no better answer.
    return result == 0 || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
}

} // namespace image
