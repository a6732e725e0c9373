// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/ruleconditions.h"

#include <QtTest>

/// When the conditions of rules hold.
class TestRuleConditions : public QObject
{
    Q_OBJECT

private slots:
    void moments_data();
    void moments();
    void timers_data();
    void timers();
    void lastingConditionsAreOneOccasion_data();
    void lastingConditionsAreOneOccasion();
    void momentsAreAnOccasionEach_data();
    void momentsAreAnOccasionEach();
    void whatComesBackAtOnceIsAnother_data();
    void whatComesBackAtOnceIsAnother();
    void timersThatComeBackAreAnother();
    void numbersOfTimers();
};

Q_DECLARE_METATYPE(cMyDiveMoment)
Q_DECLARE_METATYPE(bool cMyDiveMoment::*)

namespace {

/// All condition bytes for which something holds, in order.
QString holding(const cMyDiveMoment& moment, const cMyDiveTimers& timers)
{
    cMyRuleConditions conditions;
    conditions.take(moment);
    QStringList numbers;
    for (int number = 0; number <= 255; ++number) {
        if (conditions.occasion(static_cast<RuleCondition>(number), moment, timers)) {
            numbers.append(QString::number(number));
        }
    }
    return numbers.join(QLatin1Char(' '));
}

cMyDiveMoment underwater(DivePhase phase)
{
    cMyDiveMoment moment;
    moment.isUnderwater = true;
    moment.phase = phase;
    return moment;
}

cMyDiveMoment with(bool cMyDiveMoment::*flag, cMyDiveMoment moment = {})
{
    moment.*flag = true;
    return moment;
}

} // namespace

void TestRuleConditions::moments_data()
{
    QTest::addColumn<cMyDiveMoment>("moment");
    QTest::addColumn<QString>("numbers");
    const auto row = [](const char* name, const cMyDiveMoment& moment, const char* numbers) {
        QTest::newRow(name) << moment << QString::fromLatin1(numbers);
    };
    const cMyDiveMoment surface;
    cMyDiveMoment afterDive;
    afterDive.phase = DivePhase::Ascent;
    cMyDiveMoment charging = with(&cMyDiveMoment::isCharging);
    cMyDiveMoment end = with(&cMyDiveMoment::switchesOff, underwater(DivePhase::Bottom));
    end.diveEnds = end.isCharging = end.chargingEnds = end.switchesOn = true;
    row("surface", surface, "1 24 25 26 27 255");
    row("surface after a dive", afterDive, "1 24 25 26 27 255");
    row("descent", underwater(DivePhase::Descent), "0 4 24 25 26 27 255");
    row("bottom", underwater(DivePhase::Bottom), "0 5 24 25 26 27 255");
    row("ascent", underwater(DivePhase::Ascent), "0 6 24 25 26 27 255");
    row("dive begins", with(&cMyDiveMoment::diveBegins, underwater(DivePhase::Descent)),
        "0 2 4 24 25 26 27 255");
    row("dive ends", with(&cMyDiveMoment::diveEnds, afterDive), "1 3 24 25 26 27 255");
    row("switch on", with(&cMyDiveMoment::switchesOn), "1 7 24 25 26 27 255");
    row("switch off", with(&cMyDiveMoment::switchesOff), "8");
    row("switch off amid all else", end, "8");
    row("charging begins", with(&cMyDiveMoment::chargingBegins, charging),
        "1 9 10 24 25 26 27 255");
    row("charging", charging, "1 10 24 25 26 27 255");
    row("charging ends", with(&cMyDiveMoment::chargingEnds), "1 11 24 25 26 27 255");
}

void TestRuleConditions::moments()
{
    QFETCH(cMyDiveMoment, moment);
    QTEST(holding(moment, cMyDiveTimers()), "numbers");
}

void TestRuleConditions::timers_data()
{
    QTest::addColumn<int>("timer");
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<QString>("numbers");
    QTest::newRow("stopwatch counts") << 0 << 5000 << "1 16 25 26 27 255";
    QTest::newRow("timer 1 counts") << 1 << 4999 << "1 17 24 26 27 255";
    QTest::newRow("timer 2 counts") << 2 << 0 << "1 18 24 25 27 255";
    QTest::newRow("timer 3 counts") << 3 << 1 << "1 19 24 25 26 255";
    QTest::newRow("timer 1 passed") << 1 << 5000 << "1 24 26 27 33 255";
    QTest::newRow("timer 2 passed") << 2 << 5001 << "1 24 25 27 34 255";
    QTest::newRow("timer 3 passed") << 3 << 9000 << "1 24 25 26 35 255";
}

void TestRuleConditions::timers()
{
    QFETCH(int, timer);
    QFETCH(int, elapsed);
    cMyDiveTimers timers;
    timers.start(timer, 5);
    timers.advance(elapsed);
    QTEST(holding(cMyDiveMoment(), timers), "numbers");
}

