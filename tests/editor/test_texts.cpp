// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/shortlabels.h"
#include "editor/tablemodel.h"
#include "editor/textvalidator.h"
#include "tests/support/guitest.h"

#include <QFontDatabase>
#include <QLineEdit>
#include <QSet>

/// What is shown of labels, and what is let into texts.
class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    void shortLabelsAreDistinctAndFit_data();
    void shortLabelsAreDistinctAndFit();
    void labelsThatFitAreWhole();
    void differences_data();
    void differences();
    void theValidatorKnowsItsPattern();
    void whatWasLoadedMayStay();
    void typingIntoALoadedText();
};

void TestTexts::shortLabelsAreDistinctAndFit_data()
{
    QTest::addColumn<QString>("table");
    for (const char* table : {"timCb1", "timCb2", "timCb4", "msgCb4", "msgCb5"}) {
        QTest::newRow(table) << QString::fromLatin1(table);
    }
}

void TestTexts::shortLabelsAreDistinctAndFit()
{
    QFETCH(QString, table);
    const cMyTableModel options(QStringLiteral(":/models/%1.csv").arg(table));
    QStringList labels;
    for (int row = 0; row < options.rowCount(); ++row) {
        labels.append(options.cell(row, cMyTableModel::Label));
    }
    for (const int size : {8, 9, 12, 20}) {
        const QFontMetrics metrics(QFont(QStringLiteral("Sans Serif"), size));
        cMyShortLabels shortened(labels, metrics);
        for (int percent = 58; percent <= 100; percent += 3) {
            const int width = shortened.fullWidth() * percent / 100;
            QSet<QString> seen;
            for (int row = 0; row < labels.size(); ++row) {
                const QString label = shortened.label(row, width);
                QCOMPARE(shortened.advance(row, width), metrics.horizontalAdvance(label));
                QVERIFY2(shortened.advance(row, width) <= width, qPrintable(label));
                QVERIFY2(!seen.contains(label), qPrintable(label));
                seen.insert(label);
            }
        }
    }
}

void TestTexts::labelsThatFitAreWhole()
{
    const QFontMetrics metrics{QFont()};
    const QString timer = QStringLiteral("if timer 1 is counting");
    cMyShortLabels labels({timer, QStringLiteral("if timer 2 is counting"),
                           QStringLiteral("if timer 1 is stopped"),
                           QStringLiteral("if timer 2 is stopped"), QStringLiteral("never")},
                          metrics);
    QCOMPARE(labels.fullWidth(), metrics.horizontalAdvance(timer));
    QCOMPARE(labels.label(0, labels.fullWidth()), timer);
    const int narrow = labels.fullWidth() * 3 / 4;
    QCOMPARE(labels.label(4, narrow), QStringLiteral("never"));
    QVERIFY(labels.label(0, narrow).startsWith(QLatin1String("if timer 1 is c")));
    QVERIFY(labels.label(2, narrow).startsWith(QLatin1String("if timer 1 is s")));
    QCOMPARE(labels.label(-1, narrow), QString());
    QCOMPARE(labels.label(5, narrow), QString());
    QCOMPARE(labels.advance(-1, narrow), 0);
    // Too narrow for anything: cut off by the edge, not a mere gap.
    QCOMPARE(labels.label(0, 0), timer);
}

void TestTexts::differences_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("removed");
    QTest::addColumn<QString>("inserted");
    const auto row = [](const char* name, const char* before, const char* after, int position,
                        int removed, const char* inserted) {
        QTest::newRow(name) << QString::fromLatin1(before) << QString::fromLatin1(after) << position
                            << removed << QString::fromLatin1(inserted);
    };
    row("none", "abc", "abc", 3, 0, "");
    row("at the end", "abc", "abcd", 3, 0, "d");
    row("at the beginning", "abc", "xabc", 0, 0, "x");
    row("in the middle", "abc", "abxc", 2, 0, "x");
    row("repeated", "aa", "aaa", 2, 0, "a");
    row("removed", "abc", "ac", 1, 1, "");
    row("replaced", "abcd", "aXYd", 1, 2, "XY");
    row("everything", "abc", "", 0, 3, "");
}

