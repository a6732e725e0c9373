// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_RULEGRID_H
#define MIOLKA_EDITOR_RULEGRID_H

#include "editor/settingslayout.h"

#include <QHash>
#include <QObject>

class QGridLayout;
class QLabel;
class cMyComboBoxW2;
class cMyComboBoxW6;
class cMyDoubleSpinBoxInt;
class cMyImageGate;
class cMyRuleHeading;
class cMyRuleRows;
class cMyTableModel;

/// One input of every rule.
struct cMyRuleColumn
{
    int gridColumn;
    const char* member;               ///< of the rule, as the fields are named
    const char* objectName;           ///< what follows the rule's own name
    int leastPercent;                 ///< of its longest text that a narrow window must leave
    const char* headingKey = nullptr; ///< source text of the heading, if not the caption
};

/// What tells timer rules and message rules apart.
struct cMyRuleKind
{
    const char* fieldKind;  ///< what the names of their fields begin with
    const char* objectName; ///< what the names of their inputs begin with
    int nameDigits;         ///< of the number that follows it
    int count;
    QVector<cMyRuleColumn> columns;
    int wordColumn;           ///< grid column of the word between threshold and message, or -1
    const char* inputNameKey; ///< source text of an input's name; its number and caption go in
};

/// A fixed grid of rules, a row each: built, bound and filled in the same way for timer rules and
/// for message rules.
class cMyRuleGrid : public QObject
{
    Q_OBJECT

public:
    /// Where the rows go: the sheet, its empty grid layout, and the heading over it.
    struct Place
    {
        cMyRuleRows* rows;
        QGridLayout* layout;
        cMyRuleHeading* heading;
    };

    /// The two kinds that there are. They live as long as the program.
    [[nodiscard]] static const cMyRuleKind& timerRules();
    [[nodiscard]] static const cMyRuleKind& messageRules();

    /// Builds the rows into the place; the option tables and the grid itself live in parent. The
    /// image stays as it is.
    cMyRuleGrid(const cMyRuleKind& kind, const Place& place, cMyImageGate& gate, QObject& parent);

    /// Shows the image, which stays as it is, also where it holds what cannot be shown.
    void update();

private:
    template <typename Input>
    struct Bound
    {
        const cMySettingsField* field;
        Input* input;
        int leastPercent;
    };

    struct Row
    {
        QVector<QLabel*> labels;
        QVector<Bound<cMyComboBoxW2>> choices;
        QVector<Bound<cMyDoubleSpinBoxInt>> numbers;
        cMyComboBoxW6* measuredValue = nullptr; ///< one of the choices
        Bound<cMyDoubleSpinBoxInt> threshold{}; ///< none of the numbers
    };

    void loadOptionTables();
    void buildHeading();
    void buildRow(int rule);
    void connectRow(const Row& row);
    QWidget* addInput(Row& row, const cMyRuleColumn& column, const cMySettingsField& bound);
    QLabel* addLabel(int gridRow, int gridColumn, const QString& text);
    void measure();
    void showState(const Row& row);
    [[nodiscard]] const cMySettingsField& field(int rule, const char* member) const;
    [[nodiscard]] const cMyTableModel& options(const char* member) const;

    const cMyRuleKind& m_kind;
    Place m_place;
    cMyImageGate& m_gate;
    QHash<QString, cMyTableModel*> m_options; ///< by name
    QVector<Row> m_rows;
};

#endif
