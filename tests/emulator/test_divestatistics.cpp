// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divemodel.h"

#include "tests/emulator/modelsession.h"

#include <QtTest>

using namespace emulator;
using support::DiveSettings;
using support::Expected;
using support::Numbers;
using support::startingWith;
using support::surfacePressure;
using Session = support::ModelSession;

class TestDiveStatistics : public QObject
{
    Q_OBJECT

private slots:
    void profilesHaveTheirValues_data();
    void profilesHaveTheirValues();
    void beforeTheFirstDiveReadingsAreTheStatistics();
    void statisticsStayAfterADiveAndRestartWithTheNext();
    void greatestValuesOutlastDives();
    void greatestValuesContinueTheMemory();
    void greatestDiveTimeGrowsWhileTheDiveGoesOn();
    void surfaceTimeRestsUnderwater();
    void fractionsOfSecondsAddUp();
    void valuesSaturate();
    void clearedStatisticsBeginAnew();
};

namespace {

void freeDiveRow()
{
    // Down and up at 1 m/s. 100 (2 (1 + ... + 29) + 30) = 90000 in 59 samples: 1525.4
    Numbers freeDive;
    for (int second = 0; second <= 60; ++second) {
        freeDive.append(100 * std::min(second, 60 - second));
    }
    QTest::newRow("free dive") << freeDive
                               << Expected{{DepthMaximum, 3000},
                                           {DepthAverage, 1525},
                                           {DiveTime, 59},
                                           {DescentTime, 30},
                                           {AscentTime, 29},
                                           {VerticalSpeed, -100},
                                           {AscentSpeedMaximum, -100},
                                           {AscentSpeedAverage, -100},
                                           {DescentSpeedMaximum, 100},
                                           {DescentSpeedAverage, 100},
                                           {AbsolutePressure + Minimum, 1100},
                                           {AbsolutePressure + Maximum, 4000},
                                           {AbsolutePressure + Average, 2525}};
}

} // namespace

void TestDiveStatistics::profilesHaveTheirValues_data()
{
    QTest::addColumn<Numbers>("profile"); // one sample in a second
    QTest::addColumn<Expected>("expected");
    // From the 1st second to the 6th at 10 m, which is reached and left at once.
    QTest::newRow("square") << Numbers{0, 1000, 1000, 1000, 1000, 1000, 0}
                            << Expected{{Depth, 0},
                                        {DepthMaximum, 1000},
                                        {DepthAverage, 1000},
                                        {DiveTime, 5},
                                        {SurfaceTime, 0},
                                        {DescentTime, 5},
                                        {BottomTime, 0},
                                        {AscentTime, 0},
                                        {VerticalSpeed, -1000},
                                        {AscentSpeedMaximum, 0},
                                        {AscentSpeedAverage, 0},
                                        {DescentSpeedMaximum, 1000},
                                        {DescentSpeedAverage, 1000},
                                        {AbsolutePressure, 1000},
                                        {AbsolutePressure + Minimum, 2000},
                                        {AbsolutePressure + Maximum, 2000},
                                        {AbsolutePressure + Average, 2000},
                                        {AbsolutePressure + Least, 1000},
                                        {AbsolutePressure + Greatest, 2000}};
    // Depths 200 400 600 400 200 400 600 300: 3100 / 8 = 387.5. Down by 200 in a second five times,
    // up by 200, 200 and 300: 700 / 3 = 233.3. Down until the 4th second, up until the 6th, down
    // until the 8th, up until the 9th.
    QTest::newRow("sawtooth") << Numbers{0, 200, 400, 600, 400, 200, 400, 600, 300, 0}
                              << Expected{{DepthMaximum, 600},
                                          {DepthAverage, 388},
                                          {DiveTime, 8},
                                          {DescentTime, 5},
                                          {BottomTime, 0},
                                          {AscentTime, 3},
                                          {VerticalSpeed, -300},
                                          {AscentSpeedMaximum, -300},
                                          {AscentSpeedAverage, -233},
                                          {DescentSpeedMaximum, 200},
                                          {DescentSpeedAverage, 200}};
    freeDiveRow();
    // Turns slowly at the bottom in the 3rd second, leaves it in the 6th.
    QTest::newRow("with a bottom time")
        << Numbers{0, 500, 1000, 980, 970, 975, 875, 475, 0}
        << Expected{{DiveTime, 7}, {DescentTime, 2}, {BottomTime, 3}, {AscentTime, 2}};
}

void TestDiveStatistics::profilesHaveTheirValues()
{
    QFETCH(Numbers, profile);
    QFETCH(Expected, expected);
    Session session{DiveSettings()};
    session.dive(profile);
    QVERIFY(session.last.diveEnds);
    QCOMPARE(differences(session, expected), QString());
}

