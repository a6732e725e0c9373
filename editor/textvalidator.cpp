// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/textvalidator.h"

#include <algorithm>

namespace editor {

Edit difference(const QString& before, const QString& after)
{
    const int oldSize = static_cast<int>(before.size());
    const int newSize = static_cast<int>(after.size());
    const int shorter = std::min(oldSize, newSize);
    int front = 0;
    while (front < shorter && before.at(front) == after.at(front)) {
        ++front;
    }
    int back = 0;
    while (back < shorter - front &&
           before.at(oldSize - 1 - back) == after.at(newSize - 1 - back)) {
        ++back;
    }
    return {front, oldSize - front - back, after.mid(front, newSize - front - back)};
}

} // namespace editor

cMyTextValidator::cMyTextValidator(QObject* parent)
    : QRegularExpressionValidator(QRegularExpression(QStringLiteral("(^[\\40-\\176]{0,511}$)")),
                                  parent)
{
}

void cMyTextValidator::setLoaded(const QString& text)
{
    m_accepted.clear();
    remember(text);
}

void cMyTextValidator::remember(const QString& text)
{
    m_current = text;
    m_accepted.insert(text);
}

QValidator::State cMyTextValidator::validate(QString& input, int& position) const
{
    if (m_accepted.contains(input)) {
        return Acceptable; // loaded, or brought back by undoing
    }
    // A line feed at the end is a partial match, and what is not finished would be let in.
    QString typed = editor::difference(m_current, input).inserted;
    const QValidator::State state = QRegularExpressionValidator::validate(typed, position);
    return state == Acceptable || typed.isEmpty() ? Acceptable : Invalid;
}
