// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/xmlmarkup.h"

#include <algorithm>

namespace {

struct Brackets
{
    const char* open;
    const char* close;
};

/// Between which tags are no tags.
constexpr Brackets opaque[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};

using Position = QByteArray::size_type;

bool isAt(const QByteArray& xml, Position at, const char* text)
{
    return qstrncmp(xml.constData() + at, text, qstrlen(text)) == 0;
}

/// The place behind what begins here and has no tags in it; that place itself if nothing does.
Position behindOpaque(const QByteArray& xml, Position at)
{
    for (const Brackets& brackets : opaque) {
        if (isAt(xml, at, brackets.open)) {
            const auto close =
                xml.indexOf(brackets.close, at + static_cast<int>(qstrlen(brackets.open)));
            return close < 0 ? xml.size() : close + static_cast<int>(qstrlen(brackets.close));
        }
    }
    return at;
}

/// The place behind a tag or declaration, of which not more than the longest is looked at. A
/// document type ends where its declarations begin.
Position behindTag(const QByteArray& xml, Position from)
{
    const bool isDocumentType = isAt(xml, from, "<!DOCTYPE");
    const auto last = std::min(xml.size(), from + cli::longestMarkup + 1);
    char quote = '\0';
    for (auto at = from; at < last; ++at) {
        const char character = xml.at(at);
        if (quote != '\0') {
            quote = character == quote ? '\0' : quote;
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (character == '>' || (isDocumentType && character == '[')) {
            return at + 1;
        }
    }
    return last;
}

cMyMarkupFault faultAt(const QByteArray& xml, Position at, const QString& reason)
{
    return {static_cast<int>(std::count(xml.cbegin(), xml.cbegin() + at, '\n')) + 1, reason};
}

} // namespace

namespace cli {

cMyMarkupFault markupFault(const QByteArray& xml)
{
    const auto zero = xml.indexOf('\0');
    if (zero >= 0) {
        return faultAt(xml, zero, QStringLiteral("this is not a text in UTF-8"));
    }
    Position declared = 0;
    for (auto at = xml.indexOf('<'); at >= 0; at = xml.indexOf('<', at)) {
        const auto behind = behindOpaque(xml, at);
        if (behind > at) {
            at = behind;
            continue;
        }
        const auto end = behindTag(xml, at);
        if (end - at > longestMarkup) {
            return faultAt(xml, at,
                           QStringLiteral("a tag is longer than %1 bytes").arg(longestMarkup));
        }
        declared += isAt(xml, at, "<!") ? end - at : 0;
        if (declared > longestMarkup) {
            return faultAt(
                xml, at,
                QStringLiteral("declarations are longer than %1 bytes").arg(longestMarkup));
        }
        at = end;
    }
    return {};
}

} // namespace cli
