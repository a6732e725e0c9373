// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_RULEBUILDER_H
#define MIOLKA_TESTS_EMULATOR_RULEBUILDER_H

#include "emulator/diverules.h"
#include "tests/emulator/setfield.h"
#include "tests/support/template.h"

#include <QStringList>

/// Settings whose rules a test writes down, and dives that are judged by them.
namespace support {

/// One rule to be written; it says nothing and does nothing until it is told to.
class RuleWriter
{
public:
    RuleWriter(cMyMemoryArea& settings, const char* kind, int rule)
        : m_settings(settings), m_kind(QString::fromLatin1(kind)), m_rule(rule)
    {
    }

    RuleWriter& put(const char* member, int number)
    {
        const QString name = editor::ruleMember(m_kind, m_rule, QString::fromLatin1(member));
        setField(m_settings, name, number);
        return *this;
    }

    RuleWriter& when(int condition) { return put("condition", condition); }

    RuleWriter& atLeast(int value, int threshold)
    {
        return put("measuredValue", value).put("comparison", 0).put("threshold", threshold);
    }

    RuleWriter& atMost(int value, int threshold)
    {
        return atLeast(value, threshold).put("comparison", 1);
    }

    RuleWriter& says(int message, int form = 5)
    {
        return put("message", message).put("form", form);
    }

    RuleWriter& repeats(int repetition) { return put("repetition", repetition); }

    RuleWriter& does(int action, int seconds = 0)
    {
        return put("action", action).put("time", seconds);
    }

private:
    cMyMemoryArea& m_settings;
    QString m_kind;
    int m_rule;
};

/// The default settings, in which no rule does anything, to be changed.
class RuleBuilder
{
public:
    RuleBuilder() { setImage(templateImage()); }
    explicit RuleBuilder(const QByteArray& image) { setImage(image); }

    [[nodiscard]] RuleWriter timerRule(int rule) { return {m_settings, "timerRule", rule}; }
    [[nodiscard]] RuleWriter messageRule(int rule) { return {m_settings, "messageRule", rule}; }

    RuleBuilder& put(const char* name, int number)
    {
        setField(m_settings, QString::fromLatin1(name), number);
        return *this;
    }

    [[nodiscard]] const cMyMemoryArea& settings() const { return m_settings; }

private:
    void setImage(const QByteArray& image)
    {
        m_settings.setData(0, QVector<quint8>(image.cbegin(), image.cend()));
    }

    cMyMemoryArea m_settings;
};

/// A dive, sample by sample. What lasts stays in now until it is changed; moments pass by.
class ScriptedDive
{
public:
    explicit ScriptedDive(const RuleBuilder& builder) : m_rules(builder.settings()) {}

    cMyDiveMoment now;

    [[nodiscard]] qint16& value(int number)
    {
        return now.values.at(static_cast<std::size_t>(number));
    }

    /// The next sample, so many ms after the one before; what is said at it, as "rule: text".
    QStringList sample(int elapsed = 1000)
    {
        now.elapsed = m_isFirst ? 0 : elapsed;
        now.time += now.elapsed;
        m_isFirst = false;
        QStringList said;
        for (const cMySpokenMessage& message : m_rules.take(now)) {
            said.append(QStringLiteral("%1: %2").arg(message.rule).arg(message.text));
            m_said.append(QStringLiteral("%1@%2").arg(message.rule).arg(message.time));
        }
        now.diveBegins = now.diveEnds = now.switchesOn = now.switchesOff = false;
        now.chargingBegins = now.chargingEnds = false;
        return said;
    }

    void samples(int count, int elapsed = 1000)
    {
        for (int i = 0; i < count; ++i) {
            sample(elapsed);
        }
    }

    /// What was said so far, as "rule@ms".
    [[nodiscard]] QString said() const { return m_said.join(QLatin1Char(' ')); }

private:
    cMyDiveRules m_rules;
    QStringList m_said;
    bool m_isFirst = true;
};

} // namespace support

#endif
