// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divemodel.h"

#include "tests/emulator/divetest.h"

#include <QtTest>

using namespace emulator;
using support::Changes;
using support::DiveSettings;

using Numbers = QVector<int>;
using Expected = QVector<QPair<int, int>>; ///< number of a value, and what it is to be

class TestDiveModel : public QObject
{
    Q_OBJECT

private slots:
    void samplesComeInTime_data();
    void samplesComeInTime();
    void depthIsWhatTheWaterMakesOfThePressure_data();
    void depthIsWhatTheWaterMakesOfThePressure();
    void depthTakesTheTemperatureFromItsSource_data();
    void depthTakesTheTemperatureFromItsSource();
    void divesBeginAndEndAtTheirThresholds_data();
    void divesBeginAndEndAtTheirThresholds();
    void aDiveBeginsAtTheDepthThatItShows();
    void phasesFollowTheSpeed_data();
    void phasesFollowTheSpeed();
    void profilesHaveTheirValues_data();
    void profilesHaveTheirValues();
    void beforeTheFirstDiveReadingsAreTheStatistics();
    void statisticsStayAfterADiveAndRestartWithTheNext();
    void greatestValuesOutlastDives();
    void greatestValuesContinueTheMemory();
    void greatestDiveTimeGrowsWhileTheDiveGoesOn();
    void surfaceTimeRestsUnderwater();
    void fractionsOfSecondsAddUp();
    void nothingDriftsOverTenThousandSamples();
    void valuesSaturate();
    void clearedStatisticsBeginAnew();
    void otherValuesPass();
};

namespace {

constexpr int surfacePressure = 1000;

/// Samples one after another, at the times that the settings ask for.
class Session
{
public:
    explicit Session(const DiveSettings& settings, const cMyDiveValues& start = {})
        : m_model(settings.area(), start), m_readings(start)
    {
        set(AtmosphericPressure, surfacePressure);
        set(Temperature, 200);
    }

    void set(int number, int value)
    {
        m_readings.at(static_cast<std::size_t>(number)) = static_cast<qint16>(value);
    }

    /// A sample at a time in ms; more is the absolute pressure in mbar above 1000.
    const cMyDiveMoment& diveAt(qint64 time, int more)
    {
        set(AbsolutePressure, surfacePressure + more);
        last = m_model.sample(time, m_readings);
        return last;
    }

    /// The next sample.
    const cMyDiveMoment& dive(int more) { return diveAt(m_model.sampleTime(m_index++), more); }

    void dive(const Numbers& profile)
    {
        for (const int more : profile) {
            dive(more);
        }
    }

    [[nodiscard]] int value(int number) const
    {
        return last.values.at(static_cast<std::size_t>(number));
    }

    [[nodiscard]] cMyDiveModel& model() { return m_model; }

    cMyDiveMoment last;

private:
    cMyDiveModel m_model;
    cMyDiveValues m_readings;
    qint64 m_index = 0;
};

/// Every value that differs from what is expected.
QString differences(const Session& session, const Expected& expected)
{
    QString text;
    for (const auto& [number, value] : expected) {
        if (session.value(number) != value) {
            text += QStringLiteral("value %1 is %2 instead of %3; ")
                        .arg(number)
                        .arg(session.value(number))
                        .arg(value);
        }
    }
    return text;
}

cMyDiveValues startingWith(const Expected& values)
{
    cMyDiveValues start{};
    for (const auto& [number, value] : values) {
        start.at(static_cast<std::size_t>(number)) = static_cast<qint16>(value);
    }
    return start;
}

} // namespace

void TestDiveModel::samplesComeInTime_data()
{
    QTest::addColumn<int>("divider");
    QTest::addColumn<QVector<qint64>>("times"); // of the samples 0, 1, 2, 3, 150 and 10000
    const auto row = [](const char* name, int divider, const QVector<qint64>& times) {
        QTest::newRow(name) << divider << times;
    };
    row("150 Hz", 1, {0, 6, 13, 20, 1000, 66666});
    row("15 Hz", 10, {0, 66, 133, 200, 10000, 666666});
    row("10 Hz", 15, {0, 100, 200, 300, 15000, 1000000});
    row("5 Hz", 30, {0, 200, 400, 600, 30000, 2000000});
    row("37/150 s", 37, {0, 246, 493, 740, 37000, 2466666});
    row("2 Hz", 75, {0, 500, 1000, 1500, 75000, 5000000});
    row("1 Hz", 150, {0, 1000, 2000, 3000, 150000, 10000000});
    row("slowest", 255, {0, 1700, 3400, 5100, 255000, 17000000});
    row("none", 0, {0, 1000, 2000, 3000, 150000, 10000000});
}