void TestTexts::differences()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    const editor::Edit edit = editor::difference(before, after);
    QTEST(edit.position, "position");
    QTEST(edit.removed, "removed");
    QTEST(edit.inserted, "inserted");
    QCOMPARE(before.left(edit.position) + edit.inserted + before.mid(edit.position + edit.removed),
             after);
}

void TestTexts::theValidatorKnowsItsPattern()
{
    const cMyTextValidator validator;
    QCOMPARE(validator.regularExpression().pattern(), QStringLiteral("(^[\\40-\\176]{0,511}$)"));
    const auto state = [&validator](QString text) {
        int position = 0;
        return validator.validate(text, position);
    };
    QCOMPARE(state(QStringLiteral("Dive 1 ~!")), QValidator::Acceptable);
    QCOMPARE(state(QString(511, QLatin1Char('x'))), QValidator::Acceptable);
    QCOMPARE(state(QString(512, QLatin1Char('x'))), QValidator::Invalid);
    for (const char* text : {"ą", "é", "a\n", "\t", "\x7F"}) {
        QCOMPARE(state(QString::fromUtf8(text)), QValidator::Invalid);
    }
}

void TestTexts::whatWasLoadedMayStay()
{
    cMyTextValidator validator;
    validator.setLoaded(QString::fromUtf8("Józek ł"));
    const auto isAccepted = [&validator](const char* utf8) {
        QString text = QString::fromUtf8(utf8);
        int position = 0;
        return validator.validate(text, position) != QValidator::Invalid;
    };
    QVERIFY(isAccepted("Józek ł"));
    QVERIFY(isAccepted("Józek! ł"));
    QVERIFY(isAccepted("Jzek ł"));
    QVERIFY(!isAccepted("Józóek ł"));
    QVERIFY(!isAccepted("Józek łł"));
    QVERIFY(!isAccepted("ó"));
    validator.remember(QStringLiteral("Jzek"));
    QVERIFY(isAccepted("Józek ł")); // undone
    QVERIFY(!isAccepted("Jzekó"));
    validator.setLoaded(QString());
    QVERIFY(!isAccepted("Józek ł"));
    // What undoing brings back leaves nothing.
    const QString loaded = QString::fromUtf8("Józek ł");
    const auto rest = [&loaded](const char* utf8) {
        return editor::withoutLoaded(QString::fromUtf8(utf8), loaded, editor::isTypable);
    };
    QCOMPARE(rest("xJózek łx"), QStringLiteral("xJzek x"));
    QCOMPARE(rest("łó"), QString::fromUtf8("ó"));
}

void TestTexts::typingIntoALoadedText()
{
    QLineEdit line;
    auto* validator = new cMyTextValidator(&line);
    line.setValidator(validator);
    connect(&line, &QLineEdit::textChanged, validator, &cMyTextValidator::remember);
    validator->setLoaded(QString::fromUtf8("Józek"));
    line.setText(QString::fromUtf8("Józek"));
    line.show();
    support::type(line, "ą");
    QCOMPARE(line.text(), QString::fromUtf8("Józek"));
    support::type(line, "!");
    QCOMPARE(line.text(), QString::fromUtf8("Józek!"));
    line.setCursorPosition(2);
    QTest::keyClick(&line, Qt::Key_Backspace);
    QCOMPARE(line.text(), QStringLiteral("Jzek!"));
    line.undo();
    QCOMPARE(line.text(), QString::fromUtf8("Józek!"));
    support::type(line, "ę");
    QCOMPARE(line.text(), QString::fromUtf8("Józek!"));
}

MIOLKA_GUI_TEST_MAIN(TestTexts)
#include "test_texts.moc"
