// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_PLOTLABELS_H
#define MIOLKA_CLI_PLOTLABELS_H

#include "emulator/divemoment.h"

#include <QVector>

/// A text in the lanes above a plot. It stands to the right of a line that comes down from it to
/// its mark. All other lengths are in pixels.
struct cMyPlotLabel
{
    double x = 0;     ///< of its line
    double depth = 0; ///< of its mark, in m
    double width = 0; ///< of the text and a gap on both sides
    QString text;
    int lane = 0; ///< 0 is the lowest
};

namespace cli {

/// Lanes that there are at most.
constexpr int mostPlotLanes = 32;

/// Labels for messages, which are in the order of their times: all of them, or where the lanes are
/// too few, the first of each rule and some more of those that speak most. No label covers another
/// one or the line of another one.
[[nodiscard]] QVector<cMyPlotLabel> placeLabels(const QVector<cMySpokenMessage>& messages,
                                                double pixelsPerSecond);

/// At most so many characters, an ellipsis the last of them if there were more. What cannot be
/// drawn is written in C's escapes.
[[nodiscard]] QString plotText(const QString& text, int length);

} // namespace cli

#endif
