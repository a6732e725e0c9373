// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/rule.h"

#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "emulator/ruleconditions.h"

namespace {

QString fieldKind(cMyRule::Kind kind)
{
    return kind == cMyRule::Kind::Timer ? QStringLiteral("timerRule")
                                        : QStringLiteral("messageRule");
}

/// In the middle of a sentence. What follows the first letter tells "max" from "MAX".
QString lowered(QString label)
{
    return label.isEmpty() ? label : label.replace(0, 1, label.at(0).toLower());
}

} // namespace

cMyRule::cMyRule(const cMyMemoryArea& image, Kind kind, int number)
    : m_image(&image), m_kind(kind), m_number(number)
{
}

QString cMyRule::name() const
{
    return editor::ruleMember(fieldKind(m_kind), m_number, QString()).chopped(1);
}

const cMySettingsField& cMyRule::field(const char* member) const
{
    return editor::settingsField(
        editor::ruleMember(fieldKind(m_kind), m_number, QString::fromLatin1(member)));
}

int cMyRule::stored(const char* member) const
{
    return editor::storedNumber(*m_image, field(member));
}

bool cMyRule::isOffered(const char* member) const
{
    return editor::options(field(member)).rowOfValue(stored(member)) >= 0;
}

bool cMyRule::isOff() const
{
    return stored("condition") == editor::conditionNever;
}

bool cMyRule::comparesNothing() const
{
    const cMyTableModel& values = editor::options(field("measuredValue"));
    const cMyThresholdScale scale =
        editor::thresholdScale(values, values.rowOfValue(stored("measuredValue")));
    return scale.minimum == 0 && scale.maximum == 0;
}

QString cMyRule::comparison() const
{
    return QStringLiteral("%1 %2 %3")
        .arg(lowered(text("measuredValue")), text("comparison"), text("threshold"));
}

QString cMyRule::sentence() const
{
    return isOff() ? QStringLiteral("off") : occasion() + QLatin1String(": ") + deed();
}

QString cMyRule::text(const char* member) const
{
    return editor::valueText(*m_image, field(member));
}

QString cMyRule::occasion() const
{
    if (comparesNothing() && isOffered("measuredValue")) {
        return text("condition");
    }
    return QStringLiteral("%1, when %2").arg(text("condition"), comparison());
}

QString cMyRule::deed() const
{
    if (m_kind == Kind::Timer) {
        const int action = stored("action");
        if (action == emulator::doNothing) {
            return lowered(text("action"));
        }
        return cli::takesTime(action) ? text("action") + QLatin1String(", ") + text("time")
                                      : text("action");
    }
    if (stored("message") == emulator::doNothing) {
        return lowered(text("message"));
    }
    const bool isMeasured =
        editor::options(field("measuredValue")).rowOfValue(stored("message")) >= 0;
    const QString message =
        isMeasured ? text("message") + QLatin1Char(' ') + text("form") : text("message");
    return QStringLiteral("say %1, %2").arg(message, text("repetition"));
}

namespace cli {

QVector<cMyRule> rules(const cMyMemoryArea& image)
{
    QVector<cMyRule> rules;
    for (int number = 1; number <= editor::timerRuleCount; ++number) {
        rules.append(cMyRule(image, cMyRule::Kind::Timer, number));
    }
    for (int number = 1; number <= editor::messageRuleCount; ++number) {
        rules.append(cMyRule(image, cMyRule::Kind::Message, number));
    }
    return rules;
}

bool takesTime(int action)
{
    // The first of the four is the stopwatch.
    return emulator::timerOf(action, static_cast<int>(RuleAction::Start)).value_or(0) > 0;
}

} // namespace cli
