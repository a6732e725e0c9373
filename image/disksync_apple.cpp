// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/disksync.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// The call again as long as a signal ends it.
template <typename Call>
int repeated(Call call)
{
    int result = -1;
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

} // namespace

namespace image {

bool syncDescriptor(int descriptor)
{
    // Here fsync() leaves the bytes in the disk's own memory, from which they may be lost.
    if (repeated([&] { return fcntl(descriptor, F_FULLFSYNC); }) != -1) {
        return true;
    }
    // File systems that are not local do not know that call.
    return repeated([&] { return fsync(descriptor); }) == 0 || errno == EINVAL || errno == ENOTSUP;
}

} // namespace image
