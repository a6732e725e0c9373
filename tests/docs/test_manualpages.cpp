// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"
#include "docs/manual/fieldfacts.h"
#include "docs/manual/markdown.h"
#include "docs/manual/pages.h"
#include "editor/fieldtext.h"
#include "tests/docs/completeadvice.h"

#include <QTranslator>
#include <QtTest>

/// What chapters of the manual include.
class TestManualPages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyPageIsThere();
    void everyFieldAppears();
    void everyFieldsAdviceAppears();
    void factsOfFields_data();
    void factsOfFields();
    void parametersStandInTheirOrder();
    void rulesHaveTheHeadingsOfTheScreen();
    void everyChoiceAppearsWithItsMeaning();
    void valuesHaveTheirUnitsAndRanges();
    void choicesWithoutMeaningAreListed();
    void aMeaningForTimersAloneIsTold();
    void theLayoutHasAddressesAndRules();
    void everyCodeAppears();
    void textsStandForThemselves();

private:
    [[nodiscard]] QString page(const char* name) const
    {
        return m_pages.value(QString::fromLatin1(name));
    }

    QTranslator m_translator;
    manual::Pages m_pages;
};

namespace {

/// The block of a field, from its heading to the next.
QString blockOf(const QString& page, const QString& caption)
{
    const auto begin = page.indexOf(QStringLiteral("### ") + caption);
    const auto end = page.indexOf(QStringLiteral("\n### "), begin);
    return begin < 0 ? QString() : page.mid(begin, end - begin);
}

QString fact(const QString& name, const QString& value)
{
    return value.isEmpty() ? QString() : QStringLiteral("[%1]{.key} [%2]{.value}").arg(name, value);
}

} // namespace

void TestManualPages::initTestCase()
{
    app::installCatalogue(m_translator);
    m_pages = manual::allPages(cMyAdvice(support::sourceOf(support::completeTexts())));
}

void TestManualPages::everyPageIsThere()
{
    const QStringList expected = {QStringLiteral("actions.md"),
                                  QStringLiteral("comparisons.md"),
                                  QStringLiteral("conditions.md"),
                                  QStringLiteral("fields-intervals.md"),
                                  QStringLiteral("fields-message-rule.md"),
                                  QStringLiteral("fields-parameters.md"),
                                  QStringLiteral("fields-texts.md"),
                                  QStringLiteral("fields-timer-rule.md"),
                                  QStringLiteral("forms.md"),
                                  QStringLiteral("layout.md"),
                                  QStringLiteral("messages.md"),
                                  QStringLiteral("option-codes.md"),
                                  QStringLiteral("repetitions.md"),
                                  QStringLiteral("values.md")};
    QCOMPARE(QStringList(m_pages.keys()), expected);
}

void TestManualPages::everyFieldAppears()
{
    const QString layout = page("layout.md");
    for (const cMySettingsField& field : editor::settingsFields()) {
        const bool isLaterRule =
            editor::isRuleMember(field) && !field.name.contains(QLatin1String("01."));
        const QString caption = manual::literal(editor::caption(field))
                                    .remove(QRegularExpression(QStringLiteral("^\\d+\\. ")));
        QVERIFY2(isLaterRule || layout.contains(QStringLiteral("| %1 |").arg(caption)),
                 qPrintable(field.name));
    }
}

void TestManualPages::everyFieldsAdviceAppears()
{
    const QString all = QStringList(m_pages.values()).join(QLatin1Char('\n'));
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(all.contains(support::textOf(manual::adviceKey(field))), qPrintable(field.name));
    }
}

