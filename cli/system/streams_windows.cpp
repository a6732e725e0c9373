// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/streams.h"

#include "cli/system/interruption.h"

#include <initializer_list>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace {

HANDLE handleOf(std::FILE* stream)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

/// Of a terminal that understands the commands for the progress.
void understandEscapes(HANDLE terminal)
{
    DWORD mode = 0;
    if (GetConsoleMode(terminal, &mode) != FALSE) {
        SetConsoleMode(terminal, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

} // namespace

namespace cli {

/// A stream that is closed has no number here that another file could take.
void prepareStreams()
{
    // Otherwise each end of a line would become two bytes.
    for (std::FILE* const stream : {stdout, stderr}) {
        if (_fileno(stream) >= 0) {
            _setmode(_fileno(stream), _O_BINARY);
            understandEscapes(handleOf(stream));
        }
    }
    SetConsoleOutputCP(CP_UTF8);
}

bool isTerminal(std::FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

int columnsOf(std::FILE* terminal)
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    return GetConsoleScreenBufferInfo(handleOf(terminal), &info) != FALSE
               ? info.srWindow.Right - info.srWindow.Left + 1
               : 0;
}

int nextCharacter(std::FILE* stream)
{
    const int input = _fileno(stream);
    char character = '\0';
    return waitForInput(input) && _read(input, &character, 1) == 1
               ? static_cast<unsigned char>(character)
               : EOF;
}

} // namespace cli
