// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/emulator/rulebuilder.h"

#include <QtTest>

/// Rules that drive the stopwatch and the timers.
class TestTimerRules : public QObject
{
    Q_OBJECT

private slots:
    void theValuesAreSet();
    void actions_data();
    void actions();
    void unknownActionsDoNothing_data();
    void unknownActionsDoNothing();
    void actsOnceWhileItStaysTrue();
    void actsAgainWhenItBecomesTrueAgain();
    void momentsActEachTime();
    void chain();
    void repeatsEveryMinute();
    void repeatsFasterThanSamplesAreTaken();
    void allAreJudgedBeforeOneActs();
    void actInTheOrderOfTheRules();
    void timersAreComparedAsTheyAreNow();
    void onlyItsOwnRulesAtTheSwitchOff();
    void longestTime();
};

namespace {

using support::RuleBuilder;
using support::ScriptedDive;

constexpr int anytime = 255;
constexpr int underwater = 0;
constexpr int switchOn = 7;
constexpr int switchOff = 8;
constexpr int passed = 32; // and the number of the timer
constexpr int counting = 16;
constexpr int start = 128;
constexpr int stop = 136;
constexpr int goOn = 144;
constexpr int stopwatch = 56; // the value; timers follow
constexpr int depth = 32;

/// The stopwatch and the timers, in s.
QString shown(ScriptedDive& dive)
{
    QStringList values;
    for (int number = stopwatch; number < stopwatch + 4; ++number) {
        values.append(QString::number(dive.value(number)));
    }
    return values.join(QLatin1Char(' '));
}

} // namespace

void TestTimerRules::theValuesAreSet()
{
    ScriptedDive dive{RuleBuilder()};
    dive.now.values.fill(77);
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 0 0 0"));
    QCOMPARE(dive.value(stopwatch - 1), qint16(77));
    QCOMPARE(dive.value(stopwatch + 4), qint16(77));
}

void TestTimerRules::actions_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<QString>("acted"); // 5 s after the action
    QTest::newRow("nothing") << 127 << "15 85 85 85";
    QTest::newRow("stopwatch start") << 128 << "5 85 85 85";
    QTest::newRow("timer 1 start") << 129 << "15 45 85 85";
    QTest::newRow("timer 2 start") << 130 << "15 85 45 85";
    QTest::newRow("timer 3 start") << 131 << "15 85 85 45";
    QTest::newRow("stopwatch stop") << 136 << "10 85 85 85";
    QTest::newRow("timer 1 stop") << 137 << "15 90 85 85";
    QTest::newRow("timer 2 stop") << 138 << "15 85 90 85";
    QTest::newRow("timer 3 stop") << 139 << "15 85 85 90";
    QTest::newRow("stopwatch continue") << 144 << "15 85 85 85";
    QTest::newRow("timer 1 continue") << 145 << "15 85 85 85";
}

/// All count from the beginning on; ten seconds later one more rule acts.
void TestTimerRules::actions()
{
    QFETCH(int, action);
    RuleBuilder builder;
    for (int timer = 0; timer < 4; ++timer) {
        builder.timerRule(timer + 1).when(switchOn).does(start + timer, 100);
    }
    builder.timerRule(5).when(anytime).atLeast(depth, 500).does(action, 50);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.sample();
    dive.value(depth) = 500;
    dive.sample(10000);
    dive.sample(5000);
    QTEST(shown(dive), "acted");
}

void TestTimerRules::unknownActionsDoNothing_data()
{
    QTest::addColumn<int>("action");
    for (int action = 0; action <= 255; ++action) {
        const bool isKnown = (action >= 127 && action <= 131) || (action >= 136 && action <= 139) ||
                             (action >= 144 && action <= 147);
        if (!isKnown) {
            QTest::addRow("%d", action) << action;
        }
    }
}

void TestTimerRules::unknownActionsDoNothing()
{
    QFETCH(int, action);
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 100);
    builder.timerRule(2).when(switchOn).does(start + 2, 100);
    builder.timerRule(3).when(switchOn).does(stop + 2);
    builder.timerRule(4).when(anytime).does(action, 50);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.samples(6);
    QCOMPARE(shown(dive), QStringLiteral("0 95 100 0"));
}

void TestTimerRules::actsOnceWhileItStaysTrue()
{
    RuleBuilder builder;
    builder.timerRule(1).when(anytime).does(start);
    builder.timerRule(2).when(underwater).atLeast(depth, 1000).does(start + 1, 60);
    ScriptedDive dive(builder);
    dive.samples(3);
    dive.now.isUnderwater = true;
    dive.value(depth) = 1000;
    dive.samples(1);
    QCOMPARE(shown(dive), QStringLiteral("3 60 0 0"));
    dive.value(depth) = 2000;
    dive.samples(10);
    QCOMPARE(shown(dive), QStringLiteral("13 50 0 0"));
}

void TestTimerRules::actsAgainWhenItBecomesTrueAgain()
{
    RuleBuilder builder;
    builder.timerRule(1).when(underwater).atLeast(depth, 1000).does(start + 1, 60);
    ScriptedDive dive(builder);
    dive.now.isUnderwater = true;
    dive.value(depth) = 1000;
    dive.samples(11);
    QCOMPARE(shown(dive), QStringLiteral("0 50 0 0"));
    dive.value(depth) = 999;
    dive.samples(1);
    QCOMPARE(shown(dive), QStringLiteral("0 49 0 0"));
    dive.value(depth) = 1000;
    dive.samples(1);
    QCOMPARE(shown(dive), QStringLiteral("0 60 0 0"));
    dive.now.isUnderwater = false;
    dive.samples(1);
    QCOMPARE(shown(dive), QStringLiteral("0 59 0 0"));
    dive.now.isUnderwater = true;
    dive.samples(1);
    QCOMPARE(shown(dive), QStringLiteral("0 60 0 0"));
}

