// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/dive.h"

#include "emulator/rulenumbers.h"
#include "tests/emulator/divetest.h"

#include <QtTest>

using namespace emulator;
using support::Changes;
using support::DiveSettings;

Q_DECLARE_METATYPE(RuleCondition)

class TestDive : public QObject
{
    Q_OBJECT

private slots:
    void beginsWithTheReadingsOfADeviceAtTheSurface();
    void samplesAreTakenWhenTheyAreDue();
    void everyDueSampleIsTaken();
    void speedsDoNotDependOnHowOftenTheHostWrites();
    void readingsAreLeftAsTheyAreWritten();
    void statisticsContinueTheMemory();
    void eventsAreSpokenOf_data();
    void eventsAreSpokenOf();
    void aChargerThatWasThereBeforeDoesNotBegin();
    void timersRunOnTheDivesTime();
    void goingOffTakesNoSample();
    void timersRunUntilTheDeviceGoesOff();
    void timeThatGoesBackChangesNothing();
    void clearedStatisticsBeginAnew();
};

namespace {

constexpr int relax = 212;

/// Settings whose first rule speaks under that condition, once.
Changes speakingWhen(RuleCondition condition)
{
    return {{"messageRule01.condition", static_cast<int>(condition)},
            {"messageRule01.message", relax}};
}

/// A dive with the memories that it works on.
class Simulation
{
public:
    explicit Simulation(const Changes& changes = {}, bool isCharging = false)
        : dive(DiveSettings(changes).area(), memories, isCharging)
    {
    }

    /// Goes on until then, with what is measured now.
    void advance(qint64 time) { hear(dive.advanceTo(time, memories)); }

    void hear(const QVector<cMySpokenMessage>& messages)
    {
        for (const cMySpokenMessage& message : messages) {
            m_spoken.append(spokenLine(message));
        }
    }

    /// In cm, as there is 1013 mbar at the surface.
    void goTo(int depth) { memories.setValue(AbsolutePressure, static_cast<qint16>(1013 + depth)); }

    [[nodiscard]] int value(int number) const { return memories.value(number); }
    [[nodiscard]] QStringList spoken() const { return m_spoken; }

    cMyDeviceMemories memories;
    cMyDive dive;

private:
    QStringList m_spoken;
};

} // namespace

void TestDive::beginsWithTheReadingsOfADeviceAtTheSurface()
{
    cMyDeviceMemories memories;
    memories.setValue(AbsolutePressure, 5000);
    memories.setValue(AtmosphericPressure, 987);
    memories.setValue(Temperature, 31);
    memories.setValue(BatteryLevel, 3);
    cMyDive dive(DiveSettings().area(), memories, false);
    QCOMPARE(memories.value(AbsolutePressure), qint16(987));
    QCOMPARE(memories.value(AtmosphericPressure), qint16(987));
    QCOMPARE(memories.value(Temperature), qint16(200));
    QCOMPARE(memories.value(BatteryLevel), qint16(26214));
    dive.advanceTo(0, memories);
    QCOMPARE(memories.value(AbsolutePressure + Maximum), qint16(987));
    QCOMPARE(memories.value(Temperature + Minimum), qint16(200));
    QCOMPARE(memories.value(Depth), qint16(0));
}

void TestDive::samplesAreTakenWhenTheyAreDue()
{
    Simulation simulation;
    QCOMPARE(simulation.dive.nextSample(), qint64(0));
    simulation.advance(0);
    QCOMPARE(simulation.dive.nextSample(), qint64(1000));
    simulation.goTo(500);
    simulation.advance(999);
    QCOMPARE(simulation.value(Depth), 0);
    simulation.goTo(600); // what was there between two samples was never seen
    simulation.advance(1000);
    QCOMPARE(simulation.value(Depth), 600);
    QCOMPARE(simulation.value(DepthMaximum), 600);
    QCOMPARE(simulation.dive.nextSample(), qint64(2000));
}

