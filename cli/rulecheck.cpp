// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rulecheck.h"

#include "cli/rule.h"
#include "cli/valuebounds.h"
#include "editor/fieldtext.h"
#include "emulator/devicememories.h"
#include "emulator/ruleconditions.h"
#include "image/memoryarea.h"

#include <algorithm>
#include <bitset>
#include <iterator>
#include <limits>
#include <optional>

namespace {

constexpr int stopwatch = 0;                                     ///< among the timers
constexpr int longestShown = std::numeric_limits<qint16>::max(); ///< in s, by any timer

using Timers = std::bitset<cMyDiveTimers::count>;

/// A member of a rule with what is doubtful about it.
struct Reason
{
    const char* member;
    QString text;
};

enum class Truth { Sometimes, Always, Never };

struct Judgement
{
    Truth truth;
    QString because; ///< to be put behind it
};

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

bool isAtLeast(const cMyRule& rule)
{
    return rule.stored("comparison") == static_cast<int>(RuleComparison::AtLeast);
}

/// What a sensor tells now, which comes and goes by itself.
bool isReading(int value)
{
    return value == emulator::AbsolutePressure || value == emulator::AtmosphericPressure ||
           value == emulator::Temperature || value == emulator::BatteryLevel;
}

/// Looks for doubts about the rules of an image.
class RuleCheck
{
public:
    explicit RuleCheck(const cMyMemoryArea& image) : m_image(image), m_rules(cli::rules(image))
    {
        findStarted();
        findRecurring();
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
        cMyTimerTimes timesBefore;
        do {
            before = m_started;
            timesBefore = m_times;
            for (const cMyRule& rule : liveTimerRules()) {
                if (const auto timer = startedBy(rule)) {
                    const auto index = static_cast<std::size_t>(*timer);
                    m_started.set(index);
                    const int time = *timer == stopwatch ? longestShown : rule.stored("time");
                    m_times.at(index) = std::max(m_times.at(index), std::min(time, longestShown));
                }
            }
        } while (m_started != before || m_times != timesBefore);
    }

    /// The timers that are started again and again without the diver's doing. Those are left that
    /// nothing but dives, charging and switches sets going.
    void findRecurring()
    {
        m_recurring = m_started;
        Timers before;
        do {
            before = m_recurring;
            Timers recurring;
            for (const cMyRule& rule : liveTimerRules()) {
                const auto timer = startedBy(rule);
                if (timer && recurs(rule)) {
                    recurring.set(static_cast<std::size_t>(*timer));
                }
            }
            m_recurring &= recurring;
        } while (m_recurring != before);
    }

    /// Whether a rule may become true again on land without the diver's doing.
    [[nodiscard]] bool recurs(const cMyRule& rule) const
    {
        const int condition = rule.stored("condition");
        for (const RuleCondition first : {RuleCondition::TimerCounts, RuleCondition::TimerIsStopped,
                                          RuleCondition::TimerPassed}) {
            const auto timer = timerOf(condition, first);
            if (timer && has(m_recurring, *timer)) {
                return true;
            }
        }
        const bool isOnLand = condition == static_cast<int>(RuleCondition::Anytime) ||
                              condition == static_cast<int>(RuleCondition::OnSurface);
        if (!isOnLand || rule.comparesNothing() || truth(rule).truth != Truth::Sometimes) {
            return false;
        }
        const int value = rule.stored("measuredValue");
        const auto timer = emulator::timerOf(value, emulator::Stopwatch0);
        return timer ? has(m_recurring, *timer) : isReading(value);
    }

    [[nodiscard]] QVector<cMyRule> liveTimerRules() const
    {
        QVector<cMyRule> live;
        std::copy_if(m_rules.cbegin(), m_rules.cend(), std::back_inserter(live),
                     [this](const cMyRule& rule) {
                         return rule.kind() == cMyRule::Kind::Timer && !rule.isOff() &&
                                !whyNever(rule);
                     });
        return live;
    }