void TestRuleConditions::lastingConditionsAreOneOccasion_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<cMyDiveMoment>("moment");
    QTest::newRow("anytime") << 255 << cMyDiveMoment();
    QTest::newRow("underwater") << 0 << underwater(DivePhase::Bottom);
    QTest::newRow("on the surface") << 1 << cMyDiveMoment();
    QTest::newRow("descent") << 4 << underwater(DivePhase::Descent);
    QTest::newRow("bottom") << 5 << underwater(DivePhase::Bottom);
    QTest::newRow("ascent") << 6 << underwater(DivePhase::Ascent);
    QTest::newRow("charging") << 10 << with(&cMyDiveMoment::isCharging);
    QTest::newRow("stopwatch stopped") << 24 << cMyDiveMoment();
}

void TestRuleConditions::lastingConditionsAreOneOccasion()
{
    QFETCH(int, number);
    QFETCH(cMyDiveMoment, moment);
    const auto condition = static_cast<RuleCondition>(number);
    const cMyDiveTimers timers;
    cMyRuleConditions conditions;
    conditions.take(moment);
    const auto first = conditions.occasion(condition, moment, timers);
    QVERIFY(first.has_value());
    conditions.take(moment);
    QCOMPARE(conditions.occasion(condition, moment, timers), first);
}

void TestRuleConditions::momentsAreAnOccasionEach_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool cMyDiveMoment::*>("flag");
    QTest::newRow("beginning of dive") << 2 << &cMyDiveMoment::diveBegins;
    QTest::newRow("end of dive") << 3 << &cMyDiveMoment::diveEnds;
    QTest::newRow("switch on") << 7 << &cMyDiveMoment::switchesOn;
    QTest::newRow("switch off") << 8 << &cMyDiveMoment::switchesOff;
    QTest::newRow("beginning of charging") << 9 << &cMyDiveMoment::chargingBegins;
    QTest::newRow("end of charging") << 11 << &cMyDiveMoment::chargingEnds;
}

void TestRuleConditions::momentsAreAnOccasionEach()
{
    QFETCH(int, number);
    QFETCH(bool cMyDiveMoment::*, flag);
    const auto condition = static_cast<RuleCondition>(number);
    const cMyDiveMoment moment = with(flag);
    const cMyDiveTimers timers;
    cMyRuleConditions conditions;
    conditions.take(moment);
    const auto first = conditions.occasion(condition, moment, timers);
    QVERIFY(first.has_value());
    conditions.take(moment);
    const auto second = conditions.occasion(condition, moment, timers);
    QVERIFY(second.has_value());
    QVERIFY(*second != *first);
    QVERIFY(!conditions.occasion(condition, cMyDiveMoment(), timers).has_value());
}

void TestRuleConditions::whatComesBackAtOnceIsAnother_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<cMyDiveMoment>("moment");
    QTest::addColumn<bool cMyDiveMoment::*>("flag");
    QTest::newRow("next dive") << 0 << underwater(DivePhase::Descent) << &cMyDiveMoment::diveBegins;
    QTest::newRow("next descent") << 4 << underwater(DivePhase::Descent)
                                  << &cMyDiveMoment::diveBegins;
    QTest::newRow("surfaced again") << 1 << cMyDiveMoment() << &cMyDiveMoment::diveEnds;
    QTest::newRow("next charge") << 10 << with(&cMyDiveMoment::isCharging)
                                 << &cMyDiveMoment::chargingBegins;
}

void TestRuleConditions::whatComesBackAtOnceIsAnother()
{
    QFETCH(int, number);
    QFETCH(cMyDiveMoment, moment);
    QFETCH(bool cMyDiveMoment::*, flag);
    const auto condition = static_cast<RuleCondition>(number);
    const cMyDiveTimers timers;
    cMyRuleConditions conditions;
    conditions.take(moment);
    const auto first = conditions.occasion(condition, moment, timers);
    const cMyDiveMoment again = with(flag, moment);
    conditions.take(again);
    const auto second = conditions.occasion(condition, again, timers);
    QVERIFY(first && second && *first != *second);
}

void TestRuleConditions::timersThatComeBackAreAnother()
{
    const cMyDiveMoment moment;
    cMyDiveTimers timers;
    cMyRuleConditions conditions;
    conditions.take(moment);
    timers.start(1, 5);
    timers.advance(5000);
    const auto passed = static_cast<RuleCondition>(33);
    const auto first = conditions.occasion(passed, moment, timers);
    timers.advance(5000);
    QCOMPARE(conditions.occasion(passed, moment, timers), first);
    timers.start(1, 1);
    timers.advance(1000);
    const auto second = conditions.occasion(passed, moment, timers);
    QVERIFY(first && second && *first != *second);
}

void TestRuleConditions::numbersOfTimers()
{
    QVERIFY(!emulator::timerOf(127, 128));
    QCOMPARE(emulator::timerOf(128, 128).value_or(-1), 0);
    QCOMPARE(emulator::timerOf(131, 128).value_or(-1), 3);
    QVERIFY(!emulator::timerOf(132, 128));
}

QTEST_GUILESS_MAIN(TestRuleConditions)
#include "test_ruleconditions.moc"
