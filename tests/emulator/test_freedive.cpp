// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/rulenumbers.h"
#include "tests/emulator/divingsession.h"
#include "tests/emulator/rulebuilder.h"

#include <QtTest>

#include <algorithm>
#include <cstdlib>

using namespace emulator;

/// A whole dive with the rules of a freediver, through the lines of a host.
class TestFreeDive : public QObject
{
    Q_OBJECT

private slots:
    void everythingIsSaidInItsTime();
};

namespace {

/// Messages by their numbers, where they are none of a measured value.
enum Message { Relax = 212, Attention = 215, Bottom = 216, Freefall = 217, SayImOk = 235 };

/// Forms of a measured value, without its decimals but in the last one.
enum Form { Value = 2, ValueAndUnit = 3, CaptionAndUnit = 7, AllOfIt = fullForm };

constexpr int periodA = static_cast<int>(RuleRepetition::EveryPeriod);
constexpr int periodB = periodA + 1;
constexpr int distanceE = static_cast<int>(RuleRepetition::EveryDistance);
constexpr int still = static_cast<int>(RuleRepetition::Still);

int when(RuleCondition condition, int timer = 0)
{
    return static_cast<int>(condition) + timer;
}

QByteArray freediversSettings()
{
    support::RuleBuilder builder(support::DiveSettings().image());
    builder.put("periodA", 30).put("periodB", 10).put("distanceE", 500);
    builder.timerRule(1)
        .when(when(RuleCondition::DiveEnds))
        .does(static_cast<int>(RuleAction::Start) + 1, 20);
    const auto rule = [&builder](int number, RuleCondition condition, int timer = 0) {
        return builder.messageRule(number).when(when(condition, timer));
    };
    rule(1, RuleCondition::SwitchesOn).says(Relax);
    rule(2, RuleCondition::Descending).says(Depth, ValueAndUnit).repeats(distanceE);
    rule(3, RuleCondition::Descending).atLeast(Depth, 2000).says(Freefall);
    rule(4, RuleCondition::Ascending).says(Bottom);
    rule(5, RuleCondition::Ascending).says(VerticalSpeed, AllOfIt).repeats(periodB);
    rule(6, RuleCondition::DiveEnds).says(DiveTime, CaptionAndUnit);
    rule(7, RuleCondition::OnSurface)
        .atLeast(SurfaceTime, 10)
        .says(SurfaceTime, CaptionAndUnit)
        .repeats(periodA);
    rule(8, RuleCondition::TimerPassed, 1).says(SayImOk);
    rule(9, RuleCondition::Underwater).atLeast(Depth, 3001).says(Attention).repeats(still);
    rule(10, RuleCondition::Ascending).atMost(Depth, 300).says(Depth, Value).repeats(still);
    rule(11, RuleCondition::SwitchesOff).says(DepthMaximum, AllOfIt);
    return support::bytesOf(builder.settings());
}

/// In cm: 20 s on the surface, 30 m down and up at 1 m/s, and on the surface again.
int depthAt(int second)
{
    constexpr int turn = 50;
    return std::max(0, 3000 - 100 * std::abs(second - turn));
}

} // namespace

void TestFreeDive::everythingIsSaidInItsTime()
{
    support::DivingSession session;
    session.device.setMemory(EEPROM, freediversSettings());
    session.simulate();
    for (int second = 1; second <= 130;
         ++second) { // one sample in each, half a second after a line
        session.now += 500;
        QVERIFY(session.write(depthAt(second)).startsWith(":020100"));
        session.now += 500;
    }
    support::ask(session.device, "#ROOT");
    // The dive begins after 21 s, at 1 m, turns after 50 s, and ends after 80 s: it
    // is 59 s long. Rule 9 is for what is deeper than 30 m, and never heard.
    QStringList lines;
    const auto add = [&lines](const char* line) {
        lines += QString::fromLatin1(line);
    };
    add("0.0 s  0.00 m  rule 1: Relax yourself");
    add("10.0 s  0.00 m  rule 7: Surface time 10 s"); // not before, and next after 40 s
    add("25.0 s  5.00 m  rule 2: 5 m");
    add("30.0 s  10.00 m  rule 2: 10 m");
    add("35.0 s  15.00 m  rule 2: 15 m");
    add("40.0 s  20.00 m  rule 2: 20 m");
    add("40.0 s  20.00 m  rule 3: Freefall");
    add("45.0 s  25.00 m  rule 2: 25 m");
    add("50.0 s  30.00 m  rule 2: 30 m");
    add("51.0 s  29.00 m  rule 4: Bottom"); // the first sample that is higher than the one before
    add("51.0 s  29.00 m  rule 5: Vertical speed -1.00 m/s");
    add("61.0 s  19.00 m  rule 5: Vertical speed -1.00 m/s");
    add("71.0 s  9.00 m  rule 5: Vertical speed -1.00 m/s");
    add("77.0 s  3.00 m  rule 10: 3");
    add("78.0 s  2.00 m  rule 10: 2");
    add("79.0 s  1.00 m  rule 10: 1");
    add("80.0 s  0.00 m  rule 6: Dive time 59 s");
    add("90.0 s  0.00 m  rule 7: Surface time 10 s"); // anew since the dive
    add("100.0 s  0.00 m  rule 8: Say I'm OK");       // 20 s after its end
    add("120.0 s  0.00 m  rule 7: Surface time 40 s");
    add("130.0 s  0.00 m  rule 11: Depth max 30.00 m");
    QCOMPARE(session.said, lines);
}

QTEST_GUILESS_MAIN(TestFreeDive)
#include "test_freedive.moc"
