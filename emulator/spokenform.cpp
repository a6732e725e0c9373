// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/spokenform.h"

#include "editor/fieldcodec.h"
#include "emulator/rulenumbers.h"

#include <cmath>

namespace {

/// The table of the values that message rules offer for this member.
QString tableFile(const char* member)
{
    const QString name =
        editor::ruleMember(QStringLiteral("messageRule"), 1, QString::fromLatin1(member));
    return editor::optionTableFile(editor::settingsField(name));
}

/// A form is named after the parts that it consists of.
bool hasPart(const cMyTableModel& forms, int form, const char* part)
{
    const int row = forms.rowOfValue(form);
    // Where the settings name none, all there is to tell is told.
    const int known = row < 0 ? forms.rowOfValue(emulator::fullForm) : row;
    return forms.cell(known, cMyTableModel::Label).contains(QLatin1String(part));
}

QString number(double value, int decimals)
{
    // A rounded zero has no sign, and a half is rounded away from it.
    return decimals == 0 ? QString::number(std::lround(value))
                         : QString::number(value, 'f', decimals);
}

} // namespace

cMyMessageTables::cMyMessageTables()
    : values(tableFile("measuredValue")), messages(tableFile("message")), forms(tableFile("form"))
{
}

cMySpokenForm::cMySpokenForm(int message, int form, const cMyMessageTables& tables)
    : m_message(message),
      m_isSilent(message == emulator::doNothing || tables.messages.rowOfValue(message) < 0),
      m_isMeasured(tables.values.rowOfValue(message) >= 0),
      m_hasCaption(hasPart(tables.forms, form, "caption")),
      m_hasPoint(hasPart(tables.forms, form, "point")),
      m_hasUnit(hasPart(tables.forms, form, "unit")),
      m_caption(tables.messages.cell(tables.messages.rowOfValue(message), cMyTableModel::Label)),
      m_scale(editor::thresholdScale(tables.values, tables.values.rowOfValue(message)))
{
}

QString cMySpokenForm::text(const cMyDiveValues& values) const
{
    if (m_isSilent || !m_isMeasured) {
        return m_isSilent ? QString() : m_caption;
    }
    const double value =
        editor::shownThreshold(values.at(static_cast<std::size_t>(m_message)), m_scale);
    const int decimals = m_hasPoint ? editor::decimalsOfFactor(m_scale.factor).value_or(0) : 0;
    QStringList words;
    if (m_hasCaption) {
        words.append(m_caption);
    }
    words.append(number(value, decimals));
    if (m_hasUnit) {
        words.append(editor::plainUnit(m_scale.unit));
    }
    return words.join(QLatin1Char(' '));
}

namespace emulator {

QString spokenLine(const cMySpokenMessage& message)
{
    constexpr double milliseconds = 1000; // in a second
    constexpr double centimetres = 100;   // in a metre
    return QStringLiteral("%1 s  %2 m  rule %3: %4")
        .arg(QString::number(static_cast<double>(message.time) / milliseconds, 'f', 1),
             QString::number(message.depth / centimetres, 'f', 2), QString::number(message.rule),
             message.text);
}

} // namespace emulator
