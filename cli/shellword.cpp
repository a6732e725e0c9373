// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/shellword.h"

#include <algorithm>

namespace {

bool isPlain(QChar character)
{
    constexpr char16_t firstBeyondAscii = 0x80;
    return character.unicode() < firstBeyondAscii &&
           (character.isLetterOrNumber() || QStringLiteral("_-./:=@%+,").contains(character));
}

} // namespace

namespace cli {

QString shellWord(const QString& text)
{
    if (!text.isEmpty() && std::all_of(text.cbegin(), text.cend(), isPlain)) {
        return text;
    }
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

} // namespace cli
