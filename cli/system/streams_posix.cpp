// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/streams.h"

#include "cli/system/interruption.h"

#include <csignal>
#include <initializer_list>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

/// Where a standard stream is closed, the next file that is opened would take its place and get
/// what is printed. What stands there instead fails as the closed stream would.
void holdClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0) {
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace

namespace cli {

void prepareStreams()
{
    holdClosedStreams();
    // A reader that went away is a failed write, no reason to leave a device in the middle.
    std::signal(SIGPIPE, SIG_IGN);
}

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

int columnsOf(std::FILE* terminal)
{
    winsize size = {};
    return ioctl(fileno(terminal), TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

int nextCharacter(std::FILE* stream)
{
    // Read without a buffer, which would hide from the waiting that there is more.
    const int input = fileno(stream);
    char character = '\0';
    return waitForInput(input) && read(input, &character, 1) == 1
               ? static_cast<unsigned char>(character)
               : EOF;
}

} // namespace cli
