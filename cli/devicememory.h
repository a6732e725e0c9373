// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DEVICEMEMORY_H
#define MIOLKA_CLI_DEVICEMEMORY_H

#include "cli/outcome.h"

class cMyDeviceSession;
class cMyMemoryArea;

/// Which device it is.
struct cMyDeviceIdentity
{
    int serialNumber = 0;
    int memorySize = 0; ///< of the sounds, in MB
};

/// The memories of a device in a session, byte for byte: all of what was asked for is there, or the
/// outcome says at which line it failed.
namespace cli {

/// Reads serial number and memory size from OTP. Protocol or Cancelled, with identity as it was.
[[nodiscard]] cMyOutcome identify(cMyDeviceSession& session, cMyDeviceIdentity& identity);

/// The whole settings image, into an area that is empty; it is not modified then.
[[nodiscard]] cMyOutcome readSettings(cMyDeviceSession& session, cMyMemoryArea& image);

/// The whole settings image as it is. That the device took it is not to be concluded from its
/// answers.
[[nodiscard]] cMyOutcome writeSettings(cMyDeviceSession& session, const cMyMemoryArea& image);

} // namespace cli

#endif
