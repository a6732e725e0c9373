// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diveprofile.h"

#include "cli/divelog.h"
#include "tests/support/posix.h"

#include <QtTest>

#include <cmath>
#include <limits>

class TestDiveProfile : public QObject
{
    Q_OBJECT

private slots:
    void pointsOutOfBoundsAreRefused_data();
    void pointsOutOfBoundsAreRefused();
    void pointsAreLimited();
    void aProfileNeedsTwoPoints();
    void depthIsLinearBetweenPoints_data();
    void depthIsLinearBetweenPoints();
    void aStepIsTakenAtItsTime();
    void aCompletedDiveEndsWithAMinuteAtTheSurface_data();
    void aCompletedDiveEndsWithAMinuteAtTheSurface();
    void temperaturesLastUntilTheNext();
    void builtInProfilesAreDives_data();
    void builtInProfilesAreDives();
};

namespace {

using Points = QVector<QPair<double, double>>;

cMyDiveProfile profileOf(const Points& points)
{
    cMyDiveProfile profile;
    for (const auto& [time, depth] : points) {
        const QString fault = profile.add({time, depth, {}});
        if (!fault.isEmpty()) {
            qFatal("%s", qPrintable(fault));
        }
    }
    return profile;
}

Points pointsOf(const cMyDiveProfile& profile)
{
    Points points;
    for (const cMyProfilePoint& point : profile.points()) {
        points.append({point.time, point.depth});
    }
    return points;
}

} // namespace

Q_DECLARE_METATYPE(std::optional<double>)

void TestDiveProfile::pointsOutOfBoundsAreRefused_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("depth");
    QTest::addColumn<double>("temperature");
    QTest::addColumn<QString>("word"); // empty if it is taken
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinite = std::numeric_limits<double>::infinity();
    QTest::newRow("least") << 10.0 << 0.0 << -10.0 << "";
    QTest::newRow("most") << 86400.0 << 330.0 << 60.0 << "";
    QTest::newRow("time goes back") << 9.99 << 0.0 << 20.0 << "goes back from 10 s to 9.99 s";
    QTest::newRow("before the beginning") << -1.0 << 0.0 << 20.0 << "time is -1 s";
    QTest::newRow("longer than a day") << 86400.5 << 0.0 << 20.0 << "time is 86400.5 s";
    QTest::newRow("time is no number") << nan << 0.0 << 20.0 << "time is nan s";
    QTest::newRow("time has no end") << infinite << 0.0 << 20.0 << "time is inf s";
    QTest::newRow("a sensor in the air") << 20.0 << -1.0 << 20.0 << "";
    QTest::newRow("above the water") << 20.0 << -1.1 << 20.0 << "depth is -1.1 m";
    QTest::newRow("too deep") << 20.0 << 330.1 << 20.0 << "depth is 330.1 m";
    QTest::newRow("deeper than anything") << 20.0 << 1e308 << 20.0 << "depth is 1e+308 m";
    QTest::newRow("depth is no number") << 20.0 << nan << 20.0 << "depth is nan m";
    QTest::newRow("too cold") << 20.0 << 1.0 << -273.15 << "temperature is -273.15";
    QTest::newRow("too warm") << 20.0 << 1.0 << 293.15 << "temperature is 293.15";
    QTest::newRow("temperature is no number") << 20.0 << 1.0 << nan << "temperature is nan";
}

void TestDiveProfile::pointsOutOfBoundsAreRefused()
{
    QFETCH(double, time);
    QFETCH(double, depth);
    QFETCH(double, temperature);
    QFETCH(QString, word);
    cMyDiveProfile profile = profileOf({{10, 0}});
    const QString fault = profile.add({time, depth, temperature});
    QCOMPARE(fault.isEmpty(), word.isEmpty());
    QVERIFY2(fault.contains(word), qPrintable(fault));
    QCOMPARE(profile.points().size(), word.isEmpty() ? 2 : 1);
    QVERIFY(profile.points().last().depth >= 0);
}

void TestDiveProfile::pointsAreLimited()
{
    cMyDiveProfile profile;
    for (int i = 0; i < cMyDiveProfile::mostPoints; ++i) {
        if (!profile.add({i * 0.01, 1, {}}).isEmpty()) {
            QFAIL("a point within the limit was refused");
        }
    }
    QVERIFY(profile.add({86400, 1, {}}).contains(QLatin1String("more than 1000000 points")));
    QCOMPARE(profile.points().size(), 1000000);
}

void TestDiveProfile::aProfileNeedsTwoPoints()
{
    QVERIFY(profileOf({}).fault().contains(QLatin1String("at least 2")));
    QVERIFY(profileOf({{0, 0}}).fault().contains(QLatin1String("at least 2")));
    QCOMPARE(profileOf({{0, 0}, {1, 1}}).fault(), QString());
}

void TestDiveProfile::depthIsLinearBetweenPoints_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("depth");
    QTest::newRow("before") << 0.0 << 2.0;
    QTest::newRow("at the first point") << 10.0 << 2.0;
    QTest::newRow("a quarter of the way") << 15.0 << 4.0;
    QTest::newRow("at a point") << 30.0 << 10.0;
    QTest::newRow("level") << 40.0 << 10.0;
    QTest::newRow("on the way up") << 60.0 << 8.0;
    QTest::newRow("at the last point") << 100.0 << 0.0;
    QTest::newRow("behind") << 1000.0 << 0.0;
}

