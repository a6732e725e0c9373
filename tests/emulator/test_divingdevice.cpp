// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/dive.h"
#include "emulator/rulenumbers.h"
#include "tests/emulator/divingsession.h"

#include <QTimer>
#include <QtTest>

using namespace emulator;
using support::ask;
using support::askAll;
using support::Changes;
using support::DiveSettings;
using support::record;
using Session = support::DivingSession;

class TestDivingDevice : public QObject
{
    Q_OBJECT

private slots:
    void readingsAreThereFromTheStart();
    void aDescentIsReadBack();
    void theFirstSampleComesWithTheWord();
    void aSampleTakesWhatWasWrittenBeforeIt();
    void tenMinutesPassAtOnce();
    void aSecondSimulationWordDoesNotRestartTheDive();
    void settingsAreThoseOfTheStart();
    void whatEndsASimulationSpeaksOfIt_data();
    void whatEndsASimulationSpeaksOfIt();
    void anUnpluggedDeviceDivesOn();
    void whatIsKeptOfADiveLiesAtTheSurface();
    void aNewSimulationContinuesTheStatistics();
    void clearingInADiveEndsItAtTheSurface();
    void aSampleNoticesAChargerThatCameBeforeIt();
    void aChargerStaysFromOneSimulationToTheNext();
    void whatIsSaidMayEndTheSimulation();
    void theFirstThingSaidMayEndTheSimulation();
    void theLastThingSaidMayBeginASimulation();
    void divesGoOnBetweenLines();
    void theDeviceSleepsUntilTheNextSample();
    void divesHaveAClockOfTheirOwn();
    void timeMayPassWithTheLines();
    void timeOfLinesStandsStillBetweenThem();
};

namespace {

/// A rule that speaks once under a condition.
Changes speakingWhen(RuleCondition condition)
{
    constexpr int relax = 212;
    return {{"messageRule01.condition", static_cast<int>(condition)},
            {"messageRule01.message", relax}};
}

} // namespace

void TestDivingDevice::readingsAreThereFromTheStart()
{
    const cMyVirtualDevice device;
    QCOMPARE(device.value(AbsolutePressure), qint16(1013));
    QCOMPARE(device.value(Temperature), qint16(200));
    QCOMPARE(device.value(BatteryLevel), qint16(26214));
}

void TestDivingDevice::aDescentIsReadBack()
{
    Session session;
    session.simulate();
    // 100 mbar/s: 30 m after 30 s. The pressure of each second is there in time for its sample.
    for (int second = 1; second <= 30; ++second) {
        session.now += 500;
        QVERIFY(session.write(100 * second).startsWith(":020100"));
        session.now += 500;
    }
    ask(session.device, "#READ");
    const auto read = [&session](int address, int size) {
        return ask(session.device, record(address, QByteArray(size, '\0')));
    };
    // Depths 100 to 3000, one for each of 30 seconds: 46500 / 30 = 1550. The dive began in the 1st.
    // 3000 is 0x0BB8, 1550 is 0x060E, 29 is 0x1D, and 100 is 0x64.
    QCOMPARE(read(0x0140, 2), record(0x0140, QByteArray::fromHex("B80B")));
    QCOMPARE(read(0x0144, 4), record(0x0144, QByteArray::fromHex("B80B 0E06")));
    QCOMPARE(read(0x014A, 2), record(0x014A, QByteArray::fromHex("B80B"))); // 1840 before
    // Dive time 29, surface time 1, descent 29; 2345 (0x0929) and 8765 + 29 (0x225A) of all dives.
    QCOMPARE(read(0x0150, 16),
             record(0x0150, QByteArray::fromHex("1D00 0100 1D00 0000 0000 2909 5A22 2909")));
    QCOMPARE(read(0x0160, 16),
             record(0x0160, QByteArray::fromHex("6400 0000 6400 0000 6400 0000 6400 0000")));
    QCOMPARE(read(0x0170, 8), record(0x0170, QByteArray(8, '\0')));
    // Absolute pressures 4013 (0x0FAD), from 1113 (0x0459) in the dive and 1013 (0x03F5) in all;
    // the mean is 1013 + 1550 = 2563 (0x0A03).
    QCOMPARE(read(0x0100, 12),
             record(0x0100, QByteArray::fromHex("AD0F 5904 AD0F 030A F503 AD0F")));
}