void TestDiveModel::samplesComeInTime()
{
    QFETCH(int, divider);
    QFETCH(QVector<qint64>, times);
    const DiveSettings settings({{"depthSamplingRate", divider}});
    const cMyDiveModel model(settings.area(), {});
    QVector<qint64> found;
    for (const qint64 index : {0, 1, 2, 3, 150, 10000}) {
        found.append(model.sampleTime(index));
    }
    QCOMPARE(found, times);
}

void TestDiveModel::depthIsWhatTheWaterMakesOfThePressure_data()
{
    QTest::addColumn<Changes>("changes");
    QTest::addColumn<int>("surface");
    QTest::addColumn<int>("pressure");
    QTest::addColumn<int>("depth");
    const auto row = [](const char* name, const Changes& changes, int surface, int pressure,
                        int depth) {
        QTest::newRow(name) << changes << surface << pressure << depth;
    };
    // 1000000 Pa / (density * 10 m/s^2), the densities as published with the equation of state.
    row("fresh and cold", {}, 1000, 11000, 10000);
    row("fresh and warm", {{"fixedTemperature", 250}}, 1000, 11000, 10030);
    row("sea and cold", {{"salinity", 35}}, 1000, 11000, 9731);
    row("sea and warm", {{"salinity", 35}, {"fixedTemperature", 250}}, 1000, 11000, 9772);
    // 1000000 Pa / (999.96675 kg/m^3 * gravity)
    row("gravity of the Earth", {{"gravity", 32132}}, 1000, 11000, 10198);
    row("half the gravity", {{"gravity", 16384}}, 1000, 11000, 20001);
    row("greatest gravity", {{"gravity", 65535}}, 1000, 11000, 5000);
    row("least gravity that is taken", {{"gravity", 3277}}, 1000, 2000, 10000);
    row("gravity too weak to be one", {{"gravity", 3276}}, 1000, 11000, 10198);
    row("no gravity", {{"gravity", 0}}, 1000, 11000, 10198);
    // 1.0198 cm/mbar
    row("rounded down", {{"gravity", 32132}}, 1000, 1025, 25);
    row("rounded up", {{"gravity", 32132}}, 1000, 1026, 27);
    row("no surface pressure", {}, 0, 1013, 1013);
    row("no pressure at all", {}, 0, 0, 0);
    row("greatest surface pressure", {}, 32767, 1013, 0);
    row("greatest pressures", {}, 32767, 32767, 0);
    row("less than at the surface", {}, 1000, 999, 0);
    row("pressure below zero", {}, 1000, -32768, 0);
    row("surface pressure below zero", {}, -100, 5, 105);
    row("deeper than can be shown", {}, 0, 32767, 32767);
    row("deeper than any sea", {{"gravity", 3277}}, -32768, 32767, 32767);
}

void TestDiveModel::depthIsWhatTheWaterMakesOfThePressure()
{
    QFETCH(Changes, changes);
    QFETCH(int, surface);
    QFETCH(int, pressure);
    QFETCH(int, depth);
    Session session{DiveSettings(changes)};
    session.set(AtmosphericPressure, surface);
    session.dive(pressure - surfacePressure);
    QCOMPARE(session.value(Depth), depth);
    QCOMPARE(session.value(AbsolutePressure), pressure);
    QCOMPARE(session.value(AtmosphericPressure), surface);
}

void TestDiveModel::depthTakesTheTemperatureFromItsSource_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<Numbers>("depths");
    // At 25.0, 5.0 and 25.0 degrees; the mean is 25.0, 15.0 and 18.3 by then. Sea water has
    // 1023.343 kg/m^3 at 25 degrees, 1027.675 at 5, 1025.973 at 15 and 1025.199 at 18.3.
    QTest::newRow("constant") << 0 << Numbers{9731, 9731, 9731};
    QTest::newRow("min") << 1 << Numbers{9772, 9731, 9731};
    QTest::newRow("avg") << 2 << Numbers{9772, 9747, 9754};
    QTest::newRow("current") << 3 << Numbers{9772, 9731, 9772};
    QTest::newRow("unknown") << 4 << Numbers{9731, 9731, 9731};
    QTest::newRow("last unknown") << 255 << Numbers{9731, 9731, 9731};
}

