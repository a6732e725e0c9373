// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/brokendisk.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

support::DiskFault fault;
int failed = 0;

int fail(int error)
{
    ++failed;
    errno = error;
    return -1;
}

bool isSyncRefused()
{
    return fault.syncError != 0 && fault.goodSyncs-- <= 0;
}

bool isRegular(int file)
{
    struct stat state = {};
    return fstat(file, &state) == 0 && S_ISREG(state.st_mode);
}

} // namespace

// These stand before the system's own for every library of the process.
extern "C" {

Q_DECL_EXPORT ssize_t write(int file, const void* bytes, size_t count)
{
    if (fault.room < 0 || !isRegular(file)) {
        return syscall(SYS_write, file, bytes, count);
    }
    if (fault.room == 0 && count > 0) {
        return fail(ENOSPC);
    }
    const ssize_t written =
        syscall(SYS_write, file, bytes, std::min(count, static_cast<size_t>(fault.room)));
    fault.room -= static_cast<int>(std::max<ssize_t>(written, 0));
    return written;
}

Q_DECL_EXPORT int fsync(int file)
{
    return isSyncRefused() ? fail(fault.syncError) : static_cast<int>(syscall(SYS_fsync, file));
}

Q_DECL_EXPORT int fdatasync(int file)
{
    return isSyncRefused() ? fail(fault.syncError) : static_cast<int>(syscall(SYS_fdatasync, file));
}

Q_DECL_EXPORT int linkat(int fromDirectory, const char* from, int toDirectory, const char* to,
                         int flags) noexcept
{
    return fault.linkError != 0
               ? fail(fault.linkError)
               : static_cast<int>(syscall(SYS_linkat, fromDirectory, from, toDirectory, to, flags));
}

Q_DECL_EXPORT int rename(const char* from, const char* to) noexcept
{
    return fault.renameError != 0
               ? fail(fault.renameError)
               : static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

Q_DECL_EXPORT int open64(const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    if (!fault.hasUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE) {
        return fail(EOPNOTSUPP);
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

} // extern "C"

namespace support {

BrokenDisk::BrokenDisk(const DiskFault& which)
{
    fault = which;
    failed = 0;
}

BrokenDisk::~BrokenDisk()
{
    fault = {};
}

int BrokenDisk::failures()
{
    return failed;
}

} // namespace support
