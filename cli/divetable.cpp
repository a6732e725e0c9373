// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"
#include "cli/interruption.h"

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

bool isNumber(const QByteArray& cell, char separator, double& number)
{
    QByteArray text = cell.trimmed();
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
    return QByteArray(beginnings).contains(line.at(0));
}

/// What is wrong with a line that is not empty; nothing if its point was added.
QString addLine(const QByteArray& line, cMyDiveProfile& profile)
{
    constexpr int columns = 2;
    const char separator = separatorOf(line);
    const QByteArrayList cells = line.split(separator);
    if (cells.size() > columns && separator == ',') {
        return QStringLiteral("there are more than two numbers; where numbers have decimal commas, "
                              "a semicolon or a tab must part them");
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
    for (int from = contents.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
         from < contents.size();) {
        const int found = contents.indexOf('\n', from);
        const int end = found < 0 ? contents.size() : found;
        QByteArray line = contents.mid(from, end - from);
        from = end + 1;
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
