// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rehearsal.h"

#include "cli/divelog.h"
#include "tests/cli/rehearsedrules.h"

#include <QtTest>

#include <cmath>

class TestRehearsal : public QObject
{
    Q_OBJECT

private slots:
    void theDeviceIsAsDeepAsTheProfile_data();
    void theDeviceIsAsDeepAsTheProfile();
    void messagesComeInTheirTime();
    void temperaturesAreThoseOfTheLog();
    void switchingOnAndOffIsHeard();
    void samplesComeAtTheRateOfTheSettings();
    void theDeepestSampleIsKept();
    void rulesThatNeverSpokeAreTold();
    void messagesSoonAfterOthersAreHasty();
    void tooDeepForTheSensorIsAnError();
    void aDiveCanBeCancelled();
    void manySamplesAreNotAllKept();
    void whoTalksWithoutEndIsCutOff();
};

namespace {

cMyDiveProfile profileOf(const QVector<cMyProfilePoint>& points)
{
    cMyDiveProfile profile;
    for (const cMyProfilePoint& point : points) {
        const QString fault = profile.add(point);
        if (!fault.isEmpty()) {
            qFatal("%s", qPrintable(fault));
        }
    }
    return profile;
}

/// "seconds:rule:text".
QStringList said(const cMyRehearsal& rehearsal)
{
    QStringList lines;
    for (const cMySpokenMessage& message : rehearsal.messages()) {
        lines.append(QStringLiteral("%1:%2:%3")
                         .arg(static_cast<double>(message.time) / 1000)
                         .arg(message.rule)
                         .arg(message.text));
    }
    return lines;
}

} // namespace

void TestRehearsal::theDeviceIsAsDeepAsTheProfile_data()
{
    QTest::addColumn<int>("salinity");
    QTest::addColumn<int>("gravity");
    QTest::newRow("fresh water") << 0 << 32132;
    QTest::newRow("sea") << 35 << 32132;
    QTest::newRow("another planet") << 0 << 12000;
}

void TestRehearsal::theDeviceIsAsDeepAsTheProfile()
{
    QFETCH(int, salinity);
    QFETCH(int, gravity);
    support::RuleBuilder builder;
    builder.put("salinity", salinity).put("gravity", gravity);
    for (const double depth : {10.0, 20.0, 30.0, 100.0}) {
        const cMyRehearsal rehearsal(
            builder.settings(), profileOf({{0, depth, {}}, {5, depth, 12.0}, {10, depth, {}}}));
        QVERIFY(rehearsal.outcome().isDone());
        // On a lighter planet a millibar is more than a centimetre.
        QVERIFY2(std::abs(rehearsal.maximumDepth() - depth) < (gravity < 30000 ? 0.02 : 0.001),
                 qPrintable(QString::number(rehearsal.maximumDepth())));
    }
}

void TestRehearsal::messagesComeInTheirTime()
{
    // Down at 0.5 m/s to 20 m after 40 s, up at 0.25 m/s until 120 s. The dive begins at 1 m, after
    // 2 s, and ends at less than 0.5 m: 0.5 m is passed after 118 s, so that 119 s is the first.
    const cMyRehearsal rehearsal(support::ThreeRules().settings(),
                                 profileOf({{0, 0, {}}, {40, 20, {}}, {120, 0, {}}}));
    QVERIFY(rehearsal.outcome().isDone());
    QCOMPARE(said(rehearsal),
             QStringList({"10:1:Depth 5.00 m", "20:1:Depth 10.00 m", "30:1:Depth 15.00 m",
                          "36:2:Attention", "40:1:Depth 20.00 m", "60:1:Depth 15.00 m",
                          "80:1:Depth 10.00 m", "100:1:Depth 5.00 m", "119:3:Dive time 117 s"}));
    QCOMPARE(rehearsal.duration(), 180.0);
    QCOMPARE(rehearsal.maximumDepth(), 20.0);
    QCOMPARE(rehearsal.messages().at(0).depth, 500);
}

void TestRehearsal::temperaturesAreThoseOfTheLog()
{
    support::RuleBuilder builder;
    builder.messageRule(1)
        .when(support::when(RuleCondition::Anytime))
        .atMost(emulator::Temperature, 125)
        .says(emulator::Temperature);
    const cMyRehearsal with(builder.settings(),
                            profileOf({{0, 0, 18.0}, {30, 5, 12.3}, {60, 0, {}}}));
    QCOMPARE(said(with), QStringList("30:1:Temperature 12.3 °C"));
    const cMyRehearsal without(builder.settings(), profileOf({{0, 0, {}}, {60, 0, {}}}));
    QCOMPARE(said(without), QStringList());
}

void TestRehearsal::switchingOnAndOffIsHeard()
{
    support::RuleBuilder builder;
    builder.messageRule(1).when(support::when(RuleCondition::SwitchesOn)).says(support::attention);
    builder.messageRule(2)
        .when(support::when(RuleCondition::SwitchesOff))
        .says(emulator::DepthMaximum);
    const cMyRehearsal rehearsal(builder.settings(), profileOf({{5, 10, {}}, {20.5, 0, {}}}));
    QCOMPARE(said(rehearsal), QStringList({"0:1:Attention", "80.5:2:Depth max 10.00 m"}));
}