void TestDiveStatistics::beforeTheFirstDiveReadingsAreTheStatistics()
{
    cMyDiveValues start{};
    start.fill(77); // what another simulation has left
    Session session(DiveSettings(), start);
    session.set(AtmosphericPressure, 990);
    session.set(Temperature, -15);
    session.dive({10, 30});
    QCOMPARE(differences(session, {{AbsolutePressure, 1030},
                                   {AbsolutePressure + Minimum, 1030},
                                   {AbsolutePressure + Maximum, 1030},
                                   {AbsolutePressure + Average, 1030},
                                   {AtmosphericPressure + Minimum, 990},
                                   {AtmosphericPressure + Maximum, 990},
                                   {AtmosphericPressure + Average, 990},
                                   {Temperature + Minimum, -15},
                                   {Temperature + Maximum, -15},
                                   {Temperature + Average, -15},
                                   {Depth, 40},
                                   {VerticalSpeed, 20},
                                   {DepthMaximum, 0},
                                   {DepthAverage, 0},
                                   {DiveTime, 0},
                                   {SurfaceTime, 1},
                                   {DescentTime, 0},
                                   {BottomTime, 0},
                                   {AscentTime, 0},
                                   {AscentSpeedMaximum, 0},
                                   {DescentSpeedMaximum, 0},
                                   {AscentSpeedAverage, 0},
                                   {DescentSpeedAverage, 0}}),
             QString());
}

void TestDiveStatistics::statisticsStayAfterADiveAndRestartWithTheNext()
{
    Session session{DiveSettings()};
    session.dive(0);
    for (const int temperature : {180, 121, 120}) {
        session.set(Temperature, temperature);
        session.dive(500);
    }
    session.set(Temperature, 300);
    session.dive({0, 60});
    const Expected ofTheDive{{DepthMaximum, 500},
                             {DepthAverage, 500},
                             {DiveTime, 3},
                             {DescentTime, 3},
                             {DescentSpeedMaximum, 500},
                             {Temperature, 300},
                             {Temperature + Minimum, 120},
                             {Temperature + Maximum, 180},
                             {Temperature + Average, 140}, // 421 / 3
                             {AbsolutePressure, 1060},
                             {AbsolutePressure + Minimum, 1500}};
    QCOMPARE(differences(session, ofTheDive), QString());
    session.dive(110);
    QCOMPARE(differences(session, {{DepthMaximum, 110},
                                   {DepthAverage, 110},
                                   {DiveTime, 0},
                                   {DescentTime, 0},
                                   {DescentSpeedMaximum, 50},
                                   {Temperature + Minimum, 300},
                                   {Temperature + Maximum, 300},
                                   {Temperature + Average, 300},
                                   {AbsolutePressure + Minimum, 1110}}),
             QString());
}

void TestDiveStatistics::greatestValuesOutlastDives()
{
    Session session{DiveSettings()};
    session.dive({0, 500, 300, 0, 200, 150, 200, 200, 0});
    session.set(Temperature, 50);
    session.dive(-10);
    // 1200 + 1150 + 1200 + 1200 = 4750, a quarter of which is 1187.5.
    QCOMPARE(differences(session, {{DepthMaximum, 200},
                                   {GreatestDepth, 500},
                                   {DiveTime, 4},
                                   {GreatestDiveTime, 4},
                                   {StatusDiveTime, 4},
                                   {TotalDiveTime, 6},
                                   {AscentSpeedMaximum, -50},
                                   {GreatestAscentSpeed, -200},
                                   {DescentSpeedMaximum, 200},
                                   {DescentSpeedAverage, 125},
                                   {GreatestDescentSpeed, 500},
                                   {AbsolutePressure + Minimum, 1150},
                                   {AbsolutePressure + Maximum, 1200},
                                   {AbsolutePressure + Average, 1188},
                                   {AbsolutePressure + Least, 990},
                                   {AbsolutePressure + Greatest, 1500},
                                   {AtmosphericPressure + Least, 1000},
                                   {AtmosphericPressure + Greatest, 1000},
                                   {Temperature + Minimum, 200},
                                   {Temperature + Least, 50},
                                   {Temperature + Greatest, 200}}),
             QString());
}

void TestDiveStatistics::greatestValuesContinueTheMemory()
{
    Session session(DiveSettings(), startingWith({{AbsolutePressure + Least, 900},
                                                  {AbsolutePressure + Greatest, 1400},
                                                  {AtmosphericPressure + Least, 990},
                                                  {AtmosphericPressure + Greatest, 1030},
                                                  {Temperature + Greatest, 50},
                                                  {GreatestDepth, 1840},
                                                  {GreatestDiveTime, 2345},
                                                  {TotalDiveTime, 8765},
                                                  {GreatestAscentSpeed, -300},
                                                  {GreatestDescentSpeed, 130}}));
    session.dive({0, 500, 300, 0});
    QCOMPARE(differences(session, {{AbsolutePressure + Least, 900},
                                   {AbsolutePressure + Greatest, 1500},
                                   {AtmosphericPressure + Least, 990},
                                   {AtmosphericPressure + Greatest, 1030},
                                   {Temperature + Least, 0}, // the pair of which was set
                                   {Temperature + Greatest, 200},
                                   {GreatestDepth, 1840},
                                   {GreatestDiveTime, 2345},
                                   {TotalDiveTime, 8767},
                                   {GreatestAscentSpeed, -300},
                                   {GreatestDescentSpeed, 500}}),
             QString());
}

