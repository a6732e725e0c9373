// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/waterdensity.h"

#include <QtTest>

#include <cmath>
#include <limits>

class TestWaterDensity : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithThePublishedValues_data();
    void agreesWithThePublishedValues();
    void boundsWhatItIsGiven_data();
    void boundsWhatItIsGiven();
    void isAlwaysThatOfWater();
};

void TestWaterDensity::agreesWithThePublishedValues_data()
{
    QTest::addColumn<double>("salinity");
    QTest::addColumn<double>("temperature");
    QTest::addColumn<double>("density");
    // The check values that are published with the equation.
    QTest::newRow("fresh and cold") << 0.0 << 5.0 << 999.96675;
    QTest::newRow("fresh and warm") << 0.0 << 25.0 << 997.04796;
    QTest::newRow("sea and cold") << 35.0 << 5.0 << 1027.67547;
    QTest::newRow("sea and warm") << 35.0 << 25.0 << 1023.34306;
}

void TestWaterDensity::agreesWithThePublishedValues()
{
    QFETCH(double, salinity);
    QFETCH(double, temperature);
    QFETCH(double, density);
    const double difference = emulator::waterDensity(temperature, salinity) - density;
    QVERIFY2(std::abs(difference) <= 0.5e-5, qPrintable(QString::number(difference)));
}

void TestWaterDensity::boundsWhatItIsGiven_data()
{
    constexpr double endless = std::numeric_limits<double>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    QTest::addColumn<double>("salinity");
    QTest::addColumn<double>("temperature");
    QTest::addColumn<double>("usedSalinity");
    QTest::addColumn<double>("usedTemperature");
    QTest::newRow("colder than the sea gets") << 35.0 << -3276.8 << 35.0 << -2.0;
    QTest::newRow("hotter than a bath") << 35.0 << 3276.7 << 35.0 << 60.0;
    QTest::newRow("less than no salt") << -1.0 << 20.0 << 0.0 << 20.0;
    QTest::newRow("saltier than what can be set") << 255.0 << 20.0 << 100.0 << 20.0;
    QTest::newRow("endless") << endless << -endless << 100.0 << -2.0;
    QTest::newRow("no temperature") << 0.0 << none << 0.0 << 60.0;
    QTest::newRow("no salinity") << none << 20.0 << 100.0 << 20.0;
}

void TestWaterDensity::boundsWhatItIsGiven()
{
    QFETCH(double, salinity);
    QFETCH(double, temperature);
    QFETCH(double, usedSalinity);
    QFETCH(double, usedTemperature);
    QCOMPARE(emulator::waterDensity(temperature, salinity),
             emulator::waterDensity(usedTemperature, usedSalinity));
}

void TestWaterDensity::isAlwaysThatOfWater()
{
    for (int salinity = -5; salinity <= 255; ++salinity) {
        for (int temperature = -50; temperature <= 100; ++temperature) {
            const double density = emulator::waterDensity(temperature, salinity);
            QVERIFY(density > 980 && density < 1090);
        }
    }
}

QTEST_GUILESS_MAIN(TestWaterDensity)
#include "test_waterdensity.moc"
