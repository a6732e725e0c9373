// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_IMAGE_WHOLERECORD_H
#define MIOLKA_IMAGE_WHOLERECORD_H

#include "image/hexcodec.h"

#include <QByteArray>

#include <optional>

/// Intel HEX lines taken strictly, as the device takes them: a line holds one record and nothing
/// else. Pure functions; any thread may call them.
namespace image {

/// The fields of a record that is no longer and no shorter than its count says. Whether its
/// checksum is right is not looked at.
[[nodiscard]] std::optional<cMyRecordFields> wholeRecord(const QByteArray& text);

/// The upper 16 bits of the address in a type 4 record whose checksum is right, in the public form
/// or in the short one, which is printed with a count of 00 and summed as such.
[[nodiscard]] std::optional<quint16> upperAddress(const QByteArray& text);

} // namespace image

#endif