void TestManualPages::factsOfFields_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("range");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("preset");
    QTest::addColumn<QString>("choices");
    const auto row = [](const char* file, const char* caption, const char* range, const char* unit,
                        const char* preset, const char* choices) {
        QTest::newRow(caption) << QString::fromLatin1(file) << QString::fromLatin1(caption)
                               << QString::fromUtf8(range) << QString::fromUtf8(unit)
                               << QString::fromUtf8(preset) << QString::fromUtf8(choices);
    };
    const char* const parameters = "fields-parameters.md";
    row(parameters, "1. Speaker volume", "-57 to 6", "dB", "-5 dB", "");
    row(parameters, "2. Depth sampling rate", "", "", "1 \\[Hz\\]",
        "1 \\[Hz\\] · 2 \\[Hz\\] · 3 \\[Hz\\] · 4 \\[Hz\\] · 5 \\[Hz\\] · 10 \\[Hz\\]");
    row(parameters, "5. Dive start depth threshold", "5 to 255", "cm", "100 cm", "");
    row(parameters, "10. Temperature source for the water density", "", "", "Min",
        "Constant · Min · Avg · Current");
    row(parameters, "11. Fixed temperature for the water density", "0.0 to 60.0", "°C", "0.0 °C",
        "");
    row("fields-intervals.md", "Period C", "1 to 240", "s", "15 s", "");
    row("fields-intervals.md", "Distance H", "0.00 to 99.99", "m", "0.00 m", "");
    row("fields-texts.md", "Author", "", "", "empty", "");
    row("fields-timer-rule.md", "Time", "0 to 65535", "s", "0 s", "");
    row("fields-timer-rule.md", "Action", "", "", "Do nothing", "");
    row("fields-message-rule.md", "When", "", "", "never", "");
}

void TestManualPages::factsOfFields()
{
    QFETCH(QString, file);
    QFETCH(QString, caption);
    QFETCH(QString, range);
    QFETCH(QString, unit);
    QFETCH(QString, preset);
    QFETCH(QString, choices);
    const QString block = blockOf(m_pages.value(file), caption);
    QVERIFY2(!block.isEmpty(), "the field has no block");
    const QMap<QString, QString> facts = {{QStringLiteral("Range"), range},
                                          {QStringLiteral("Unit"), unit},
                                          {QStringLiteral("Default"), preset},
                                          {QStringLiteral("Choices"), choices}};
    for (auto each = facts.cbegin(); each != facts.cend(); ++each) {
        QVERIFY2(block.contains(fact(each.key(), each.value())), qPrintable(block));
        QCOMPARE(block.contains(QStringLiteral("[%1]{.key}").arg(each.key())),
                 !each.value().isEmpty());
    }
}

void TestManualPages::parametersStandInTheirOrder()
{
    const QString parameters = page("fields-parameters.md");
    QString::size_type last = -1;
    constexpr int count = 13;
    for (int number = 1; number <= count; ++number) {
        const auto place = parameters.indexOf(QStringLiteral("### %1. ").arg(number));
        QVERIFY2(place > last, qPrintable(QString::number(number)));
        last = place;
    }
    QCOMPARE(parameters.count(QStringLiteral("### ")), count);
}

void TestManualPages::rulesHaveTheHeadingsOfTheScreen()
{
    const auto headings = [](const QString& text) {
        QStringList found;
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            if (line.startsWith(QLatin1String("### "))) {
                found += line.mid(4).section(QStringLiteral(" {"), 0, 0);
            }
        }
        return found.join(QLatin1Char(' '));
    };
    QCOMPARE(headings(page("fields-timer-rule.md")),
             QStringLiteral("When Value Is Threshold Action Time"));
    QCOMPARE(headings(page("fields-message-rule.md")),
             QStringLiteral("When Value Is Threshold Message Form Repetition"));
}

void TestManualPages::everyChoiceAppearsWithItsMeaning()
{
    const QMap<QString, QString> files = {
        {QStringLiteral("conditions.md"), QStringLiteral("msgCb1")},
        {QStringLiteral("forms.md"), QStringLiteral("msgCb5")},
        {QStringLiteral("repetitions.md"), QStringLiteral("msgCb6")},
        {QStringLiteral("actions.md"), QStringLiteral("timCb4")}};
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        const cMyTableModel options(editor::optionTableFile(file.value()));
        for (int row = 0; row < options.rowCount(); ++row) {
            const QString line = QStringLiteral("| %1 | Text of %2/%3. |")
                                     .arg(manual::literal(options.cell(row, cMyTableModel::Label)),
                                          file.value(), options.cell(row, cMyTableModel::Value));
            QVERIFY2(m_pages.value(file.key()).contains(line), qPrintable(line));
        }
    }
}