void TestDive::everyDueSampleIsTaken()
{
    // Ten samples in a second; down from 0.1 s to 60 s, and up since then.
    Simulation simulation({{"depthSamplingRate", 15}});
    simulation.advance(99);
    simulation.goTo(2000);
    simulation.advance(59999);
    simulation.goTo(1900);
    simulation.advance(600000);
    QCOMPARE(simulation.dive.nextSample(), qint64(600100));
    QCOMPARE(simulation.value(DiveTime), 599);
    QCOMPARE(simulation.value(AscentTime), 540);
    // 599 samples at 20 m and 5401 at 19 m: 11459900 / 6000 = 1909.98
    QCOMPARE(simulation.value(DepthAverage), 1910);
    QCOMPARE(simulation.value(AscentSpeedMaximum), -100); // 1 m in the last second
}

void TestDive::speedsDoNotDependOnHowOftenTheHostWrites()
{
    // 1 m/s, 15 cm each 150 ms; ten samples in a second. A second sees six or seven writes: 90, 105
    // and 105 cm by turns. The dive begins with the 11th sample, at 105 cm, and lasts 290 samples,
    // whose speeds sum up to 96 * 300 + 105 + 90 = 28995: 99.98 each.
    Simulation simulation({{"depthSamplingRate", 15}});
    for (int time = 0; time <= 30000; time += 150) {
        simulation.advance(time);
        simulation.goTo(time / 10);
    }
    QCOMPARE(simulation.value(Depth), 2985);
    QCOMPARE(simulation.value(DescentSpeedAverage), 100);
    QCOMPARE(simulation.value(DescentSpeedMaximum), 105);
    QCOMPARE(simulation.value(AscentSpeedMaximum), 0);
    QCOMPARE(simulation.value(DescentTime), 28);
}

void TestDive::readingsAreLeftAsTheyAreWritten()
{
    Simulation simulation;
    simulation.advance(0);
    const QVector<QPair<int, qint16>> readings = {{AbsolutePressure, 3000},
                                                  {AtmosphericPressure, 1001},
                                                  {Temperature, -7},
                                                  {BatteryLevel, 12345}};
    for (const auto& [number, value] : readings) {
        simulation.memories.setValue(number, value);
    }
    simulation.advance(5000);
    for (const auto& [number, value] : readings) {
        QCOMPARE(simulation.memories.value(number), value);
    }
    QCOMPARE(simulation.value(Depth), 1999);
}

void TestDive::statisticsContinueTheMemory()
{
    Simulation simulation; // 1840 cm, 2345 s and 8765 s in a new device
    simulation.advance(0);
    simulation.goTo(2000);
    simulation.advance(3000);
    QCOMPARE(simulation.value(GreatestDepth), 2000);
    QCOMPARE(simulation.value(GreatestDiveTime), 2345);
    QCOMPARE(simulation.value(TotalDiveTime), 8767);
}

void TestDive::eventsAreSpokenOf_data()
{
    QTest::addColumn<RuleCondition>("condition");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, RuleCondition condition, const char* where) {
        QTest::newRow(name)
            << condition << QStringLiteral("%1  rule 1: Relax yourself").arg(QLatin1String(where));
    };
    row("goes on", RuleCondition::SwitchesOn, "0.0 s  0.00 m");
    row("dive begins", RuleCondition::DiveBegins, "2.0 s  5.02 m");
    row("charging begins", RuleCondition::ChargingBegins, "3.0 s  5.02 m");
    row("charging", RuleCondition::Charging, "3.0 s  5.02 m");
    row("charging ends", RuleCondition::ChargingEnds, "4.0 s  5.02 m");
    row("dive ends", RuleCondition::DiveEnds, "5.0 s  0.00 m");
    row("goes off", RuleCondition::SwitchesOff, "5.5 s  0.00 m");
}

