// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/plotlabels.h"

#include "cli/console.h"

#include <QHash>

#include <algorithm>

namespace {

constexpr double milliseconds = 1000; ///< in a second
constexpr double centimetres = 100;   ///< in a metre
constexpr int longestText = 44;
constexpr int mostOfARule = 64;

/// Wide enough for the widest of the usual fonts, as whoever draws the text knows its font only
/// then.
double widthOf(const QString& text)
{
    constexpr double usual = 7.7;
    constexpr double wide = 12;
    constexpr ushort ideographs = 0x2E80;
    constexpr double gaps = 14;
    static const QString wideLetters = QStringLiteral("mwMW@%");
    double width = gaps;
    for (const QChar character : text) {
        const bool isWide = wideLetters.contains(character) || character.unicode() >= ideographs;
        width += isWide ? wide : usual;
    }
    return width;
}

/// At most so many messages of each rule, the first among them, and the others spread evenly.
QVector<cMySpokenMessage> thinned(const QVector<cMySpokenMessage>& messages, int most)
{
    QHash<int, int> counts;
    for (const cMySpokenMessage& message : messages) {
        ++counts[message.rule];
    }
    QHash<int, int> seen;
    QVector<cMySpokenMessage> kept;
    for (const cMySpokenMessage& message : messages) {
        const int step = (counts.value(message.rule) + most - 1) / most;
        if (seen[message.rule]++ % step == 0) {
            kept.append(message);
        }
    }
    return kept;
}

/// Puts each label above all those that begin under it, the last one lowest, so that a line meets
/// no label on its way down. Returns how many lanes that takes.
int stack(QVector<cMyPlotLabel>& labels)
{
    int lanes = 0;
    for (auto i = labels.size() - 1; i >= 0; --i) {
        cMyPlotLabel& label = labels[i];
        for (auto j = i + 1; j < labels.size() && labels.at(j).x < label.x + label.width; ++j) {
            label.lane = std::max(label.lane, labels.at(j).lane + 1);
        }
        lanes = std::max(lanes, label.lane + 1);
    }
    return lanes;
}

} // namespace

namespace cli {

QVector<cMyPlotLabel> placeLabels(const QVector<cMySpokenMessage>& messages, double pixelsPerSecond)
{
    QVector<cMyPlotLabel> labels;
    for (int most = mostOfARule; most > 0; most /= 2) {
        labels.clear();
        for (const cMySpokenMessage& message : thinned(messages, most)) {
            const QString text =
                plotText(QStringLiteral("%1: %2").arg(message.rule).arg(message.text), longestText);
            const double time = static_cast<double>(message.time) / milliseconds;
            labels.append(
                {time * pixelsPerSecond, message.depth / centimetres, widthOf(text), text, 0});
        }
        if (stack(labels) <= mostPlotLanes) {
            break;
        }
    }
    return labels;
}

QString plotText(const QString& text, int length)
{
    const QString shown = printable(text);
    return shown.size() <= length ? shown : shown.left(length - 1) + QChar(0x2026);
}

} // namespace cli
