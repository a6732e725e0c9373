// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/diverules.h"

#include "tests/emulator/rulebuilder.h"

#include <QtTest>

/// Rules that speak.
class TestDiveRules : public QObject
{
    Q_OBJECT

private slots:
    void everyConditionSpeaksInItsTimeOnly();
    void everyRuleIsRead();
    void messageTellsTimeDepthAndRule();
    void oncePerDive();
    void oncePerSimulation();
    void momentsSpeakEachTime();
    void periodGoesOnOverDives();
    void distancesOfADescent();
    void marksMissedAreNotMadeUpFor();
    void marksBesideTheLastOneCount();
    void marksMetInSilenceCount();
    void marksAreForgottenWhenTheConditionBegins();
    void marksAreForgottenBetweenDives_data();
    void marksAreForgottenBetweenDives();
    void thresholds_data();
    void thresholds();
    void timersAreHeardAsTheRulesLeaveThem();
    void timerStartedAnewIsNotHeardToPass();
    void silentMessages();
    void onlyItsOwnRulesAtTheSwitchOff();
    void rulesOfTwoDivesAreApart();
};

namespace {

using support::RuleBuilder;
using support::ScriptedDive;

constexpr int anytime = 255;
constexpr int underwater = 0;
constexpr int diveBegins = 2;
constexpr int descent = 4;
constexpr int ascent = 6;
constexpr int switchOn = 7;
constexpr int switchOff = 8;
constexpr int once = 0;
constexpr int still = 255;
constexpr int depth = 32;
constexpr int breathe = 226;

/// The rule with each condition is the one with that place in this list, counted from 1.
constexpr int conditions[] = {255, 0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10,
                              11,  16, 17, 18, 19, 24, 25, 26, 27, 33, 34, 35};

/// The conditions of the rules that speak at the next sample, in order.
QString speaking(ScriptedDive& dive)
{
    QStringList numbers;
    for (const QString& said : dive.sample()) {
        const int rule = said.section(QLatin1Char(':'), 0, 0).toInt();
        numbers.append(QString::number(conditions[rule - 1]));
    }
    return numbers.join(QLatin1Char(' '));
}

void startDive(ScriptedDive& dive)
{
    dive.now.isUnderwater = dive.now.diveBegins = true;
}

void endDive(ScriptedDive& dive)
{
    dive.now.isUnderwater = false;
    dive.now.diveEnds = true;
}

/// Samples at these depths in cm, one each second.
void follow(ScriptedDive& dive, const QVector<int>& depths)
{
    for (const int each : depths) {
        dive.value(depth) = static_cast<qint16>(each);
        dive.sample();
    }
}

} // namespace

void TestDiveRules::everyConditionSpeaksInItsTimeOnly()
{
    RuleBuilder builder;
    for (int rule = 1; rule <= 24; ++rule) {
        builder.messageRule(rule).when(conditions[rule - 1]).says(breathe).repeats(still);
    }
    builder.timerRule(1).when(descent).does(128);
    builder.timerRule(2).when(diveBegins).does(129, 2);
    builder.timerRule(3).when(underwater).does(130, 3);
    builder.timerRule(4).when(ascent).does(131, 1);
    builder.timerRule(5).when(ascent).does(136);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    QCOMPARE(speaking(dive), QStringLiteral("255 1 7 24 25 26 27"));
    QCOMPARE(speaking(dive), QStringLiteral("255 1 24 25 26 27"));
    startDive(dive);
    QCOMPARE(speaking(dive), QStringLiteral("255 0 2 4 16 17 18 27"));
    dive.now.phase = DivePhase::Bottom;
    QCOMPARE(speaking(dive), QStringLiteral("255 0 5 16 17 18 27"));
    dive.now.phase = DivePhase::Ascent;
    QCOMPARE(speaking(dive), QStringLiteral("255 0 6 18 19 24 33"));
    QCOMPARE(speaking(dive), QStringLiteral("255 0 6 24 33 34 35"));
    endDive(dive);
    QCOMPARE(speaking(dive), QStringLiteral("255 1 3 24 33 34 35"));
    dive.now.isCharging = dive.now.chargingBegins = true;
    QCOMPARE(speaking(dive), QStringLiteral("255 1 9 10 24 33 34 35"));
    QCOMPARE(speaking(dive), QStringLiteral("255 1 10 24 33 34 35"));
    dive.now.isCharging = false;
    dive.now.chargingEnds = true;
    QCOMPARE(speaking(dive), QStringLiteral("255 1 11 24 33 34 35"));
    dive.now.switchesOff = true;
    QCOMPARE(speaking(dive), QStringLiteral("8"));
}