void TestDiveModel::depthTakesTheTemperatureFromItsSource()
{
    QFETCH(int, source);
    QFETCH(Numbers, depths);
    Session session{DiveSettings({{"salinity", 35}, {"temperatureSource", source}})};
    session.set(Temperature, 10); // of the air, which is no part of the dive
    session.dive(0);
    Numbers found;
    for (const int temperature : {250, 50, 250}) {
        session.set(Temperature, temperature);
        session.dive(10000);
        found.append(session.value(Depth));
    }
    QCOMPARE(found, depths);
}

void TestDiveModel::divesBeginAndEndAtTheirThresholds_data()
{
    QTest::addColumn<Changes>("changes");
    QTest::addColumn<Numbers>("profile");
    QTest::addColumn<QString>("state"); // - on the surface, B begins, d goes on, E ends
    const auto row = [](const char* name, const Changes& changes, const Numbers& profile,
                        const char* state) {
        QTest::newRow(name) << changes << profile << QString::fromLatin1(state);
    };
    row("chop", {}, {0, 40, 60, 90, 110, 90, 60, 40, 60, 90, 110, 60, 0, 0}, "----BddE--BdE-");
    row("at the very thresholds", {}, {99, 100, 99, 50, 49, 99}, "-BddE-");
    row("at once", {}, {100, 0}, "BE");
    row("surfacing deeper than diving", {{"surfacingThreshold", 200}}, {0, 110, 150, 100, 99, 110},
        "-BddEB");
    row("other thresholds", {{"diveThreshold", 255}, {"surfacingThreshold", 5}},
        {0, 254, 255, 5, 4, 254}, "--BdE-");
}

void TestDiveModel::divesBeginAndEndAtTheirThresholds()
{
    QFETCH(Changes, changes);
    QFETCH(Numbers, profile);
    QFETCH(QString, state);
    Session session{DiveSettings(changes)};
    QString found;
    for (const int more : profile) {
        const cMyDiveMoment& moment = session.dive(more);
        QCOMPARE(moment.values.at(Depth), qint16(more));
        QVERIFY(!moment.diveBegins || moment.isUnderwater);
        QVERIFY(!moment.diveEnds || !moment.isUnderwater);
        found += moment.diveBegins     ? QLatin1Char('B')
                 : moment.diveEnds     ? QLatin1Char('E')
                 : moment.isUnderwater ? QLatin1Char('d')
                                       : QLatin1Char('-');
    }
    QCOMPARE(found, state);
}

void TestDiveModel::aDiveBeginsAtTheDepthThatItShows()
{
    // 102 mbar are 99.25 cm of sea water at 5 degrees and 99.67 cm at 25.
    Session session{DiveSettings({{"salinity", 35}, {"temperatureSource", 1}})};
    session.set(Temperature, 50);
    session.dive({0, 500, 0, 102});
    QCOMPARE(session.value(Depth), 99);
    QVERIFY(!session.last.isUnderwater);
    session.set(Temperature, 250); // with which the next dive is to begin
    session.dive(102);
    QCOMPARE(session.value(Depth), 100);
    QVERIFY(session.last.diveBegins);
}

void TestDiveModel::phasesFollowTheSpeed_data()
{
    QTest::addColumn<Changes>("changes");
    QTest::addColumn<Numbers>("profile");
    QTest::addColumn<QString>("phases"); // Descent, Bottom, Ascent
    const auto row = [](const char* name, const Changes& changes, const Numbers& profile,
                        const char* phases) {
        QTest::newRow(name) << changes << profile << QString::fromLatin1(phases);
    };
    row("defaults", {},
        {200, 400, 400, 391, 381, 381, 391, 402, 352, 312, 312, 322, 333, 323, 263, 263},
        "DDDDBBBDAAAADBAA");
    row("level is bottom", {{"bottomThreshold", 10}, {"ascentThreshold", -10}},
        {200, 400, 411, 421, 416, 426, 437, 442, 432, 432, 423, 433, 444, 455}, "DDDBBBDBAAAADD");
    row("a dive that begins with a pause", {{"bottomThreshold", 10}}, {200, 200, 211}, "DBD");
    row("a level stay is an ascent", {{"ascentThreshold", 0}}, {200, 300, 300, 311}, "DDAD");
}

