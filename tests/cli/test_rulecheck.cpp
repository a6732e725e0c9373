// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rulecheck.h"

#include "cli/diveprofile.h"
#include "cli/rehearsal.h"
#include "tests/cli/rehearsedrules.h"

#include <QtTest>

using Values = QVector<QPair<QString, int>>; ///< fields with the numbers that are stored in them

enum class Speech { Never, Ends, Endless };
Q_DECLARE_METATYPE(Speech)

/// What is doubted about message rule 3, and what becomes of it in a dive.
class TestRuleCheck : public QObject
{
    Q_OBJECT

private slots:
    void conditionsWithoutAnEnd_data();
    void conditionsWithoutAnEnd();
    void valuesWithoutAnEnd_data();
    void valuesWithoutAnEnd();
    void valuesOutOfReach_data();
    void valuesOutOfReach();
    void distancesOutOfReach_data();
    void distancesOutOfReach();
    void thresholdsWithoutEffect_data();
    void thresholdsWithoutEffect();
};

namespace {

constexpr int still = 255;
constexpr int periodD = 4;
constexpr int distanceE = 5;
constexpr int anytime = 255;
constexpr int onSurface = 1;
constexpr int startWatch = 128;
constexpr int startTimer1 = 129;

/// A message rule, still, and then other numbers.
Values message(int condition, int value, int comparison, int threshold, const Values& others = {})
{
    return Values{{"messageRule03.condition", condition},
                  {"messageRule03.measuredValue", value},
                  {"messageRule03.comparison", comparison},
                  {"messageRule03.threshold", threshold},
                  {"messageRule03.message", support::attention},
                  {"messageRule03.repetition", still}} +
           others;
}

/// A timer rule for any value.
Values timer(int rule, int condition, int action, int time = 0)
{
    const QString name = QStringLiteral("timerRule0%1.").arg(rule);
    return {{name + "condition", condition},
            {name + "measuredValue", 255},
            {name + "action", action},
            {name + "time", time}};
}

void addColumns()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("doubt");
    QTest::addColumn<Speech>("speech");
}

void row(const char* name, const Values& values, const char* doubt, Speech speech)
{
    QTest::newRow(name) << values << QString::fromLatin1(doubt) << speech;
}

void fill(support::RuleBuilder& builder, const Values& values)
{
    for (const auto& value : values) {
        builder.put(qPrintable(value.first), value.second);
    }
}

/// To 12 m, and then three minutes and more on the surface.
Speech rehearsed(const cMyMemoryArea& image)
{
    cMyDiveProfile profile;
    for (const auto& [time, depth] :
         {std::pair{0, 0}, {5, 0}, {30, 12}, {60, 12}, {90, 0}, {230, 0}}) {
        Q_UNUSED(profile.add({double(time), double(depth), {}}));
    }
    const cMyRehearsal rehearsal(image, profile);
    constexpr double lastPart = 40; // in s, longer than the longest period
    Speech speech = Speech::Never;
    for (const cMySpokenMessage& each : rehearsal.messages()) {
        const double time = static_cast<double>(each.time) / 1000;
        speech = time > rehearsal.duration() - lastPart ? Speech::Endless : Speech::Ends;
    }
    return speech;
}

void compare()
{
    QFETCH(Values, values);
    QFETCH(Speech, speech);
    support::RuleBuilder builder;
    fill(builder, values);
    const cMyMemoryArea& image = builder.settings();
    QStringList doubts;
    for (const cMySettingsDoubt& doubt : cli::ruleDoubts(image)) {
        doubts += doubt.name + QStringLiteral(": ") + doubt.text;
    }
    QTEST(doubts.join(QLatin1Char('\n')), "doubt");
    QCOMPARE(static_cast<int>(rehearsed(image)), static_cast<int>(speech));
}

} // namespace

