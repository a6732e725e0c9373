// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/rulegrid.h"

#include "editor/cell.h"
#include "editor/comboboxw6.h"
#include "editor/doublespinboxint.h"
#include "editor/fieldcodec.h"
#include "editor/imagegate.h"
#include "editor/inputs.h"
#include "editor/ruleheading.h"
#include "editor/rulerows.h"
#include "editor/shortlabels.h"
#include "editor/tablemodel.h"

#include <QGridLayout>
#include <QLabel>
#include <QSet>

namespace {

constexpr int numberColumn = 0;

QStringList labelsOf(const cMyTableModel& options)
{
    QStringList labels;
    labels.reserve(options.rowCount());
    for (int row = 0; row < options.rowCount(); ++row) {
        labels.append(options.cell(row, cMyTableModel::Label));
    }
    return labels;
}

/// Of all limits that a threshold can have.
int widestThreshold(const cMyTableModel& values, const QFontMetrics& metrics)
{
    QSet<QString> limits; // most values share theirs, and measuring a text is dear
    for (int row = 0; row < values.rowCount(); ++row) {
        const cMyThresholdScale scale = editor::thresholdScale(values, row);
        const int decimals = editor::decimalsOfFactor(scale.factor).value_or(0);
        for (const double limit : {scale.minimum, scale.maximum}) {
            limits.insert(QString::number(limit, 'f', decimals) + QLatin1Char(' ') + scale.unit);
        }
    }
    int widest = 0;
    for (const QString& limit : qAsConst(limits)) {
        widest = qMax(widest, metrics.horizontalAdvance(limit));
    }
    return widest;
}

} // namespace

const cMyRuleKind& cMyRuleGrid::timerRules()
{
    static const cMyRuleKind kind = {
        "timerRule",
        "tim",
        1,
        editor::timerRuleCount,
        {{1, "condition", "Cb1", 62},
         {2, "measuredValue", "Cb2", 64},
         {3, "comparison", "Cb3", 100, QT_TR_NOOP("Jest")},
         {4, "threshold", "Sb1", 100},
         {5, "action", "Cb4", 55},
         {6, "time", "Sb2", 100}},
        -1,
        QT_TR_NOOP("Reguła timera %1, %2"),
    };
    return kind;
}

const cMyRuleKind& cMyRuleGrid::messageRules()
{
    static const cMyRuleKind kind = {
        "messageRule",
        "par",
        2,
        editor::messageRuleCount,
        {{1, "condition", "Cb1", 62},
         {2, "measuredValue", "Cb2", 64},
         {3, "comparison", "Cb3", 100, QT_TR_NOOP("Jest")},
         {4, "threshold", "Sb1", 100},
         {6, "message", "Cb4", 58},
         {7, "form", "Cb5", 70},
         {8, "repetition", "Cb6", 100}},
        5,
        QT_TR_NOOP("Reguła komunikatu %1, %2"),
    };
    return kind;
}

cMyRuleGrid::cMyRuleGrid(const cMyRuleKind& kind, const Place& place, cMyImageGate& gate,
                         QObject& parent)
    : QObject(&parent), m_kind(kind), m_place(place), m_gate(gate)
{
    const cMyImageGate::Shut shut(m_gate);
    loadOptionTables();
    m_rows.reserve(m_kind.count);
    for (int rule = 1; rule <= m_kind.count; ++rule) {
        buildRow(rule);
    }
    buildHeading();
    measure();
    connect(m_place.rows, &cMyRuleRows::lookChanged, this, &cMyRuleGrid::measure);
}

const cMySettingsField& cMyRuleGrid::field(int rule, const char* member) const
{
    return editor::settingsField(editor::ruleMember(QString::fromLatin1(m_kind.fieldKind), rule,
                                                    QString::fromLatin1(member)));
}

const cMyTableModel& cMyRuleGrid::options(const char* member) const
{
    return *m_options.value(field(1, member).optionTable);
}

void cMyRuleGrid::loadOptionTables()
{
    for (const cMyRuleColumn& column : m_kind.columns) {
        const cMySettingsField& first = field(1, column.member);
        if (!first.optionTable.isEmpty()) {
            m_options.insert(first.optionTable, editor::loadOptions(first, *parent()));
        }
    }
}

void cMyRuleGrid::buildHeading()
{
    m_place.heading->follow(*m_place.rows, *m_place.layout);
    m_place.heading->addCaption(numberColumn, tr("Nr"), Qt::AlignRight);
    for (const cMyRuleColumn& column : m_kind.columns) {
        const cMySettingsField& first = field(1, column.member);
        const QString caption =
            column.headingKey == nullptr ? editor::caption(first) : tr(column.headingKey);
        m_place.heading->addCaption(column.gridColumn, caption,
                                    first.optionTable.isEmpty() ? Qt::AlignRight : Qt::AlignLeft);
    }
}

void cMyRuleGrid::buildRow(int rule)
{
    const int gridRow = rule - 1;
    const QString name = QStringLiteral("%1%2")
                             .arg(QString::fromLatin1(m_kind.objectName))
                             .arg(rule, m_kind.nameDigits, 10, QLatin1Char('0'));
    Row row;
    row.labels.append(addLabel(gridRow, numberColumn, QString::number(rule)));
    for (const cMyRuleColumn& column : m_kind.columns) {
        const cMySettingsField& bound = field(rule, column.member);
        QWidget* input = addInput(row, column, bound);
        input->setObjectName(name + QString::fromLatin1(column.objectName));
        editor::prepareInput(
            *input, tr(m_kind.inputNameKey).arg(rule).arg(editor::caption(bound).toLower()));
        m_place.layout->addWidget(input, gridRow, column.gridColumn);
    }
    if (m_kind.wordColumn >= 0) {
        row.labels.append(addLabel(gridRow, m_kind.wordColumn, tr("powiedz")));
    }
    row.labels.first()->setBuddy(row.choices.first().input);
    connectRow(row);
    m_rows.append(row);
}

