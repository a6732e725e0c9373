// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SETTINGSOURCE_H
#define MIOLKA_CLI_SETTINGSOURCE_H

#include "cli/outcome.h"

class cMyConsole;
class cMyMemoryArea;
struct cMyInvocation;
struct cMyStrictSettings;

/// Where the commands get settings images from. The area, which must be empty, holds the whole
/// image afterwards, and is not modified.
namespace cli {

/// The built-in default settings.
void loadDefaults(cMyMemoryArea& image);

/// A settings file, on the default settings, as bytes that it does not give are theirs. BadFile
/// with a reason for each fault of the file ("FILE:LINE: ..."), and then the area is not to be
/// used.
[[nodiscard]] cMyOutcome loadSettings(const QString& path, cMyMemoryArea& image);

/// The same for a file that was read.
[[nodiscard]] cMyOutcome applySettings(const QString& path, const cMyStrictSettings& settings,
                                       cMyMemoryArea& image);

/// What SOURCE stands for: "device", "default", or a file of that name.
[[nodiscard]] cMyOutcome loadSource(const QString& source, const cMyInvocation& invocation,
                                    cMyConsole& console, cMyMemoryArea& image);

/// The settings of the device that the invocation chooses.
[[nodiscard]] cMyOutcome readDevice(const cMyInvocation& invocation, cMyConsole& console,
                                    cMyMemoryArea& image);

} // namespace cli

#endif