void TestDivingDevice::theFirstSampleComesWithTheWord()
{
    Session session(speakingWhen(RuleCondition::SwitchesOn));
    ask(session.device, "#SIMUL");
    QCOMPARE(session.said, QStringList{QStringLiteral("0.0 s  0.00 m  rule 1: Relax yourself")});
    QCOMPARE(session.device.value(AbsolutePressure + Least), qint16(1013));
}

void TestDivingDevice::aSampleTakesWhatWasWrittenBeforeIt()
{
    Session session;
    session.simulate();
    session.now += 1000;
    session.write(500); // the sample of this moment was due before the line
    QCOMPARE(session.device.value(Depth), qint16(0));
    session.now += 999;
    ask(session.device, "#RAM");
    QCOMPARE(session.device.value(Depth), qint16(0));
    session.now += 1;
    ask(session.device, "nonsense");
    QCOMPARE(session.device.value(Depth), qint16(500));
}

void TestDivingDevice::tenMinutesPassAtOnce()
{
    Session session({{"depthSamplingRate", 15}});
    session.simulate();
    session.write(1000);
    session.now += 600000;
    ask(session.device, "#READ");
    QCOMPARE(session.device.value(DiveTime), qint16(599));
    QCOMPARE(session.device.value(TotalDiveTime), qint16(8765 + 599));
}

void TestDivingDevice::aSecondSimulationWordDoesNotRestartTheDive()
{
    Session session(speakingWhen(RuleCondition::SwitchesOn));
    session.simulate();
    session.write(1000);
    session.now += 10000;
    askAll(session.device, "#SIMUL #RAM #READ #SIMUL");
    QCOMPARE(session.device.value(AbsolutePressure), qint16(2013));
    QCOMPARE(session.device.value(DiveTime), qint16(9));
    session.now += 10000;
    ask(session.device, "#SIMUL");
    QCOMPARE(session.device.value(DiveTime), qint16(19));
    QCOMPARE(session.said, QStringList{QStringLiteral("0.0 s  0.00 m  rule 1: Relax yourself")});
}

void TestDivingDevice::settingsAreThoseOfTheStart()
{
    Session session;
    session.simulate();
    session.device.setMemory(EEPROM, DiveSettings({{"gravity", 16384}}).image());
    session.write(1000);
    session.now += 1000;
    ask(session.device, "#SIMUL");
    QCOMPARE(session.device.value(Depth), qint16(1000));
    session.simulate();
    session.write(1000);
    session.now += 1000;
    ask(session.device, "#SIMUL");
    QCOMPARE(session.device.value(Depth), qint16(2000));
}

void TestDivingDevice::whatEndsASimulationSpeaksOfIt_data()
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<bool>("isUnplugged");
    QTest::addColumn<bool>("isPlugged");
    QTest::newRow("root") << QByteArray("#ROOT") << false << false;
    QTest::newRow("reset") << QByteArray("#RESET") << false << false;
    QTest::newRow("boot") << QByteArray("#BOOT") << false << false;
    QTest::newRow("off and unplugged") << QByteArray("#OFF") << true << false;
    QTest::newRow("unplugged and plugged") << QByteArray("#RAM") << true << true;
}

void TestDivingDevice::whatEndsASimulationSpeaksOfIt()
{
    QFETCH(QByteArray, words);
    QFETCH(bool, isUnplugged);
    QFETCH(bool, isPlugged);
    Session session(speakingWhen(RuleCondition::SwitchesOff));
    session.simulate();
    session.write(502);
    session.now += 12000;
    ask(session.device, words);
    if (isUnplugged) {
        session.device.unplugged();
    }
    if (isPlugged) {
        session.device.plugged();
    }
    QVERIFY(!session.device.isSimulating());
    QCOMPARE(session.said, QStringList{QStringLiteral("12.0 s  5.02 m  rule 1: Relax yourself")});
    QCOMPARE(session.device.value(AbsolutePressure), qint16(1013));
    QVERIFY(!session.device.findChild<QTimer*>()->isActive());
    const QByteArray ram = session.device.memory(RAM);
    session.now += 12000;
    ask(session.device, "#HEX");
    QCOMPARE(session.device.memory(RAM), ram);
}

