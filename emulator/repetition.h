// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_REPETITION_H
#define MIOLKA_EMULATOR_REPETITION_H

#include <QtGlobal>

#include <optional>

class cMyMemoryArea;

/// How one message rule stands at a sample.
struct cMyRepetitionStep
{
    bool begins = false;     ///< the condition holds, and did not hold just before
    bool isTrue = false;     ///< condition and comparison hold
    bool diveBegins = false; ///< with this sample
    qint64 time = 0;         ///< in ms since the simulation began
    int depthBefore = 0;     ///< in cm, at the sample before
    int depth = 0;           ///< in cm
};

/// How often a message rule speaks while it is true. For any one thread.
class cMyRepetition
{
public:
    /// The number as the settings hold it, which also hold the periods and distances. They are not
    /// needed any more afterwards. A number that means nothing is taken for "only once".
    cMyRepetition(int number, const cMyMemoryArea& settings);

    /// Called once for each sample, in order: is the message said now?
    [[nodiscard]] bool speaks(const cMyRepetitionStep& step);

private:
    enum class Kind { Once, Period, Distance };

    [[nodiscard]] bool speaksOnce();
    [[nodiscard]] bool speaksAgain(qint64 time);
    [[nodiscard]] bool speaksOnTheWay(const cMyRepetitionStep& step);

    Kind m_kind = Kind::Once;
    qint64 m_period = 0;              ///< in ms
    int m_distance = 0;               ///< in cm
    bool m_hasSpoken = false;         ///< since the condition began
    std::optional<qint64> m_spokenAt; ///< in ms
    int m_mark = 0; ///< spoken at and not left since, in distances; 0 if there is none
};

#endif
