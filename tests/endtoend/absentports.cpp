// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstring>

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

/// Loaded before the library that mocks USB ports: that one keeps a socket for each port that was
/// to be opened when it was gone, and ends the program with the fiftieth. The answer is the
/// system's own, and a port that is there is left to the library.
namespace {

using Open = int (*)(const char*, int, mode_t);

int openUnlessAbsent(const char* function, const char* path, int flags, mode_t mode)
{
    constexpr const char* ports = "/dev/tty";
    if (std::strncmp(path, ports, std::strlen(ports)) == 0 && ::access(path, F_OK) != 0) {
        return -1; // with the reason that was found
    }
    const auto next = reinterpret_cast<Open>(::dlsym(RTLD_NEXT, function));
    return next(path, flags, mode);
}

} // namespace

extern "C" {

int open(const char* path, int flags, mode_t mode);
int open64(const char* path, int flags, mode_t mode);

int open(const char* path, int flags, mode_t mode)
{
    return openUnlessAbsent("open", path, flags, mode);
}

int open64(const char* path, int flags, mode_t mode)
{
    return openUnlessAbsent("open64", path, flags, mode);
}
}
