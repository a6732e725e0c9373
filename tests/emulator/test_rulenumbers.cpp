// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/rulenumbers.h"

#include "editor/settingslayout.h"
#include "editor/tablemodel.h"
#include "emulator/divemodel.h"

#include <QtTest>

/// The numbers that the virtual device goes by, against the names under which they are offered.
class TestRuleNumbers : public QObject
{
    Q_OBJECT

private slots:
    void numbersAreThoseOfTheirNames_data();
    void numbersAreThoseOfTheirNames();
};

namespace {

/// Adds rows for one field of the settings.
class FieldRows
{
public:
    explicit FieldRows(const char* field) : m_field(field) {}

    template <typename Number>
    void operator()(const char* label, Number number, int further = 0) const
    {
        QTest::addRow("%s: %s", m_field, label)
            << QString::fromLatin1(m_field) << static_cast<int>(number) + further
            << QString::fromLatin1(label);
    }

private:
    const char* m_field;
};

void conditionRows(const FieldRows& row)
{
    row("anytime", RuleCondition::Anytime);
    row("underwater", RuleCondition::Underwater);
    row("on the surface", RuleCondition::OnSurface);
    row("at the beginning of dive", RuleCondition::DiveBegins);
    row("at the end of dive", RuleCondition::DiveEnds);
    row("during descent", RuleCondition::Descending);
    row("on the bottom", RuleCondition::OnBottom);
    row("during ascent", RuleCondition::Ascending);
    row("at the switch on", RuleCondition::SwitchesOn);
    row("at the switch off", RuleCondition::SwitchesOff);
    row("at the beginning of charging", RuleCondition::ChargingBegins);
    row("during charging", RuleCondition::Charging);
    row("at the end of charging", RuleCondition::ChargingEnds);
    row("if stopwatch 0 is counting", RuleCondition::TimerCounts);
    row("if timer 1 is counting", RuleCondition::TimerCounts, 1);
    row("if timer 2 is counting", RuleCondition::TimerCounts, 2);
    row("if timer 3 is counting", RuleCondition::TimerCounts, 3);
    row("if stopwatch 0 is stopped", RuleCondition::TimerIsStopped);
    row("if timer 1 is stopped", RuleCondition::TimerIsStopped, 1);
    row("if timer 2 is stopped", RuleCondition::TimerIsStopped, 2);
    row("if timer 3 is stopped", RuleCondition::TimerIsStopped, 3);
    row("if timer 1 passed", RuleCondition::TimerPassed, 1);
    row("if timer 2 passed", RuleCondition::TimerPassed, 2);
    row("if timer 3 passed", RuleCondition::TimerPassed, 3);
    row("never", RuleCondition::Never);
}

void comparisonRows(const FieldRows& row)
{
    row(">=", RuleComparison::AtLeast);
    row("<=", RuleComparison::AtMost);
}

void actionRows(const FieldRows& row)
{
    row("Do nothing", emulator::doNothing);
    row("Stopwatch 0 - START", RuleAction::Start);
    row("Timer 1 - START", RuleAction::Start, 1);
    row("Timer 2 - START", RuleAction::Start, 2);
    row("Timer 3 - START", RuleAction::Start, 3);
    row("Stopwatch 0 - STOP", RuleAction::Stop);
    row("Timer 1 - STOP", RuleAction::Stop, 1);
    row("Timer 2 - STOP", RuleAction::Stop, 2);
    row("Timer 3 - STOP", RuleAction::Stop, 3);
    row("Stopwatch 0 - Continue", RuleAction::Continue);
    row("Timer 1 - Continue", RuleAction::Continue, 1);
    row("Timer 2 - Continue", RuleAction::Continue, 2);
    row("Timer 3 - Continue", RuleAction::Continue, 3);
}

void repetitionRows(const FieldRows& row)
{
    row("only once", RuleRepetition::Once);
    row("every period A", RuleRepetition::EveryPeriod);
    row("every period B", RuleRepetition::EveryPeriod, 1);
    row("every period C", RuleRepetition::EveryPeriod, 2);
    row("every period D", RuleRepetition::EveryPeriod, 3);
    row("every distance E", RuleRepetition::EveryDistance);
    row("every distance F", RuleRepetition::EveryDistance, 1);
    row("every distance G", RuleRepetition::EveryDistance, 2);
    row("every distance H", RuleRepetition::EveryDistance, 3);
    row("still", RuleRepetition::Still);
}

void temperatureRows(const FieldRows& row)
{
    row("Constant", TemperatureSource::Constant);
    row("Min", TemperatureSource::Minimum);
    row("Avg", TemperatureSource::Average);
    row("Current", TemperatureSource::Current);
}

} // namespace

void TestRuleNumbers::numbersAreThoseOfTheirNames_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("label");
    conditionRows(FieldRows("timerRule01.condition"));
    conditionRows(FieldRows("messageRule01.condition"));
    comparisonRows(FieldRows("timerRule01.comparison"));
    comparisonRows(FieldRows("messageRule01.comparison"));
    actionRows(FieldRows("timerRule01.action"));
    repetitionRows(FieldRows("messageRule01.repetition"));
    temperatureRows(FieldRows("temperatureSource"));
    FieldRows("messageRule01.message")("Do nothing", emulator::doNothing);
    FieldRows("messageRule01.form")("(caption & value & point & unit)", emulator::fullForm);
}

void TestRuleNumbers::numbersAreThoseOfTheirNames()
{
    QFETCH(QString, field);
    QFETCH(int, number);
    const cMyTableModel table(editor::optionTableFile(editor::settingsField(field)));
    QTEST(table.cell(table.rowOfValue(number), cMyTableModel::Label), "label");
}

QTEST_GUILESS_MAIN(TestRuleNumbers)
#include "test_rulenumbers.moc"