void TestRuleCheck::conditionsWithoutAnEnd_data()
{
    addColumns();
    const Values period{{"messageRule03.repetition", periodD}};
    row("stopwatch that only Continue sets going",
        message(16, 255, 0, 0, period) + timer(1, 2, 144) + timer(2, 3, 136), "", Speech::Ends);
    row("stopwatch that goes on", message(16, 255, 0, 0, period) + timer(1, 2, startWatch),
        "messageRule03.repetition: the rule speaks without end: no rule stops stopwatch 0, so "
        "that it goes on counting",
        Speech::Endless);
    row("late stopwatch that goes on", message(16, 56, 0, 60, period) + timer(1, 2, startWatch),
        "messageRule03.repetition: the rule speaks without end: no rule stops stopwatch 0, so "
        "that it goes on counting, and stopwatch 0 >= 60 s may stay true",
        Speech::Endless);
    row("early stopwatch", message(16, 56, 1, 60) + timer(1, 2, startWatch), "", Speech::Ends);
    row("passed timer", message(33, 255, 0, 0) + timer(1, 2, startTimer1, 60),
        "messageRule03.repetition: the rule speaks without end: timer 1 stays passed until it is "
        "started again",
        Speech::Endless);
    row("passed timer, started by another",
        message(33, 255, 0, 0) + timer(1, 2, 130, 60) + timer(2, 34, startTimer1, 20),
        "messageRule03.repetition: the rule speaks without end: timer 1 stays passed until it is "
        "started again",
        Speech::Endless);
    row("passed timer, once",
        message(33, 255, 0, 0, {{"messageRule03.repetition", 0}}) + timer(1, 2, startTimer1, 60),
        "", Speech::Ends);
    row("passed timer, in the water", message(33, 32, 0, 500) + timer(1, 2, startTimer1, 20), "",
        Speech::Ends);
    row("timers that start each other",
        message(33, 255, 0, 0) + timer(1, 2, startTimer1, 5) + timer(2, 33, 130, 5) +
            timer(3, 34, startTimer1, 5),
        "", Speech::Endless);
}

void TestRuleCheck::conditionsWithoutAnEnd()
{
    compare();
}

void TestRuleCheck::valuesWithoutAnEnd_data()
{
    addColumns();
    row("depth MAX", message(anytime, 37, 0, 1000),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and depth MAX "
        ">= 10.00 m may stay true",
        Speech::Endless);
    row("depth MAX in the water", message(0, 37, 0, 1000), "", Speech::Ends);
    row("dive time", message(onSurface, 40, 0, 10),
        "messageRule03.repetition: the rule speaks without end: it applies on the surface, which "
        "is at home, too, and dive time >= 10 s may stay true",
        Speech::Endless);
    row("surface time", message(anytime, 41, 0, 10),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and surface "
        "time >= 10 s may stay true",
        Speech::Endless);
    row("short surface time", message(anytime, 41, 1, 10), "", Speech::Ends);
    row("depth", message(anytime, 32, 0, 500), "", Speech::Ends);
    row("little depth", message(anytime, 32, 1, 500),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and depth <= "
        "5.00 m may stay true",
        Speech::Endless);
    row("timer that nothing starts", message(anytime, 57, 1, 10),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and no value "
        "ends that\n"
        "messageRule03.threshold: has no effect: timer 1 <= 10 s is always true: no rule starts "
        "timer 1",
        Speech::Endless);
    row("little of a timer", message(anytime, 57, 1, 10) + timer(1, 2, startTimer1, 60),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and timer 1 "
        "<= 10 s may stay true",
        Speech::Endless);
    row("absolute pressure", message(anytime, 0, 0, 1),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and no value "
        "ends that\n"
        "messageRule03.threshold: has no effect: absolute pressure >= 1 mbar is always true",
        Speech::Endless);
    row("little absolute pressure", message(anytime, 0, 1, 1500),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and absolute "
        "pressure <= 1500 mbar may stay true",
        Speech::Endless);
    row("absolute pressure of the water", message(anytime, 0, 0, 1500), "", Speech::Ends);
    row("atmospheric pressure", message(anytime, 8, 1, 1500),
        "messageRule03.repetition: the rule speaks without end: it applies anytime, and no value "
        "ends that\n"
        "messageRule03.threshold: has no effect: atmospheric pressure <= 1500 mbar is always true",
        Speech::Endless);
}

void TestRuleCheck::valuesWithoutAnEnd()
{
    compare();
}

