// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/rulenumbers.h"
#include "tests/emulator/rulebuilder.h"
#include "tests/support/offeredimage.h"

#include <QRegularExpression>
#include <QSet>
#include <QtTest>

/// Rules out of settings as somebody may have them, sensible or not.
class TestRuleSettings : public QObject
{
    Q_OBJECT

private slots:
    void defaultsAreSilent();
    void emptyAndErasedSettings_data();
    void emptyAndErasedSettings();
    void unknownConditionsNeverHold_data();
    void unknownConditionsNeverHold();
    void unknownFormsAndRepetitions();
    void anySettings_data();
    void anySettings();
};

namespace {

using support::RuleBuilder;
using support::ScriptedDive;

cMyDiveMoment randomMoment(QRandomGenerator& random)
{
    cMyDiveMoment moment;
    for (qint16& value : moment.values) {
        value = static_cast<qint16>(random.generate());
    }
    moment.elapsed = random.bounded(5000);
    moment.phase = static_cast<DivePhase>(random.bounded(3));
    for (const auto flag :
         {&cMyDiveMoment::isUnderwater, &cMyDiveMoment::diveBegins, &cMyDiveMoment::diveEnds,
          &cMyDiveMoment::switchesOn, &cMyDiveMoment::switchesOff, &cMyDiveMoment::isCharging,
          &cMyDiveMoment::chargingBegins, &cMyDiveMoment::chargingEnds}) {
        moment.*flag = random.bounded(4) == 0;
    }
    return moment;
}

/// Everything that can be said, with digits left out of what is measured.
class Vocabulary
{
public:
    Vocabulary()
    {
        for (int row = 0; row < m_tables.messages.rowCount(); ++row) {
            const QString label = m_tables.messages.cell(row, cMyTableModel::Label);
            const int number = m_tables.messages.cell(row, cMyTableModel::Value).toInt();
            const int measured = m_tables.values.rowOfValue(number);
            if (number == emulator::doNothing) {
                continue;
            }
            if (measured < 0) {
                m_texts.insert(label);
                continue;
            }
            const QString unit = m_tables.values.cell(measured, cMyTableModel::Unit);
            const QString bare = unit.mid(1, unit.size() - 2);
            for (const QString& before : {QString(), label + QLatin1Char(' ')}) {
                for (const QString& after : {QString(), QLatin1Char(' ') + bare}) {
                    m_texts.insert(before + QLatin1Char('#') + after);
                }
            }
        }
    }

    [[nodiscard]] bool has(const QString& text) const
    {
        static const QRegularExpression number(QStringLiteral("(^|(?<= ))-?\\d+(\\.\\d+)?(?= |$)"));
        if (m_texts.contains(text)) {
            return true;
        }
        // A label may end with a number of its own.
        auto matches = number.globalMatch(text);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            QString pattern = text;
            pattern.replace(match.capturedStart(), match.capturedLength(), QLatin1Char('#'));
            if (m_texts.contains(pattern)) {
                return true;
            }
        }
        return false;
    }

private:
    cMyMessageTables m_tables;
    QSet<QString> m_texts;
};

} // namespace

void TestRuleSettings::defaultsAreSilent()
{
    QRandomGenerator random(1);
    const RuleBuilder builder;
    cMyDiveRules rules(builder.settings());
    for (int i = 0; i < 200; ++i) {
        cMyDiveMoment moment = randomMoment(random);
        QVERIFY(rules.take(moment).isEmpty());
        for (int number = 56; number < 60; ++number) {
            QCOMPARE(moment.values.at(static_cast<std::size_t>(number)), qint16(0));
        }
    }
}

