// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_DIVEWORK_H
#define MIOLKA_ENDTOEND_DIVEWORK_H

#include "tests/endtoend/divelog.h"

#include <QStringList>
#include <QVector>

#include <optional>

/// What people do with a simulation. Functions that return a text tell by it why something did not
/// come off; it is empty if it did.
namespace support {

class Session;

/// A message rule as it is chosen on its page. What is empty stays as it is.
struct MessageRule
{
    int number; ///< counted from 1
    const char* when;
    const char* value;
    const char* sign;
    std::optional<double> threshold;
    const char* message;
    const char* form;
    const char* repetition;
};

/// Enters the rule; the messages' page must be in front.
[[nodiscard]] QString enterRule(Session& session, const MessageRule& rule);

/// Enters how often the depth is sampled, speeds in cm/s from which on it is the ascent and at
/// which the bottom is reached, and the distance E in m; the parameters' page must be in front.
[[nodiscard]] QString enterDiveParameters(Session& session, const char* rate, int ascentSpeed,
                                          int bottomSpeed, double distance);

/// Whether the simulation's page waits for a simulation to be started.
[[nodiscard]] bool isIdle(Session& session);

/// Opens the simulation's page, starts one and waits for its first values.
[[nodiscard]] QString startDive(Session& session, DiveLog& log);

/// Stops it and waits until the page is idle and the device was taken leave of.
[[nodiscard]] QString stopDive(Session& session, DiveLog& log);

/// Presses the button several times.
[[nodiscard]] QString steer(Session& session, const char* button, int times = 1);

/// Waits until the page shows a depth in m that is at least, or at most, so much.
[[nodiscard]] QString waitForDepth(Session& session, double depth, bool isDescent);

/// Whether all that must not touch the device meanwhile is locked, or free, as asked for.
[[nodiscard]] QString checkLock(Session& session, bool isLocked);

/// Opens the start page, which has to ask for the status once.
[[nodiscard]] QString returnToStartPage(Session& session);

/// Makes one that has a cycle or two, and nothing else.
[[nodiscard]] QString diveShortly(Session& session);

/// The number that a text with its unit begins with.
[[nodiscard]] double numberIn(const QString& text);

/// One value as the page shows it and as it lay in the device's RAM, in the same form.
struct ComparedValue
{
    const char* name;
    QString onPage;
    QString inRam;
    bool agrees; ///< with one of the cycles in which it may have been read, at most one late
};

/// Looks at all values on the page, and each time at what the device told last. The page must be
/// in front while a simulation runs.
[[nodiscard]] QVector<ComparedValue> compareValues(Session& session, DiveLog& log);

/// What does not agree; empty if everything does.
[[nodiscard]] QString disagreement(const QVector<ComparedValue>& values);

} // namespace support

#endif
