// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"
#include "cli/system/interruption.h"

#include <algorithm>

namespace {

const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

char separatorOf(const QByteArray& line)
{
    for (const char separator : {';', '\t'}) {
        if (line.contains(separator)) {
            return separator;
        }
    }
    return ',';
}

QByteArray withoutQuotes(const QByteArray& cell)
{
    const bool isQuoted = cell.size() > 1 && cell.startsWith('"') && cell.endsWith('"');
    return isQuoted ? cell.mid(1, cell.size() - 2) : cell;
}

/// Without empty cells at the end, which spreadsheets put behind the last number.
QByteArrayList cellsOf(const QByteArray& line, char separator)
{
    QByteArrayList cells = line.split(separator);
    while (!cells.isEmpty() && cells.last().trimmed().isEmpty()) {
        cells.removeLast();
    }
    return cells;
}

/// Where a line ends: at a line feed or, as on old systems, a carriage return.
QByteArray::size_type lineEnd(const QByteArray& contents, QByteArray::size_type from)
{
    const auto end = std::find_if(contents.cbegin() + from, contents.cend(), [](char character) {
        return character == '\n' || character == '\r';
    });
    return static_cast<QByteArray::size_type>(end - contents.cbegin());
}

bool isNumber(const QByteArray& cell, char separator, double& number)
{
    QByteArray text = withoutQuotes(cell.trimmed());
    if (separator != ',') {
        text.replace(',', '.');
    }
    bool isValid = false;
    number = text.toDouble(&isValid);
    return isValid;
}

bool beginsLikeANumber(const QByteArray& line)
{
    constexpr const char* beginnings = "+-.,0123456789";
    return QByteArray(beginnings)
        .contains(line.at(line.startsWith('"') && line.size() > 1 ? 1 : 0));
}

/// What is wrong with a line that is not empty; nothing if its point was added.
QString addLine(const QByteArray& line, cMyDiveProfile& profile)
{
    constexpr int columns = 2;
    const char separator = separatorOf(line);
    const QByteArrayList cells = cellsOf(line, separator);
    if (cells.size() > columns && separator == ',') {
        return QStringLiteral("there are more than two numbers; where numbers have decimal commas, "
                              "a semicolon or a tab must part them");
    }
    if (cells.size() > columns) {
        return QStringLiteral("there are more than two columns, seconds and metres");
    }
    if (cells.size() != columns) {
        return QStringLiteral("a line needs two numbers, seconds and metres, such as \"60, 12.5\"");
    }
    cMyProfilePoint point;
    for (const auto& [cell, number] :
         {std::pair(cells.at(0), &point.time), std::pair(cells.at(1), &point.depth)}) {
        if (!isNumber(cell, separator, *number)) {
            constexpr int shownLength = 40;
            return QStringLiteral("\"%1\" is not a number")
                .arg(QString::fromUtf8(cell.trimmed().left(shownLength)));
        }
    }
    return profile.add(point);
}

} // namespace

namespace cli {

cMyOutcome parseDiveTable(const QByteArray& contents, const QString& file, cMyDiveProfile& profile)
{
    const auto failure = [&file](int number, const QString& why) {
        return cMyOutcome{ExitStatus::BadFile,
                          {QStringLiteral("%1:%2: %3").arg(file).arg(number).arg(why)}};
    };
    int number = 0;
    bool isFirst = true;
    auto from = contents.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    while (from < contents.size()) {
        const auto end = lineEnd(contents, from);
        QByteArray line = contents.mid(from, end - from);
        from = end + (contents.mid(end, 2) == "\r\n" ? 2 : 1);
        ++number;
        if (isInterrupted()) {
            return {ExitStatus::Cancelled, {QStringLiteral("cancelled")}};
        }
        if (line.contains('\0')) {
            return failure(number, QStringLiteral("this is not a text in UTF-8"));
        }
        line.truncate(line.indexOf('#') < 0 ? line.size() : line.indexOf('#'));
        line = line.trimmed();
        const bool isHeading = isFirst && !line.isEmpty() && !beginsLikeANumber(line);
        isFirst = isFirst && line.isEmpty();
        if (line.isEmpty() || isHeading) {
            continue;
        }
        const QString fault = addLine(line, profile);
        if (!fault.isEmpty()) {
            return failure(number, fault);
        }
    }
    const QString fault = profile.fault();
    return fault.isEmpty() ? cMyOutcome() : failure(std::max(number, 1), fault);
}

} // namespace cli