void TestDiveStatistics::greatestDiveTimeGrowsWhileTheDiveGoesOn()
{
    Session session(DiveSettings(), startingWith({{GreatestDiveTime, 2}, {TotalDiveTime, 10}}));
    Numbers greatest;
    Numbers total;
    for (const int more : {0, 500, 500, 500, 500}) {
        session.dive(more);
        greatest.append(session.value(GreatestDiveTime));
        total.append(session.value(TotalDiveTime));
    }
    QCOMPARE(greatest, Numbers({2, 2, 2, 2, 3}));
    QCOMPARE(total, Numbers({10, 10, 11, 12, 13}));
}

void TestDiveStatistics::surfaceTimeRestsUnderwater()
{
    Session session{DiveSettings()};
    Numbers found;
    for (const int more : {0, 0, 0, 500, 500, 500, 0, 0, 500, 500}) {
        session.dive(more);
        found.append(session.value(SurfaceTime));
    }
    QCOMPARE(found, Numbers({0, 1, 2, 3, 3, 3, 0, 1, 2, 2}));
}

void TestDiveStatistics::fractionsOfSecondsAddUp()
{
    // Two samples in a second. Their speeds: 0, 500 cm in 0.5 s, and then over 1 s each 300, -200,
    // 0, 0, 200 and -300. Down for 1 s, up for 1.5 s, down for 0.5 s.
    Session session{DiveSettings({{"depthSamplingRate", 75}})};
    session.dive({0, 500, 300, 300, 300, 300, 500, 0});
    QCOMPARE(differences(session, {{DiveTime, 3},
                                   {DescentTime, 1},
                                   {BottomTime, 0},
                                   {AscentTime, 1},
                                   {DescentSpeedMaximum, 1000},
                                   {AscentSpeedMaximum, -200},
                                   {VerticalSpeed, -300}}),
             QString());
}

void TestDiveStatistics::valuesSaturate()
{
    constexpr qint64 twelveHours = 43200;               // of one sample in a second
    Session session{DiveSettings({{"gravity", 3277}})}; // 10 cm/mbar
    session.dive({0, 31767});
    QCOMPARE(differences(session, {{Depth, 32767}, {DepthMaximum, 32767}, {VerticalSpeed, 32767}}),
             QString());
    session.dive(100);
    QCOMPARE(differences(session, {{Depth, 1000},
                                   {VerticalSpeed, -32768},
                                   {AscentSpeedMaximum, -32768},
                                   {GreatestAscentSpeed, -32768},
                                   {GreatestDescentSpeed, 32767}}),
             QString());
    session.diveAt(twelveHours, 100);
    session.diveAt(2 * twelveHours, 0);
    QCOMPARE(differences(session, {{DiveTime, 32767},
                                   {AscentTime, 32767},
                                   {GreatestDiveTime, 32767},
                                   {TotalDiveTime, 32767},
                                   {SurfaceTime, 0}}),
             QString());
    session.diveAt(3 * twelveHours, 0);
    QCOMPARE(session.value(SurfaceTime), 32767);
    session.diveAt(3 * twelveHours + 1, 500);
    session.diveAt(3 * twelveHours + 3, 500);
    QCOMPARE(differences(session, {{DiveTime, 2}, {TotalDiveTime, 32767}}), QString());
}

void TestDiveStatistics::clearedStatisticsBeginAnew()
{
    Session session(DiveSettings(), startingWith({{GreatestDepth, 1840}, {TotalDiveTime, 8765}}));
    session.dive({0, 0, 500, 500});
    session.model().clearStatistics();
    session.dive(300);
    QVERIFY(session.last.isUnderwater && !session.last.diveBegins);
    QCOMPARE(differences(session, {{DiveTime, 1},
                                   {SurfaceTime, 0},
                                   {TotalDiveTime, 1},
                                   {DepthMaximum, 300},
                                   {GreatestDepth, 300},
                                   {GreatestDescentSpeed, 0},
                                   {GreatestAscentSpeed, -200},
                                   {AbsolutePressure + Minimum, 1300},
                                   {AbsolutePressure + Least, 1300},
                                   {AbsolutePressure + Greatest, 1300}}),
             QString());
    session.model().clearStatistics();
    session.set(Temperature, 0);
    session.dive(-surfacePressure); // as the device clears it, until a pressure is written again
    QVERIFY(session.last.diveEnds);
    QCOMPARE(differences(session, {{DiveTime, 1}, {DepthMaximum, 0}, {GreatestDepth, 0}}),
             QString());
    session.dive(20);
    QCOMPARE(differences(session, {{AbsolutePressure + Least, 1020},
                                   {AbsolutePressure + Greatest, 1020},
                                   {AbsolutePressure + Minimum, 1020}}),
             QString());
}

QTEST_GUILESS_MAIN(TestDiveStatistics)
#include "test_divestatistics.moc"
