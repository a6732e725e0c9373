// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/process.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t runningChild = 0;

void killChild(int /*signal*/)
{
    kill(runningChild, SIGKILL);
}

} // namespace

namespace bench {

Usage run(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

    Usage usage;
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0) {
        constexpr unsigned patience = 20; // a program that misses its cue would run for ever
        runningChild = child;
        std::signal(SIGALRM, killChild);
        alarm(patience);
        int status = 0;
        rusage resources{};
        while (wait4(child, &status, 0, &resources) < 0 && errno == EINTR) {
        }
        alarm(0);
        usage.peakKiB = resources.ru_maxrss;
        usage.succeeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    usage.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    posix_spawn_file_actions_destroy(&actions);
    return usage;
}

} // namespace bench