void TestDive::eventsAreSpokenOf()
{
    QFETCH(RuleCondition, condition);
    QFETCH(QString, line);
    Simulation simulation(speakingWhen(condition));
    simulation.advance(1999);
    simulation.goTo(502);
    simulation.advance(2999);
    simulation.dive.setCharging(true);
    simulation.advance(3999);
    simulation.dive.setCharging(false);
    simulation.advance(4999);
    simulation.goTo(0);
    simulation.advance(5500);
    simulation.hear(simulation.dive.finish());
    QCOMPARE(simulation.spoken(), QStringList{line});
}

void TestDive::aChargerThatWasThereBeforeDoesNotBegin()
{
    Simulation begins(speakingWhen(RuleCondition::ChargingBegins), true);
    begins.advance(5000);
    QCOMPARE(begins.spoken(), QStringList());
    Simulation charges(speakingWhen(RuleCondition::Charging), true);
    charges.advance(5000);
    QCOMPARE(charges.spoken(),
             QStringList{QStringLiteral("0.0 s  0.00 m  rule 1: Relax yourself")});
}

void TestDive::timersRunOnTheDivesTime()
{
    Simulation simulation({{"depthSamplingRate", 75},
                           {"timerRule01.condition", static_cast<int>(RuleCondition::DiveBegins)},
                           {"timerRule01.action", static_cast<int>(RuleAction::Start)}});
    simulation.advance(9999);
    simulation.goTo(500);
    simulation.advance(10000);
    QCOMPARE(simulation.value(Stopwatch0), 0);
    simulation.advance(70499);
    QCOMPARE(simulation.value(Stopwatch0), 60);
    QCOMPARE(simulation.value(DiveTime), 60);
}

void TestDive::goingOffTakesNoSample()
{
    Simulation simulation;
    simulation.advance(1999);
    simulation.goTo(500);
    const QByteArray before = simulation.memories.bytes(RAM);
    QVERIFY(simulation.dive.finish().isEmpty());
    QCOMPARE(simulation.memories.bytes(RAM), before);
}

void TestDive::timersRunUntilTheDeviceGoesOff()
{
    Changes changes = speakingWhen(RuleCondition::SwitchesOff);
    changes += {{"depthSamplingRate", 255}, // 1.7 s, the last of which is at 3.4 s
                {"messageRule01.message", Stopwatch0},
                {"timerRule01.condition", static_cast<int>(RuleCondition::SwitchesOn)},
                {"timerRule01.action", static_cast<int>(RuleAction::Start)}};
    Simulation simulation(changes);
    simulation.advance(5000);
    QCOMPARE(simulation.value(Stopwatch0), 3);
    simulation.hear(simulation.dive.finish());
    QCOMPARE(simulation.spoken(), QStringList{QStringLiteral("5.0 s  0.00 m  rule 1: 5")});
}

void TestDive::timeThatGoesBackChangesNothing()
{
    Simulation simulation(speakingWhen(RuleCondition::SwitchesOff));
    simulation.advance(10000);
    simulation.goTo(500);
    simulation.advance(-1);
    simulation.advance(9000);
    QCOMPARE(simulation.value(Depth), 0);
    QCOMPARE(simulation.dive.nextSample(), qint64(11000));
    simulation.hear(simulation.dive.finish());
    QCOMPARE(simulation.spoken(),
             QStringList{QStringLiteral("10.0 s  0.00 m  rule 1: Relax yourself")});
}

void TestDive::clearedStatisticsBeginAnew()
{
    Simulation simulation;
    simulation.goTo(700);
    simulation.advance(5000);
    simulation.memories.clearStatistics();
    simulation.dive.clearStatistics();
    simulation.goTo(300);
    simulation.advance(7000);
    QCOMPARE(simulation.value(GreatestDepth), 300);
    QCOMPARE(simulation.value(TotalDiveTime), 2);
    QCOMPARE(simulation.value(AbsolutePressure + Greatest), 1313);
}

QTEST_GUILESS_MAIN(TestDive)
#include "test_dive.moc"
