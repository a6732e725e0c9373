// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingscheck.h"

#include "cli/settingsource.h"
#include "editor/fieldcodec.h"
#include "image/memoryarea.h"
#include "tests/support/offeredimage.h"

#include <QtTest>

using Values = QVector<QPair<QString, int>>; ///< fields with the numbers that are stored in them

/// Doubts about settings.
class TestSettingsCheck : public QObject
{
    Q_OBJECT

private slots:
    void fields_data();
    void fields();
    void textsWithoutAnEnd();
    void messageRules_data();
    void messageRules();
    void messageRulesWithoutEnd_data();
    void messageRulesWithoutEnd();
    void timerRules_data();
    void timerRules();
    void examplesAreFree_data();
    void examplesAreFree();
    void randomImagesAreJudged();
};

namespace {

const QString none;

QStringList doubtsOf(const Values& values)
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    for (const auto& value : values) {
        const cMySettingsField& field = editor::settingsField(value.first);
        image.setData(static_cast<quint32>(field.address),
                      editor::numberBytes(value.second, field));
    }
    QStringList lines;
    for (const cMySettingsDoubt& doubt : cli::settingsDoubts(image)) {
        lines += doubt.name + QStringLiteral(": ") + doubt.text;
    }
    return lines;
}

void row(const char* name, const Values& values, const QString& doubt)
{
    QTest::newRow(name) << values << doubt;
}

void compare(const Values& values, const QString& doubt)
{
    const QStringList found = doubtsOf(values);
    QCOMPARE(found.join(QLatin1Char('\n')), doubt);
}

/// A message rule that has nothing doubtful about it, and then some numbers in it.
Values message(const Values& members)
{
    Values values = {{"messageRule03.condition", 0},
                     {"messageRule03.measuredValue", 32},
                     {"messageRule03.threshold", 500},
                     {"messageRule03.message", 215}};
    for (const auto& member : members) {
        const bool isWhole = member.first.contains('.') || member.first.startsWith("distance");
        values.append({isWhole ? member.first : "messageRule03." + member.first, member.second});
    }
    return values;
}

/// Likewise a timer rule, which starts timer 1.
Values timer(const Values& members)
{
    Values values = {
        {"timerRule05.condition", 2}, {"timerRule05.action", 129}, {"timerRule05.time", 60}};
    for (const auto& member : members) {
        values.append({member.first.contains('.') ? member.first : "timerRule05." + member.first,
                       member.second});
    }
    return values;
}

} // namespace

void TestSettingsCheck::fields_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("doubt");
    row("default settings", {}, none);
    row("unknown choice", {{"depthSamplingRate", 37}, {"suspendSampling", 37}},
        "suspendSampling: holds 37, which no choice stands for; the window shows some other "
        "choice, and keeps the 37 until one is picked");
    row("below the range", {{"periodA", 0}},
        "periodA: 0 s is out of range (1 to 240); the window makes it 1 s when it opens the file");
    row("above the range", {{"fixedTemperature", 601}},
        "fixedTemperature: 60.1 \u00B0C is out of range (0.0 to 60.0); the window makes it 60.0 "
        "\u00B0C when it opens the file");
    row("thresholds far enough apart", {{"diveThreshold", 60}}, none);
    row("thresholds too near", {{"diveThreshold", 59}},
        "surfacingThreshold: 50 cm is not at least 10 cm less than diveThreshold, 59 cm");
    row("surfacing below the dive", {{"surfacingThreshold", 200}},
        "surfacingThreshold: 200 cm is not at least 10 cm less than diveThreshold, 100 cm");
    row("gravity of another place", {{"latitude", 90}},
        "gravity: 9.806 m/s\u00B2 is not that of altitude and latitude, 9.8322 m/s\u00B2, which "
        "the window makes it when it opens the file");
    row("gravity of that place", {{"latitude", 90}, {"gravity", 32218}}, none);
    row("gravity that no place has", {{"gravity", 65535}},
        "gravity: 19.9997 m/s\u00B2 is not that of altitude and latitude, 9.806 m/s\u00B2, which "
        "the window makes it when it opens the file");
    row("gravity of a place that there is not", {{"latitude", 200}, {"gravity", 32218}},
        "latitude: 200 \u00B0 is out of range (0 to 90); the window makes it 90 \u00B0 when it "
        "opens the file");
}

void TestSettingsCheck::fields()
{
    QFETCH(Values, values);
    QFETCH(QString, doubt);
    compare(values, doubt);
}

