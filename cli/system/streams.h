// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_STREAMS_H
#define MIOLKA_CLI_SYSTEM_STREAMS_H

#include <cstdio>

/// The standard streams, and the terminal that they may lead to.
namespace cli {

/// To be called first of all: nothing that is opened later takes the place of a standard stream
/// that is closed, a reader that goes away is a failed write, and bytes are written as they are.
void prepareStreams();

/// Whether somebody may be looking at what is written, or typing what is read.
[[nodiscard]] bool isTerminal(std::FILE* stream);

/// How many characters a line of the terminal holds; 0 if it does not tell.
[[nodiscard]] int columnsOf(std::FILE* terminal);

/// The next byte of the stream, past its buffer; EOF at its end and when the user wants to stop.
[[nodiscard]] int nextCharacter(std::FILE* stream);

} // namespace cli

#endif