void TestDivingDevice::anUnpluggedDeviceDivesOn()
{
    Session session;
    session.simulate();
    session.write(500);
    session.device.unplugged();
    session.now += 5000;
    QVERIFY(session.device.isSimulating());
    session.device.plugged();
    QCOMPARE(session.device.value(DiveTime), qint16(4));
}

void TestDivingDevice::whatIsKeptOfADiveLiesAtTheSurface()
{
    Session session;
    session.simulate();
    session.write(2500);
    session.now += 5000;
    ask(session.device, "#RAM");
    const cMyDeviceMemories kept = session.device.memories();
    QCOMPARE(kept.value(AbsolutePressure), qint16(1013));
    QCOMPARE(kept.value(GreatestDepth), qint16(2500));
    QCOMPARE(session.device.value(AbsolutePressure), qint16(3513));
}

void TestDivingDevice::aNewSimulationContinuesTheStatistics()
{
    Session session;
    for (const int depth : {2500, 900}) {
        session.simulate();
        QCOMPARE(session.device.value(Depth), qint16(0));
        QCOMPARE(session.device.value(DiveTime), qint16(0));
        session.write(depth);
        session.now += 11000;
        ask(session.device, "#ROOT");
    }
    QCOMPARE(session.device.value(DepthMaximum), qint16(900));
    QCOMPARE(session.device.value(GreatestDepth), qint16(2500));
    QCOMPARE(session.device.value(TotalDiveTime), qint16(8765 + 20));
}

void TestDivingDevice::clearingInADiveEndsItAtTheSurface()
{
    Session session(speakingWhen(RuleCondition::DiveEnds));
    session.simulate();
    session.write(2500);
    session.now += 10000;
    ask(session.device, "#CLEAR");
    for (int number = 0; number < valueCount; ++number) {
        QCOMPARE(session.device.value(number), qint16(number == AtmosphericPressure ? 1013 : 0));
    }
    session.now += 1000;
    ask(session.device, "#WRITE");
    QCOMPARE(session.said, QStringList{QStringLiteral("11.0 s  0.00 m  rule 1: Relax yourself")});
    session.write(700);
    session.now += 3000;
    ask(session.device, "#WRITE");
    QCOMPARE(session.device.value(GreatestDepth), qint16(700));
    QCOMPARE(session.device.value(GreatestDiveTime), qint16(2));
    QCOMPARE(session.device.value(AbsolutePressure + Least), qint16(1713));
}

void TestDivingDevice::aSampleNoticesAChargerThatCameBeforeIt()
{
    Session session(speakingWhen(RuleCondition::ChargingBegins));
    session.simulate();
    session.now += 1500;
    session.device.setCharging(true);
    QCOMPARE(session.said, QStringList());
    session.now += 1000;
    ask(session.device, "#RAM");
    QCOMPARE(session.said, QStringList{QStringLiteral("2.0 s  0.00 m  rule 1: Relax yourself")});
}

void TestDivingDevice::aChargerStaysFromOneSimulationToTheNext()
{
    const QStringList atOnce{QStringLiteral("0.0 s  0.00 m  rule 1: Relax yourself")};
    Session session(speakingWhen(RuleCondition::Charging));
    session.device.setCharging(true);
    session.simulate();
    QCOMPARE(session.said, atOnce);
    session.simulate();
    QCOMPARE(session.said, atOnce + atOnce);
    session.device.setCharging(false);
    session.simulate();
    QCOMPARE(session.said, atOnce + atOnce);
}

