// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/diverules.h"

#include "editor/fieldcodec.h"
#include "emulator/rulenumbers.h"

namespace {

/// Reads the members of one rule.
class RuleReader
{
public:
    RuleReader(const cMyMemoryArea& settings, const char* kind, int rule)
        : m_settings(settings), m_kind(QString::fromLatin1(kind)), m_rule(rule)
    {
    }

    [[nodiscard]] int number(const char* member) const
    {
        const QString name = editor::ruleMember(m_kind, m_rule, QString::fromLatin1(member));
        return editor::storedNumber(m_settings, editor::settingsField(name));
    }

    [[nodiscard]] RuleCondition condition() const
    {
        return static_cast<RuleCondition>(number("condition"));
    }

    [[nodiscard]] cMyComparison comparison(const cMyTableModel& values) const
    {
        return {number("measuredValue"), number("comparison"), number("threshold"), values};
    }

private:
    const cMyMemoryArea& m_settings;
    QString m_kind;
    int m_rule;
};

} // namespace

cMyDiveRules::cMyDiveRules(const cMyMemoryArea& settings)
{
    const cMyMessageTables tables;
    const cMyTableModel timedValues(editor::optionTableFile(editor::settingsField(
        editor::ruleMember(QStringLiteral("timerRule"), 1, QStringLiteral("measuredValue")))));
    for (int number = 1; number <= editor::timerRuleCount; ++number) {
        const RuleReader reader(settings, "timerRule", number);
        m_timerRules.push_back({{reader.condition(), reader.comparison(timedValues), {}},
                                reader.number("action"),
                                reader.number("time")});
    }
    for (int number = 1; number <= editor::messageRuleCount; ++number) {
        const RuleReader reader(settings, "messageRule", number);
        m_messageRules.push_back({{reader.condition(), reader.comparison(tables.values), {}},
                                  {reader.number("message"), reader.number("form"), tables},
                                  {reader.number("repetition"), settings}});
    }
}

QVector<cMySpokenMessage> cMyDiveRules::take(cMyDiveMoment& moment)
{
    m_conditions.take(moment);
    m_timers.advance(moment.elapsed);
    showTimers(moment);
    driveTimers(moment);
    showTimers(moment);
    const int depth = moment.values[emulator::Depth];
    QVector<cMySpokenMessage> messages;
    int number = 0;
    for (MessageRule& rule : m_messageRules) {
        ++number;
        if (speaks(rule, moment)) {
            messages.append({moment.time, depth, number, rule.form.text(moment.values)});
        }
    }
    m_depth = depth;
    return messages;
}

void cMyDiveRules::showTimers(cMyDiveMoment& moment) const
{
    for (int timer = 0; timer < cMyDiveTimers::count; ++timer) {
        const int number = emulator::Stopwatch0 + timer;
        moment.values.at(static_cast<std::size_t>(number)) = m_timers.shown(timer);
    }
}

void cMyDiveRules::driveTimers(const cMyDiveMoment& moment)
{
    // All are judged before one acts: no rule sees what another has done at the same sample.
    std::vector<const TimerRule*> acting;
    for (TimerRule& rule : m_timerRules) {
        if (becomesTrue(rule.rule, moment)) {
            acting.push_back(&rule);
        }
    }
    for (const TimerRule* rule : acting) {
        act(*rule);
    }
}

bool cMyDiveRules::becomesTrue(Rule& rule, const cMyDiveMoment& moment) const
{
    const std::optional<int> before = rule.occasion;
    rule.occasion = rule.comparison.isTrue(moment.values)
                        ? m_conditions.occasion(rule.condition, moment, m_timers)
                        : std::nullopt;
    return rule.occasion && rule.occasion != before;
}

void cMyDiveRules::act(const TimerRule& rule)
{
    const auto timerOf = [&rule](RuleAction first) {
        return emulator::timerOf(rule.action, static_cast<int>(first));
    };
    if (const auto started = timerOf(RuleAction::Start)) {
        m_timers.start(*started, rule.time);
    } else if (const auto stopped = timerOf(RuleAction::Stop)) {
        m_timers.stop(*stopped);
    } else if (const auto resumed = timerOf(RuleAction::Continue)) {
        m_timers.resume(*resumed);
    }
}

bool cMyDiveRules::speaks(MessageRule& rule, const cMyDiveMoment& moment) const
{
    const auto occasion = m_conditions.occasion(rule.rule.condition, moment, m_timers);
    cMyRepetitionStep step;
    step.begins = occasion && occasion != rule.rule.occasion;
    step.isTrue = occasion && rule.rule.comparison.isTrue(moment.values);
    step.diveBegins = moment.diveBegins;
    step.time = moment.time;
    step.depthBefore = m_depth;
    step.depth = moment.values[emulator::Depth];
    rule.rule.occasion = occasion;
    return rule.repetition.speaks(step) && !rule.form.isSilent();
}