void TestDiveProfile::depthIsLinearBetweenPoints()
{
    QFETCH(double, time);
    QFETCH(double, depth);
    const cMyDiveProfile profile = profileOf({{10, 2}, {30, 10}, {50, 10}, {100, 0}});
    QCOMPARE(profile.depthAt(time), depth);
    QCOMPARE(profile.maximumDepth(), 10.0);
    QCOMPARE(profile.duration(), 100.0);
}

void TestDiveProfile::aStepIsTakenAtItsTime()
{
    const cMyDiveProfile profile = profileOf({{0, 0}, {10, 0}, {10, 5}, {20, 5}});
    QCOMPARE(profile.depthAt(9.999), 0.0);
    QCOMPARE(profile.depthAt(10), 5.0);
}

void TestDiveProfile::aCompletedDiveEndsWithAMinuteAtTheSurface_data()
{
    QTest::addColumn<Points>("given");
    QTest::addColumn<Points>("completed");
    QTest::newRow("ends as it surfaces")
        << Points{{0, 0}, {10, 3}, {20, 0}} << Points{{0, 0}, {10, 3}, {20, 0}, {80, 0}};
    QTest::newRow("ends soon after") << Points{{0, 0}, {10, 3}, {20, 0}, {50, 0}}
                                     << Points{{0, 0}, {10, 3}, {20, 0}, {50, 0}, {80, 0}};
    QTest::newRow("ends a minute after")
        << Points{{0, 0}, {10, 3}, {20, 0}, {80, 0}} << Points{{0, 0}, {10, 3}, {20, 0}, {80, 0}};
    QTest::newRow("ends in the water, 9 m in a minute below the surface")
        << Points{{0, 0}, {10, 9}} << Points{{0, 0}, {10, 9}, {70, 0}, {130, 0}};
    QTest::newRow("begins late") << Points{{10, 3}, {20, 0}}
                                 << Points{{0, 0}, {10, 3}, {20, 0}, {80, 0}};
    QTest::newRow("begins in the water")
        << Points{{0, 3}, {20, 0}} << Points{{0, 3}, {20, 0}, {80, 0}};
    QTest::newRow("no dive at all") << Points{{0, 0}, {100, 0}} << Points{{0, 0}, {100, 0}};
    QTest::newRow("nothing") << Points{} << Points{};
}

void TestDiveProfile::aCompletedDiveEndsWithAMinuteAtTheSurface()
{
    QFETCH(Points, given);
    QFETCH(Points, completed);
    QCOMPARE(pointsOf(profileOf(given).completed()), completed);
}

void TestDiveProfile::temperaturesLastUntilTheNext()
{
    cMyDiveProfile profile;
    QCOMPARE(profile.add({10, 1, {}}), QString());
    QCOMPARE(profile.add({20, 1, 15.0}), QString());
    QCOMPARE(profile.add({30, 1, {}}), QString());
    QCOMPARE(profile.add({40, 0, 12.5}), QString());
    const cMyDiveProfile whole = profile.completed();
    const QVector<QPair<double, double>> expected = {{0, 15},    {10, 15},   {20, 15},   {35, 15},
                                                     {40, 12.5}, {99, 12.5}, {200, 12.5}};
    for (const auto& [time, temperature] : expected) {
        QCOMPARE(whole.temperatureAt(time), std::optional<double>(temperature));
    }
    QCOMPARE(profileOf({{0, 0}, {1, 1}}).completed().temperatureAt(1), std::optional<double>());
}

void TestDiveProfile::builtInProfilesAreDives_data()
{
    QTest::addColumn<double>("depth");
    QTest::addColumn<double>("duration");
    QTest::newRow("freedive") << 30.0 << 200.0;
    QTest::newRow("square") << 18.0 << 2730.0;
    QTest::newRow("sawtooth") << 20.0 << 1200.0;
}

void TestDiveProfile::builtInProfilesAreDives()
{
    QFETCH(double, depth);
    QFETCH(double, duration);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    QVERIFY(cli::builtInProfiles().contains(name));
    QCOMPARE(cli::builtInProfiles().size(), 3);
    const cMyDiveProfile profile = cli::builtInProfile(name);
    QCOMPARE(profile.maximumDepth(), depth);
    QCOMPARE(profile.duration(), duration);
    QCOMPARE(profile.points().first().depth, 0.0);
    QCOMPARE(profile.points().last().depth, 0.0);

    QStringList documented;
    for (const cMyProfilePoint& point : profile.points()) {
        documented.append(QStringLiteral("%1 s %2 m").arg(point.time).arg(point.depth));
    }
    const QByteArray page =
        support::readFile(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/rehearse.md"));
    QVERIFY(page.contains(documented.join(QStringLiteral(", ")).toUtf8()));
}

QTEST_GUILESS_MAIN(TestDiveProfile)
#include "test_diveprofile.moc"