void TestTimerRules::momentsActEachTime()
{
    RuleBuilder builder;
    builder.timerRule(1).when(2).does(start);
    builder.timerRule(2).when(3).does(stop);
    ScriptedDive dive(builder);
    const auto sample = [&dive](bool begins, bool ends) {
        dive.now.diveBegins = begins;
        dive.now.diveEnds = ends;
        dive.now.isUnderwater = begins || (dive.now.isUnderwater && !ends);
        dive.sample();
        return int(dive.value(stopwatch));
    };
    QCOMPARE(sample(false, false), 0);
    QCOMPARE(sample(true, false), 0);
    QCOMPARE(sample(false, false), 1);
    QCOMPARE(sample(false, true), 2);
    QCOMPARE(sample(false, false), 2);
    QCOMPARE(sample(true, false), 0);
    QCOMPARE(sample(true, false), 0);
    QCOMPARE(sample(false, false), 1);
}

void TestTimerRules::chain()
{
    RuleBuilder builder;
    builder.timerRule(8).when(switchOn).does(start + 1, 3);
    builder.timerRule(7).when(passed + 1).does(start + 2, 5);
    builder.timerRule(6).when(passed + 2).does(start + 3, 2);
    builder.timerRule(5).when(passed + 3).does(start);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    QStringList times;
    for (int second = 0; second < 13; ++second) {
        dive.sample();
        times.append(shown(dive));
    }
    const QStringList expected = {"0 3 0 0", "0 2 0 0", "0 1 0 0", "0 0 5 0", "0 0 4 0",
                                  "0 0 3 0", "0 0 2 0", "0 0 1 0", "0 0 0 2", "0 0 0 1",
                                  "0 0 0 0", "1 0 0 0", "2 0 0 0"};
    QCOMPARE(times, expected);
}

void TestTimerRules::repeatsEveryMinute()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 60);
    builder.timerRule(2).when(passed + 1).does(start + 1, 60);
    builder.timerRule(3).when(passed + 1).does(start);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    QStringList starts;
    for (int half = 0; half < 500; ++half) {
        const int before = dive.value(stopwatch + 1);
        dive.sample(500);
        if (dive.value(stopwatch + 1) > before) {
            starts.append(QString::number(dive.now.time));
        }
    }
    QCOMPARE(starts.join(QLatin1Char(' ')), QStringLiteral("0 60000 120000 180000 240000"));
    QCOMPARE(dive.value(stopwatch), qint16(9));
}

void TestTimerRules::repeatsFasterThanSamplesAreTaken()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 1);
    builder.timerRule(2).when(passed + 1).does(start + 1, 1);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    for (int i = 0; i < 5; ++i) {
        dive.sample(2000);
        QCOMPARE(shown(dive), QStringLiteral("0 1 0 0"));
    }
}

void TestTimerRules::allAreJudgedBeforeOneActs()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 2, 10);
    builder.timerRule(2).when(counting + 2).does(start + 3, 10);
    builder.timerRule(3).when(switchOn).atLeast(stopwatch + 2, 10).does(start + 1, 10);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 0 10 0"));
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 0 9 10"));
}

void TestTimerRules::actInTheOrderOfTheRules()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 10);
    builder.timerRule(2).when(switchOn).does(start + 1, 20);
    builder.timerRule(3).when(switchOn).does(stop + 2);
    builder.timerRule(4).when(switchOn).does(start + 2, 30);
    builder.timerRule(5).when(switchOn).does(start + 3, 40);
    builder.timerRule(6).when(switchOn).does(stop + 3);
    builder.timerRule(7).when(anytime).atLeast(depth, 100).does(goOn + 3);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 20 30 40"));
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 19 29 40"));
    dive.value(depth) = 100;
    dive.samples(2);
    QCOMPARE(shown(dive), QStringLiteral("0 17 27 39"));
}

void TestTimerRules::timersAreComparedAsTheyAreNow()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 10);
    builder.timerRule(2).when(counting + 1).atMost(stopwatch + 1, 7).does(start);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.samples(4);
    QCOMPARE(shown(dive), QStringLiteral("0 7 0 0"));
    dive.samples(2);
    QCOMPARE(shown(dive), QStringLiteral("2 5 0 0"));
}

void TestTimerRules::onlyItsOwnRulesAtTheSwitchOff()
{
    RuleBuilder builder;
    builder.timerRule(1).when(anytime).atLeast(depth, 100).does(start + 1, 10);
    builder.timerRule(2).when(switchOff).does(start + 2, 20);
    builder.timerRule(3).when(1).atLeast(depth, 100).does(start + 3, 30);
    ScriptedDive dive(builder);
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 0 0 0"));
    dive.value(depth) = 100;
    dive.now.switchesOff = true;
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 0 20 0"));
}

void TestTimerRules::longestTime()
{
    RuleBuilder builder;
    builder.timerRule(1).when(switchOn).does(start + 1, 65535);
    builder.messageRule(1).when(passed + 1).says(226).repeats(0);
    ScriptedDive dive(builder);
    dive.now.switchesOn = true;
    dive.sample();
    QCOMPARE(shown(dive), QStringLiteral("0 32767 0 0"));
    dive.sample(65534999);
    QCOMPARE(shown(dive), QStringLiteral("0 1 0 0"));
    dive.sample(1);
    QCOMPARE(dive.said(), QStringLiteral("1@65535000"));
}

QTEST_GUILESS_MAIN(TestTimerRules)
#include "test_timerrules.moc"