void TestDiveModel::phasesFollowTheSpeed()
{
    QFETCH(Changes, changes);
    QFETCH(Numbers, profile);
    QFETCH(QString, phases);
    Session session{DiveSettings(changes)};
    QString found;
    for (const int more : profile) {
        found += QLatin1Char("DBA"[static_cast<int>(session.dive(more).phase)]);
    }
    QCOMPARE(found, phases);
    session.dive({0, 150});
    QVERIFY(session.last.diveBegins);
    QVERIFY(session.last.phase == DivePhase::Descent);
}

void TestDiveModel::profilesHaveTheirValues_data()
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
    // Turns slowly at the bottom in the 3rd second, leaves it in the 6th.
    QTest::newRow("with a bottom time")
        << Numbers{0, 500, 1000, 980, 970, 975, 875, 475, 0}
        << Expected{{DiveTime, 7}, {DescentTime, 2}, {BottomTime, 3}, {AscentTime, 2}};
}

void TestDiveModel::profilesHaveTheirValues()
{
    QFETCH(Numbers, profile);
    QFETCH(Expected, expected);
    Session session{DiveSettings()};
    session.dive(profile);
    QVERIFY(session.last.diveEnds);
    QCOMPARE(differences(session, expected), QString());
}

void TestDiveModel::beforeTheFirstDiveReadingsAreTheStatistics()
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

void TestDiveModel::statisticsStayAfterADiveAndRestartWithTheNext()
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

void TestDiveModel::greatestValuesOutlastDives()
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

void TestDiveModel::greatestValuesContinueTheMemory()
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

void TestDiveModel::greatestDiveTimeGrowsWhileTheDiveGoesOn()
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

void TestDiveModel::surfaceTimeRestsUnderwater()
{
    Session session{DiveSettings()};
    Numbers found;
    for (const int more : {0, 0, 0, 500, 500, 500, 0, 0, 500, 500}) {
        session.dive(more);
        found.append(session.value(SurfaceTime));
    }
    QCOMPARE(found, Numbers({0, 1, 2, 3, 3, 3, 0, 1, 2, 2}));
}

void TestDiveModel::fractionsOfSecondsAddUp()
{
    // Two samples in a second: down for 0.5 s, up for 1.5 s, down for 1 s.
    Session session{DiveSettings({{"depthSamplingRate", 75}})};
    session.dive({0, 500, 300, 300, 300, 500, 500, 0});
    QCOMPARE(differences(session, {{DiveTime, 3},
                                   {DescentTime, 1},
                                   {BottomTime, 0},
                                   {AscentTime, 1},
                                   {DescentSpeedMaximum, 1000},
                                   {AscentSpeedMaximum, -400},
                                   {VerticalSpeed, -1000}}),
             QString());
}

void TestDiveModel::nothingDriftsOverTenThousandSamples()
{
    Session session{DiveSettings({{"depthSamplingRate", 37}})};
    session.dive(0);
    qint64 sum = 0;
    for (int index = 1; index <= 10000; ++index) {
        sum += session.dive(500).elapsed;
        QVERIFY(session.last.elapsed == 246 || session.last.elapsed == 247);
    }
    // 10000 * 37 / 150 s = 2466.6667 s, the first 0.246 s of which at the surface.
    QCOMPARE(sum, qint64(2466666));
    QCOMPARE(session.last.time, qint64(2466666));
    QCOMPARE(differences(session, {{DiveTime, 2466}, {DescentTime, 2466}, {DepthAverage, 500}}),
             QString());
}

void TestDiveModel::valuesSaturate()
{
    constexpr qint64 twelveHours = 43200000;
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
    session.diveAt(3 * twelveHours + 1000, 500);
    session.diveAt(3 * twelveHours + 3000, 500);
    QCOMPARE(differences(session, {{DiveTime, 2}, {TotalDiveTime, 32767}}), QString());
}

void TestDiveModel::clearedStatisticsBeginAnew()
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

void TestDiveModel::otherValuesPass()
{
    Session session{DiveSettings()};
    const Numbers others = {6,  7,  14, 15, 22, 30, BatteryLevel, 33, 36,
                            38, 39, 55, 56, 57, 58, 59,           63};
    for (const int number : others) {
        session.set(number, -number);
    }
    session.dive({0, 500, 400, 0});
    for (const int number : others) {
        QCOMPARE(session.value(number), -number);
    }
}

QTEST_GUILESS_MAIN(TestDiveModel)
#include "test_divemodel.moc"