void TestSettingsCheck::textsWithoutAnEnd()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    image.setData(16, QVector<quint8>(16, 'x'));
    auto doubts = cli::settingsDoubts(image);
    QCOMPARE(doubts.size(), 1);
    QCOMPARE(doubts.first().name, QStringLiteral("author"));
    QCOMPARE(doubts.first().text, QStringLiteral("does not end: there is no zero byte in it"));
    image.setData(31, 0);
    QVERIFY(cli::settingsDoubts(image).isEmpty());
}

void TestSettingsCheck::messageRules_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("doubt");
    const QString rule = "messageRule03.";
    const QString unknown = ", which no choice stands for; the window shows some other choice, "
                            "and keeps the 99 until one is picked\n";
    row("nothing doubtful", message({}), none);
    row("off", message({{"condition", 254}, {"message", 127}, {"threshold", -1}}), none);
    row("unknown condition", message({{"condition", 99}}),
        rule + "condition: holds 99" + unknown + rule +
            "condition: the rule never speaks: there is no such condition");
    row("unknown value", message({{"measuredValue", 99}}),
        rule + "measuredValue: holds 99" + unknown + rule +
            "measuredValue: the rule never speaks: there is no such value");
    row("unknown comparison", message({{"comparison", 99}}),
        rule + "comparison: holds 99" + unknown + rule +
            "comparison: the rule never speaks: there is no such comparison");
    row("unknown message", message({{"message", 99}}),
        rule + "message: holds 99" + unknown + rule +
            "message: the rule never speaks: it has nothing to say");
    row("nothing to say", message({{"message", 127}}),
        rule + "message: the rule never speaks: it has nothing to say");
    row("never that deep", message({{"threshold", -1}, {"comparison", 1}}),
        rule + "threshold: the rule never speaks: depth <= -0.01 m is never true");
    row("deepest", message({{"threshold", 32767}}), none);
    row("never so full", message({{"measuredValue", 31}, {"threshold", 32769}}),
        rule + "threshold: the rule never speaks: battery level >= 100.003 % is never true");
    row("ascent as if it were positive", message({{"measuredValue", 53}, {"threshold", 50}}),
        rule + "threshold: the rule never speaks: ascent speed MAX >= 0.50 m/s is never true");
    row("ascent", message({{"measuredValue", 53}, {"threshold", -50}, {"comparison", 1}}), none);
    row("descent as if it were negative",
        message({{"measuredValue", 50}, {"threshold", -50}, {"comparison", 1}}),
        rule + "threshold: the rule never speaks: descent speed max <= -0.50 m/s is never true");
    row("always that deep", message({{"threshold", 0}}),
        rule + "threshold: has no effect: depth >= 0.00 m is always true");
    row("threshold of nothing", message({{"measuredValue", 255}}),
        rule + "threshold: has no effect: the rule applies regardless of any value");
    row("regardless of any value", message({{"measuredValue", 255}, {"threshold", 0}}), none);
    row("no distance", message({{"repetition", 6}}),
        rule + "repetition: the rule never speaks: distanceF is 0.00 m");
    row("distance", message({{"repetition", 6}, {"distanceF", 100}}), none);
    row("timer that nothing starts", message({{"condition", 34}}),
        rule + "condition: the rule never speaks: no rule starts timer 2");
    row("stopwatch that nothing starts", message({{"condition", 16}}),
        rule + "condition: the rule never speaks: no rule starts stopwatch 0");
    row("timer that a rule starts",
        message({{"condition", 33},
                 {"timerRule01.condition", 2},
                 {"timerRule01.action", 129},
                 {"timerRule01.time", 9}}),
        none);
}

void TestSettingsCheck::messageRules()
{
    QFETCH(Values, values);
    QFETCH(QString, doubt);
    compare(values, doubt);
}

void TestSettingsCheck::messageRulesWithoutEnd_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("doubt");
    const QString rule = "messageRule03.";
    row("still", message({{"repetition", 255}}), none);
    row("still, anytime, below a depth", message({{"condition", 255}, {"repetition", 255}}), none);
    const QVector<QPair<QString, int>> anything = {{"measuredValue", 255}, {"threshold", 0}};
    row("once, anytime", message(anything + Values{{"condition", 255}}), none);
    row("still, anytime", message(anything + Values{{"condition", 255}, {"repetition", 255}}),
        rule + "repetition: the rule speaks without end: it applies anytime, and no value ends "
               "that");
    row("period, anytime", message(anything + Values{{"condition", 255}, {"repetition", 4}}),
        rule + "repetition: the rule speaks without end: it applies anytime, and no value ends "
               "that");
    row("period, on the surface", message(anything + Values{{"condition", 1}, {"repetition", 1}}),
        rule + "repetition: the rule speaks without end: it applies on the surface, which is at "
               "home, too");
    row("period, timer never started",
        message(anything + Values{{"condition", 27}, {"repetition", 1}}),
        rule + "repetition: the rule speaks without end: no rule starts timer 3, so that it is "
               "always stopped");
}

