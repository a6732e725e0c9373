// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/wayback.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace cli {

cMyOutcome unchanged(cMyOutcome outcome)
{
    outcome.reasons += QStringLiteral("nothing was changed on the device");
    return outcome;
}

QString virtualDeviceIsGone()
{
    return QStringLiteral("the virtual device is gone with this program, and the next is new");
}

std::optional<int> serialNumberInName(const QString& path)
{
    // Port, serial number, date and time; a number more if two were kept in one millisecond.
    static const QRegularExpression form(
        QStringLiteral("\\A.+-(\\d+)-\\d{8}-\\d{6}-\\d{3}(-\\d+)?\\.mio\\z"));
    const QRegularExpressionMatch match = form.match(QFileInfo(path).fileName());
    bool isNumber = false;
    const int number = match.captured(1).toInt(&isNumber);
    return isNumber ? std::optional<int>(number) : std::nullopt;
}

} // namespace cli