void TestDiveRules::everyRuleIsRead()
{
    for (int rule = 1; rule <= 24; ++rule) {
        RuleBuilder builder;
        builder.messageRule(rule).when(anytime).says(breathe);
        ScriptedDive dive(builder);
        QCOMPARE(dive.sample(), QStringList(QStringLiteral("%1: Breathe!").arg(rule)));
    }
}

void TestDiveRules::messageTellsTimeDepthAndRule()
{
    RuleBuilder builder;
    builder.messageRule(9).when(underwater).says(depth, 4).repeats(still);
    cMyDiveRules rules(builder.settings());
    cMyDiveMoment moment;
    moment.time = 123456;
    moment.isUnderwater = true;
    moment.values[emulator::Depth] = 1234;
    const QVector<cMySpokenMessage> said = rules.take(moment);
    QCOMPARE(said.size(), 1);
    QCOMPARE(said.first().time, qint64(123456));
    QCOMPARE(said.first().depth, 1234);
    QCOMPARE(said.first().rule, 9);
    QCOMPARE(said.first().text, QStringLiteral("Depth 12.34"));
}

void TestDiveRules::oncePerDive()
{
    RuleBuilder builder;
    builder.messageRule(1).when(underwater).atLeast(depth, 1000).says(breathe).repeats(once);
    ScriptedDive dive(builder);
    startDive(dive);
    follow(dive, {200, 999, 1000, 1100, 900, 1200, 100});
    QCOMPARE(dive.said(), QStringLiteral("1@2000"));
    endDive(dive);
    follow(dive, {0, 1000});
    startDive(dive);
    follow(dive, {500, 1500, 500, 1500});
    QCOMPARE(dive.said(), QStringLiteral("1@2000 1@10000"));
}

void TestDiveRules::oncePerSimulation()
{
    RuleBuilder builder;
    builder.messageRule(1).when(anytime).says(breathe).repeats(once);
    builder.messageRule(2).when(anytime).atLeast(depth, 300).says(depth).repeats(once);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    follow(dive, {0, 100, 300});
    startDive(dive);
    follow(dive, {100, 400});
    endDive(dive);
    follow(dive, {100, 400});
    QCOMPARE(dive.said(), QStringLiteral("1@0 2@2000"));
}

void TestDiveRules::momentsSpeakEachTime()
{
    RuleBuilder builder;
    builder.messageRule(1).when(diveBegins).says(breathe).repeats(once);
    ScriptedDive dive(builder);
    for (int i = 0; i < 3; ++i) {
        startDive(dive);
        dive.sample();
    }
    dive.sample();
    QCOMPARE(dive.said(), QStringLiteral("1@0 1@1000 1@2000"));
}

void TestDiveRules::periodGoesOnOverDives()
{
    RuleBuilder builder;
    builder.put("periodB", 4);
    builder.messageRule(3).when(underwater).says(depth).repeats(2);
    ScriptedDive dive(builder);
    dive.samples(2);
    startDive(dive);
    dive.samples(2);
    endDive(dive);
    dive.samples(1);
    startDive(dive);
    dive.samples(6);
    QCOMPARE(dive.said(), QStringLiteral("3@2000 3@6000 3@10000"));
}