void TestManualPages::valuesHaveTheirUnitsAndRanges()
{
    const QString values = page("values.md");
    for (const char* line : {"| Regardless of any value |  |  | Text of msgCb2/255. |",
                             "| Absolute pressure | mbar | 0 to 32767 | Text of msgCb2/0. |",
                             "| Temperature min | °C | -50.0 to 100.0 | Text of msgCb2/17. |",
                             "| Battery level | % | 0.00 to 100.00 | Text of msgCb2/31. |",
                             "| Vertical speed | m/s | -327.68 to 327.67 | Text of msgCb2/48. |"}) {
        QVERIFY2(values.contains(QString::fromUtf8(line)), line);
    }
}

void TestManualPages::choicesWithoutMeaningAreListed()
{
    support::Texts texts = support::completeTexts();
    texts.insert(QStringLiteral("msgCb4/209"), QStringLiteral("Hurry."));
    const QString messages = manual::optionPages(cMyAdvice(support::sourceOf(texts)))
                                 .value(QStringLiteral("messages.md"));
    QVERIFY(messages.contains(QStringLiteral("| Swim faster | Hurry. |")));
    QVERIFY(!messages.contains(QStringLiteral("- Swim faster\n")));
    QVERIFY(messages.contains(QStringLiteral("- Swim slower\n")));
}

void TestManualPages::aMeaningForTimersAloneIsTold()
{
    support::Texts texts = support::completeTexts();
    texts.insert(QStringLiteral("timCb1/0"), QStringLiteral("Wet."));
    const QString conditions = manual::optionPages(cMyAdvice(support::sourceOf(texts)))
                                   .value(QStringLiteral("conditions.md"));
    QVERIFY(conditions.contains(
        QStringLiteral("| underwater | Text of msgCb1/0.<br>In a timer rule: Wet. |")));
}

void TestManualPages::theLayoutHasAddressesAndRules()
{
    const QString layout = page("layout.md");
    for (const char* line :
         {"| 136 (0x088) | 1 | Dive start depth threshold | unsigned | 1 | 5 to 255 cm | 100 cm |",
          "| Local gravity | unsigned | 3276.8 | 0.00 to 19.99 m/s² | 9.81 m/s² |",
          "| 512 (0x200) | 512 | Description | Latin-1 | – | – | empty |",
          "of 8, with *n* from 1 to 8, begins at address 256 + 8 × (*n* − 1)",
          "of 24, with *n* from 1 to 24, begins at address 320 + 8 × (*n* − 1)",
          "| 3 | 2 | Threshold | signed | of the value | of the value | 0 |"}) {
        QVERIFY2(layout.contains(QString::fromUtf8(line)), line);
    }
}

void TestManualPages::everyCodeAppears()
{
    const QString codes = page("option-codes.md");
    for (const QString& table : manual::optionTables()) {
        const cMyTableModel options(editor::optionTableFile(table));
        for (int row = 0; row < options.rowCount(); ++row) {
            const QString cells =
                QStringLiteral("| %1 | %2 |")
                    .arg(options.cell(row, cMyTableModel::Value),
                         manual::literal(options.cell(row, cMyTableModel::Label)));
            QVERIFY2(codes.contains(cells), qPrintable(cells));
        }
    }
}

void TestManualPages::textsStandForThemselves()
{
    QCOMPARE(manual::literal(QStringLiteral("a*b_[c] <= d|e & I'm")),
             QStringLiteral("a\\*b\\_\\[c\\] \\<= d\\|e \\& I\\'m"));
}

QTEST_GUILESS_MAIN(TestManualPages)
#include "test_manualpages.moc"