void TestRehearsal::samplesComeAtTheRateOfTheSettings()
{
    support::ThreeRules builder;
    builder.put("depthSamplingRate", 15); // ten in a second
    const cMyRehearsal rehearsal(builder.settings(),
                                 profileOf({{0, 0, {}}, {3.3, 5, {}}, {60, 5, {}}}));
    QCOMPARE(said(rehearsal).value(0), QStringLiteral("3.3:1:Depth 5.00 m"));
}

void TestRehearsal::theDeepestSampleIsKept()
{
    support::RuleBuilder builder;
    builder.put("depthSamplingRate", 15);
    const cMyRehearsal rehearsal(builder.settings(),
                                 profileOf({{0, 0, {}}, {3.3, 5, {}}, {6.6, 0, {}}}));
    QVector<double> times;
    double deepest = 0;
    for (const cMyRehearsedDepth& depth : rehearsal.depths()) {
        times.append(depth.time);
        deepest = std::max(deepest, depth.depth);
    }
    QCOMPARE(times.mid(0, 6), QVector<double>({0, 1, 2, 3, 3.3, 4}));
    QCOMPARE(times.mid(times.size() - 2), QVector<double>({66, 66.6}));
    QCOMPARE(deepest, 5.0);
}

void TestRehearsal::rulesThatNeverSpokeAreTold()
{
    support::ThreeRules builder;
    builder.messageRule(5).when(support::when(RuleCondition::Never)).says(support::attention);
    builder.messageRule(6).when(support::when(RuleCondition::Charging)).says(support::attention);
    builder.messageRule(7).when(support::when(RuleCondition::Charging)); // says nothing anyway
    const cMyRehearsal rehearsal(builder.settings(),
                                 profileOf({{0, 0, {}}, {60, 12, {}}, {120, 0, {}}}));
    QCOMPARE(rehearsal.silentRules(), QVector<int>({2, 6}));
}

void TestRehearsal::messagesSoonAfterOthersAreHasty()
{
    support::RuleBuilder builder;
    int rule = 0;
    for (const int depth : {200, 210, 400, 610}) { // at 0.1 m/s: 20, 21, 40, and 61 s
        builder.messageRule(++rule)
            .when(support::when(RuleCondition::Underwater))
            .atLeast(emulator::Depth, depth)
            .says(support::attention);
    }
    builder.messageRule(++rule)
        .when(support::when(RuleCondition::Underwater))
        .atLeast(emulator::Depth, 630)
        .says(support::attention);
    const cMyRehearsal rehearsal(builder.settings(), profileOf({{0, 0, {}}, {100, 10, {}}}));
    QVector<bool> hasty;
    for (int i = 0; i < rehearsal.messages().size(); ++i) {
        hasty.append(rehearsal.isHasty(i));
    }
    QCOMPARE(hasty, QVector<bool>({false, true, false, false, false}));
}

void TestRehearsal::tooDeepForTheSensorIsAnError()
{
    support::RuleBuilder builder;
    builder.put("gravity", 65535); // 20 m/s^2
    const cMyRehearsal rehearsal(builder.settings(), profileOf({{0, 0, {}}, {170, 170, {}}}));
    QCOMPARE(rehearsal.outcome().status, cli::ExitStatus::BadFile);
    // 32767 mbar less 1013 are 3175400 Pa: at 998.2 kg/m^3 and 20 m/s^2 159.05 m.
    const QString reason = rehearsal.outcome().reasons.value(0);
    QVERIFY2(reason.startsWith(QLatin1String("the profile is 160.00 m deep at 160 s")),
             qPrintable(reason));
}

void TestRehearsal::aDiveCanBeCancelled()
{
    QVector<QPair<int, int>> told;
    const cMyRehearsal rehearsal(support::ThreeRules().settings(),
                                 profileOf({{0, 0, {}}, {100, 0, {}}}), [&](int done, int total) {
                                     told.append({done, total});
                                     return done < 3;
                                 });
    QCOMPARE(rehearsal.outcome().status, cli::ExitStatus::Cancelled);
    QCOMPARE(told, (QVector<QPair<int, int>>{{0, 100}, {1, 100}, {2, 100}, {3, 100}}));
}

void TestRehearsal::manySamplesAreNotAllKept()
{
    support::RuleBuilder builder;
    builder.put("depthSamplingRate", 1);
    const cMyRehearsal rehearsal(builder.settings(), profileOf({{0, 0, {}}, {600, 20, {}}}));
    QVERIFY(rehearsal.outcome().isDone());
    QVERIFY(rehearsal.duration() > 700);
    QVERIFY(double(rehearsal.depths().size()) <= std::floor(rehearsal.duration()) + 3);
}

void TestRehearsal::whoTalksWithoutEndIsCutOff()
{
    constexpr int rules = 23; // that speak once in a second
    constexpr int seconds = 9000;
    support::TalkativeRules builder(rules);
    builder.messageRule(24).when(support::when(RuleCondition::DiveEnds)).says(support::attention);
    const cMyRehearsal rehearsal(
        builder.settings(), profileOf({{0, 0, {}}, {100, 3, {}}, {8900, 3, {}}, {8940, 0, {}}}));
    QCOMPARE(rehearsal.messages().size(), 200000);
    QCOMPARE(rehearsal.messages().last().time, qint64(8695000)); // 200000 / 23 is 8695.7
    QCOMPARE(rehearsal.leftOut(), qint64(rules * (seconds + 1) + 1 - 200000));
    QCOMPARE(rehearsal.silentRules(), QVector<int>()); // rule 24 was said, though not kept
}

QTEST_GUILESS_MAIN(TestRehearsal)
#include "test_rehearsal.moc"