void TestDivingDevice::whatIsSaidMayEndTheSimulation()
{
    Session session(speakingWhen(RuleCondition::DiveBegins));
    QObject::connect(&session.device, &cMyVirtualDevice::spoke, &session.device,
                     [&session] { session.device.plugged(); });
    for (const char* word : {"#RAM", "#ROOT", "#SIMUL", "#CLEAR"}) {
        session.simulate();
        session.write(500);
        session.now += 1000;
        QCOMPARE(ask(session.device, word), QByteArray(word));
        QCOMPARE(session.device.isSimulating(), QByteArray(word) == "#SIMUL"); // a new one
        ask(session.device, "#ROOT");
    }
    QCOMPARE(session.said.size(), 4);
    session.simulate();
    session.write(500);
    session.now += 1000;
    session.device.plugged(); // which ends it while it is being ended
    QVERIFY(!session.device.isSimulating());
    QCOMPARE(session.said.size(), 5);
}

void TestDivingDevice::theFirstThingSaidMayEndTheSimulation()
{
    Session session(speakingWhen(RuleCondition::SwitchesOn));
    QObject::connect(&session.device, &cMyVirtualDevice::spoke, &session.device,
                     [&session] { session.device.plugged(); });
    QCOMPARE(ask(session.device, "#SIMUL"), QByteArray("#SIMUL"));
    QVERIFY(!session.device.isSimulating());
}

void TestDivingDevice::theLastThingSaidMayBeginASimulation()
{
    Session session(speakingWhen(RuleCondition::SwitchesOff));
    session.simulate();
    ask(session.device, "#HEX");
    bool isAnswered = false;
    QObject::connect(&session.device, &cMyVirtualDevice::spoke, &session.device, [&] {
        if (!isAnswered) {
            isAnswered = true;
            // In no mode: without a direction, no record is understood.
            askAll(session.device, "#RAM #SIMUL");
            QCOMPARE(session.write(900), QByteArray("?"));
            ask(session.device, "#WRITE");
        }
    });
    ask(session.device, "#ROOT");
    QVERIFY(isAnswered && session.device.isSimulating());
    QVERIFY(session.write(500).startsWith(":020100"));
    session.now += 1000;
    ask(session.device, "#RAM");
    QCOMPARE(session.device.value(Depth), qint16(500));
    ask(session.device, "#ROOT");
    QVERIFY(!session.device.isSimulating());
    QCOMPARE(session.said.size(), 2);
}

void TestDivingDevice::divesGoOnBetweenLines()
{
    Session session({{"depthSamplingRate", 1}});
    session.simulate();
    session.write(500);
    session.now += 60000;
    QTRY_COMPARE(session.device.value(DiveTime), qint16(59));
    session.now += 60000;
    QTRY_COMPARE(session.device.value(DiveTime), qint16(119));
}

void TestDivingDevice::theDeviceSleepsUntilTheNextSample()
{
    Session session({{"depthSamplingRate", 255}});
    session.simulate();
    QCOMPARE(session.device.findChild<QTimer*>()->interval(), 1700);
}

void TestDivingDevice::divesHaveAClockOfTheirOwn()
{
    cMyVirtualDevice device;
    Changes changes = speakingWhen(RuleCondition::DiveBegins);
    changes.append({"depthSamplingRate", 1});
    device.setMemory(EEPROM, DiveSettings(changes).image());
    const QSignalSpy spoken(&device, &cMyVirtualDevice::spoke);
    ask(device, "#SIMUL");
    device.setValue(AbsolutePressure, 2000);
    QTRY_COMPARE(spoken.count(), 1);
}

void TestDivingDevice::timeMayPassWithTheLines()
{
    Session session; // a sample in a second
    session.device.setLineTime(250);
    session.simulate(); // which goes on for one line
    session.write(500);
    ask(session.device, "#RAM");
    QCOMPARE(session.device.value(Depth), qint16(0));
    ask(session.device, "#RAM");
    QCOMPARE(session.device.value(Depth), qint16(500));
    QCOMPARE(session.device.value(DiveTime), qint16(0));
    for (int line = 0; line < 40; ++line) {
        ask(session.device, "#RAM");
    }
    QCOMPARE(session.device.value(DiveTime), qint16(10));
}

void TestDivingDevice::timeOfLinesStandsStillBetweenThem()
{
    Session session;
    session.device.setLineTime(250);
    session.simulate();
    QVERIFY(!session.device.findChild<QTimer*>()->isActive());
}

QTEST_GUILESS_MAIN(TestDivingDevice)
#include "test_divingdevice.moc"
