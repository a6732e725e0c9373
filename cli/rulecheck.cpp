// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rulecheck.h"

#include "cli/rule.h"
#include "editor/fieldtext.h"
#include "emulator/devicememories.h"
#include "emulator/ruleconditions.h"
#include "image/memoryarea.h"

#include <algorithm>
#include <bitset>
#include <optional>

namespace {

constexpr int stopwatch = 0; ///< among the timers

using Timers = std::bitset<cMyDiveTimers::count>;

/// A member of a rule with what is doubtful about it.
struct Reason
{
    const char* member;
    QString text;
};

enum class Truth { Sometimes, Always, Never };

std::optional<int> timerOf(int number, RuleCondition first)
{
    return emulator::timerOf(number, static_cast<int>(first));
}

std::optional<int> timerOf(int number, RuleAction first)
{
    return emulator::timerOf(number, static_cast<int>(first));
}

QString timerName(int timer)
{
    return timer == 0 ? QStringLiteral("stopwatch 0") : QStringLiteral("timer %1").arg(timer);
}

bool has(const Timers& timers, int timer)
{
    return timers[static_cast<std::size_t>(timer)];
}

/// The timer that a rule sets going at first. Of a timer that was never started nothing remains
/// to go on with; the stopwatch then goes on from 0.
std::optional<int> startedBy(const cMyRule& rule)
{
    const int action = rule.stored("action");
    const auto continued = timerOf(action, RuleAction::Continue);
    return continued == stopwatch ? continued : timerOf(action, RuleAction::Start);
}

/// Looks for doubts about the rules of an image.
class RuleCheck
{
public:
    explicit RuleCheck(const cMyMemoryArea& image) : m_image(image), m_rules(cli::rules(image))
    {
        findStarted();
    }

    [[nodiscard]] QVector<cMySettingsDoubt> doubts()
    {
        for (const cMyRule& rule : qAsConst(m_rules)) {
            if (!rule.isOff()) {
                check(rule);
            }
        }
        return m_doubts;
    }

private:
    /// The timers that some rule starts. One that only its own end would start is none.
    void findStarted()
    {
        Timers before;
        do {
            before = m_started;
            for (const cMyRule& rule : qAsConst(m_rules)) {
                if (rule.kind() != cMyRule::Kind::Timer || rule.isOff() || whyNever(rule)) {
                    continue;
                }
                if (const auto timer = startedBy(rule)) {
                    m_started.set(static_cast<std::size_t>(*timer));
                }
            }
        } while (m_started != before);
    }

    void add(const cMyRule& rule, const char* member, const QString& text)
    {
        m_doubts.append({rule.field(member).name, text});
    }

    void check(const cMyRule& rule)
    {
        const bool isMessage = rule.kind() == cMyRule::Kind::Message;
        if (const auto never = whyNever(rule)) {
            add(rule, never->member,
                QStringLiteral("the rule never %1: %2")
                    .arg(isMessage ? QStringLiteral("speaks") : QStringLiteral("acts"),
                         never->text));
            return;
        }
        isMessage ? checkMessage(rule) : checkAction(rule);
        checkThreshold(rule);
    }

    void checkMessage(const cMyRule& rule)
    {
        if (rule.stored("message") == emulator::doNothing || !rule.isOffered("message")) {
            add(rule, "message", QStringLiteral("the rule never speaks: it has nothing to say"));
            return;
        }
        const int repetition = rule.stored("repetition");
        const int way = repetition - static_cast<int>(RuleRepetition::EveryDistance);
        constexpr const char* distances[] = {"distanceE", "distanceF", "distanceG", "distanceH"};
        if (way >= 0 && way < static_cast<int>(std::size(distances))) {
            checkDistance(rule, QString::fromLatin1(distances[way]));
            return;
        }
        const bool isOnce = repetition == static_cast<int>(RuleRepetition::Once);
        const QString always = whyAlways(rule);
        if (!isOnce && rule.isOffered("repetition") && !always.isEmpty()) {
            add(rule, "repetition", QStringLiteral("the rule speaks without end: ") + always);
        }
    }

    void checkDistance(const cMyRule& rule, const QString& distance)
    {
        const cMySettingsField& field = editor::settingsField(distance);
        if (editor::storedNumber(m_image, field) <= 0) {
            add(rule, "repetition",
                QStringLiteral("the rule never speaks: %1 is %2")
                    .arg(distance, editor::valueText(m_image, field)));
        }
    }

