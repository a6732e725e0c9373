// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/invocation.h"
#include "cli/settingscheck.h"
#include "cli/settingsource.h"
#include "image/memoryarea.h"
#include "image/strictsettings.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

using Doubts = QVector<cMySettingsDoubt>;

/// Bytes that the file leaves to the default settings make it only a part of settings.
Doubts doubtsAboutFile(const cMyStrictSettings& settings)
{
    if (settings.isGiven.all()) {
        return {};
    }
    return {{QString(), QStringLiteral("gives only %1 of %2 bytes; the others are those of the "
                                       "default settings")
                            .arg(settings.isGiven.count())
                            .arg(image::settingsImageSize)}};
}

QJsonObject jsonOf(const QString& file, const cMyStrictSettings& settings, const Doubts& doubts)
{
    QJsonArray faults;
    for (const cMySettingsFault& fault : settings.faults) {
        faults.append(QJsonObject{
            {QStringLiteral("line"), fault.line == 0 ? QJsonValue() : QJsonValue(fault.line)},
            {QStringLiteral("text"), fault.reason}});
    }
    QJsonArray list;
    for (const cMySettingsDoubt& doubt : doubts) {
        list.append(QJsonObject{
            {QStringLiteral("field"), doubt.name.isEmpty() ? QJsonValue() : QJsonValue(doubt.name)},
            {QStringLiteral("text"), doubt.text}});
    }
    return {{QStringLiteral("file"), file},
            {QStringLiteral("faultCount"), settings.faultCount},
            {QStringLiteral("faults"), faults},
            {QStringLiteral("bytesGiven"), static_cast<int>(settings.isGiven.count())},
            {QStringLiteral("doubts"), list}};
}

void tell(const QString& file, const Doubts& doubts, cMyConsole& console)
{
    for (const cMySettingsDoubt& doubt : doubts) {
        console.result(
            QStringLiteral("%1: %2").arg(doubt.name.isEmpty() ? file : doubt.name, doubt.text));
    }
    console.say(
        doubts.isEmpty()
            ? QStringLiteral("%1: no faults, no doubts").arg(file)
            : QStringLiteral("%1: no faults, but %2 to think about").arg(file).arg(doubts.size()));
}

} // namespace

namespace cli {

ExitStatus runCheck(const cMyInvocation& invocation, cMyConsole& console)
{
    const QString file = invocation.operands.first();
    const cMyStrictSettings settings = image::readStrictSettings(file);
    cMyMemoryArea image;
    const cMyOutcome loaded = applySettings(file, settings, image);
    const Doubts doubts =
        loaded.isDone() ? doubtsAboutFile(settings) + settingsDoubts(image) : Doubts();
    if (console.isJson()) {
        console.result(jsonOf(file, settings, doubts));
        return loaded.status;
    }
    if (loaded.isDone()) {
        tell(file, doubts, console);
    }
    return console.tell(loaded);
}

} // namespace cli
