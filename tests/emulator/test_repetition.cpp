// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/repetition.h"

#include "tests/emulator/rulebuilder.h"

#include <QtTest>

/// How often a message rule speaks.
class TestRepetition : public QObject
{
    Q_OBJECT

private slots:
    void times_data();
    void times();
    void everyPeriodHasItsOwnLength_data();
    void everyPeriodHasItsOwnLength();
    void ways_data();
    void ways();
    void everyDistanceHasItsOwnLength_data();
    void everyDistanceHasItsOwnLength();
    void unknownNumbersSpeakOnce_data();
    void unknownNumbersSpeakOnce();
};

namespace {

constexpr int once = 0;
constexpr int periodA = 1;
constexpr int distanceE = 5;
constexpr int still = 255;

/// The numbers of the samples at which something is said. Each sample is a letter: "-" if the
/// condition does not hold, "c" if it does and the comparison does not, "t" if both do; "B" and "T"
/// are as those two, but with the condition begun anew.
QString spokenAt(cMyRepetition& repetition, const char* samples, int interval)
{
    QStringList spoken;
    bool held = false;
    const QString letters = QString::fromLatin1(samples);
    for (int i = 0; i < letters.size(); ++i) {
        const QChar letter = letters.at(i);
        const bool holds = letter != QLatin1Char('-');
        cMyRepetitionStep step;
        step.begins = holds && (!held || letter.isUpper());
        step.isTrue = letter.toLower() == QLatin1Char('t');
        step.time = qint64(i) * interval;
        held = holds;
        if (repetition.speaks(step)) {
            spoken.append(QString::number(i));
        }
    }
    return spoken.join(QLatin1Char(' '));
}

/// As above, with the depths of the samples in cm. The condition holds throughout.
QString spokenOnTheWay(cMyRepetition& repetition, const QVector<int>& depths)
{
    QStringList spoken;
    cMyRepetitionStep step;
    step.begins = true;
    step.isTrue = true;
    for (int i = 0; i < depths.size(); ++i) {
        step.depthBefore = step.depth;
        step.depth = depths.at(i);
        if (repetition.speaks(step)) {
            spoken.append(QString::number(i));
        }
        step.begins = false;
    }
    return spoken.join(QLatin1Char(' '));
}

} // namespace

void TestRepetition::times_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("period");
    QTest::addColumn<int>("interval");
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QString>("spoken");
    const auto row = [](const char* name, int number, int period, int interval, const char* samples,
                        const char* spoken) {
        QTest::newRow(name) << number << period << interval << QByteArray(samples)
                            << QString::fromLatin1(spoken);
    };
    row("never true", once, 3, 1000, "--cc-", "");
    row("once", once, 3, 1000, "-ttttt", "1");
    row("once, each time the condition begins", once, 3, 1000, "tt--tt-t", "0 4 7");
    row("once, however often the comparison holds", once, 3, 1000, "cctcttct--ctct", "2 11");
    row("once, begun anew without a break", once, 3, 1000, "ttTtTT", "0 2 4 5");
    row("once, begun anew and true later", once, 3, 1000, "tcBct", "0 4");
    row("period", periodA, 3, 1000, "tttttttttt", "0 3 6 9");
    row("period starts with the first message", periodA, 3, 1000, "--cttttttt", "3 6 9");
    row("period between samples", periodA, 3, 400, "ttttttttttttttttt", "0 8 16");
    row("period and chop", periodA, 3, 1000, "tctctctctct", "0 4 8");
    row("period and a condition that begins anew", periodA, 3, 1000, "t-t-TTTt", "0 4 7");
    row("period pauses", periodA, 3, 1000, "ttttt-----tttt", "0 3 10 13");
    row("period of 0 s is one of 1 s", periodA, 0, 500, "tttttt", "0 2 4");
    row("period of 1 s", periodA, 1, 500, "tttttt", "0 2 4");
    row("longest period", periodA, 255, 85000, "tttttttt", "0 3 6");
    row("still", still, 3, 1000, "ttcttt", "0 1 3 4 5");
    row("still, at most once each second", still, 3, 250, "tttttttttt", "0 4 8");
    row("still, never true", still, 3, 1000, "cc--", "");
}

void TestRepetition::times()
{
    QFETCH(int, number);
    QFETCH(int, period);
    QFETCH(int, interval);
    QFETCH(QByteArray, samples);
    support::RuleBuilder builder;
    builder.put("periodA", period);
    cMyRepetition repetition(number, builder.settings());
    QTEST(spokenAt(repetition, samples.constData(), interval), "spoken");
}

void TestRepetition::everyPeriodHasItsOwnLength_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("spoken");
    QTest::newRow("A") << 1 << "0 2 4 6 8 10";
    QTest::newRow("B") << 2 << "0 3 6 9";
    QTest::newRow("C") << 3 << "0 5 10";
    QTest::newRow("D") << 4 << "0 7";
}

