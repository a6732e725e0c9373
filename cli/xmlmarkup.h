// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_XMLMARKUP_H
#define MIOLKA_CLI_XMLMARKUP_H

#include <QByteArray>
#include <QString>

/// What is wrong with XML before it is read; the reason is empty if nothing is.
struct cMyMarkupFault
{
    int line = 0; ///< counted from 1
    QString reason;
};

namespace cli {

/// Bytes in the longest tag, and in all declarations of a document type together.
constexpr int longestMarkup = 16 * 1024;

/// Whether there is a tag that a reader would be busy with for minutes, as it compares each
/// attribute with each other. Texts, comments and the like may have any length. For encodings that
/// hold ASCII as it is; any other is a fault.
[[nodiscard]] cMyMarkupFault markupFault(const QByteArray& xml);

} // namespace cli

#endif