void TestRuleCheck::valuesOutOfReach_data()
{
    addColumns();
    const auto never = [](const char* name, const Values& values, const QByteArray& why) {
        row(name, values, "messageRule03.threshold: the rule never speaks: " + why, Speech::Never);
    };
    never("deep on the surface", message(onSurface, 32, 0, 500),
          "depth >= 5.00 m is never true: a dive begins at 1.00 m");
    never("dive threshold on the surface",
          message(onSurface, 32, 0, 100, {{"temperatureSource", 0}}),
          "depth >= 1.00 m is never true: a dive begins at 1.00 m");
    // The least temperature of a dive may make the depth another by a centimetre.
    never("well below the dive threshold", message(onSurface, 32, 0, 101),
          "depth >= 1.01 m is never true: a dive begins at 1.00 m");
    row("shallow enough for the surface", message(onSurface, 32, 0, 30), "", Speech::Ends);
    never("deep at the end", message(3, 32, 0, 50, {{"temperatureSource", 0}}),
          "depth >= 0.50 m is never true: a dive ends above 0.50 m");
    never("shallow underwater", message(0, 32, 1, 20),
          "depth <= 0.20 m is never true: a dive ends above 0.50 m");
    never("shallow in the descent", message(4, 32, 1, 49, {{"temperatureSource", 0}}),
          "depth <= 0.49 m is never true: a dive ends above 0.50 m");
    never("shallow at the beginning", message(2, 32, 1, 99, {{"temperatureSource", 0}}),
          "depth <= 0.99 m is never true: a dive begins at 1.00 m");
    row("shallow, but underwater", message(0, 32, 1, 90), "", Speech::Ends);
    never("timer that nothing starts", message(anytime, 57, 0, 10),
          "timer 1 >= 10 s is never true: no rule starts timer 1");
    const Values started = timer(1, 2, startTimer1, 60);
    never("more than the timer has", message(17, 57, 0, 90) + started,
          "timer 1 >= 90 s is never true: no rule starts timer 1 with more than 60 s");
    row("all that the timer has", message(17, 57, 0, 60) + started, "", Speech::Ends);
    row("more than one of the timer's times",
        message(17, 57, 0, 90) + started + timer(2, 3, startTimer1, 100), "", Speech::Ends);
    never("something of a passed timer", message(33, 57, 0, 1) + started,
          "timer 1 >= 1 s is never true: nothing remains of a timer that passed");
    never("vacuum", message(anytime, 0, 1, 200), "absolute pressure <= 200 mbar is never true");
}

void TestRuleCheck::valuesOutOfReach()
{
    compare();
}

void TestRuleCheck::distancesOutOfReach_data()
{
    addColumns();
    const auto everyDistance = [](int condition, int distance) {
        return message(condition, 255, 0, 0,
                       {{"messageRule03.repetition", distanceE}, {"distanceE", distance}});
    };
    row("underwater", everyDistance(0, 500), "", Speech::Ends);
    constexpr const char* inTheWater =
        "messageRule03.repetition: the rule never speaks: distances are passed in the water";
    row("on the surface", everyDistance(onSurface, 500), inTheWater, Speech::Never);
    row("at the end", everyDistance(3, 500), inTheWater, Speech::Never);
    row("short on the surface", everyDistance(onSurface, 40), "", Speech::Ends);
    row("at the switch off", everyDistance(8, 100),
        "messageRule03.repetition: the rule never speaks: nothing is passed at the switch off",
        Speech::Never);
}

void TestRuleCheck::distancesOutOfReach()
{
    compare();
}

void TestRuleCheck::thresholdsWithoutEffect_data()
{
    addColumns();
    row("shallow underwater", message(0, 32, 0, 30),
        "messageRule03.threshold: has no effect: depth >= 0.30 m is always true: a dive ends above "
        "0.50 m",
        Speech::Ends);
    row("surfacing threshold", message(0, 32, 0, 50, {{"temperatureSource", 0}}),
        "messageRule03.threshold: has no effect: depth >= 0.50 m is always true: a dive ends above "
        "0.50 m",
        Speech::Ends);
    row("below the surfacing threshold", message(0, 32, 0, 51), "", Speech::Ends);
    row("less than the timer has", message(17, 57, 1, 60) + timer(1, 2, startTimer1, 60),
        "messageRule03.threshold: has no effect: timer 1 <= 60 s is always true: no rule starts "
        "timer 1 with more than 60 s",
        Speech::Ends);
}

void TestRuleCheck::thresholdsWithoutEffect()
{
    compare();
}

QTEST_GUILESS_MAIN(TestRuleCheck)
#include "test_rulecheck.moc"
