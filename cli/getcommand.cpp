// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/fieldinput.h"
#include "cli/fieldjson.h"
#include "cli/fieldnames.h"
#include "cli/invocation.h"
#include "cli/settingsource.h"
#include "editor/fieldtext.h"
#include "image/memoryarea.h"

namespace {

/// All that are named, or what is wrong with the names.
cMyOutcome findAll(const QStringList& names, QVector<cMySettingsField>& fields)
{
    cMyOutcome all;
    for (const QString& name : names) {
        const cMyOutcome found = cli::findFields(name, fields);
        if (!found.isDone()) {
            all.status = found.status;
            all.reasons += found.reasons;
        }
    }
    return all;
}

void tell(const cMyMemoryArea& image, const QVector<cMySettingsField>& fields, cMyConsole& console)
{
    if (fields.size() == 1) {
        const QString text = editor::valueText(image, fields.first());
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            console.result(line);
        }
        return;
    }
    for (const cMySettingsField& field : fields) {
        console.result(field.name + QLatin1Char('=') + cli::inputText(image, field));
    }
}

} // namespace

namespace cli {

ExitStatus runGet(const cMyInvocation& invocation, cMyConsole& console)
{
    QVector<cMySettingsField> fields;
    const cMyOutcome found = findAll(invocation.operands.mid(1), fields);
    if (!found.isDone()) {
        return console.tell(found);
    }
    cMyMemoryArea image;
    const cMyOutcome loaded = loadSource(invocation.operands.first(), invocation, console, image);
    if (!loaded.isDone()) {
        return console.tell(loaded);
    }
    if (!console.isJson()) {
        tell(image, fields, console);
        return ExitStatus::Done;
    }
    QJsonObject object;
    for (const cMySettingsField& field : fields) {
        object.insert(field.name, fieldJson(image, field));
    }
    console.result(object);
    return ExitStatus::Done;
}

} // namespace cli