void TestDiveRules::distancesOfADescent()
{
    RuleBuilder builder;
    builder.put("distanceF", 500);
    builder.messageRule(1).when(descent).says(depth, 3).repeats(6);
    ScriptedDive dive(builder);
    startDive(dive);
    QStringList said;
    for (const int each : {100, 499, 510, 990, 1000, 1490, 1510}) {
        dive.value(depth) = static_cast<qint16>(each);
        said += dive.sample();
    }
    QCOMPARE(said, (QStringList{"1: 5 m", "1: 10 m", "1: 15 m"}));
    dive.now.phase = DivePhase::Ascent;
    follow(dive, {990, 400});
    QCOMPARE(dive.said(), QStringLiteral("1@2000 1@4000 1@6000"));
}

void TestDiveRules::marksMissedAreNotMadeUpFor()
{
    RuleBuilder builder;
    builder.put("distanceE", 1000);
    builder.messageRule(1).when(underwater).atLeast(41, 1).says(depth).repeats(5);
    ScriptedDive dive(builder);
    startDive(dive);
    follow(dive, {900, 1100, 1900});
    dive.value(41) = 1;
    follow(dive, {1950, 2050, 1500, 900});
    QCOMPARE(dive.said(), QStringLiteral("1@4000 1@6000"));
}

void TestDiveRules::marksBesideTheLastOneCount()
{
    RuleBuilder builder;
    builder.put("distanceE", 1000);
    builder.messageRule(1).when(underwater).atLeast(41, 1).says(depth).repeats(5);
    ScriptedDive dive(builder);
    startDive(dive);
    dive.value(41) = 1;
    follow(dive, {1100});
    dive.value(41) = 0;
    follow(dive, {2500});
    dive.value(41) = 1;
    follow(dive, {900, 1100, 900});
    QCOMPARE(dive.said(), QStringLiteral("1@0 1@2000"));
}

void TestDiveRules::marksMetInSilenceCount()
{
    RuleBuilder builder;
    builder.put("distanceE", 500);
    builder.messageRule(1).when(underwater).atMost(depth, 700).says(depth).repeats(5);
    ScriptedDive dive(builder);
    startDive(dive);
    follow(dive, {100, 510, 1010, 1510, 990, 690, 490, 510, 490});
    QCOMPARE(dive.said(), QStringLiteral("1@1000 1@6000"));
}

void TestDiveRules::marksAreForgottenWhenTheConditionBegins()
{
    RuleBuilder builder;
    builder.put("distanceE", 1000);
    builder.messageRule(1).when(descent).says(depth).repeats(5);
    ScriptedDive dive(builder);
    startDive(dive);
    follow(dive, {900, 1100, 900, 1100});
    dive.now.phase = DivePhase::Ascent;
    follow(dive, {900});
    dive.now.phase = DivePhase::Descent;
    follow(dive, {1100, 900});
    QCOMPARE(dive.said(), QStringLiteral("1@1000 1@5000"));
}

void TestDiveRules::marksAreForgottenBetweenDives_data()
{
    QTest::addColumn<int>("condition");
    QTest::newRow("underwater") << underwater;
    QTest::newRow("anytime") << anytime;
}

void TestDiveRules::marksAreForgottenBetweenDives()
{
    QFETCH(int, condition);
    RuleBuilder builder;
    builder.put("distanceE", 1000);
    builder.messageRule(1).when(condition).says(depth).repeats(5);
    ScriptedDive dive(builder);
    startDive(dive);
    follow(dive, {900, 1100, 900, 1100});
    endDive(dive);
    follow(dive, {900});
    startDive(dive);
    follow(dive, {1100, 900});
    QCOMPARE(dive.said(), QStringLiteral("1@1000 1@5000"));
}

void TestDiveRules::thresholds_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("comparison");
    QTest::addColumn<int>("threshold");
    QTest::addColumn<QVector<int>>("measured");
    QTest::addColumn<QString>("said");
    const auto row = [](const char* name, int value, int comparison, int threshold,
                        const QVector<int>& measured, const char* said) {
        QTest::newRow(name) << value << comparison << threshold << measured
                            << QString::fromUtf8(said);
    };
    row("pressure of 2 bar", 0, 0, 2000, {1013, 2000, 3000}, "2000 mbar|3000 mbar");
    row("at most 4.0 degrees", 16, 1, 40, {41, 40, -10}, "4.0 °C|-1.0 °C");
    row("battery below a fifth", 31, 1, 6554, {-32768, 6553, 6555}, "20.00 %");
    row("battery full", 31, 0, -32768, {32767, -32768, 0}, "100.00 %");
    row("faster than 1 m/s upwards", 48, 1, -100, {-99, -100, 50, -200}, "-1.00 m/s|-2.00 m/s");
    row("deeper than 10 m", 32, 0, 1000, {999, 1000, 1001}, "10.00 m|10.01 m");
    row("unknown comparison", 32, 2, 1000, {999, 1000, 1001}, "");
    row("unknown value", 200, 0, 0, {999, 1000, 1001}, "");
}

