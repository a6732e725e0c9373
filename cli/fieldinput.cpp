// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/fieldinput.h"

#include "cli/fieldnames.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

const QLatin1Char backslash('\\');
const QLatin1Char lineBreak('\n');
const QLatin1Char storedMark('#'); ///< before the number that is stored for a choice
constexpr int bitsOfAByte = 8;

cMyOutcome refusal(const cMySettingsField& field, const QString& reason)
{
    return {cli::ExitStatus::Usage, {QStringLiteral("%1: %2").arg(field.name, reason)}};
}

/// Only the description has room for lines.
bool hasLines(const cMySettingsField& field)
{
    return field.name == QLatin1String("description");
}

QString escaped(QString text)
{
    return text.replace(backslash, QLatin1String("\\\\")).replace(lineBreak, QLatin1String("\\n"));
}

QString unescaped(const QString& text)
{
    QString plain;
    for (int i = 0; i < text.size(); ++i) {
        const QString pair = text.mid(i, 2);
        if (pair == QLatin1String("\\n")) {
            plain += lineBreak;
            ++i;
        } else {
            plain += text.at(i);
            i += pair == QLatin1String("\\\\") ? 1 : 0;
        }
    }
    return plain;
}

cMyOutcome parseText(const QString& typed, const cMySettingsField& field, QVector<quint8>& bytes)
{
    const QString text = hasLines(field) ? unescaped(typed) : typed;
    const auto wrong = std::find_if_not(text.cbegin(), text.cend(), [&field](QChar character) {
        return editor::isTypable(character) || (hasLines(field) && character == lineBreak);
    });
    if (wrong != text.cend()) {
        return refusal(field, QStringLiteral("character %1, \"%2\", is none that the device's "
                                             "texts have: only ASCII, from space to tilde")
                                  .arg(wrong - text.cbegin() + 1)
                                  .arg(*wrong));
    }
    const int capacity = editor::textCapacity(field);
    if (text.size() > capacity) {
        return refusal(field, QStringLiteral("the text has %1 characters, but there is room for %2")
                                  .arg(text.size())
                                  .arg(capacity));
    }
    bytes = editor::textBytes(text, field);
    return {};
}

/// A label as people type it who leave out what a shell would take for a pattern.
QString plainLabel(QString label)
{
    return label.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
}

/// Sentences begin labels with a small letter, and some labels differ in capitals only.
bool isLabelInSentence(const QString& typed, const QString& label)
{
    return typed.left(1).compare(label.left(1), Qt::CaseInsensitive) == 0 &&
           typed.mid(1) == label.mid(1);
}

/// Of a label such as "4 [s]": its number, with its unit or without.
bool isNumberOfLabel(const QString& typed, const QString& label)
{
    static const QRegularExpression measure(QStringLiteral("^([0-9]+) \\[([^\\]]+)\\]$"));
    const QRegularExpressionMatch match = measure.match(label);
    return match.hasMatch() &&
           (typed == match.captured(1) ||
            QString(typed)
                    .remove(QLatin1Char(' '))
                    .compare(match.captured(1) + match.captured(2), Qt::CaseInsensitive) == 0);
}

/// The rows of the choices that are meant, of which there is one if the text is clear.
QVector<int> rowsMeant(const QString& text, const cMyTableModel& options)
{
    using Meant = bool (*)(const QString&, const QString&);
    constexpr Meant ways[] = {
        [](const QString& typed, const QString& label) { return typed == label; },
        isLabelInSentence,
        [](const QString& typed, const QString& label) {
            return plainLabel(typed).compare(plainLabel(label), Qt::CaseInsensitive) == 0;
        },
        isNumberOfLabel};
    for (const Meant isMeant : ways) {
        QVector<int> rows;
        for (int row = 0; row < options.rowCount(); ++row) {
            if (isMeant(text, options.cell(row, cMyTableModel::Label))) {
                rows.append(row);
            }
        }
        if (!rows.isEmpty()) {
            return rows;
        }
    }
    return {};
}

QStringList labels(const cMyTableModel& options)
{
    QStringList all;
    for (int row = 0; row < options.rowCount(); ++row) {
        all += options.cell(row, cMyTableModel::Label);
    }
    return all;
}

/// All choices where they are few, else those that are likely to be meant.
QString choicesText(const QString& text, const cMyTableModel& options)
{
    constexpr int few = 12;
    const QStringList all = labels(options);
    if (all.size() <= few) {
        return QStringLiteral("choose one of: ") + all.join(QStringLiteral(", "));
    }
    const QStringList likely = cli::nearest(text, all);
    return likely.isEmpty()
               ? QStringLiteral("the manual lists what is")
               : QStringLiteral("do you mean %1?").arg(likely.join(QStringLiteral(", ")));
}

QString notOffered(const QString& text, const cMyTableModel& options)
{
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,5}$"));
    const QString hint =
        digits.match(text).hasMatch()
            ? QStringLiteral("; the stored number %1 is given as \"#%1\"").arg(text)
            : QString();
    return QStringLiteral("\"%1\" is not offered; %2%3")
        .arg(text, choicesText(text, options), hint);
}

