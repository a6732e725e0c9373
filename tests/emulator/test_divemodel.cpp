// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/divemodel.h"

#include "tests/emulator/modelsession.h"

#include <QtTest>

using namespace emulator;
using support::Changes;
using support::DiveSettings;
using support::Expected;
using support::Numbers;
using support::surfacePressure;
using Session = support::ModelSession;

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
    void pressureLeadsToADepth_data();
    void pressureLeadsToADepth();
    void divesBeginAndEndAtTheirThresholds_data();
    void divesBeginAndEndAtTheirThresholds();
    void aDiveBeginsAtTheDepthThatItShows();
    void theWaterOfTheLastDiveStaysOnTheSurface();
    void speedIsTheChangeOverAboutASecond_data();
    void speedIsTheChangeOverAboutASecond();
    void speedCountsFromTheFirstSampleAtFirst();
    void steadySpeedIsTheSameFromTheStart_data();
    void steadySpeedIsTheSameFromTheStart();
    void phasesFollowTheSpeed_data();
    void phasesFollowTheSpeed();
    void phasesOutlastATremblingPressure_data();
    void phasesOutlastATremblingPressure();
    void nothingDriftsOverTenThousandSamples();
    void otherValuesPass();
};

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
    QTest::addColumn<int>("before");
    QTest::addColumn<Numbers>("depths");
    // At 25.0, 5.0 and 25.0 degrees; the mean is 25.0, 15.0 and 18.3 by then. Sea water has
    // 1023.343 kg/m^3 at 25 degrees, 1027.675 at 5, 1025.973 at 15 and 1025.199 at 18.3. Before the
    // dive 252 mbar are 245.2 cm at 5 degrees and 246.3 at 25.
    QTest::newRow("constant") << 0 << 245 << Numbers{9731, 9731, 9731};
    QTest::newRow("min") << 1 << 246 << Numbers{9772, 9731, 9731};
    QTest::newRow("avg") << 2 << 246 << Numbers{9772, 9747, 9754};
    QTest::newRow("current") << 3 << 246 << Numbers{9772, 9731, 9772};
    QTest::newRow("unknown") << 4 << 245 << Numbers{9731, 9731, 9731};
    QTest::newRow("last unknown") << 255 << 245 << Numbers{9731, 9731, 9731};
}

void TestDiveModel::depthTakesTheTemperatureFromItsSource()
{
    QFETCH(int, source);
    QFETCH(int, before);
    QFETCH(Numbers, depths);
    Session session{
        DiveSettings({{"salinity", 35}, {"temperatureSource", source}, {"diveThreshold", 255}})};
    session.set(Temperature, 10); // of the air, which is no part of the dive
    session.dive(0);
    session.set(Temperature, 250);
    session.dive(252);
    QCOMPARE(session.value(Depth), before);
    Numbers found;
    for (const int temperature : {250, 50, 250}) {
        session.set(Temperature, temperature);
        session.dive(10000);
        found.append(session.value(Depth));
    }
    QCOMPARE(found, depths);
}

void TestDiveModel::pressureLeadsToADepth_data()
{
    QTest::addColumn<Changes>("changes");
    QTest::newRow("as in the tests") << Changes{};
    QTest::newRow("on earth") << Changes{{"gravity", 32132}};
    QTest::newRow("sea") << Changes{{"gravity", 32132}, {"salinity", 35}};
    QTest::newRow("least temperature") << Changes{{"salinity", 35}, {"temperatureSource", 1}};
    QTest::newRow("mean temperature") << Changes{{"salinity", 35}, {"temperatureSource", 2}};
    QTest::newRow("temperature read") << Changes{{"salinity", 35}, {"temperatureSource", 3}};
    QTest::newRow("no gravity") << Changes{{"gravity", 0}};
}