QWidget* cMyRuleGrid::addInput(Row& row, const cMyRuleColumn& column, const cMySettingsField& bound)
{
    const QString member = QString::fromLatin1(column.member);
    if (bound.optionTable.isEmpty()) {
        auto* number = new cMyDoubleSpinBoxInt(m_place.rows);
        editor::bindInput(*number, bound, m_gate);
        if (member == QLatin1String("threshold")) {
            row.threshold = {&bound, number, 100};
        } else {
            number->mySetFaktor(bound.factor);
            number->mySetUnit(QStringLiteral("[%1]").arg(bound.unit));
            number->mySetRange(bound.minimum, bound.maximum);
            row.numbers.append({&bound, number, 100});
        }
        return number;
    }
    cMyComboBoxW2* choice = nullptr;
    if (member == QLatin1String("measuredValue")) {
        row.measuredValue = new cMyComboBoxW6(m_place.rows);
        choice = row.measuredValue;
    } else {
        choice = new cMyComboBoxW2(m_place.rows);
    }
    editor::bindInput(*choice, bound, m_gate);
    row.choices.append({&bound, choice, column.leastPercent});
    return choice;
}

void cMyRuleGrid::connectRow(const Row& row)
{
    cMyDoubleSpinBoxInt* threshold = row.threshold.input;
    connect(row.measuredValue, &cMyComboBoxW6::faktorChanged, threshold,
            &cMyDoubleSpinBoxInt::mySetFaktor);
    connect(row.measuredValue, &cMyComboBoxW6::unitChanged, threshold,
            &cMyDoubleSpinBoxInt::mySetUnit);
    connect(row.measuredValue, &cMyComboBoxW6::rangeChanged, threshold,
            &cMyDoubleSpinBoxInt::mySetRange);
    for (const Bound<cMyComboBoxW2>& choice : row.choices) {
        choice.input->setModel(m_options.value(choice.field->optionTable));
    }
    connect(row.choices.first().input, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, row] { showState(row); });
}

QLabel* cMyRuleGrid::addLabel(int gridRow, int gridColumn, const QString& text)
{
    auto* label = new QLabel(text, m_place.rows);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_place.layout->addWidget(label, gridRow, gridColumn);
    return label;
}

void cMyRuleGrid::update()
{
    const cMyImageGate::Shut shut(m_gate);
    const cMyMemoryArea& image = m_gate.image();
    for (const Row& row : qAsConst(m_rows)) {
        for (const Bound<cMyComboBoxW2>& choice : row.choices) {
            choice.input->showValue(editor::storedNumber(image, *choice.field));
        }
        for (const Bound<cMyDoubleSpinBoxInt>& number : row.numbers) {
            number.input->showValue(editor::storedNumber(image, *number.field));
        }
        const cMyThresholdScale scale =
            editor::thresholdScale(options("measuredValue"), row.measuredValue->currentIndex());
        row.threshold.input->showValue(
            editor::shownThreshold(editor::storedNumber(image, *row.threshold.field), scale));
    }
}

void cMyRuleGrid::measure()
{
    const QFontMetrics metrics = m_place.rows->fontMetrics();
    QHash<QString, std::shared_ptr<cMyShortLabels>> labels;
    for (auto table = m_options.constBegin(); table != m_options.constEnd(); ++table) {
        labels.insert(table.key(),
                      std::make_shared<cMyShortLabels>(labelsOf(*table.value()), metrics));
    }
    const int threshold = widestThreshold(options("measuredValue"), metrics);
    m_place.layout->setColumnMinimumWidth(numberColumn, metrics.horizontalAdvance(tr("Nr")));
    for (const cMyRuleColumn& column : m_kind.columns) {
        // Room to spare goes to those that may be short of it.
        m_place.layout->setColumnStretch(column.gridColumn, column.leastPercent < 100 ? 1 : 0);
    }
    for (const Row& row : qAsConst(m_rows)) {
        for (const Bound<cMyComboBoxW2>& choice : row.choices) {
            const auto& shared = labels.value(choice.field->optionTable);
            choice.input->setCell(shared, shared->fullWidth() * choice.leastPercent / 100);
        }
        row.threshold.input->setCell(threshold);
        for (const Bound<cMyDoubleSpinBoxInt>& number : row.numbers) {
            const QString longest =
                QString::number(number.field->maximum, 'f', 0) + editor::suffix(*number.field);
            number.input->setCell(metrics.horizontalAdvance(longest));
        }
        showState(row);
    }
}

void cMyRuleGrid::showState(const Row& row)
{
    const Bound<cMyComboBoxW2>& condition = row.choices.first();
    const bool isQuiet =
        condition.input->currentIndex() == options("condition").rowOfValue(editor::conditionNever);
    for (const Bound<cMyComboBoxW2>& choice : row.choices) {
        choice.input->setQuiet(isQuiet);
    }
    row.threshold.input->setQuiet(isQuiet);
    for (const Bound<cMyDoubleSpinBoxInt>& number : row.numbers) {
        number.input->setQuiet(isQuiet);
    }
    for (QLabel* label : row.labels) {
        label->setPalette(editor::cellPalette(m_place.rows->palette(), isQuiet));
    }
}
