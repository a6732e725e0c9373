// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_PROTOCOL_H
#define MIOLKA_DEVICE_PROTOCOL_H

#include "image/memorytype.h"

#include <QString>

#include <chrono>
#include <optional>

/// The words of the device's line protocol and the numbers that it is recognised by.
///
/// Every line to the device, a command word or an Intel HEX record, ends in CR LF and is answered
/// by one line. Lines from the device that begin with "!" are notices, not answers.
namespace device {

constexpr quint16 vendorId = 0x03EB;
constexpr quint16 productId = 0x2018;           ///< in normal operation, a serial port
constexpr quint16 bootLoaderProductId = 0x2FF0; ///< waiting for a firmware update

constexpr char lineEnd[] = "\r\n"; ///< of what is sent; an answer ends at its line feed
constexpr char noticeMark = '!';

constexpr char rootWord[] = "#ROOT";   ///< leaves any mode
constexpr char hexWord[] = "#HEX";     ///< the data lines that follow are Intel HEX records
constexpr char readWord[] = "#READ";   ///< a data record asks for the bytes where it lies
constexpr char writeWord[] = "#WRITE"; ///< a data record is stored
constexpr char resetWord[] = "#RESET"; ///< starts the device anew; its port goes and comes back
constexpr char bootWord[] = "#BOOT";   ///< starts the boot loader; the port goes
constexpr char clearWord[] = "#CLEAR"; ///< zeroes the statistics
constexpr char offWord[] = "#OFF";     ///< switches off once the cable is pulled
constexpr char simulationWord[] = "#SIMUL"; ///< begins a simulation, which implies records

/// An exchange that was cut off may still be answered after the port was opened again. A new one
/// waits until nothing came for the first of these times, but no longer than the second.
constexpr std::chrono::milliseconds quietMoment(50);
constexpr std::chrono::milliseconds longestSettling(200);

/// The word that selects a memory; empty for a number that stands for none.
[[nodiscard]] QString memoryWord(MemoryType area);

/// The memory that a reply line selects. The whole line counts, its line end included.
[[nodiscard]] std::optional<MemoryType> memoryOfReply(const QString& reply);

/// What an exchange with the device is; the numbers are fixed.
enum class LinkMode : qint32 {
    Write = 0,
    Read = 1,
    Command = 2, ///< one service command
    Reset = 3,
    Status = 5,
};

} // namespace device

#endif