void TestDiveModel::pressureLeadsToADepth()
{
    QFETCH(Changes, changes);
    Session session{DiveSettings(changes)};
    for (int depth = 0; depth <= 3000; depth += 100) { // ever colder
        session.set(Temperature, 300 - depth / 10);
        cMyDiveValues readings{};
        readings[AtmosphericPressure] = surfacePressure;
        readings[Temperature] = static_cast<qint16>(300 - depth / 10);
        const double pressure = session.model().pressureAt(depth / 100.0, readings);
        session.dive(static_cast<int>(pressure) - surfacePressure);
        // The sensor knows whole millibars, and where these miss a centimetre, the next is shown.
        QVERIFY2(
            std::abs(session.value(Depth) - depth) <= (depth % 1000 == 0 ? 0 : 1),
            qPrintable(QStringLiteral("%1 instead of %2").arg(session.value(Depth)).arg(depth)));
    }
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
    row("no thresholds", {{"diveThreshold", 0}, {"surfacingThreshold", 0}}, {0, 500, 0, 0}, "Bddd");
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

void TestDiveModel::theWaterOfTheLastDiveStaysOnTheSurface()
{
    // 252 mbar are 245.2 cm of sea water at 5 degrees and 246.3 at 25.
    Session session{
        DiveSettings({{"salinity", 35}, {"temperatureSource", 1}, {"diveThreshold", 255}})};
    session.set(Temperature, 50);
    session.dive({0, 500, 0});
    session.set(Temperature, 250);
    session.dive(252);
    QVERIFY(!session.last.isUnderwater);
    QCOMPARE(session.value(Depth), 245);
}

void TestDiveModel::speedIsTheChangeOverAboutASecond_data()
{
    QTest::addColumn<int>("divider");
    QTest::addColumn<int>("samples"); // 150 / divider, rounded
    QTest::addColumn<int>("speed");   // 300 cm * 150 Hz / (divider * samples)
    QTest::newRow("150 Hz") << 1 << 150 << 300;
    QTest::newRow("10 Hz") << 15 << 10 << 300;
    QTest::newRow("4.05 Hz") << 37 << 4 << 304;
    QTest::newRow("2.5 Hz") << 60 << 3 << 250;
    QTest::newRow("2 Hz") << 75 << 2 << 300;
    QTest::newRow("1.5 Hz") << 100 << 2 << 225;
    QTest::newRow("1.49 Hz") << 101 << 1 << 446;
    QTest::newRow("1 Hz") << 150 << 1 << 300;
    QTest::newRow("slowest") << 255 << 1 << 176;
    QTest::newRow("none") << 0 << 1 << 300;
}

void TestDiveModel::speedIsTheChangeOverAboutASecond()
{
    QFETCH(int, divider);
    QFETCH(int, samples);
    QFETCH(int, speed);
    constexpr int moreThanASecond = 160;
    Session session{DiveSettings({{"depthSamplingRate", divider}})};
    session.dive(Numbers(moreThanASecond, 0));
    Numbers speeds;
    for (int sample = 0; sample < moreThanASecond; ++sample) {
        session.dive(300);
        speeds.append(session.value(VerticalSpeed));
    }
    QCOMPARE(speeds, Numbers(samples, speed) + Numbers(moreThanASecond - samples, 0));
}

void TestDiveModel::speedCountsFromTheFirstSampleAtFirst()
{
    // Ten samples in a second: 10 cm in 0.1 s, 30 cm in 0.2 s, 30 cm in 0.3 s, -60 cm in 0.4 s.
    Session session{DiveSettings({{"depthSamplingRate", 15}})};
    Numbers speeds;
    for (const int more : {200, 210, 230, 230, 140}) {
        session.dive(more);
        speeds.append(session.value(VerticalSpeed));
    }
    QCOMPARE(speeds, Numbers({0, 100, 150, 100, -150}));
}

void TestDiveModel::steadySpeedIsTheSameFromTheStart_data()
{
    QTest::addColumn<int>("divider");
    QTest::addColumn<int>("step"); // in cm for each sample
    QTest::newRow("150 Hz") << 1 << 2;
    QTest::newRow("15 Hz") << 10 << 20;
    QTest::newRow("10 Hz") << 15 << 30;
    QTest::newRow("4.05 Hz") << 37 << 74;
    QTest::newRow("1 Hz") << 150 << 300;
}

void TestDiveModel::steadySpeedIsTheSameFromTheStart()
{
    QFETCH(int, divider);
    QFETCH(int, step);
    Session session{DiveSettings({{"depthSamplingRate", divider}})};
    session.dive(0);
    for (int sample = 1; sample <= 50; ++sample) {
        session.dive(sample * step);
        QCOMPARE(session.value(VerticalSpeed), 300);
    }
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

void TestDiveModel::phasesOutlastATremblingPressure_data()
{
    QTest::addColumn<Changes>("changes");
    QTest::addColumn<QString>("phases"); // begun on the way down, there, on the way up, and there
    // The readings tremble by 6 mbar at most, which is 6 cm/s over a second.
    QTest::newRow("defaults") << Changes{} << QStringLiteral("D,,BA,,D,,BA,,");
    QTest::newRow("level is bottom")
        << Changes{{"bottomThreshold", 10}} << QStringLiteral("D,B,A,,D,B,A,,");
}

void TestDiveModel::phasesOutlastATremblingPressure()
{
    QFETCH(Changes, changes);
    QFETCH(QString, phases);
    const Numbers trembling{0, 3, -2, 1, -3, 2, 3, -1, -3, 0, 2, -2, 1};
    Session session{DiveSettings(changes + Changes{{"depthSamplingRate", 15}})};
    QString found;
    QLatin1Char last('-');
    const auto diveFor = [&](int from, int samples, int step) {
        for (int sample = 1; sample <= samples; ++sample) {
            session.dive(from + sample * step + trembling.at(sample % trembling.size()));
            const QLatin1Char letter("DBA"[static_cast<int>(session.last.phase)]);
            if (letter != last) {
                found += letter;
            }
            last = letter;
        }
        found += QLatin1Char(',');
    };
    for (const int start : {0, 500}) { // at 1 m/s, with level stays of 20 s
        diveFor(start, (1000 - start) / 10, 10);
        diveFor(1000, 200, 0);
        diveFor(1000, 50, -10);
        diveFor(500, 200, 0);
    }
    QCOMPARE(found, phases);
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
