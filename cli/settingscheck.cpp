// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/settingscheck.h"

#include "cli/rulecheck.h"
#include "editor/fieldtext.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"

#include <algorithm>

namespace {

using Doubts = QVector<cMySettingsDoubt>;

void checkChoice(const cMyMemoryArea& image, const cMySettingsField& field, Doubts& doubts)
{
    const int stored = editor::storedNumber(image, field);
    if (editor::options(field).rowOfValue(stored) < 0) {
        doubts.append(
            {field.name, QStringLiteral("holds %1, which no choice stands for; the window "
                                        "shows some other choice, and keeps the %1 until "
                                        "one is picked")
                             .arg(stored)});
    }
}

/// The window has an input for it, which keeps it in its range. There is none for gravity, which
/// follows the place, and numbers in rules are looked at with the rules.
bool isKeptInRange(const cMySettingsField& field)
{
    return field.name != QLatin1String("gravity") && !editor::isThreshold(field);
}

void checkNumber(const cMyMemoryArea& image, const cMySettingsField& field, Doubts& doubts)
{
    const double number = editor::displayedNumber(image, field);
    if (!isKeptInRange(field) || (number >= field.minimum && number <= field.maximum)) {
        return;
    }
    const double nearest = std::clamp(number, field.minimum, field.maximum);
    const auto shown = [&field](double each) {
        return editor::shownNumber(each, field.factor);
    };
    doubts.append(
        {field.name, QStringLiteral("%1 is out of range (%2 to %3); the window makes it "
                                    "%4 when it opens the file")
                         .arg(editor::valueText(image, field), shown(field.minimum),
                              shown(field.maximum), editor::withUnit(shown(nearest), field.unit))});
}

void checkText(const cMyMemoryArea& image, const cMySettingsField& field, Doubts& doubts)
{
    if (!editor::storedBytes(image, field).contains(0)) {
        doubts.append({field.name, QStringLiteral("does not end: there is no zero byte in it")});
    }
}

void checkField(const cMyMemoryArea& image, const cMySettingsField& field, Doubts& doubts)
{
    switch (editor::fieldKind(field)) {
    case editor::FieldKind::Number:
        checkNumber(image, field, doubts);
        return;
    case editor::FieldKind::Choice:
        checkChoice(image, field, doubts);
        return;
    case editor::FieldKind::Text:
        checkText(image, field, doubts);
        return;
    case editor::FieldKind::Version:
        return;
    }
}

int numberOf(const cMyMemoryArea& image, const char* name)
{
    return editor::storedNumber(image, editor::settingsField(QString::fromLatin1(name)));
}

/// Nearer to each other, waves begin and end a dive.
void checkDiveThresholds(const cMyMemoryArea& image, Doubts& doubts)
{
    constexpr int leastDistance = 10; // in cm
    const int dive = numberOf(image, "diveThreshold");
    const int surfacing = numberOf(image, "surfacingThreshold");
    if (dive - surfacing < leastDistance) {
        doubts.append({QStringLiteral("surfacingThreshold"),
                       QStringLiteral("%1 cm is not at least %2 cm less than diveThreshold, %3 cm")
                           .arg(surfacing)
                           .arg(leastDistance)
                           .arg(dive)});
    }
}

void checkGravity(const cMyMemoryArea& image, Doubts& doubts)
{
    const cMySettingsField& gravity = editor::settingsField(QStringLiteral("gravity"));
    const int ofPlace = cli::gravityOfPlace(image);
    if (editor::storedNumber(image, gravity) != ofPlace) {
        const QString number = editor::exactNumber(ofPlace / gravity.factor, gravity.factor);
        doubts.append(
            {gravity.name,
             QStringLiteral("%1 is not that of altitude and latitude, %2, which the "
                            "window makes it when it opens the file")
                 .arg(editor::valueText(image, gravity), editor::withUnit(number, gravity.unit))});
    }
}

} // namespace

namespace cli {

int gravityOfPlace(const cMyMemoryArea& image)
{
    const auto shown = [&image](const char* name) {
        const cMySettingsField& field = editor::settingsField(QString::fromLatin1(name));
        return std::clamp(editor::displayedNumber(image, field), field.minimum, field.maximum);
    };
    return editor::storedGravity(shown("altitude"), shown("latitude"));
}

QVector<cMySettingsDoubt> settingsDoubts(const cMyMemoryArea& image)
{
    Doubts doubts;
    for (const cMySettingsField& field : editor::settingsFields()) {
        checkField(image, field, doubts);
    }
    checkDiveThresholds(image, doubts);
    checkGravity(image, doubts);
    return doubts + ruleDoubts(image);
}

} // namespace cli
