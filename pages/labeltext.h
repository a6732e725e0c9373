// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_PAGES_LABELTEXT_H
#define MIOLKA_PAGES_LABELTEXT_H

#include <QString>

/// What labels make of texts that come from outside.
namespace pages {

/// The text so that a label shows all of it. Labels take U+009C for the end of the longest of
/// several wordings and may show no more than that one; it becomes the replacement character.
[[nodiscard]] QString oneWording(QString text);

/// The same for a page; of a text that no page has room for, the beginning remains, followed by an
/// ellipsis.
[[nodiscard]] QString labelText(const QString& text);

} // namespace pages

#endif