    [[nodiscard]] bool isStopwatchStopped() const
    {
        const QVector<cMyRule> live = liveTimerRules();
        return std::any_of(live.cbegin(), live.cend(), [](const cMyRule& rule) {
            return timerOf(rule.stored("action"), RuleAction::Stop) == stopwatch;
        });
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

    void checkDistance(const cMyRule& rule, const QString& name)
    {
        const cMySettingsField& field = editor::settingsField(name);
        const int distance = editor::storedNumber(m_image, field);
        const auto condition = static_cast<RuleCondition>(rule.stored("condition"));
        const bool isAtSurface =
            condition == RuleCondition::OnSurface || condition == RuleCondition::DiveEnds;
        QString why;
        if (distance <= 0) {
            why = QStringLiteral("%1 is %2").arg(name, editor::valueText(m_image, field));
        } else if (condition == RuleCondition::SwitchesOff) {
            why = QStringLiteral("nothing is passed at the switch off");
        } else if (isAtSurface && distance >= cli::depthPassedAtSurface(m_image)) {
            why = QStringLiteral("distances are passed in the water");
        }
        if (!why.isEmpty()) {
            add(rule, "repetition", QStringLiteral("the rule never speaks: ") + why);
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
            return;
        }
        const Judgement judgement = truth(rule);
        if (!rule.comparesNothing() && judgement.truth == Truth::Always) {
            add(rule, "threshold",
                QStringLiteral("has no effect: %1 is always true%2")
                    .arg(rule.comparison(), judgement.because));
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
        const Judgement judgement = truth(rule);
        if (judgement.truth == Truth::Never) {
            return Reason{"threshold",
                          rule.comparison() + QStringLiteral(" is never true") + judgement.because};
        }
        return std::nullopt;
    }

    /// Why a rule stays true without the diver's doing; empty if it does not.
    [[nodiscard]] QString whyAlways(const cMyRule& rule) const
    {
        const int condition = rule.stored("condition");
        const QString holds = whyHolds(condition);
        if (holds.isEmpty()) {
            return {};
        }
        if (rule.comparesNothing() || truth(rule).truth == Truth::Always) {
            const bool isAnytime = condition == static_cast<int>(RuleCondition::Anytime);
            return isAnytime ? holds + QStringLiteral(", and no value ends that") : holds;
        }
        return staysTrue(rule)
                   ? QStringLiteral("%1, and %2 may stay true").arg(holds, rule.comparison())
                   : QString();
    }

    /// Why a condition holds on and on while the device lies at home; empty if it does not.
    [[nodiscard]] QString whyHolds(int condition) const
    {
        const auto stopped = timerOf(condition, RuleCondition::TimerIsStopped);
        if (stopped && !has(m_started, *stopped)) {
            return QStringLiteral("no rule starts %1, so that it is always stopped")
                .arg(timerName(*stopped));
        }
        const auto passed = timerOf(condition, RuleCondition::TimerPassed);
        if (passed && !has(m_recurring, *passed)) {
            return QStringLiteral("%1 stays passed until it is started again")
                .arg(timerName(*passed));
        }
        if (timerOf(condition, RuleCondition::TimerCounts) == stopwatch && !isStopwatchStopped()) {
            return QStringLiteral("no rule stops stopwatch 0, so that it goes on counting");
        }
        if (condition == static_cast<int>(RuleCondition::Anytime)) {
            return QStringLiteral("it applies anytime");
        }
        return condition == static_cast<int>(RuleCondition::OnSurface)
                   ? QStringLiteral("it applies on the surface, which is at home, too")
                   : QString();
    }

    /// Whether a comparison that can be true and false may stay true while the device lies at home.
    [[nodiscard]] bool staysTrue(const cMyRule& rule) const
    {
        const int value = rule.stored("measuredValue");
        const bool isAtLeast = ::isAtLeast(rule);
        const double threshold = editor::displayedNumber(m_image, rule.field("threshold"));
        if (value == emulator::Depth || value == emulator::VerticalSpeed) {
            return isAtLeast ? threshold <= 0 : threshold >= 0;
        }
        if (value == emulator::AbsolutePressure) {
            return !isAtLeast && threshold >= cli::thickestAir;
        }
        if (value == emulator::SurfaceTime) {
            return isAtLeast;
        }
        const auto timer = emulator::timerOf(value, emulator::Stopwatch0);
        if (!timer) {
            // Statistics keep what dives have made of them.
            return !isReading(value);
        }
        const bool counts =
            timerOf(rule.stored("condition"), RuleCondition::TimerCounts) == stopwatch;
        const bool keeps = *timer == stopwatch ? isAtLeast || !counts : !isAtLeast;
        return keeps && !has(m_recurring, *timer);
    }

    /// What the rule's comparison comes to for all numbers that its value can have.
    [[nodiscard]] Judgement truth(const cMyRule& rule) const
    {
        const double threshold = editor::displayedNumber(m_image, rule.field("threshold"));
        const Truth anywhere = truthWithin(cli::widestBounds(m_image, rule), rule, threshold);
        if (anywhere != Truth::Sometimes) {
            return {anywhere, {}};
        }
        const cMyValueBounds bounds = cli::valueBounds(m_image, rule, m_times);
        return {truthWithin(bounds, rule, threshold), QStringLiteral(": ") + bounds.why};
    }

    [[nodiscard]] static Truth truthWithin(const cMyValueBounds& bounds, const cMyRule& rule,
                                           double threshold)
    {
        const bool isAtLeast = ::isAtLeast(rule);
        if (isAtLeast ? threshold > bounds.maximum : threshold < bounds.minimum) {
            return Truth::Never;
        }
        const bool isAlways = isAtLeast ? threshold <= bounds.minimum : threshold >= bounds.maximum;
        return isAlways ? Truth::Always : Truth::Sometimes;
    }

    const cMyMemoryArea& m_image;
    QVector<cMyRule> m_rules;
    Timers m_started;
    Timers m_recurring;
    cMyTimerTimes m_times{};
    QVector<cMySettingsDoubt> m_doubts;
};

} // namespace

namespace cli {

QVector<cMySettingsDoubt> ruleDoubts(const cMyMemoryArea& image)
{
    return RuleCheck(image).doubts();
}

} // namespace cli
