// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/advice.h"
#include "docs/manual/fieldfacts.h"
#include "docs/manual/markdown.h"
#include "docs/manual/pages.h"
#include "editor/fieldtext.h"
#include "editor/rulegrid.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

using manual::literal;

/// One thing that is to be known of a field, with its name.
QString fact(const char* name, const QString& value)
{
    return QStringLiteral("[%1]{.key} [%2]{.value}\n").arg(QString::fromLatin1(name), value);
}

QString facts(const cMySettingsField& field)
{
    QString text;
    const QStringList labels = manual::choices(field);
    const QString range = manual::range(field);
    if (!range.isEmpty()) {
        text += fact("Range", range);
    }
    if (!field.unit.isEmpty()) {
        text += fact("Unit", literal(field.unit));
    }
    if (field.encoding == FieldEncoding::Text) {
        text += fact("Room", QStringLiteral("%1 characters").arg(editor::textCapacity(field)));
        text += fact("Characters", QStringLiteral("ASCII, so no accents"));
    }
    if (editor::isThreshold(field)) {
        text += fact("Range and unit", QStringLiteral("those of the measured value"));
    }
    text += fact("Default", literal(manual::defaultValue(field)));
    if (!labels.isEmpty() && !editor::isRuleMember(field)) {
        text += fact("Choices", literal(labels.join(QStringLiteral(" · "))));
    }
    return manual::block(QStringLiteral("facts"), text);
}

QString fieldBlock(const QString& caption, const cMySettingsField& field, const cMyAdvice& advice)
{
    const QString key = manual::adviceKey(field);
    const QString heading = QStringLiteral("### %1 {#field-%2 .unnumbered .field}\n\n")
                                .arg(literal(caption), QString(key).replace('.', '-'));
    return heading + facts(field) + advice.text(key) + QStringLiteral("\n\n");
}

template <typename Belongs>
QVector<cMySettingsField> fieldsThat(Belongs belongs)
{
    QVector<cMySettingsField> fields;
    const QVector<cMySettingsField>& all = editor::settingsFields();
    std::copy_if(all.cbegin(), all.cend(), std::back_inserter(fields), belongs);
    return fields;
}

QString blocks(const QVector<cMySettingsField>& fields, const cMyAdvice& advice)
{
    QString text;
    for (const cMySettingsField& field : fields) {
        text += fieldBlock(editor::caption(field), field, advice);
    }
    return text;
}

/// Parameters are the fields whose captions are numbered.
int parameterNumber(const cMySettingsField& field)
{
    return editor::caption(field).section(QStringLiteral(". "), 0, 0).toInt();
}

QString parameters(const cMyAdvice& advice)
{
    QVector<cMySettingsField> fields =
        fieldsThat([](const cMySettingsField& field) { return parameterNumber(field) > 0; });
    std::sort(fields.begin(), fields.end(),
              [](const cMySettingsField& one, const cMySettingsField& other) {
                  return parameterNumber(one) < parameterNumber(other);
              });
    return blocks(fields, advice);
}

QString intervals(const cMyAdvice& advice)
{
    return blocks(fieldsThat([](const cMySettingsField& field) {
                      return field.name.startsWith(QLatin1String("period")) ||
                             field.name.startsWith(QLatin1String("distance"));
                  }),
                  advice);
}

QString texts(const cMyAdvice& advice)
{
    return blocks(fieldsThat([](const cMySettingsField& field) {
                      return field.encoding == FieldEncoding::Text;
                  }),
                  advice);
}

/// The members of a rule under the headings of their columns.
QString rule(const cMyRuleKind& kind, const cMyAdvice& advice)
{
    QString text;
    for (const cMyRuleColumn& column : kind.columns) {
        const cMySettingsField& field = editor::settingsField(editor::ruleMember(
            QString::fromLatin1(kind.fieldKind), 1, QString::fromLatin1(column.member)));
        const QString caption = column.headingKey == nullptr
                                    ? editor::caption(field)
                                    : QCoreApplication::translate("cMyRuleGrid", column.headingKey);
        text += fieldBlock(caption, field, advice);
    }
    return text;
}

} // namespace

namespace manual {

Pages fieldPages(const cMyAdvice& advice)
{
    return {
        {QStringLiteral("fields-parameters.md"), parameters(advice)},
        {QStringLiteral("fields-intervals.md"), intervals(advice)},
        {QStringLiteral("fields-texts.md"), texts(advice)},
        {QStringLiteral("fields-timer-rule.md"), rule(cMyRuleGrid::timerRules(), advice)},
        {QStringLiteral("fields-message-rule.md"), rule(cMyRuleGrid::messageRules(), advice)},
    };
}

} // namespace manual