/// What is stored for a choice, offered or not: "#6".
cMyOutcome parseStored(const QString& text, const cMySettingsField& field, QVector<quint8>& bytes)
{
    const bool isSigned = field.encoding == FieldEncoding::Signed;
    const int count = 1 << (bitsOfAByte * field.width);
    const int least = isSigned ? -count / 2 : 0;
    const int most = least + count - 1;
    static const QRegularExpression form(QStringLiteral("^#(-?[0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const int number = match.captured(1).toInt();
    if (!match.hasMatch() || number < least || number > most) {
        return refusal(field, QStringLiteral("\"%1\" is no stored number; it takes #%2 to #%3")
                                  .arg(text)
                                  .arg(least)
                                  .arg(most));
    }
    bytes = editor::numberBytes(number, field);
    return {};
}

cMyOutcome parseChoice(const QString& typed, const cMySettingsField& field, QVector<quint8>& bytes)
{
    const QString text = typed.trimmed();
    if (text.startsWith(storedMark)) {
        return parseStored(text, field, bytes);
    }
    const cMyTableModel& options = editor::options(field);
    const QVector<int> rows = rowsMeant(text, options);
    if (rows.isEmpty()) {
        return refusal(field, notOffered(text, options));
    }
    if (rows.size() > 1) {
        QStringList meant;
        for (const int row : rows) {
            meant += options.cell(row, cMyTableModel::Label);
        }
        return refusal(
            field,
            QStringLiteral("\"%1\" may mean %2").arg(text, meant.join(QStringLiteral(" or "))));
    }
    bytes = editor::numberBytes(
        static_cast<int>(options.number(rows.first(), cMyTableModel::Value)), field);
    return {};
}

QString rangeText(const cMyThresholdScale& scale)
{
    return QStringLiteral("%1 to %2")
        .arg(editor::shownNumber(scale.minimum, scale.factor),
             editor::withUnit(editor::shownNumber(scale.maximum, scale.factor), scale.unit));
}

cMyOutcome parseNumber(const QString& typed, const cMySettingsField& field,
                       const cMyMemoryArea& image, QVector<quint8>& bytes)
{
    const cMyThresholdScale scale = editor::numberScale(image, field);
    QString text = typed.trimmed();
    if (!scale.unit.isEmpty() && text.endsWith(scale.unit)) {
        text = text.chopped(scale.unit.size()).trimmed();
    }
    static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]{1,9}(?:\\.([0-9]{1,9}))?$"));
    const QRegularExpressionMatch match = number.match(text);
    if (!match.hasMatch()) {
        const QString unit = scale.unit.isEmpty() ? QString() : QStringLiteral(" in ") + scale.unit;
        return refusal(field, QStringLiteral("\"%1\" is no number%2; it takes %3")
                                  .arg(typed, unit, rangeText(scale)));
    }
    const double value = text.toDouble();
    const qint64 stored = std::llround(value * scale.factor);
    if (stored < std::llround(scale.minimum * scale.factor) ||
        stored > std::llround(scale.maximum * scale.factor)) {
        return refusal(
            field, QStringLiteral("%1 is out of range; it takes %2").arg(text, rangeText(scale)));
    }
    constexpr double tie = 1.001; // a half, as exactly as fractions are kept
    const double halfOfLastDigit = std::pow(10.0, -match.captured(1).size()) / 2;
    const double storable = static_cast<double>(stored) / scale.factor;
    if (std::abs(storable - value) > halfOfLastDigit * tie) {
        const QString nearest = editor::exactNumber(storable, scale.factor);
        return refusal(field, QStringLiteral("%1 cannot be stored; the nearest that can is %2")
                                  .arg(text, editor::withUnit(nearest, scale.unit)));
    }
    bytes = editor::numberBytes(static_cast<int>(stored), field);
    return {};
}

} // namespace

namespace cli {

QString inputText(const cMyMemoryArea& image, const cMySettingsField& field)
{
    const int stored = editor::storedNumber(image, field);
    if (editor::fieldKind(field) == editor::FieldKind::Choice &&
        editor::options(field).rowOfValue(stored) < 0) {
        return storedMark + QString::number(stored);
    }
    const QString text = editor::valueText(image, field);
    return hasLines(field) ? escaped(text) : text;
}

cMyOutcome parseValue(const QString& text, const cMySettingsField& field,
                      const cMyMemoryArea& image, QVector<quint8>& bytes)
{
    switch (editor::fieldKind(field)) {
    case editor::FieldKind::Number:
        return parseNumber(text, field, image, bytes);
    case editor::FieldKind::Choice:
        return parseChoice(text, field, bytes);
    case editor::FieldKind::Text:
        return parseText(text, field, bytes);
    case editor::FieldKind::Version:
        break;
    }
    return refusal(field, QStringLiteral("cannot be set; writing to a device sets it"));
}

} // namespace cli
