// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/developer/settingsimage.h"
#include "docs/developer/unusedbytes.h"
#include "docs/manual/optiontables.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/settingsfile.h"

#include <QLocale>
#include <QtTest>

#include <bitset>

/// The page about the settings image.
class TestSettingsImage : public QObject
{
    Q_OBJECT

private slots:
    void everyByteIsOfOneFieldOrUnused();
    void everyFieldStandsAtItsAddress();
    void everyRuleStandsAtItsAddress();
    void everyOptionIsThere();
    void theLocaleMakesNoDifference();
};

namespace {

QString place(int address)
{
    return QStringLiteral("%1 (0x%2)").arg(address).arg(address, 3, 16, QLatin1Char('0'));
}

} // namespace

void TestSettingsImage::everyByteIsOfOneFieldOrUnused()
{
    std::bitset<image::settingsImageSize> bytes;
    const auto take = [&bytes](int address, int size) {
        for (int i = address; i < address + size; ++i) {
            QVERIFY2(!bytes.test(static_cast<std::size_t>(i)), qPrintable(QString::number(i)));
            bytes.set(static_cast<std::size_t>(i));
        }
    };
    for (const cMySettingsField& field : editor::settingsFields()) {
        take(field.address, field.width);
    }
    const QVector<developer::Span> unused = developer::unusedBytes();
    for (const developer::Span& span : unused) {
        take(span.address, span.size);
        QVERIFY(developer::settingsImagePage().contains(
            QStringLiteral("\n| %1 | %2 | %3 |")
                .arg(place(span.address), place(span.address + span.size - 1))
                .arg(span.size)));
    }
    QVERIFY(bytes.all());
}

void TestSettingsImage::everyFieldStandsAtItsAddress()
{
    const QString page = developer::settingsImagePage();
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!editor::isRuleMember(field)) {
            QVERIFY2(page.contains(QStringLiteral("\n| %1 | %2 | `%3` |")
                                       .arg(place(field.address))
                                       .arg(field.width)
                                       .arg(field.name)),
                     qPrintable(field.name));
        }
    }
}

void TestSettingsImage::everyRuleStandsAtItsAddress()
{
    const QString page = developer::settingsImagePage();
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.name.endsWith(QLatin1String(".condition"))) {
            const QString rule = field.name.section(QLatin1Char('.'), 0, 0);
            QVERIFY2(
                page.contains(QStringLiteral("\n| `%1` | %2 |").arg(rule, place(field.address))),
                qPrintable(rule));
        }
    }
}

void TestSettingsImage::everyOptionIsThere()
{
    const QString page = developer::settingsImagePage();
    const QStringList tables = manual::optionTables();
    for (const QString& table : tables) {
        const auto begin = page.indexOf(QStringLiteral("### %1\n").arg(table));
        QVERIFY2(begin >= 0, qPrintable(table));
        const QString section =
            page.mid(begin, page.indexOf(QStringLiteral("\n### "), begin) - begin);
        const QList<QStringList> rows = cMyTableModel(editor::optionTableFile(table)).getList();
        for (const QStringList& row : rows) {
            QVERIFY2(
                section.contains(QStringLiteral("\n| %1 | ").arg(row.value(cMyTableModel::Value))),
                qPrintable(table + QLatin1Char(' ') + row.join(QLatin1Char(';'))));
        }
    }
}

void TestSettingsImage::theLocaleMakesNoDifference()
{
    const QString page = developer::settingsImagePage();
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Polish, QLocale::Poland));
    const QString polish = developer::settingsImagePage();
    QLocale::setDefault(before);
    QCOMPARE(polish, page);
}

QTEST_GUILESS_MAIN(TestSettingsImage)
#include "test_settingsimage.moc"