void TestDiveRules::thresholds()
{
    QFETCH(int, value);
    QFETCH(int, comparison);
    QFETCH(int, threshold);
    QFETCH(QVector<int>, measured);
    const int message = value < emulator::valueCount ? value : depth;
    RuleBuilder builder;
    builder.messageRule(1).when(anytime).says(message, 1).repeats(still);
    builder.messageRule(1).atLeast(value, threshold).put("comparison", comparison);
    ScriptedDive dive(builder);
    QStringList said;
    for (const int each : measured) {
        dive.value(message) = static_cast<qint16>(each);
        said += dive.sample();
    }
    QTEST(said.replaceInStrings(QStringLiteral("1: "), QString()).join(QLatin1Char('|')), "said");
}

void TestDiveRules::timersAreHeardAsTheRulesLeaveThem()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(129, 60);
    builder.messageRule(1).when(switchOn).says(57, 7).repeats(still);
    builder.messageRule(2).when(17).atMost(57, 58).says(57, 7).repeats(once);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    QCOMPARE(dive.sample(), QStringList(QStringLiteral("1: Timer 1 60 s")));
    QCOMPARE(dive.sample(), QStringList());
    QCOMPARE(dive.sample(), QStringList(QStringLiteral("2: Timer 1 58 s")));
}

void TestDiveRules::timerStartedAnewIsNotHeardToPass()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(129, 2);
    builder.timerRule(2).when(33).atMost(depth, 100).does(129, 2);
    builder.messageRule(1).when(33).says(breathe).repeats(still);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.samples(8);
    QCOMPARE(dive.said(), QString());
    dive.value(depth) = 101;
    dive.samples(3);
    QCOMPARE(dive.said(), QStringLiteral("1@8000 1@9000 1@10000"));
}

void TestDiveRules::silentMessages()
{
    for (const int message : {127, 6, 33, 128, 195, 254, 255}) {
        RuleBuilder builder;
        builder.messageRule(1).when(anytime).says(message).repeats(still);
        builder.messageRule(2).when(anytime).says(breathe).repeats(still);
        ScriptedDive dive(builder);
        QCOMPARE(dive.sample(), QStringList(QStringLiteral("2: Breathe!")));
    }
}

void TestDiveRules::onlyItsOwnRulesAtTheSwitchOff()
{
    RuleBuilder builder;
    builder.messageRule(1).when(anytime).says(breathe).repeats(still);
    builder.messageRule(2).when(switchOff).says(224).repeats(once);
    builder.messageRule(3).when(underwater).says(breathe).repeats(still);
    ScriptedDive dive(builder);
    QCOMPARE(dive.sample(), QStringList(QStringLiteral("1: Breathe!")));
    startDive(dive);
    dive.now.switchesOff = true;
    QCOMPARE(dive.sample(), QStringList(QStringLiteral("2: Official top")));
}

void TestDiveRules::rulesOfTwoDivesAreApart()
{
    RuleBuilder builder;
    builder.timerRule(1).when(anytime).does(128);
    builder.messageRule(1).when(anytime).says(56, 6).repeats(once);
    ScriptedDive first(builder);
    first.samples(5);
    ScriptedDive second(builder);
    QCOMPARE(second.sample(), QStringList(QStringLiteral("1: Stopwatch 0 0")));
    QCOMPARE(first.said(), QStringLiteral("1@0"));
    QCOMPARE(first.value(56), qint16(4));
}

QTEST_GUILESS_MAIN(TestDiveRules)
#include "test_diverules.moc"