void TestRuleSettings::emptyAndErasedSettings_data()
{
    QTest::addColumn<QByteArray>("image");
    QTest::addColumn<int>("said");
    // Underwater, absolute pressure of at least 0: the absolute pressure, once.
    QTest::newRow("zeros") << QByteArray(1024, '\0') << 24;
    QTest::newRow("nothing there") << QByteArray(1, '\0') << 24;
    // Always, but a message that there is not.
    QTest::newRow("erased") << QByteArray(1024, '\xFF') << 0;
}

void TestRuleSettings::emptyAndErasedSettings()
{
    QFETCH(QByteArray, image);
    ScriptedDive dive{RuleBuilder(image)};
    dive.now.isUnderwater = true;
    dive.now.values.fill(100);
    const QStringList said = dive.sample();
    QTEST(static_cast<int>(said.size()), "said");
    QVERIFY(said.isEmpty() || said.first() == QLatin1String("1: 100"));
    QVERIFY(dive.sample().isEmpty());
}

void TestRuleSettings::unknownConditionsNeverHold_data()
{
    QTest::addColumn<int>("condition");
    const cMyTableModel conditions(QStringLiteral(":/models/msgCb1.csv"));
    for (int condition = 0; condition <= 255; ++condition) {
        if (conditions.rowOfValue(condition) < 0 || condition == editor::conditionNever) {
            QTest::addRow("%d", condition) << condition;
        }
    }
}

void TestRuleSettings::unknownConditionsNeverHold()
{
    QFETCH(int, condition);
    QRandomGenerator random(2);
    RuleBuilder builder;
    builder.timerRule(1).when(condition).does(128);
    builder.messageRule(1).when(condition).says(226).repeats(255);
    cMyDiveRules rules(builder.settings());
    for (int i = 0; i < 50; ++i) {
        cMyDiveMoment moment = randomMoment(random);
        QVERIFY(rules.take(moment).isEmpty());
        QCOMPARE(moment.values[emulator::Stopwatch0], qint16(0));
    }
}

void TestRuleSettings::unknownFormsAndRepetitions()
{
    RuleBuilder builder;
    builder.messageRule(1).when(255).says(32, 77).repeats(77);
    ScriptedDive dive(builder);
    QCOMPARE(dive.sample(), QStringList(QStringLiteral("1: Depth 0.00 m")));
    QCOMPARE(dive.sample(), QStringList());
}

void TestRuleSettings::anySettings_data()
{
    QTest::addColumn<bool>("isOffered");
    QTest::addColumn<int>("images");
    QTest::addColumn<int>("least");
    // Of random bytes hardly any make a rule that can be true.
    QTest::newRow("random bytes") << false << 1000 << 0;
    QTest::newRow("offered choices") << true << 200 << 1000;
}

void TestRuleSettings::anySettings()
{
    QFETCH(bool, isOffered);
    QFETCH(int, images);
    QFETCH(int, least);
    const Vocabulary vocabulary;
    QRandomGenerator random(20261121);
    int said = 0;
    for (int i = 0; i < images; ++i) {
        const RuleBuilder builder(isOffered ? support::offeredImage(random)
                                            : support::randomImage(random));
        cMyDiveRules rules(builder.settings());
        qint64 time = 0;
        for (int sample = 0; sample < 20; ++sample) {
            cMyDiveMoment moment = randomMoment(random);
            moment.time = time += moment.elapsed;
            int before = 0;
            for (const cMySpokenMessage& message : rules.take(moment)) {
                QVERIFY2(vocabulary.has(message.text), qPrintable(message.text));
                QVERIFY(message.rule > before && message.rule <= editor::messageRuleCount);
                QCOMPARE(message.time, time);
                QCOMPARE(message.depth, int(moment.values[emulator::Depth]));
                before = message.rule;
                ++said;
            }
            for (std::size_t number = 56; number < 60; ++number) {
                QVERIFY(moment.values.at(number) >= 0);
            }
        }
    }
    QVERIFY2(said > least, QByteArray::number(said).constData());
}

QTEST_GUILESS_MAIN(TestRuleSettings)
#include "test_rulesettings.moc"
