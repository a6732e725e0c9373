// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/hexcodec.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

extern "C" {
/// How libFuzzer changes an input by itself; returns the new size, which is at most maxSize.
std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t maxSize);

/// How it lets us change one.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t maxSize,
                                    unsigned seed);
}

namespace {

constexpr char digits[] = "0123456789ABCDEF";

/// Gives the record at the start of text the sum that the device would give it.
void mendSum(char* text, std::size_t size)
{
    constexpr std::size_t dataPosition = 9;
    cMyRecordFields fields;
    if (image::decodeRecord({text, size}, fields) != image::RecordFault::None) {
        return;
    }
    const quint8 sum =
        image::recordChecksum(fields.offset, fields.type, 0, fields.data.data(), fields.size);
    const std::size_t position = dataPosition + 2 * static_cast<std::size_t>(fields.size);
    if (position + 2 <= size) {
        text[position] = digits[sum >> 4];
        text[position + 1] = digits[sum & 0x0F];
    }
}

} // namespace

/// Of every two changes, one leaves records with sums that are right: nothing behind the check of
/// the sum would be seen much otherwise.
std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size, std::size_t maxSize,
                                    unsigned seed)
{
    const std::size_t newSize = LLVMFuzzerMutate(bytes, size, maxSize);
    if (seed % 2 == 0) {
        return newSize;
    }
    char* const end = reinterpret_cast<char*>(bytes) + newSize;
    char* start = std::find(reinterpret_cast<char*>(bytes), end, ':');
    while (start != end) {
        mendSum(start, static_cast<std::size_t>(end - start));
        start = std::find(start + 1, end, ':');
    }
    return newSize;
}
