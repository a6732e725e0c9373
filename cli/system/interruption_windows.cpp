// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/interruption.h"

#include <atomic>

#include <windows.h>

namespace {

std::atomic<bool> interrupted = false;

/// Called in a thread of the system's own. What is not handled ends the program.
BOOL WINAPI noteInterruption(DWORD event)
{
    const bool isSecond = interrupted.exchange(true);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) {
        return isSecond ? FALSE : TRUE;
    }
    // The console is closed, and the program ends when this returns: as late as the system allows.
    Sleep(INFINITE);
    return TRUE;
}

} // namespace

namespace cli {

void catchInterruptions()
{
    SetConsoleCtrlHandler(noteInterruption, TRUE);
}

bool isInterrupted()
{
    return interrupted;
}

/// Ctrl-C ends a read from a console, which nothing else could wait for by the line.
bool waitForInput(int /*descriptor*/)
{
    return !isInterrupted();
}

} // namespace cli
