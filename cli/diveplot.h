// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DIVEPLOT_H
#define MIOLKA_CLI_DIVEPLOT_H

#include <QByteArray>
#include <QString>

class cMyRehearsal;

namespace cli {

/// A rehearsal as a picture in SVG 1.1: depth over time, a mark for each message, and the messages
/// in words as far as there is room for them.
[[nodiscard]] QByteArray drawDive(const cMyRehearsal& rehearsal, const QString& title,
                                  const QString& subtitle);

/// A time in s as minutes and seconds, "12:05"; less than a second is dropped.
[[nodiscard]] QString minutesAndSeconds(double seconds);

} // namespace cli

#endif
