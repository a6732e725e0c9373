// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_DEVELOPER_UNUSEDBYTES_H
#define MIOLKA_DOCS_DEVELOPER_UNUSEDBYTES_H

#include <QVector>

namespace developer {

/// Bytes of the settings image that stand together, addresses from 0 to 1023.
struct Span
{
    int address = 0;
    int size = 0;
};

/// The bytes that no field covers, in the order of their addresses.
[[nodiscard]] QVector<Span> unusedBytes();

} // namespace developer

#endif
