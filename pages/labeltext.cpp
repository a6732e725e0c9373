// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pages/labeltext.h"

namespace pages {

QString oneWording(QString text)
{
    constexpr QChar endOfWording = QChar(0x9C);
    return text.replace(endOfWording, QChar::ReplacementCharacter);
}

QString labelText(const QString& text)
{
    constexpr int longest = 256;
    constexpr QChar ellipsis = QChar(0x2026);
    return oneWording(text.size() > longest ? text.left(longest) + ellipsis : text);
}

} // namespace pages