void TestRepetition::everyPeriodHasItsOwnLength()
{
    QFETCH(int, number);
    support::RuleBuilder builder;
    builder.put("periodA", 2).put("periodB", 3).put("periodC", 5).put("periodD", 7);
    cMyRepetition repetition(number, builder.settings());
    QTEST(spokenAt(repetition, "ttttttttttt", 1000), "spoken");
}

void TestRepetition::ways_data()
{
    QTest::addColumn<int>("distance");
    QTest::addColumn<QVector<int>>("depths");
    QTest::addColumn<QString>("spoken");
    const auto row = [](const char* name, int distance, const QVector<int>& depths,
                        const char* spoken) {
        QTest::newRow(name) << distance << depths << QString::fromLatin1(spoken);
    };
    row("down and up", 1000,
        {0, 500, 999, 1000, 1050, 1999, 2001, 2500, 2001, 1999, 1500, 1000, 600, 0}, "3 6 9 11");
    row("deeper and back", 1000, {900, 1100, 2100, 3100, 2900, 1900, 900, 0}, "1 2 3 5 6");
    row("turned between two marks", 500, {500, 1000, 1500, 1700, 1500, 1000, 500, 0},
        "0 1 2 4 5 6");
    row("at the first sample", 1000, {1500, 1600}, "0");
    row("at the first sample, before the first mark", 1000, {900}, "");
    row("exactly on the marks", 500, {500, 1000, 500, 0}, "0 1 2");
    row("hovering around a mark", 1000, {990, 1000, 990, 1010, 995, 1005, 990}, "1");
    row("hovering, then another", 1000, {1010, 990, 1010, 2010, 1990, 990, 1010}, "0 3 5");
    row("hovering by a fifth of the distance", 500, {1000, 900, 1100, 1000, 900, 1100}, "0");
    row("hovering by a quarter", 500, {1000, 1125, 990, 875, 1010, 1125, 875}, "0");
    row("deeper than a quarter and back", 500, {1000, 1126, 990, 1010}, "0 2");
    row("higher than a quarter and back", 500, {1000, 874, 1010, 990}, "0 2");
    row("staying on a mark", 1000, {1000, 1000, 1000}, "0");
    row("several marks in a step", 1000, {3500, 3600, 500}, "0 2");
    row("several marks, the last one again", 1000, {3200, 2990, 3010, 800, 1010, 2010}, "0 3 5");
    row("several marks, stopped far behind", 1000, {3500, 2990, 3010, 500, 1010, 2010},
        "0 1 3 4 5");
    row("the surface is no mark", 1000, {500, 0, 500, -20, 20}, "");
    row("above the surface and back", 1000, {1500, -1500, 990, 1500, 2000}, "0 1 3 4");
    row("distance of 0", 0, {0, 1000, 2000, 0}, "");
    row("distance below 0", -1000, {0, 1000, 2000, 0}, "");
    row("distance of 1 cm", 1, {1, 2, 2, 1, 2, 0}, "0 1 3 4 5");
    row("longest distance", 9999, {9998, 9999, 20000, 32767}, "1 2 3");
}

void TestRepetition::ways()
{
    QFETCH(int, distance);
    QFETCH(QVector<int>, depths);
    support::RuleBuilder builder;
    builder.put("distanceE", distance);
    cMyRepetition repetition(distanceE, builder.settings());
    QTEST(spokenOnTheWay(repetition, depths), "spoken");
}

void TestRepetition::everyDistanceHasItsOwnLength_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("spoken");
    QTest::newRow("E") << 5 << "1 3 5 7 9";
    QTest::newRow("F") << 6 << "2 5 8";
    QTest::newRow("G") << 7 << "4 9";
    QTest::newRow("H") << 8 << "6";
}

void TestRepetition::everyDistanceHasItsOwnLength()
{
    QFETCH(int, number);
    support::RuleBuilder builder;
    builder.put("distanceE", 200).put("distanceF", 300).put("distanceG", 500).put("distanceH", 700);
    cMyRepetition repetition(number, builder.settings());
    QTEST(spokenOnTheWay(repetition, {100, 200, 300, 400, 500, 600, 700, 800, 900, 1000}),
          "spoken");
}

void TestRepetition::unknownNumbersSpeakOnce_data()
{
    QTest::addColumn<int>("number");
    for (int number = 9; number < 255; ++number) {
        QTest::addRow("%d", number) << number;
    }
}

void TestRepetition::unknownNumbersSpeakOnce()
{
    QFETCH(int, number);
    const support::RuleBuilder builder;
    cMyRepetition repetition(number, builder.settings());
    QCOMPARE(spokenAt(repetition, "ctt-ttct", 1000), QStringLiteral("1 4"));
}

QTEST_GUILESS_MAIN(TestRepetition)
#include "test_repetition.moc"
