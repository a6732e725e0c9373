// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/fieldnames.h"

#include "editor/fieldtext.h"

#include <algorithm>
#include <numeric>

namespace {

/// How many characters have to be put in, left out or exchanged to make one word of the other.
int distance(const QString& from, const QString& to)
{
    QVector<int> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < from.size(); ++i) {
        int diagonal = row.at(0);
        row[0] = i + 1;
        for (int j = 0; j < to.size(); ++j) {
            const int exchanged = diagonal + (from.at(i) == to.at(j) ? 0 : 1);
            diagonal = row.at(j + 1);
            row[j + 1] = std::min({exchanged, diagonal + 1, row.at(j) + 1});
        }
    }
    return row.last();
}

/// 0 for the same word in other letters, less than 1 for a part of it, more for others.
double unlikeness(const QString& word, const QString& candidate)
{
    const QString from = word.toLower();
    const QString to = candidate.toLower();
    const auto longest = std::max<QString::size_type>({from.size(), to.size(), 1});
    const double share = double(distance(from, to)) / double(longest);
    return to.contains(from) ? share / 2 : share;
}

QStringList allNames()
{
    QStringList names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        names += field.name;
        const QString rule = field.name.section(QLatin1Char('.'), 0, 0);
        if (!names.contains(rule)) {
            names += rule;
        }
    }
    return names;
}

} // namespace

namespace cli {

cMyOutcome findFields(const QString& name, QVector<cMySettingsField>& fields)
{
    const auto before = fields.size();
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (field.name == name ||
            (editor::isRuleMember(field) && field.name.section(QLatin1Char('.'), 0, 0) == name)) {
            fields.append(field);
        }
    }
    if (fields.size() > before) {
        return {};
    }
    const QStringList likely = nearest(name, allNames());
    const QString hint =
        likely.isEmpty() ? QStringLiteral("\"miolkactl show default -v\" lists them all")
                         : QStringLiteral("do you mean %1?").arg(likely.join(QStringLiteral(", ")));
    return {ExitStatus::Usage, {QStringLiteral("there is no field \"%1\"; %2").arg(name, hint)}};
}

QStringList nearest(const QString& word, const QStringList& words)
{
    constexpr int most = 3;
    constexpr int longest = 64; // nothing that long is a slip of the finger
    constexpr double mostUnlike = 0.5;
    QVector<QPair<double, QString>> likely;
    if (word.isEmpty() || word.size() > longest) {
        return {};
    }
    for (const QString& candidate : words) {
        const double unlike = unlikeness(word, candidate);
        if (unlike < mostUnlike) {
            likely.append({unlike, candidate});
        }
    }
    std::stable_sort(likely.begin(), likely.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    QStringList found;
    for (const auto& each : likely.mid(0, most)) {
        found += each.second;
    }
    return found;
}

} // namespace cli