    void checkAction(const cMyRule& rule)
    {
        const int action = rule.stored("action");
        if (action == emulator::doNothing || !rule.isOffered("action")) {
            add(rule, "action", QStringLiteral("the rule does nothing"));
        }
        for (const RuleAction first : {RuleAction::Stop, RuleAction::Continue}) {
            const auto timer = timerOf(action, first);
            if (timer && !has(m_started, *timer)) {
                add(rule, "action",
                    QStringLiteral("the rule does nothing: no rule starts %1")
                        .arg(timerName(*timer)));
            }
        }
        if (cli::takesTime(action) && rule.stored("time") == 0) {
            add(rule, "time", QStringLiteral("the timer has passed as soon as it is started"));
        }
    }

    void checkThreshold(const cMyRule& rule)
    {
        const cMySettingsField& field = rule.field("threshold");
        if (rule.comparesNothing() && editor::storedNumber(m_image, field) != 0) {
            add(rule, "threshold",
                QStringLiteral("has no effect: the rule applies regardless of any value"));
        } else if (!rule.comparesNothing() && truth(rule) == Truth::Always) {
            add(rule, "threshold",
                QStringLiteral("has no effect: %1 is always true").arg(rule.comparison()));
        }
    }

    /// Nothing if the rule may be true at some time.
    [[nodiscard]] std::optional<Reason> whyNever(const cMyRule& rule) const
    {
        const int condition = rule.stored("condition");
        if (!rule.isOffered("condition")) {
            return Reason{"condition", QStringLiteral("there is no such condition")};
        }
        for (const RuleCondition first : {RuleCondition::TimerCounts, RuleCondition::TimerPassed}) {
            const auto timer = timerOf(condition, first);
            if (timer && !has(m_started, *timer)) {
                return Reason{"condition",
                              QStringLiteral("no rule starts %1").arg(timerName(*timer))};
            }
        }
        if (!rule.isOffered("measuredValue")) {
            return Reason{"measuredValue", QStringLiteral("there is no such value")};
        }
        if (rule.comparesNothing()) {
            return std::nullopt;
        }
        if (!rule.isOffered("comparison")) {
            return Reason{"comparison", QStringLiteral("there is no such comparison")};
        }
        if (truth(rule) == Truth::Never) {
            return Reason{"threshold", rule.comparison() + QStringLiteral(" is never true")};
        }
        return std::nullopt;
    }

    /// Why a rule stays true without the diver's doing; empty if it does not.
    [[nodiscard]] QString whyAlways(const cMyRule& rule) const
    {
        const int condition = rule.stored("condition");
        const auto stopped = timerOf(condition, RuleCondition::TimerIsStopped);
        if (!rule.comparesNothing() && truth(rule) != Truth::Always) {
            return {};
        }
        if (stopped && !has(m_started, *stopped)) {
            return QStringLiteral("no rule starts %1, so that it is always stopped")
                .arg(timerName(*stopped));
        }
        if (condition == static_cast<int>(RuleCondition::Anytime)) {
            return QStringLiteral("it applies anytime, and no value ends that");
        }
        return condition == static_cast<int>(RuleCondition::OnSurface)
                   ? QStringLiteral("it applies on the surface, which is at home, too")
                   : QString();
    }

    /// What the rule's comparison comes to for all numbers that its value can have.
    [[nodiscard]] Truth truth(const cMyRule& rule) const
    {
        const cMySettingsField& field = rule.field("threshold");
        cMyThresholdScale scale = editor::numberScale(m_image, field);
        const int value = rule.stored("measuredValue");
        // Rising is negative: no ascent's speed is above 0, and no descent's below.
        if (isOneOf(value, {emulator::AscentSpeedMaximum, emulator::AscentSpeedAverage,
                            emulator::GreatestAscentSpeed})) {
            scale.maximum = 0;
        } else if (isOneOf(value, {emulator::DescentSpeedMaximum, emulator::DescentSpeedAverage,
                                   emulator::GreatestDescentSpeed})) {
            scale.minimum = 0;
        }
        const double threshold = editor::displayedNumber(m_image, field);
        const bool isAtLeast =
            rule.stored("comparison") == static_cast<int>(RuleComparison::AtLeast);
        if (isAtLeast ? threshold > scale.maximum : threshold < scale.minimum) {
            return Truth::Never;
        }
        const bool isAlways = isAtLeast ? threshold <= scale.minimum : threshold >= scale.maximum;
        return isAlways ? Truth::Always : Truth::Sometimes;
    }

    [[nodiscard]] static bool isOneOf(int value, std::initializer_list<int> values)
    {
        return std::find(values.begin(), values.end(), value) != values.end();
    }

    const cMyMemoryArea& m_image;
    QVector<cMyRule> m_rules;
    Timers m_started;
    QVector<cMySettingsDoubt> m_doubts;
};

} // namespace

namespace cli {

QVector<cMySettingsDoubt> ruleDoubts(const cMyMemoryArea& image)
{
    return RuleCheck(image).doubts();
}

} // namespace cli
