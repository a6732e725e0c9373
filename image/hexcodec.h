// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_HEXCODEC_H
#define MIOLKA_IMAGE_HEXCODEC_H

#include <QtGlobal>

#include <array>
#include <string_view>

/// What one Intel HEX line says, as it stands in the text and before any check of its sum.
struct cMyRecordFields
{
    quint16 offset = 0;           ///< low 16 bits of the address of the first byte
    quint8 type = 0;              ///< one of image::RecordType, or anything else
    quint8 checksum = 0;          ///< as written in the line
    int size = 0;                 ///< number of bytes in data, 0 to 255
    std::array<quint8, 255> data; ///< payload; bytes from size on are indeterminate
};

/// What is to be printed as one Intel HEX line. The payload is not owned.
struct cMyRecordLine
{
    quint8 count = 0; ///< the count as printed, which for type 4 is not the payload's size
    quint16 offset = 0;
    quint8 type = 0;
    const quint8* payload = nullptr;
    int payloadSize = 0; ///< in bytes
    quint8 checksum = 0;
};

/// Intel HEX records as text. Nothing here allocates or throws; any thread may call it.
namespace image {

/// The types that this program knows.
enum RecordType : quint8 {
    DataRecord = 0,
    EndOfFileRecord = 1,
    ExtendedLinearAddressRecord = 4,
};

/// Longest line that a record can be: 255 data bytes, in characters, without a line end.
constexpr int maxRecordText = 1 + 2 + 4 + 2 + 2 * 255 + 2;

/// The record that ends every file; reading ends only where it is spelt like this.
constexpr std::string_view endOfFileRecord = ":00000001FF";

/// Where reading a line failed, in the order in which the fields are looked at.
enum class RecordFault {
    None,
    Count,     ///< nothing was read
    StartCode, ///< nothing was read
    Header,    ///< offset or type; nothing was read
    Data,      ///< offset, type and the bytes before the fault were read
    Checksum,  ///< offset, type and data were read
};

/// Reads the fields of one Intel HEX line by their positions. Hex digits in either case; a line
/// that ends early has fewer data bytes; what follows the checksum is ignored. Whether the
/// checksum is right is not looked at: see recordChecksum() and standardChecksum().
RecordFault decodeRecord(std::string_view text, cMyRecordFields& fields) noexcept;

/// The checksum as this program and the device compute it. It departs from the public Intel HEX
/// format in two places: a type 4 record is summed with a count of 0 and with the bytes of
/// segment (its data is not looked at), and data of types other than 0 is not summed.
quint8 recordChecksum(quint16 offset, quint8 type, quint16 segment, const quint8* data,
                      int size) noexcept;

/// Whether the line's checksum is right for a record that was read, by recordChecksum().
bool isChecksumRight(const cMyRecordFields& fields) noexcept;

/// The checksum of the public Intel HEX format: every byte of the line, the count included.
quint8 standardChecksum(const cMyRecordFields& fields) noexcept;

/// Number of characters that encodeRecord() writes for this many payload bytes.
constexpr int recordTextSize(int payloadSize) noexcept
{
    return 1 + 2 + 4 + 2 + 2 * payloadSize + 2;
}

/// Prints the line in upper case to out, which must hold recordTextSize() characters. Writes
/// neither a line end nor a terminator; returns the position after the last character.
char* encodeRecord(const cMyRecordLine& line, char* out) noexcept;

} // namespace image

#endif