void TestSettingsCheck::messageRulesWithoutEnd()
{
    QFETCH(Values, values);
    QFETCH(QString, doubt);
    compare(values, doubt);
}

void TestSettingsCheck::timerRules_data()
{
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("doubt");
    const QString rule = "timerRule05.";
    row("nothing doubtful", timer({}), none);
    row("does nothing", timer({{"action", 127}}), rule + "action: the rule does nothing");
    row("no time", timer({{"time", 0}}),
        rule + "time: the timer has passed as soon as it is started");
    row("no time for the stopwatch", timer({{"time", 0}, {"action", 128}}), none);
    row("stops what nothing starts", timer({{"action", 138}}),
        rule + "action: the rule does nothing: no rule starts timer 2");
    row("stops a stopwatch that nothing starts", timer({{"action", 136}}),
        rule + "action: the rule does nothing: no rule starts stopwatch 0");
    row("continues what nothing starts", timer({{"action", 145}}),
        rule + "action: the rule does nothing: no rule starts timer 1");
    row("continues the stopwatch", timer({{"action", 144}}), none);
    row("starts itself alone", timer({{"condition", 33}}),
        rule + "condition: the rule never acts: no rule starts timer 1");
    row("chain",
        timer({{"timerRule01.condition", 33},
               {"timerRule01.action", 130},
               {"timerRule01.time", 5},
               {"timerRule02.condition", 34},
               {"timerRule02.action", 131},
               {"timerRule02.time", 5},
               {"timerRule03.condition", 35},
               {"timerRule03.action", 137}}),
        none);
    row("chain without a beginning",
        timer({{"condition", 254},
               {"timerRule01.condition", 34},
               {"timerRule01.action", 129},
               {"timerRule01.time", 5},
               {"timerRule02.condition", 33},
               {"timerRule02.action", 130},
               {"timerRule02.time", 5}}),
        "timerRule01.condition: the rule never acts: no rule starts timer 2\n"
        "timerRule02.condition: the rule never acts: no rule starts timer 1");
    row("started by a rule that is never true",
        timer({{"measuredValue", 32},
               {"comparison", 1},
               {"threshold", -1},
               {"timerRule06.condition", 2},
               {"timerRule06.action", 137}}),
        rule + "threshold: the rule never acts: depth <= -0.01 m is never true\n"
               "timerRule06.action: the rule does nothing: no rule starts timer 1");
}

void TestSettingsCheck::timerRules()
{
    QFETCH(Values, values);
    QFETCH(QString, doubt);
    compare(values, doubt);
}

void TestSettingsCheck::examplesAreFree_data()
{
    QTest::addColumn<QString>("path");
    const QDir directory(QStringLiteral(MIOLKA_SOURCE_DIR "/docs/examples"));
    for (const QFileInfo& each : directory.entryInfoList({QStringLiteral("*.mio")})) {
        QTest::newRow(qPrintable(each.fileName())) << each.filePath();
    }
}

void TestSettingsCheck::examplesAreFree()
{
    QFETCH(QString, path);
    cMyMemoryArea image;
    QVERIFY(cli::loadSettings(path, image).isDone());
    QVERIFY(cli::settingsDoubts(image).isEmpty());
}

void TestSettingsCheck::randomImagesAreJudged()
{
    for (quint32 seed = 1; seed <= 50; ++seed) {
        QRandomGenerator random(seed);
        const QByteArray bytes = support::randomImage(random);
        cMyMemoryArea image;
        image.setData(0, QVector<quint8>(bytes.cbegin(), bytes.cend()));
        const auto doubts = cli::settingsDoubts(image);
        QVERIFY(!doubts.isEmpty());
        for (const cMySettingsDoubt& doubt : doubts) {
            QCOMPARE(editor::settingsField(doubt.name).name, doubt.name);
            QVERIFY(!doubt.text.isEmpty());
        }
    }
}

QTEST_GUILESS_MAIN(TestSettingsCheck)
#include "test_settingscheck.moc"
