// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_REHEARSAL_H
#define MIOLKA_CLI_REHEARSAL_H

#include "cli/outcome.h"
#include "emulator/divemoment.h"

#include <QVector>

#include <functional>

class cMyDiveProfile;
class cMyMemoryArea;

/// Where the device took itself to be.
struct cMyRehearsedDepth
{
    double time = 0;  ///< in s
    double depth = 0; ///< in m
};

/// A dive with the virtual device on land, as fast as it can be reckoned: it is switched on, taken
/// along a profile, and switched off. What the device makes of it is its own, by its settings and
/// with its sampling rate; docs/virtual-device.md tells how.
class cMyRehearsal
{
public:
    /// In s: a message that begins sooner behind another one may be hard to hear.
    static constexpr double timeToSpeak = 2;

    /// That are kept of one dive: more than two in each second of a day, and than anybody reads.
    static constexpr int mostMessages = 200000;

    /// Dives at once. progress is told now and then how many whole seconds of how many are over,
    /// and asked whether to go on.
    cMyRehearsal(const cMyMemoryArea& settings, const cMyDiveProfile& profile,
                 const std::function<bool(int, int)>& progress = {});

    /// Cancelled if progress said so; BadFile if the device cannot go where the profile goes. What
    /// follows is to be used only if this is done.
    [[nodiscard]] const cMyOutcome& outcome() const { return m_outcome; }

    /// In the order in which they were said; the first ones if there were more than mostMessages.
    [[nodiscard]] const QVector<cMySpokenMessage>& messages() const { return m_messages; }

    /// How many messages were said, but not kept.
    [[nodiscard]] qint64 leftOut() const { return m_leftOut; }

    /// Of the first sample in each second, of the deepest one and of the last one.
    [[nodiscard]] const QVector<cMyRehearsedDepth>& depths() const { return m_depths; }

    /// From switch-on to switch-off, in s.
    [[nodiscard]] double duration() const { return m_duration; }

    /// As the device measured it, in m.
    [[nodiscard]] double maximumDepth() const { return m_deepest.depth; }

    /// Message rules that are on and say something, but never did; counted from 1.
    [[nodiscard]] const QVector<int>& silentRules() const { return m_silentRules; }

    /// Whether that message begins sooner than timeToSpeak after the one before it.
    [[nodiscard]] bool isHasty(int message) const;

private:
    void dive(const cMyMemoryArea& settings, const cMyDiveProfile& profile,
              const std::function<bool(int, int)>& progress);
    void keep(const cMyRehearsedDepth& sample);
    void keep(const QVector<cMySpokenMessage>& messages);
    void keepDeepestAndLast(const cMyRehearsedDepth& last);

    cMyOutcome m_outcome;
    QVector<cMySpokenMessage> m_messages;
    QVector<cMyRehearsedDepth> m_depths;
    qint64 m_leftOut = 0;
    QVector<int> m_silentRules; ///< that could speak, but did not so far
    double m_duration = 0;
    cMyRehearsedDepth m_deepest;
};

#endif
