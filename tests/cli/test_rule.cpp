// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rule.h"

#include "cli/settingsource.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

#include <QSet>
#include <QtTest>

/// Rules as sentences.
class TestRule : public QObject
{
    Q_OBJECT

private slots:
    void messageRules_data();
    void messageRules();
    void timerRules_data();
    void timerRules();
    void everyValueHasItsOwnSentence();
    void rulesComeInTheirOrder();
};

namespace {

using Members = QVector<int>;

/// The default settings with the numbers of one rule in them.
void fill(cMyMemoryArea& image, const QString& kind, int rule, const Members& members)
{
    cli::loadDefaults(image);
    const QVector<cMySettingsField> fields = editor::ruleMembers(kind, rule);
    for (int i = 0; i < members.size(); ++i) {
        image.setData(static_cast<quint32>(fields.at(i).address),
                      editor::numberBytes(members.at(i), fields.at(i)));
    }
}

} // namespace

void TestRule::messageRules_data()
{
    QTest::addColumn<Members>("members");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* name, const Members& members, const char* sentence) {
        QTest::newRow(name) << members << QString::fromUtf8(sentence);
    };
    row("off", {254, 32, 0, 500, 32, 1, 1}, "off");
    row("compares", {0, 32, 0, 500, 32, 1, 1},
        "underwater, when depth >= 5.00 m: say Depth (value & point & unit), every period A");
    row("regardless of any value", {255, 255, 1, 77, 40, 7, 255},
        "anytime: say Dive time (caption & value & unit), still");
    row("at most, below zero", {6, 48, 1, -100, 210, 0, 2},
        "during ascent, when vertical speed <= -1.00 m/s: say Swim slower, every period B");
    row("greatest of the dive", {1, 34, 0, 2000, 34, 3, 0},
        "on the surface, when depth max >= 20.00 m: say Depth max (value & unit), only once");
    row("greatest of all", {1, 37, 0, 2000, 215, 3, 5},
        "on the surface, when depth MAX >= 20.00 m: say Attention, every distance E");
    row("does nothing", {0, 255, 0, 0, 127, 0, 1}, "underwater: do nothing");
    row("temperature", {0, 16, 1, 45, 16, 2, 0},
        "underwater, when temperature <= 4.5 °C: say Temperature (value), only once");
    row("unknown numbers", {99, 98, 7, 500, 200, 9, 66},
        "unknown (99), when unknown (98) unknown (7) 500: say unknown (200), unknown (66)");
    row("unknown form", {0, 255, 0, 0, 32, 9, 0}, "underwater: say Depth unknown (9), only once");
}

void TestRule::messageRules()
{
    QFETCH(Members, members);
    cMyMemoryArea image;
    fill(image, QStringLiteral("messageRule"), 7, members);
    const cMyRule rule(image, cMyRule::Kind::Message, 7);
    QCOMPARE(rule.name(), QStringLiteral("messageRule07"));
    QTEST(rule.sentence(), "sentence");
}

void TestRule::timerRules_data()
{
    QTest::addColumn<Members>("members");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char* name, const Members& members, const char* sentence) {
        QTest::newRow(name) << members << QString::fromUtf8(sentence);
    };
    row("off", {254, 255, 0, 0, 128, 0}, "off");
    row("starts the stopwatch", {2, 255, 0, 0, 128, 60},
        "at the beginning of dive: Stopwatch 0 - START");
    row("starts a timer", {2, 255, 0, 0, 131, 60},
        "at the beginning of dive: Timer 3 - START, 60 s");
    row("stops a timer", {3, 40, 0, 90, 137, 60},
        "at the end of dive, when dive time >= 90 s: Timer 1 - STOP");
    row("continues a timer", {33, 255, 0, 0, 146, 0}, "if timer 1 passed: Timer 2 - Continue");
    row("does nothing", {2, 255, 0, 0, 127, 60}, "at the beginning of dive: do nothing");
    row("unknown action", {2, 255, 0, 0, 132, 60}, "at the beginning of dive: unknown (132)");
}

void TestRule::timerRules()
{
    QFETCH(Members, members);
    cMyMemoryArea image;
    fill(image, QStringLiteral("timerRule"), 2, members);
    const cMyRule rule(image, cMyRule::Kind::Timer, 2);
    QCOMPARE(rule.name(), QStringLiteral("timerRule02"));
    QTEST(rule.sentence(), "sentence");
}

void TestRule::everyValueHasItsOwnSentence()
{
    cMyMemoryArea image;
    const cMyRule rule(image, cMyRule::Kind::Message, 1);
    const cMyTableModel& values = editor::options(rule.field("measuredValue"));
    QSet<QString> sentences;
    for (int row = 0; row < values.rowCount(); ++row) {
        const int value = static_cast<int>(values.number(row, cMyTableModel::Value));
        fill(image, QStringLiteral("messageRule"), 1, {0, value, 0, 0, 215, 0, 0});
        sentences.insert(rule.sentence());
    }
    QCOMPARE(sentences.size(), values.rowCount());
}

void TestRule::rulesComeInTheirOrder()
{
    cMyMemoryArea image;
    cli::loadDefaults(image);
    const QVector<cMyRule> rules = cli::rules(image);
    QCOMPARE(rules.size(), 32);
    QCOMPARE(rules.first().name(), QStringLiteral("timerRule01"));
    QCOMPARE(rules.at(8).name(), QStringLiteral("messageRule01"));
    QCOMPARE(rules.last().name(), QStringLiteral("messageRule24"));
    for (const cMyRule& rule : rules) {
        QVERIFY(rule.isOff());
    }
}

QTEST_GUILESS_MAIN(TestRule)
#include "test_rule.moc"
