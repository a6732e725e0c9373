// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"

#include <array>

namespace device {

namespace {

/// By the numbers of MemoryType.
constexpr std::array<const char*, 5> memoryWords = {"#EEPROM", "#FLASH", "#OTP", "#RAM", "#ROM"};

} // namespace

QString memoryWord(MemoryType area)
{
    const auto index = static_cast<std::size_t>(area);
    return index < memoryWords.size() ? QString::fromLatin1(memoryWords.at(index)) : QString();
}

std::optional<MemoryType> memoryOfReply(const QString& reply)
{
    if (!reply.startsWith(QLatin1Char('#'))) {
        return std::nullopt;
    }
    for (std::size_t index = 0; index < memoryWords.size(); ++index) {
        const auto area = static_cast<MemoryType>(index);
        if (reply == memoryWord(area) + QLatin1String(lineEnd)) {
            return area;
        }
    }
    return std::nullopt;
}

} // namespace device
