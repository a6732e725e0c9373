// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_OUTPUTFILE_H
#define MIOLKA_CLI_OUTPUTFILE_H

#include "cli/outcome.h"

class cMyConsole;
class cMyMemoryArea;
struct cMyInvocation;

/// Files as results. Each settings file is written whole or not at all; what was there before is
/// kept in the backup directory first, and the console is told where.
namespace cli {

/// Whether a file may be written there, in place of an existing one too if mayReplace, as far as
/// can be told before: to be asked where it takes long to get what is to be written. BadFile if
/// not.
[[nodiscard]] cMyOutcome checkOutputFile(const QString& path, bool mayReplace);

/// Writes the image to a file that is not there yet; with --force, to one that is. BadFile, with
/// everything as it was, if there is one, or if it cannot be kept or written. The image is not
/// modified any more afterwards.
[[nodiscard]] cMyOutcome writeImageFile(const QString& path, cMyMemoryArea& image,
                                        const cMyInvocation& invocation, cMyConsole& console);

/// The same for a file that is to be written over.
[[nodiscard]] cMyOutcome replaceImageFile(const QString& path, cMyMemoryArea& image,
                                          const cMyInvocation& invocation, cMyConsole& console);

} // namespace cli

#endif
