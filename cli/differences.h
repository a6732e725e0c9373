// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIFFERENCES_H
#define MIOLKA_CLI_DIFFERENCES_H

#include <QString>
#include <QStringList>
#include <QVector>

class cMyMemoryArea;

/// A field, or a run of bytes that belong to no field, that two settings images do not share.
struct cMySettingsDifference
{
    QString name;           ///< of the field; of other bytes "bytes 4 to 15"
    QString before;         ///< for a person to read
    QString after;          ///< likewise
    bool isVersion = false; ///< the version stamp: shown, but never counted
};

namespace cli {

/// In the order of addresses.
[[nodiscard]] QVector<cMySettingsDifference> differences(const cMyMemoryArea& before,
                                                         const cMyMemoryArea& after);

/// Whether any of them counts.
[[nodiscard]] bool isDifferent(const QVector<cMySettingsDifference>& differences);

/// A line for each.
[[nodiscard]] QStringList differenceLines(const QVector<cMySettingsDifference>& differences);

} // namespace cli

#endif
